#pragma once

#include "shell/room.h"

#include "shell/window_place.h"
#include "shell/workspace_mode.h"

#include <QObject>
#include <QString>

#include <optional>
#include <vector>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class AlertsPresenter;
class WelcomePresenter;
class WorkspaceState;

// A line under the toolbar that stays while it is true.
struct Banner {
  QString text;         // empty: no banner
  QString actionTitle;  // empty: no button
  bool isWarning = true;
};

// The window as a whole: its title, its banner, and whether it may close. Main thread.
class WindowPresenter : public QObject {
  Q_OBJECT

 public:
  // All outlive the presenter. `applicationTitle` is “Sorvan Studio”, with “ (sandbox)” on the simulator.
  WindowPresenter(core::LibraryStore& store, WorkspaceState& state, AlertsPresenter& alerts, QString applicationTitle,
                  QObject* parent = nullptr);

  QString title() const;
  // Name of the window for assistive technology: the mode and the location.
  QString accessibleName() const;
  Banner banner() const;
  void performBannerAction();
  // The views of the location that the window has, in the order of their tabs.
  std::vector<ModeKind> modesHere() const;

  // The person closes the window or chooses Quit. Answers true, after `quitAgreed`, when the program may end now;
  // otherwise the question is on the screen, and `quitAgreed` follows a yes.
  bool requestQuit();

  // Whether a window of the program has the keyboard; the view tells.
  bool isInFront() const { return inFront_; }
  void setInFront(bool inFront);
  // Brings the window to the front, with the desktop's leave in `token` where it gave one.
  void comeForward(const QString& token = {});

  // Where the window stood when it was closed last; empty before the first time.
  std::optional<WindowPlace> rememberedPlace() const;
  // Written down at once; a failure costs only this convenience.
  void rememberPlace(const WindowPlace& place);

 Q_SIGNALS:
  void changed();
  // The program ends: the window hides, and the composition root ends what is at work.
  void quitAgreed();
  // The banner's button: the window opens Workspace Health.
  void healthRequested();
  // A second start of the program, or a card of the desktop, asks this one to come to the front.
  void raiseRequested(const QString& token = {});
  void inFrontChanged();

 private:
  core::LibraryStore& store_;
  WorkspaceState& state_;
  AlertsPresenter& alerts_;
  QString applicationTitle_;
  bool asking_ = false;
  bool inFront_ = true;
};

}  // namespace sorvan::shell
