// The strip at the top of the window: the menu bar, and what goes on.
#pragma once

#include <QWidget>

#include "shell/account_presenter.h"

#include "shell/views/room.h"

class QMenuBar;

namespace sorvan::views {

class BalanceBadge;
class IconButton;

// “2 generating” in a pill with a spinner; a press opens the history.
class ActivityPill;

class MenuStrip final : public QWidget {
  Q_OBJECT

 public:
  explicit MenuStrip(QWidget* parent = nullptr);
  QMenuBar& bar() { return *bar_; }
  // Empty hides the pill.
  void setActivity(const QString& text);
  void setBalance(const BadgeDisplay& balance);

 Q_SIGNALS:
  void activityPressed();
  // The balance or the button behind it.
  void accountPressed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  // From button to button as they stand, whenever they were added.
  bool focusNextPrevChild(bool next) override;

 private:
  std::vector<QWidget*> stops() const;

  QMenuBar* bar_;
  ActivityPill* activity_;
  BalanceBadge* balance_;
  IconButton* account_;
};

}  // namespace sorvan::views
