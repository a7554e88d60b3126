#pragma once

#include "shell/gallery_filter.h"
#include "shell/workspace_mode.h"

#include <QObject>
#include <QSet>

namespace sorvan::shell {

// The location of everything in the sidebar, beside the keys of projects (their uppercase ids).
inline const QString allMediaLocation = QStringLiteral("library");
inline const QString favoritesLocation = QStringLiteral("favorites");
inline const QString inboxLocation = QStringLiteral("inbox");
inline const QString trashLocation = QStringLiteral("trash");

// Where one window is and what is selected in it. Nothing of it is persisted; it dies with the window. Main thread.
class WorkspaceState : public QObject {
  Q_OBJECT

 public:
  explicit WorkspaceState(QObject* parent = nullptr);

  const QString& location() const { return location_; }
  const WorkspaceMode& mode() const { return mode_; }
  // What the gallery shows; its location is the one above.
  const GalleryFilter& filter() const { return filter_; }
  // Selected cells of the gallery, items and jobs alike.
  const QSet<QUuid>& selection() const { return selection_; }
  // The one item or job that the inspector shows; null when there is none.
  QUuid inspectedId() const { return inspectedId_; }
  bool sidebarVisible() const { return sidebarVisible_; }
  bool inspectorVisible() const { return inspectorVisible_; }
  bool filtersVisible() const { return filtersVisible_; }
  // Wished height of a gallery row in pixels at 100 %, 96 to 360.
  int rowHeight() const { return rowHeight_; }
  bool canGoBack() const;

  // A location opens in its gallery.
  void setLocation(const QString& location);
  // Takes over everything but the location.
  void setFilter(const GalleryFilter& filter);
  // Back to everything in this location; the sort stays.
  void clearFilters();
  void setMode(const WorkspaceMode& mode);
  // Selects exactly these cells; with one, it is inspected too.
  void select(const QSet<QUuid>& cells);
  void inspect(QUuid cell);
  // Shows a job's request and outputs; Back returns to the mode that was left.
  void openGeneration(QUuid job, int output);
  void finishGeneration();
  void goBack();
  void setSidebarVisible(bool visible);
  void setInspectorVisible(bool visible);
  void setFiltersVisible(bool visible);
  void setRowHeight(int height);
  // The start of a window: all media, gallery, nothing selected. Called when another workspace opens.
  void reset();

 Q_SIGNALS:
  void locationChanged();
  void filterChanged();
  void modeChanged();
  void selectionChanged();
  void inspectedChanged();
  // Sidebar, inspector, filter row or row height.
  void layoutChanged();

 private:
  QString location_ = allMediaLocation;
  GalleryFilter filter_;
  WorkspaceMode mode_;
  WorkspaceMode generationReturnMode_;
  QSet<QUuid> selection_;
  QUuid inspectedId_;
  bool sidebarVisible_ = true;
  bool inspectorVisible_ = true;
  bool filtersVisible_ = true;
  int rowHeight_ = 176;
};

}  // namespace sorvan::shell
