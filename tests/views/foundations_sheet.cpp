#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>

#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "views/component_sheets.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

// A rectangle of one colour with a hairline around it.
class Swatch final : public QWidget {
 public:
  Swatch(const QColor& color, QSize size, int radius) : color_(color), radius_(radius) { setFixedSize(size); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paintPanel(painter, rect(), radius_, color_, colors().lineDefault);
  }

 private:
  QColor color_;
  int radius_;
};

struct SurfaceSample {
  QString name;
  ColorRole role;
};

QWidget* typeScale() {
  auto* mono = new Label(u"Mono 12/16 · 0:08.4 · 418207"_s, Type::mono);
  return column({new Label(u"Display 28/34"_s, Type::display), new Label(u"Large 20/26"_s, Type::large),
                 new Label(u"Title 15/20 semibold"_s, Type::title), new Label(u"Prompt 15/23 regular"_s, Type::prompt),
                 new Label(u"Body 13/18 regular"_s, Type::body),
                 new Label(u"Small 12/16, secondary"_s, Type::small, &Colors::textSecondary),
                 new Label(u"Caption 11/15 medium"_s, Type::caption, &Colors::textSecondary),
                 new Label(u"Micro 10/14"_s, Type::micro, &Colors::textSecondary), mono});
}

QWidget* textOn(const SurfaceSample& sample) {
  auto* surface = new Surface(sample.role);
  auto* box = new QHBoxLayout(surface);
  box->setContentsMargins(12, 6, 12, 6);
  box->addWidget(new Label(sample.name));
  const std::pair<QString, ColorRole> inks[] = {{u"secondary"_s, &Colors::textSecondary},
                                                {u"tertiary"_s, &Colors::textTertiary},
                                                {u"accent"_s, &Colors::accentText},
                                                {u"success"_s, &Colors::successText},
                                                {u"warning"_s, &Colors::warningText},
                                                {u"danger"_s, &Colors::dangerText},
                                                {u"info"_s, &Colors::infoText}};
  for (const auto& [name, role] : inks) box->addWidget(new Label(name, Type::small, role));
  return surface;
}

QWidget* texts() {
  std::vector<QWidget*> rows;
  const SurfaceSample samples[] = {{u"canvas"_s, &Colors::surfaceCanvas},   {u"chrome"_s, &Colors::surfaceChrome},
                                   {u"raised"_s, &Colors::surfaceRaised},   {u"overlay"_s, &Colors::surfaceOverlay},
                                   {u"dialog"_s, &Colors::surfaceDialog},   {u"inset"_s, &Colors::surfaceInset}};
  for (const SurfaceSample& sample : samples) rows.push_back(textOn(sample));
  return column(rows);
}

// Every colour of the tokens under its name.
QWidget* swatches() {
  auto* holder = new QWidget;
  auto* grid = new QGridLayout(holder);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(6);
  int place = 0;
  const auto add = [&](const QString& name, const QColor& color) {
    grid->addWidget(column({new Swatch(color, {78, 22}, 4), new Label(name.section(u'.', -1), Type::micro,
                                                                      &Colors::textSecondary)}),
                    place / 10, place % 10);
    ++place;
  };
  const Colors& c = colors();
#define COLOR(field, path) add(QStringLiteral(path), c.field);
#include "shell/views/color_tokens.inc"
#undef COLOR
  for (size_t series = 0; series < c.chart.size(); ++series) add(u"series %1"_s.arg(series + 1), c.chart[series]);
  return holder;
}

QWidget* radii() {
  std::vector<QWidget*> all;
  for (const int radius : {metrics().radiusPicture, metrics().radiusSmall, metrics().radiusControl,
                           metrics().radiusCard, metrics().radiusPanel, metrics().radiusDialog})
    all.push_back(column({new Swatch(colors().surfaceRaised, {38, 38}, radius), caption(QString::number(radius))}));
  return row(all);
}

class IconSheet final : public QWidget {
 public:
  IconSheet() : names_(QDir(u":/sorvan/icons"_s).entryList({u"*.svg"_s})) { setFixedSize(860, 20 * (rows() + 1)); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    for (int index = 0; index < names_.size(); ++index)
      paintIcon(painter, names_[index].chopped(4), QRectF(24.0 * (index % kColumns), 20.0 * (index / kColumns), 20, 20),
                metrics().iconRegular, {colors().textSecondary});
  }

 private:
  static constexpr int kColumns = 34;
  int rows() const { return static_cast<int>(names_.size()) / kColumns; }
  QStringList names_;
};

}  // namespace

std::unique_ptr<QWidget> foundationsSheet() {
  auto sheet = emptySheet(u"foundations"_s, u"Foundations"_s);
  auto* grid = new QGridLayout;
  grid->setSpacing(14);
  grid->addWidget(column({caption(u"Type"_s), typeScale()}), 0, 0, Qt::AlignTop);
  grid->addWidget(column({caption(u"Text on surfaces"_s), texts()}), 0, 1, Qt::AlignTop);
  grid->addWidget(column({caption(u"Colours"_s), swatches()}), 1, 0, 1, 2);
  grid->addWidget(column({caption(u"Radii"_s), radii()}), 2, 0, 1, 2);
  grid->addWidget(column({caption(u"Icons"_s), new IconSheet}), 3, 0, 1, 2);
  fillSheet(*sheet, grid);
  return sheet;
}

}  // namespace sorvan::views
