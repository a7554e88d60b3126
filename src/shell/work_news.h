#pragma once

#include "shell/room.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>

#include <vector>

namespace sorvan::generation {
class JobQueue;
}
namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

class JobDisplays;
class JobsPresenter;
class WindowPresenter;
class WorkspaceState;

// A card of the desktop's notification service. Plain text.
struct DesktopNews {
  QString title;
  QString text;
  QString actionTitle;
  bool operator==(const DesktopNews&) const = default;
};

// Shows cards on the desktop, one at a time: a new one takes the place of the last. Never waits, never fails loudly; a
// desktop without notifications shows nothing.
class NewsStand : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;
  virtual void show(const DesktopNews& news) = 0;
  virtual void withdraw() = 0;

 Q_SIGNALS:
  // The person asks for what the card tells of. `token` lets the window come to the front; it may be empty.
  void activated(const QString& token);
};

// Tells of jobs that end while the window is in the background: of each one, and of all when none is left. What the
// card tells of opens by a press on it: the outputs of one job, the history for several or for one that failed. A job
// that the person has cancelled is no news. Main thread.
class WorkNews : public QObject {
  Q_OBJECT

 public:
  // All outlive this object.
  struct Ports {
    core::LibraryStore& store;
    generation::JobQueue& queue;
    WorkspaceState& state;
    WindowPresenter& window;
    JobsPresenter& jobs;
    JobDisplays& displays;
    NewsStand& stand;
  };
  explicit WorkNews(Ports ports, QObject* parent = nullptr);

 private:
  void tell(QUuid job);
  DesktopNews newsOf(QUuid job) const;
  DesktopNews newsOfAll() const;
  void open();
  void forget();

  Ports ports_;
  std::vector<QUuid> ended_;  // since the window went to the background, in their order
};

}  // namespace sorvan::shell
