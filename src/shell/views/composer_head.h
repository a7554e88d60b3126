// What stands in the dock's head beside the kind: who pays, where to save, commands.
#pragma once

#include <QAbstractButton>

#include "shell/composer_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

class ElidedLabel;
class IconView;

// A quiet button of an icon, a few dim words and a name: “Save to Coffee Launch”. It opens a menu below itself.
class HeadChoice final : public QAbstractButton {
  Q_OBJECT

 public:
  // `words` may be empty.
  HeadChoice(const QString& iconName, const QString& words, QWidget* parent = nullptr);

  void setValue(const QString& name);
  // What the button is for, where its words do not say; empty for nothing more.
  void setHelp(const QString& help);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString words_;
  ElidedLabel* value_;
};

// The Inbox and the projects, below the button. The presenter outlives the menu.
void openDestinationMenu(ComposerPresenter& composer, QWidget* button);

}  // namespace sorvan::views
