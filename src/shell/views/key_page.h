// The page of the settings with the fal.ai key.
#pragma once

#include <QWidget>

#include "shell/account_presenter.h"
#include "shell/settings_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

class Button;
class PayChoices;
class IconView;
class Label;
class Paragraph;
class TextField;

// The field never shows the saved key.
class KeyPage final : public QWidget {
  Q_OBJECT

 public:
  // Without an account, nothing is said of who pays.
  explicit KeyPage(SettingsPresenter& settings, AccountPresenter* account, QWidget* parent = nullptr);

 private:
  void refresh();
  void save();

  SettingsPresenter& settings_;
  Paragraph* explanation_;
  IconView* statusIcon_;
  Label* status_;
  TextField* field_;
  Button* save_;
  Button* remove_;
  IconView* messageIcon_;
  Paragraph* message_;
};

}  // namespace sorvan::views
