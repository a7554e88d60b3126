#include "shell/views/settings_column.h"

#include <QVBoxLayout>

#include "shell/views/labels.h"

namespace sorvan::views {

QVBoxLayout* settingsColumn(QWidget& page, const QString& title) {
  auto* column = new QVBoxLayout(&page);
  column->setContentsMargins(26, 22, 26, 22);
  column->setSpacing(0);
  column->addWidget(new Label(title, Type::large));
  return column;
}

}  // namespace sorvan::views
