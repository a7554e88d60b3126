// The settings window.
#pragma once

#include <QDialog>

#include "shell/settings_presenter.h"
#include "shell/views/room.h"

class QStackedWidget;

namespace sorvan::views {

class Button;
class IconView;
class Label;
class Paragraph;
class SidebarRowButton;
class TextField;

// The page of the fal.ai key. The field never shows the saved key.
class KeyPage final : public QWidget {
  Q_OBJECT

 public:
  explicit KeyPage(SettingsPresenter& settings, QWidget* parent = nullptr);

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

// System, light or dark, each as a small picture of a window.
class AppearancePage final : public QWidget {
  Q_OBJECT

 public:
  explicit AppearancePage(SettingsPresenter& settings, QWidget* parent = nullptr);
};

// A window of its own that does not block the others. The presenter outlives it.
class SettingsDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit SettingsDialog(SettingsPresenter& settings, QWidget* parent = nullptr);

  void showPage(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QStackedWidget* pages_;
  std::vector<SidebarRowButton*> rows_;
};

}  // namespace sorvan::views
