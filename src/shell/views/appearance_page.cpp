#include "shell/views/appearance_page.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>

#include "shell/views/painting.h"
#include "shell/views/settings_column.h"
#include "shell/views/texts.h"
#include "shell/views/touch.h"

namespace sorvan::views {

namespace {

struct Share {
  double left, top, width, height;
};

QRectF part(const QRectF& area, const Share& share) {
  return {area.left() + share.left * area.width(), area.top() + share.top * area.height(), share.width * area.width(),
          share.height * area.height()};
}

// The window of a look, small: sidebar, two pictures, dock.
void paintMiniature(QPainter& painter, const QRectF& area, Look look) {
  const Colors& c = Theme::instance().colorsOf(look);
  painter.fillRect(area, c.surfaceCanvas);
  painter.fillRect(part(area, {0, 0, 0.3, 1}), c.surfaceChrome);
  QColor dim = c.accentFill;
  dim.setAlphaF(0.75F);
  paintPanel(painter, part(area, {0.36, 0.14, 0.27, 0.3}), 2, c.accentFill);
  paintPanel(painter, part(area, {0.67, 0.14, 0.27, 0.3}), 2, dim);
  paintPanel(painter, part(area, {0.36, 0.68, 0.58, 0.2}), 4, c.surfaceRaised);
  paintPanel(painter, part(area, {0.76, 0.72, 0.15, 0.12}), 2, c.accentFill);
}

// A choice of the look: its picture over its name; the radio button takes the keyboard.
class LookCard final : public QAbstractButton {
 public:
  LookCard(Appearance appearance, const QString& name) : appearance_(appearance) {
    setText(name);
    setAccessibleName(name);
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setFixedSize(140, 126);
  }
  Appearance appearance() const { return appearance_; }

 protected:
  void paintEvent(QPaintEvent*) override {
    const Colors& c = colors();
    QPainter painter(this);
    paintTouch(painter, rect(), metrics().radiusCard + 3, *this);
    const QRectF picture(4, 4, 132, 86);
    painter.save();
    QPainterPath shape;
    shape.addRoundedRect(picture, metrics().radiusCard, metrics().radiusCard);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(shape);
    paintMiniature(painter, picture, appearance_ == Appearance::dark ? Look::dark : Look::light);
    if (appearance_ == Appearance::system) {
      QPainterPath half;
      half.addPolygon(QPolygonF({picture.topRight(), picture.bottomRight(), picture.bottomLeft()}));
      painter.setClipPath(half, Qt::IntersectClip);
      paintMiniature(painter, picture, Look::dark);
    }
    painter.restore();
    paintRing(painter, picture, metrics().radiusCard, 1, c.controlBorder);
    if (isChecked()) paintRing(painter, picture.adjusted(-4, -4, 4, 4), metrics().radiusCard + 3, 2, c.accentRing);
    const int words = textWidth(text(), fontFor(Type::body));
    const int x = (width() - words - 22) / 2;
    const QRectF dot(x, 103, 16, 16);
    if (!isChecked())
      paintRing(painter, dot, 8, 1.5, c.controlBorderStrong);
    else
      paintPanel(painter, dot, 8, c.accentFill),
          paintPanel(painter, dot.adjusted(4.5, 4.5, -4.5, -4.5), 4, c.textOnAccent);
    paintText(painter, QRect(x + 22, 101, words + 2, 20),
              {text(), fontFor(Type::body, isChecked() ? Weight::medium : Weight::regular), c.textPrimary});
  }

 private:
  Appearance appearance_;
};

}  // namespace

AppearancePage::AppearancePage(SettingsPresenter& settings, QWidget* parent) : QWidget(parent) {
  QVBoxLayout* column = settingsColumn(*this, texts::appearanceTitle());
  column->addSpacing(14);
  auto* row = new QHBoxLayout;
  row->setSpacing(12);
  const std::pair<Appearance, QString> choices[] = {{Appearance::system, texts::appearanceSystem()},
                                                    {Appearance::light, texts::appearanceLight()},
                                                    {Appearance::dark, texts::appearanceDark()}};
  for (const auto& [appearance, name] : choices) {
    auto* card = new LookCard(appearance, name);
    card->setChecked(settings.appearance() == appearance);
    connect(card, &LookCard::toggled, &settings, [&settings, chosen = appearance](bool on) {
      if (on && settings.appearance() != chosen) settings.setAppearance(chosen);
    });
    connect(&settings, &SettingsPresenter::appearanceChanged, card, [card, &settings] {
      if (settings.appearance() == card->appearance()) card->setChecked(true);
    });
    row->addWidget(card);
  }
  row->addStretch(1);
  column->addLayout(row);
  column->addStretch(1);
}

}  // namespace sorvan::views
