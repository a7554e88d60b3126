// What can be done with several selected items, in the place of the filter row.
#pragma once

#include <QWidget>
#include <vector>

#include "shell/actions.h"
#include "shell/presenters.h"
#include "shell/views/room.h"

namespace sorvan::views {

class Button;
class IconButton;
class Label;
class Menus;

// Shows itself to be needed by `isNeeded`; its owner gives it the filter row's place meanwhile. What it is given
// outlives it.
class SelectionBar final : public QWidget {
  Q_OBJECT

 public:
  SelectionBar(const Menus& menus, Presenters presenters, QWidget* parent = nullptr);

  // At least two items are selected.
  bool isNeeded() const { return count_ > 1; }

 Q_SIGNALS:
  void neededChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct ActionButton {
    ActionId id;
    QString iconName;
    Button* button = nullptr;
  };
  void addActions();
  void addStatus();
  void refresh();
  void fit();
  void openStatuses();
  QWidget* iconAction(ActionId id, const QString& iconName);

  const Menus& menus_;
  Presenters on_;
  qsizetype count_ = 0;
  Label* number_;
  Label* word_;
  std::vector<ActionButton> actions_;
  Button* status_ = nullptr;
  std::vector<std::pair<ActionId, QWidget*>> icons_;
};

}  // namespace sorvan::views
