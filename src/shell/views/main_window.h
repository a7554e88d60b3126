// The window of the program.
#pragma once

#include <QMainWindow>
#include <QPointer>

#include "shell/actions.h"
#include "shell/presenters.h"
#include "shell/workspace_mode.h"
#include "shell/views/room.h"
#include "shell/workspace_state.h"

class QMenuBar;
class QStackedWidget;

namespace sorvan::views {

class AlertHost;
class DesktopFolderChooser;
class GallerySource;
class HealthDialog;
class HistorySource;
class LibraryView;
struct PageTitle;
class MenuStrip;
class Immersion;
class Menus;
class SequenceSource;
class SettingsDialog;
class ViewerDesk;
class WelcomeView;

// Binds the presenters to their views: it shows what they say and forwards what people do. The presenters outlive it.
class MainWindow final : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(Presenters presenters, QWidget* parent = nullptr);
  ~MainWindow() override;

  LibraryView& library() { return *library_; }
  ViewerDesk& viewer() { return *viewer_; }

 Q_SIGNALS:
  // The first picture of the window is on the screen.
  void firstPainted();
  // A menu, a key or a button asked for what nobody carries out. Never, or the entry should not be there.
  void actionUnhandled(sorvan::shell::ActionId id);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void build();
  void placeWindow();
  void rememberPlace();
  void bindWindow();
  void bindAccount();
  void bindSidebar();
  void bindGallery();
  void bindFilters();
  void bindInspector();
  void bindHistory();
  void bindAsset();
  void bindMarking();
  void bindActions();
  void refreshPage();
  void refreshToolbar();
  PageTitle ownTitle() const;
  QString titleOfMode(const WorkspaceMode& mode) const;
  std::vector<ModeKind> tabs() const;
  void refreshLayout();
  void refreshFilters();
  void offerSorts(QPoint globalPosition);
  void openAsset(QUuid item, Autoplay autoplay);
  void openInSequence(QUuid item);
  void openCell(QUuid cell);
  void stepAsset(int direction);
  void performForWindow(ActionId id);
  void editFocused(ActionId id);
  void writeAboutItem(ActionId id);
  void chooseDestination();
  void focusSearch();
  void askProjectName(const QString& key, const QString& name);
  void openSettings();
  void openAccount();
  void openHealth();
  void toggleFullScreen();
  void goBack();
  void stepBack();

  Presenters on_;
  std::unique_ptr<GallerySource> wallSource_;
  std::unique_ptr<SequenceSource> sequenceSource_;
  std::unique_ptr<HistorySource> historySource_;
  std::unique_ptr<DesktopFolderChooser> folders_;
  QStackedWidget* pages_ = nullptr;
  WelcomeView* welcome_ = nullptr;
  LibraryView* library_ = nullptr;
  MenuStrip* strip_ = nullptr;
  Menus* menus_ = nullptr;
  Immersion* immersion_ = nullptr;
  ViewerDesk* viewer_ = nullptr;
  QPointer<SettingsDialog> settings_;
  QPointer<HealthDialog> health_;
  bool painted_ = false;
  bool mayClose_ = false;
};

}  // namespace sorvan::views
