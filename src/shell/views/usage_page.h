// The page of the settings about usage counts and newer builds.
#pragma once

#include <QWidget>

#include "shell/views/room.h"

class QPlainTextEdit;

namespace sorvan::shell {
class UpdatesPresenter;
}

namespace sorvan::views {

class Button;
class Label;
class Paragraph;
class Switch;

// Sharing is off until the switch is turned on; what would be sent stands under it, word for word. The presenter
// outlives the page.
class UsagePage final : public QWidget {
  Q_OBJECT

 public:
  explicit UsagePage(UpdatesPresenter& updates, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* makeUsage();
  QWidget* makeUpdates();
  void refresh();

  UpdatesPresenter& updates_;
  Switch* sharing_ = nullptr;
  Label* heading_ = nullptr;
  QPlainTextEdit* report_ = nullptr;
  Label* version_ = nullptr;
  Button* check_ = nullptr;
  Paragraph* state_ = nullptr;
  Button* download_ = nullptr;
};

}  // namespace sorvan::views
