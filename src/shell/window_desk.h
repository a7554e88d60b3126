#pragma once

#include "shell/room.h"

#include "composer/command_router.h"

#include <QUuid>

#include <functional>

namespace sorvan::shell {

class WorkspaceState;

// Carries commands out in one window and its library. Main thread.
class WindowDesk final : public LibraryDesk {
 public:
  // The store, the queue and the window's state outlive the desk.
  struct Ports {
    core::LibraryStore& store;
    generation::JobQueue& queue;
    WorkspaceState& window;
    // Where a cell stands in the view that is in front; -1 for one that it does not show.
    std::function<int(const QUuid&)> placeOf;
    // Makes a project as one step to undo; throws SorvanError.
    std::function<QUuid(const QString& name)> makeProject;
  };
  explicit WindowDesk(Ports ports) : ports_(std::move(ports)) {}

  std::vector<QUuid> selection() const override;
  void showResults(const LibraryFilter& filter) override;
  void showGallery(const std::optional<QString>& location) override;
  void openContactSheet(const QUuid& sheet) override;
  void openComparison(const QUuid& comparison) override;
  void openLineage(const QUuid& asset) override;
  QUuid createProject(const QString& name) override;
  QUuid createContactSheet(const std::vector<AssetRef>& assets, const std::optional<QUuid>& project) override;
  std::optional<QUuid> enqueue(const Submission& submission) override;
  QDateTime localNow() const override;

 private:
  Ports ports_;
};

}  // namespace sorvan::shell
