#include "shell/views/choice_field.h"

#include <QMenu>
#include <QPainter>

#include "shell/views/icons.h"
#include "shell/views/painting.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kPad = 10;
constexpr int kChevron = 14;
}  // namespace

ChoiceField::ChoiceField(const QString& name, QWidget* parent) : QComboBox(parent) {
  setAccessibleName(name);
  setFont(fontFor(Type::body));
  setAttribute(Qt::WA_Hover);
  setFixedHeight(metrics().field);
}

QSize ChoiceField::sizeHint() const {
  int widest = 80;
  for (int index = 0; index < count(); ++index) widest = std::max(widest, textWidth(itemText(index), font()));
  return {widest + 2 * kPad + kChevron + 8, metrics().field};
}

void ChoiceField::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  QColor line = underMouse() ? c.textSecondary : c.controlFieldBorder;
  if (!isEnabled()) line = c.lineDefault;
  paintPanel(painter, rect(), metrics().radiusControl, c.surfaceInset, line);
  const QRect words = rect().adjusted(kPad, 0, -kPad - kChevron - 8, 0);
  paintText(painter, words, {currentText(), font(), isEnabled() ? c.textPrimary : c.textDisabled});
  paintIcon(painter, u"chevrons-up-down"_s, QRectF(width() - kPad - kChevron, 0, kChevron, height()), kChevron,
            {isEnabled() ? c.textSecondary : c.textDisabled});
}

// The chosen value lies over the field, as the pointer expects it.
void ChoiceField::showPopup() {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setMinimumWidth(width());
  for (int index = 0; index < count(); ++index) {
    QAction* value = menu->addAction(itemText(index), this, [this, index] {
      setCurrentIndex(index);
      Q_EMIT activated(index);
    });
    value->setCheckable(true);
    value->setChecked(index == currentIndex());
  }
  QAction* chosen = menu->actions().value(currentIndex());
  if (chosen) menu->setActiveAction(chosen);
  menu->popup(mapToGlobal(QPoint(0, 0)), chosen);
}

}  // namespace sorvan::views
