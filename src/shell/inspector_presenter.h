#pragma once

#include "shell/actions.h"
#include "shell/job_display.h"
#include "shell/once_per_turn.h"

#include <QObject>
#include <QRectF>

#include <memory>
#include <vector>

namespace sorvan::core {
class LibraryStore;
struct Asset;
struct Generation;
struct GenerationJob;
struct GenerationRequest;
}  // namespace sorvan::core

namespace sorvan::shell {

class JobDisplays;
class LocationOverview;
class WorkspaceState;

enum class InspectorSubject { nothing, item, severalItems, job };

struct InspectorRow {
  QString label;
  QString value;
  bool monospaced = false;  // digits that must align, ids and paths
  QString note = {};        // one sentence about the value, or empty
};

// Part of a text, in UTF-16 units.
struct InspectorSpan {
  int start = 0;
  int length = 0;
};

struct InspectorButton {
  ActionId action;
  QString title;
  bool primary = false;
  QString shortTitle = {};  // where the place is narrow; empty: the title
};

// Another item, by its picture; a press opens it.
struct InspectorLink {
  QUuid item;
  QString title;     // “@Tin”, a file name, or “Deleted”
  QString subtitle;  // what it is here, such as “Edited from”; may be empty
  QString thumbnailPath;
  bool canOpen = true;  // false once the item was deleted for good
};

struct InspectorSection {
  QString title;
  QString text;  // a paragraph, selectable; may be empty
  std::vector<InspectorRow> rows;
  std::vector<InspectorSpan> mentions = {};       // parts of the text that name an attached picture
  std::vector<InspectorLink> links = {};
  std::vector<InspectorButton> headActions = {};  // beside the title
};

// The areas that were marked for a job, on the picture they were drawn on.
struct InspectorMarks {
  QString title;      // “Marked areas”
  QString countText;  // “2 boxes”
  QString picturePath;
  std::vector<QRectF> areas;  // fractions of the upright picture
  bool operator==(const InspectorMarks&) const = default;
};

struct InspectorDisplay {
  InspectorSubject subject = InspectorSubject::nothing;
  QUuid id;
  QString title;           // file name, “Generation failed”, “3 items”
  QString facts;           // “1056 × 1408 · PNG · 2.4 MB · Today 09:41”
  QString previewPath;     // picture of the item; empty for jobs without one
  bool hasRating = false;  // stars and heart are shown
  int rating = 0;
  bool favorite = false;
  QString statusText;
  QString statusToken;     // empty: several items differ
  bool canChangeStatus = false;
  std::vector<QString> previews;  // pictures of the first of several items
  JobState jobState = JobState::complete;
  QString message;  // a job's error in full
  QString detail;   // a job's money line, in full
  bool canSaveRawResult = false;
  std::vector<InspectorButton> buttons;
  QString moreTitle;     // the tile that opens the menu of the selection; empty: none
  InspectorMarks marks;  // without areas: not shown
  std::vector<InspectorSection> sections;
};

// What the pane at the right shows of the selection. Main thread.
class InspectorPresenter : public QObject {
  Q_OBJECT

 public:
  InspectorPresenter(core::LibraryStore& store, WorkspaceState& state, JobDisplays& jobs, QObject* parent = nullptr);
  ~InspectorPresenter() override;

  InspectorDisplay display() const;
  // A job, selected or not: what was asked for, how it went and what can be done about it. Nothing for unknown ids.
  InspectorDisplay displayOfJob(QUuid id) const;
  // What came of a job and is not in Trash, in the order of its outputs.
  std::vector<QUuid> resultsOf(QUuid job) const;

  // Small edits of the selected items; a failure is shown by the store's `error`.
  void toggleFavorite();
  void setRating(int stars);  // 0 clears

 Q_SIGNALS:
  void changed();

 private:
  QString previewOf(const core::Asset& asset) const;
  InspectorDisplay itemDisplay(QUuid id) const;
  InspectorDisplay selectedJobDisplay(QUuid id) const;
  InspectorSection outcomeOf(const core::GenerationJob& job, const JobDisplay& shown) const;
  InspectorMarks marksOf(const core::GenerationRequest& request) const;
  std::vector<InspectorSection> itemSections(const core::Asset& asset) const;
  InspectorSection madeWith(const core::Generation& generation) const;
  std::vector<std::shared_ptr<const core::Asset>> selectedItems() const;
  void describeItems(InspectorDisplay& display, const std::vector<std::shared_ptr<const core::Asset>>& items) const;
  void tick();

  core::LibraryStore& store_;
  WorkspaceState& state_;
  JobDisplays& jobs_;
  OncePerTurn changeSoon_{[this] { Q_EMIT changed(); }};
  std::unique_ptr<LocationOverview> overview_;
};

}  // namespace sorvan::shell
