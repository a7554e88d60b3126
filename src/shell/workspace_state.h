#pragma once

#include "shell/contact_sheet_source.h"
#include "shell/gallery_filter.h"
#include "shell/workspace_mode.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <optional>
#include <set>
#include <vector>

namespace sorvan::shell {

// The location of everything in the sidebar, beside the keys of projects (their uppercase ids).
inline const QString allMediaLocation = QStringLiteral("library");
inline const QString recentLocation = QStringLiteral("recent");
inline const QString favoritesLocation = QStringLiteral("favorites");
inline const QString inboxLocation = QStringLiteral("inbox");
inline const QString trashLocation = QStringLiteral("trash");

enum class Autoplay { no, yes };

// Where one window is and what is selected in it. Nothing of it is persisted; it dies with the window. Main thread.
//
// A view that is opened from another one remembers that one with what was selected in it, so that Back walks the way
// that was come. Views that are no such sub-views stand at the start of a way.
class WorkspaceState : public QObject {
  Q_OBJECT

 public:
  explicit WorkspaceState(QObject* parent = nullptr);

  const QString& location() const { return location_; }
  const WorkspaceMode& mode() const { return mode_; }
  // What the gallery shows; its location is the one above.
  const GalleryFilter& filter() const { return filter_; }
  // Selected cells of the view in front, items and jobs alike.
  const QSet<QUuid>& selection() const { return selection_; }
  // The one item or job that the inspector shows; null when there is none.
  QUuid inspectedId() const { return inspectedId_; }
  bool sidebarVisible() const { return sidebarVisible_; }
  bool inspectorVisible() const { return inspectorVisible_; }
  bool filtersVisible() const { return filtersVisible_; }
  // Wished height of a gallery row in pixels at 100 %, 96 to 360.
  int rowHeight() const { return rowHeight_; }

  // The views that the window has. Without a window there are all of them.
  bool isAvailable(ModeKind kind) const { return available_.empty() || available_.contains(kind); }
  void setAvailable(std::set<ModeKind> kinds);

  // Whether the view in front was opened from another one.
  bool canGoBack() const { return isSubView(mode_.kind); }
  // Where Back leads from here; the gallery from a view that was opened from none.
  WorkspaceMode returnMode() const;
  // Where Back leads from the item, or from the family, that is open; the gallery when none is.
  WorkspaceMode assetReturnMode() const { return returnModeOf(ModeKind::asset); }
  WorkspaceMode lineageReturnMode() const { return returnModeOf(ModeKind::lineage); }

  // A location opens in its gallery.
  void setLocation(const QString& location);
  // Takes over everything but the location.
  void setFilter(const GalleryFilter& filter);
  // Back to everything in this location; the sort stays.
  void clearFilters();
  // Goes to a view. A sub-view remembers the one that it leaves, unless it takes the place of one of its own kind. A
  // view that the window does not have changes nothing.
  void setMode(const WorkspaceMode& mode);
  // Selects exactly these cells; with one, it is inspected too.
  void select(const QSet<QUuid>& cells);
  void inspect(QUuid cell);

  // Shows an item large and selects it. `sequence` is the order in which stepping walks, with the item in it.
  void openAsset(QUuid item, std::vector<QUuid> sequence, Autoplay autoplay = Autoplay::no);
  const std::vector<QUuid>& assetSequence() const { return assetSequence_; }
  // The item that stepping would come to; null at an end.
  QUuid assetBeside(int direction) const;
  // Shows the next item of the order in that direction; does nothing at an end.
  void stepAsset(int direction);
  // The clip or sound that starts to play as soon as it is open; null for none. It is asked once.
  QUuid takeAutoplay();
  QUuid autoplayID() const { return autoplayID_; }

  // Shows a job's request and outputs.
  void openGeneration(QUuid job, int output);
  // Leaves the generation that is open; does nothing elsewhere.
  void finishGeneration();
  // Shows the family of an item and selects the item in it.
  void openLineage(QUuid item);

  // Shows a sheet, which this location remembers. Temporary edits of another sheet are dropped.
  void openContactSheet(const ContactSheetSource& source);
  // The sheet that was open last in a location.
  std::optional<ContactSheetSource> contactSheetAt(const QString& location) const;
  const QHash<QString, ContactSheetSource>& contactSheetsByLocation() const { return contactSheetsByLocation_; }
  // Where the sheet that was open last was opened, and what it shows.
  const std::optional<QString>& activeContactLocation() const { return activeContactLocation_; }
  const std::optional<ContactSheetSource>& activeContactSource() const { return activeContactSource_; }
  // Whether the item that is open was opened from a contact sheet.
  bool viewingContactAsset() const;
  // Temporary edits of a sheet that is not stored: what is left out of it, and what is added at its end.
  const QSet<QUuid>& excludedContactIDs() const { return excludedContactIDs_; }
  const std::vector<QUuid>& extraContactIDs() const { return extraContactIDs_; }
  void setContactEdits(const QSet<QUuid>& excluded, const std::vector<QUuid>& extra);

  // Returns to the view that was left, with what was selected there.
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
  // The order in which stepping walks.
  void assetSequenceChanged();
  // What is left out of the sheet, or added to it.
  void contactEditsChanged();
  // Sidebar, inspector, filter row or row height.
  void layoutChanged();
  // Which views the window has.
  void availableChanged();

 private:
  // A view that was left for a sub-view.
  struct Left {
    WorkspaceMode mode;
    QSet<QUuid> selection;
    std::vector<QUuid> assetSequence;
  };
  WorkspaceMode returnModeOf(ModeKind kind) const;
  void rememberLeft(ModeKind next);
  void show(const WorkspaceMode& mode);
  void setAssetSequence(std::vector<QUuid> sequence);

  QString location_ = allMediaLocation;
  GalleryFilter filter_;
  WorkspaceMode mode_;
  std::set<ModeKind> available_;
  std::vector<Left> left_;  // the way back, its start first
  std::vector<QUuid> assetSequence_;
  QUuid autoplayID_;
  QSet<QUuid> selection_;
  QUuid inspectedId_;
  QHash<QString, ContactSheetSource> contactSheetsByLocation_;
  std::optional<QString> activeContactLocation_;
  std::optional<ContactSheetSource> activeContactSource_;
  QSet<QUuid> excludedContactIDs_;
  std::vector<QUuid> extraContactIDs_;
  bool sidebarVisible_ = true;
  bool inspectorVisible_ = true;
  bool filtersVisible_ = true;
  int rowHeight_ = 176;
};

}  // namespace sorvan::shell
