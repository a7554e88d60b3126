// Carries out what a text asks for.
#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QTimeZone>
#include <QUuid>

#include <optional>
#include <vector>

#include "base/closed_range.h"
#include "composer/submission.h"

namespace sorvan::composer {

/// A view of the whole library through conditions that all hold. "all" and empty texts ask for nothing.
struct LibraryFilter {
  QString search;
  QString model = QStringLiteral("all");  ///< a model's id, or part of an id or name
  QString type = QStringLiteral("all");
  QString status = QStringLiteral("all");
  QString orientation = QStringLiteral("all");
  bool favoritesOnly = false;
  int days = 0;  ///< only the last so many; 0 is no limit
  std::optional<ClosedRange<Instant>> generatedInterval;
  bool operator==(const LibraryFilter&) const = default;
};

LibraryFilter libraryFilter(const CompoundAssetFilter& compound);
/// `now` is the user's time and `firstDay` that of the user's weeks. Throws SorvanError when last week cannot be told.
LibraryFilter libraryFilter(const AssetFilterIntent& filter, const QDateTime& now, Qt::DayOfWeek firstDay);

/// What the window and the rest of the library do for commands. Main thread.
class LibraryDesk {
 public:
  virtual ~LibraryDesk() = default;
  /// The ids of the selected cells, in the order of the view.
  virtual std::vector<QUuid> selection() const = 0;
  /// Shows what the whole library has of this, as search results.
  virtual void showResults(const LibraryFilter& filter) = 0;
  /// Clears all filters and shows the gallery, of `location` where one is given: "inbox" or a project's key.
  virtual void showGallery(const std::optional<QString>& location) = 0;
  virtual void openContactSheet(const QUuid& sheet) = 0;
  virtual void openComparison(const QUuid& comparison) = 0;
  virtual void openLineage(const QUuid& asset) = 0;
  /// Makes a project with its folder, as one step to undo. Throws SorvanError.
  virtual QUuid createProject(const QString& name) = 0;
  /// Makes a contact sheet, as one step to undo. Throws SorvanError.
  virtual QUuid createContactSheet(const std::vector<AssetRef>& assets, const std::optional<QUuid>& project) = 0;
  /// Puts a submission into the queue; the id of its comparison, if it is one. Throws SorvanError before anything
  /// changed.
  virtual std::optional<QUuid> enqueue(const Submission& submission) = 0;
  /// The user's time and the first day of the user's weeks.
  virtual QDateTime localNow() const { return QDateTime::currentDateTime(); }
  virtual Qt::DayOfWeek firstDayOfWeek() const { return QLocale().firstDayOfWeek(); }
};

/// Main thread. It borrows the store, the state and the desk.
class SorvanCommandRouter {
 public:
  SorvanCommandRouter(LibraryStore& store, ComposerState& state, LibraryDesk& desk);

  /// Carries the intent out and says so in the message line; the composer is cleared. False when it could not: the line
  /// tells why, and the text stays as it was.
  bool route(const SorvanIntent& intent);

  /// The selected items that are there and not in Trash.
  std::vector<AssetRef> selected() const;

 private:
  struct Execution;
  LibraryStore& store_;
  ComposerState& state_;
  LibraryDesk& desk_;
};

}  // namespace sorvan::composer
