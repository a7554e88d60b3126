#include "shell/views/alert_dialog.h"

#include <QBitmap>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QScrollArea>

#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/focus_ring.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kTallestText = 240;

// Dims the window while a question stands over it, and keeps to the window's size.
class Scrim final : public QWidget {
 public:
  explicit Scrim(QWidget* window) : QWidget(window) {
    setGeometry(window->rect());
    window->installEventFilter(this);
    show();
    raise();
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize) setGeometry(static_cast<QWidget*>(watched)->rect());
    return false;
  }

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), colors().surfaceScrim); }
};

ButtonVariant variantOf(AlertButtonRole role) {
  if (role == AlertButtonRole::primary) return ButtonVariant::primary;
  return role == AlertButtonRole::destructive ? ButtonVariant::destructive : ButtonVariant::secondary;
}

// A long error scrolls inside the alert, so that the buttons stay on the screen.
QWidget* wordsOf(const QString& text, int width) {
  auto* words = new Paragraph(text, Type::body, &Colors::textSecondary);
  words->setSelectable(true);
  const int height = words->heightForWidth(width);
  if (height <= kTallestText) {
    words->setMinimumHeight(height);
    return words;
  }
  auto* scroll = new QScrollArea;
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setAccessibleName(texts::alertMessage());
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setWidget(words);
  scroll->setFixedHeight(kTallestText);
  scroll->viewport()->setAutoFillBackground(false);
  words->setAutoFillBackground(false);
  return scroll;
}

}  // namespace

AlertDialog::AlertDialog(const Alert& alert, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), alert_(alert) {
  setWindowTitle(alert.title);
  setAccessibleName(alert.title);
  setAccessibleDescription(alert.text);
  setAttribute(Qt::WA_DeleteOnClose);
  setFixedWidth(metrics().alertWidth);
  auto* row = new QHBoxLayout;
  row->setSpacing(14);
  row->addWidget(new IconView(iconOf(alert.tone), 24, colorOf(alert.tone)), 0, Qt::AlignTop);
  auto* column = new QVBoxLayout;
  column->setSpacing(8);
  auto* title = new Paragraph(alert.title, Type::title);
  column->addWidget(title);
  if (!alert.text.isEmpty()) column->addWidget(wordsOf(alert.text, metrics().alertWidth - 48 - 38));
  column->addStretch(1);
  row->addLayout(column, 1);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(8);
  buttons->addStretch(1);
  for (int index = static_cast<int>(alert.buttons.size()) - 1; index >= 0; --index) {
    const AlertButton& spec = alert.buttons[static_cast<size_t>(index)];
    auto* button = new Button(spec.title, variantOf(spec.role));
    button->setAutoDefault(true);
    if (index == 0) button->setDefault(true), first_ = button;
    connect(button, &Button::clicked, this, [this, index] { answer(index); });
    buttons->addWidget(button);
  }
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(24, 22, 24, 20);
  all->setSpacing(18);
  all->addLayout(row);
  all->addLayout(buttons);
  resize(metrics().alertWidth, all->totalHeightForWidth(metrics().alertWidth));
  new FocusRing(this);
}

void AlertDialog::answer(int button) {
  if (done_) return;
  done_ = true;
  hide();
  Q_EMIT answered(alert_.id, button);
  close();
}

void AlertDialog::withdraw() {
  done_ = true;
  close();
}

void AlertDialog::reject() {
  if (done_) return QDialog::reject();
  for (size_t index = 0; index < alert_.buttons.size(); ++index) {
    if (alert_.buttons[index].isEscape) return answer(static_cast<int>(index));
  }
  if (alert_.buttons.size() == 1) answer(0);
}

void AlertDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (first_) first_->setFocus();
  const QRect over(parentWidget()->mapToGlobal(QPoint(0, 0)), parentWidget()->size());
  move(over.center() - QPoint(width() / 2, height() / 2 + over.height() / 12));
}

void AlertDialog::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  QBitmap shape(size());
  shape.clear();
  QPainter painter(&shape);
  painter.setBrush(Qt::color1);
  painter.drawRoundedRect(rect().adjusted(0, 0, -1, -1), metrics().radiusDialog, metrics().radiusDialog);
  painter.end();
  setMask(shape);
}

void AlertDialog::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceDialog);
  paintPanel(painter, rect(), metrics().radiusDialog, {}, colors().lineDefault);
}

AlertHost::AlertHost(AlertsPresenter& alerts, QWidget* window) : QObject(window), alerts_(alerts), window_(window) {
  connect(&alerts_, &AlertsPresenter::currentChanged, this, &AlertHost::refresh);
  refresh();
}

void AlertHost::refresh() {
  const std::optional<Alert>& current = alerts_.current();
  if (dialog_ && (!current || dialog_->id() != current->id)) dialog_->withdraw(), dialog_.clear();
  if (!current) {
    if (scrim_) scrim_->deleteLater();
    return;
  }
  if (dialog_) return;
  if (!scrim_) scrim_ = new Scrim(window_);
  dialog_ = new AlertDialog(*current, window_);
  connect(dialog_, &AlertDialog::answered, &alerts_, &AlertsPresenter::answer);
  dialog_->open();
}

}  // namespace sorvan::views
