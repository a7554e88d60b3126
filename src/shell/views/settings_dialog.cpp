#include "shell/views/settings_dialog.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QRadioButton>
#include <QStackedWidget>

#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/focus_ring.h"
#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/sidebar_view.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kListWidth = 196;
constexpr QSize kWindow(820, 700);
constexpr QSize kSmallestWindow(640, 420);

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
    setFixedSize(140, 126);
  }
  Appearance appearance() const { return appearance_; }

 protected:
  void paintEvent(QPaintEvent*) override {
    const Colors& c = colors();
    QPainter painter(this);
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

QVBoxLayout* pageColumn(QWidget* page, const QString& title) {
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(26, 22, 26, 22);
  column->setSpacing(0);
  column->addWidget(new Label(title, Type::large));
  return column;
}

}  // namespace

KeyPage::KeyPage(SettingsPresenter& settings, QWidget* parent)
    : QWidget(parent),
      settings_(settings),
      explanation_(new Paragraph({}, Type::small, &Colors::textTertiary)),
      statusIcon_(new IconView(u"circle-check"_s, metrics().iconRegular, &Colors::successText)),
      status_(new Label),
      field_(new TextField(settings.keyPage().title)),
      save_(new Button(texts::save(), ButtonVariant::primary)),
      remove_(new Button(texts::removeKey())),
      messageIcon_(new IconView(u"info"_s, metrics().iconSmall, &Colors::textSecondary)),
      message_(new Paragraph({}, Type::small, &Colors::textSecondary)) {
  QVBoxLayout* column = pageColumn(this, settings.keyPage().title);
  column->addSpacing(4);
  column->addWidget(explanation_);
  column->addSpacing(18);
  auto* state = new QHBoxLayout;
  state->setSpacing(8);
  status_->setWeight(Weight::medium);
  state->addWidget(statusIcon_);
  state->addWidget(status_, 1);
  column->addLayout(state);
  column->addSpacing(12);
  field_->setIconName(u"key-round"_s);
  field_->setEchoMode(QLineEdit::Password);
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  row->addWidget(field_, 1);
  row->addWidget(save_);
  column->addLayout(row);
  column->addSpacing(10);
  remove_->setControlSize(ControlSize::compact);
  column->addWidget(remove_, 0, Qt::AlignLeft);
  column->addSpacing(16);
  auto* said = new QHBoxLayout;
  said->setSpacing(7);
  said->addWidget(messageIcon_, 0, Qt::AlignTop);
  said->addWidget(message_, 1);
  column->addLayout(said);
  column->addStretch(1);
  connect(save_, &Button::clicked, this, &KeyPage::save);
  connect(field_, &QLineEdit::returnPressed, this, &KeyPage::save);
  connect(field_, &QLineEdit::textChanged, this, &KeyPage::refresh);
  connect(remove_, &Button::clicked, this, [this] { settings_.removeKey(); });
  connect(&settings_, &SettingsPresenter::keyPageChanged, this, &KeyPage::refresh);
  refresh();
}

void KeyPage::save() {
  if (field_->text().trimmed().isEmpty()) return;
  const QString key = field_->text();
  field_->clear();
  settings_.saveKey(key);
}

void KeyPage::refresh() {
  const KeyPageDisplay display = settings_.keyPage();
  explanation_->setParagraph(display.explanation);
  status_->setText(display.status);
  statusIcon_->setIcon(display.saved ? u"circle-check"_s : u"key-round"_s,
                       display.saved ? &Colors::successText : &Colors::textTertiary);
  field_->setPlaceholderText(display.prompt);
  field_->setEnabled(!display.busy);
  save_->setEnabled(!display.busy && !field_->text().trimmed().isEmpty());
  remove_->setVisible(display.saved);
  remove_->setEnabled(!display.busy);
  message_->setParagraph(display.message);
  message_->setVisible(!display.message.isEmpty());
  messageIcon_->setVisible(!display.message.isEmpty());
}

AppearancePage::AppearancePage(SettingsPresenter& settings, QWidget* parent) : QWidget(parent) {
  QVBoxLayout* column = pageColumn(this, texts::appearanceTitle());
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

SettingsDialog::SettingsDialog(SettingsPresenter& settings, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowCloseButtonHint), pages_(new QStackedWidget) {
  setWindowTitle(texts::settingsTitle());
  setAccessibleName(texts::settingsTitle());
  setAttribute(Qt::WA_DeleteOnClose);
  resize(kWindow);
  setMinimumSize(kSmallestWindow);
  pages_->addWidget(new KeyPage(settings));
  pages_->addWidget(new AppearancePage(settings));
  auto* list = new QVBoxLayout;
  list->setContentsMargins(10, 18, 10, 10);
  list->setSpacing(0);
  auto* title = new Label(texts::settingsTitle(), Type::title);
  title->setContentsMargins(8, 0, 8, 12);
  list->addWidget(title);
  const std::pair<QString, QString> entries[] = {{settings.keyPage().title, u"key-round"_s},
                                                 {texts::appearanceTitle(), u"sliders-horizontal"_s}};
  for (const auto& [name, icon] : entries) {
    SidebarRow row;
    row.title = name;
    row.iconName = icon;
    auto* button = new SidebarRowButton(row, nullptr);
    connect(button, &SidebarRowButton::clicked, this,
            [this, index = static_cast<int>(rows_.size())] { showPage(index); });
    list->addWidget(button);
    rows_.push_back(button);
  }
  list->addStretch(1);
  auto* side = new QWidget;
  side->setLayout(list);
  side->setFixedWidth(kListWidth);
  auto* whole = new QHBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->setSpacing(0);
  whole->addWidget(side);
  whole->addWidget(pages_, 1);
  new FocusRing(this);
  showPage(0);
}

void SettingsDialog::showPage(int index) {
  pages_->setCurrentIndex(index);
  for (size_t number = 0; number < rows_.size(); ++number) {
    SidebarRow row;
    row.title = rows_[number]->text();
    row.iconName = number == 0 ? u"key-round"_s : u"sliders-horizontal"_s;
    row.current = static_cast<int>(number) == index;
    rows_[number]->setRow(row);
  }
}

void SettingsDialog::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceDialog);
  painter.fillRect(QRect(0, 0, kListWidth, height()), colors().surfaceChrome);
  painter.fillRect(QRect(kListWidth - 1, 0, 1, height()), colors().lineSubtle);
}

}  // namespace sorvan::views
