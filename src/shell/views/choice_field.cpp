#include "shell/views/choice_field.h"

#include <QMenu>

#include "shell/views/theme.h"

namespace sorvan::views {

ChoiceField::ChoiceField(const QString& name, QWidget* parent) : QComboBox(parent) {
  setAccessibleName(name);
  setFixedHeight(metrics().field);
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
