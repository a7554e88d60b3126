#pragma once

#include "shell/lineage.h"
#include "shell/once_per_turn.h"

#include <QObject>

namespace sorvan::shell {

class JobDisplays;
class WorkspaceState;

// One row of the tree as it is shown. Texts are final; empty ones are not drawn.
struct LineageRowDisplay {
  QUuid id;
  int depth = 0;
  int parentRow = -1;  // the row above to which its line leads; -1 for a root
  bool deleted = false;
  bool trashed = false;
  bool openedFrom = false;
  bool inspected = false;
  QString name;       // the file's, or “Deleted”
  QString label;      // “Original”, “Edited from”, “Shot Set”
  QString detail;     // the model, that it was imported, or what a deleted row says
  QString statusText; // empty for a draft
  QString statusToken;
  QString dateText;
  QString durationText;  // of a clip or a sound
  QString thumbnailPath;
  QString filePath;        // of a picture, where its thumbnail is missing
  QString accessibleName;  // ‘{name}, {label}, opened from’
};

// The family of one item as a tree. Main thread.
class LineagePresenter : public QObject {
  Q_OBJECT

 public:
  // All of these outlive the presenter.
  LineagePresenter(core::LibraryStore& store, WorkspaceState& state, JobDisplays& displays, QObject* parent = nullptr);

  // The item that the tree is opened from; it is inspected at first.
  void open(QUuid asset);
  QUuid asset() const { return asset_; }
  QUuid inspectedID() const;
  const std::vector<LineageRowDisplay>& rows() const { return rows_; }
  int indexOf(QUuid item) const;
  QString countText() const;
  // Shows the item in the inspector; a row without one cannot be inspected.
  void inspect(QUuid item);
  // Whether the row can be opened large.
  bool canOpen(QUuid item) const;

 Q_SIGNALS:
  void changed();

 private:
  void refresh();
  LineageRowDisplay displayOf(const LineageRow& row) const;
  void markInspected();

  core::LibraryStore& store_;
  WorkspaceState& state_;
  JobDisplays& displays_;
  QUuid asset_;
  std::vector<LineageRowDisplay> rows_;
  OncePerTurn refreshSoon_{[this] { refresh(); }};
};

}  // namespace sorvan::shell
