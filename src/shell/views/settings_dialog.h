// The settings window.
#pragma once

#include <QDialog>

#include "shell/presenters.h"
#include "shell/views/room.h"

class QStackedWidget;
class QVBoxLayout;

namespace sorvan::views {

class SidebarRowButton;

enum class SettingsPage { account, key, appearance, watchedFolders, commands, usage };

// A window of its own that does not block the others. The presenters outlive it; a page without its presenter is absent.
class SettingsDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit SettingsDialog(const Presenters& presenters, QWidget* parent = nullptr);

  // Nothing happens for a page that is not there.
  void showPage(SettingsPage page);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Entry {
    SettingsPage page;
    SidebarRowButton* row;
  };
  void addPages(const Presenters& presenters);
  void addPage(SettingsPage page, const QString& title, const QString& iconName, QWidget* contents);

  QVBoxLayout* list_;
  QStackedWidget* pages_;
  std::vector<Entry> entries_;
};

}  // namespace sorvan::views
