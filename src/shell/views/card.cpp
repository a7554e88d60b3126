#include "shell/views/card.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/painting.h"

namespace sorvan::views {

Card::Card(ColorRole fill, ColorRole line, int Metrics::*corner) : fill_(fill), line_(line), corner_(corner) {}

void Card::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintPanel(painter, rect(), metrics().*corner_, colors().*fill_, colors().*line_);
}

NoticeSlot::NoticeSlot(QWidget* parent) : QWidget(parent), row_(new QHBoxLayout(this)) {
  row_->setContentsMargins(0, 10, 0, 0);
  setVisible(false);
}

void NoticeSlot::show(AlertTone tone, const QString& words, const QString& button) {
  if (tone == tone_ && words == words_ && button == button_) return;
  tone_ = tone;
  words_ = words;
  button_ = button;
  clearLayout(*row_);
  setVisible(!words.isEmpty());
  if (words.isEmpty()) return;
  bar_ = new NoticeBar(tone, words);
  row_->addWidget(bar_);
  if (!button.isEmpty()) connect(bar_->addAction(button), &Button::clicked, this, &NoticeSlot::pressed);
  QAccessibleEvent announcement(bar_, QAccessible::Alert);
  QAccessible::updateAccessibility(&announcement);
}

void clearLayout(QLayout& layout) {
  while (QLayoutItem* old = layout.takeAt(0)) {
    if (QWidget* widget = old->widget()) {
      // Its own press may be what takes it away.
      widget->setParent(nullptr);
      widget->deleteLater();
    }
    if (old->layout()) clearLayout(*old->layout());
    delete old;
  }
}

void rebuildKeepingFocus(QWidget& part, const std::function<void()>& rebuild) {
  QWidget* focused = QApplication::focusWidget();
  const bool inside = focused && part.isAncestorOf(focused);
  const QString name = inside ? focused->accessibleName() : QString();
  rebuild();
  if (!inside) return;
  for (QWidget* candidate : part.findChildren<QWidget*>())
    if (candidate->focusPolicy() != Qt::NoFocus && candidate->accessibleName() == name) {
      candidate->show();
      return candidate->setFocus(Qt::OtherFocusReason);
    }
}

}  // namespace sorvan::views
