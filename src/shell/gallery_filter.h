#pragma once

#include "shell/room.h"

#include <QString>
#include <QUuid>

#include "base/instant.h"
#include "core/asset_row.h"
#include "core/newest_first.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace sorvan::base {
class Settings;
}

namespace sorvan::shell {

enum class GallerySort { newest, oldest, rating, costHigh, costLow, name };

// “newest”, “costHigh”: what the settings hold.
QString sortText(GallerySort sort);
// An unknown text gives `newest`.
GallerySort sortFromText(const QString& text);
// Remembers the sort of a workspace, known by its absolute path; none keeps nothing. Throws when settings fail.
void keepSort(base::Settings& settings, const std::optional<QString>& workspace, GallerySort sort);
GallerySort keptSort(const base::Settings& settings, const std::optional<QString>& workspace);

struct DateInterval {
  base::Instant from;
  base::Instant to;  // inside the interval
  bool operator==(const DateInterval&) const = default;
};

// What the gallery shows, as one value.
struct GalleryFilter {
  // “recent”, “inbox”, “trash”, “favorites”, a project's id; “all”, “library” and anything else mean everything.
  QString location = QStringLiteral("all");
  std::optional<QUuid> projectID;  // beside any location
  QString search;
  QString type = QStringLiteral("all");         // all, visual, image, video, audio
  QString model = QStringLiteral("all");        // a model's id, or a part of an id or a name
  QString provider = QStringLiteral("all");     // the display name
  QString status = QStringLiteral("all");       // the stored text
  QString orientation = QStringLiteral("all");  // all, portrait, landscape, square
  int days = 0;                                 // only the last so many days; 0 is no limit
  int minimumRating = 0;
  bool favoritesOnly = false;
  std::optional<DateInterval> generatedInterval;
  GallerySort sort = GallerySort::newest;

  bool operator==(const GalleryFilter&) const = default;
  // Whether anything narrows the location: the search, the types, the dates…
  bool narrows() const;
};

// Whether a model filter lets a model through: by equality when it is a known model's id, else when it is part of the
// id or the name, whatever the case.
class ModelTest {
 public:
  // `knownModels` are the ids that count as known; `displayName` gives a model's name.
  ModelTest(QString filter, const std::vector<QString>& knownModels,
            std::function<QString(const QString&)> displayName);
  bool operator()(const std::optional<QString>& model) const;

 private:
  bool decide(const QString& model) const;

  QString filter_;
  QString lowered_;
  bool exact_ = false;
  std::function<QString(const QString&)> displayName_;
  // The few models of a library, by the address of their shared text.
  mutable std::vector<std::pair<QString, bool>> decided_;
};

// Every test of a filter but the search. Made once for a pass over the rows.
class RowTest {
 public:
  RowTest(const GalleryFilter& filter, base::Instant now, ModelTest model);
  bool operator()(const core::AssetRow& row) const;

 private:
  enum class Place { everything, recent, favorites, inbox, trash, project };
  bool isHere(const core::AssetRow& row) const;
  bool hasType(const core::AssetRow& row) const;
  bool hasShape(const core::AssetRow& row) const;
  bool hasDates(const core::AssetRow& row) const;

  GalleryFilter filter_;
  ModelTest model_;
  Place place_ = Place::everything;
  QUuid project_;
  base::Instant recentCutoff_;
  base::Instant daysCutoff_;
  bool anyType_, anyStatus_, anyProvider_, anyModel_, anyOrientation_;
};

// Items that came into the library after this are recent ones.
base::Instant recentCutoff(base::Instant now);

// Places of rows in `AssetRow` arrays, counted from the newest.
using RowNumbers = std::vector<std::uint32_t>;
using Rows = core::NewestFirst<core::AssetRow>;

// Brings rows that stand newest first into another order; equal ones keep their relative order. `name` wants ranks of
// the names by row number, and is left as it is without them.
void sortRows(const Rows& rows, RowNumbers& numbers, GallerySort sort,
              const std::vector<std::uint32_t>& nameRanks = {});

// Bytes whose plain order is the natural order of names: case and marks aside, digits by value, then by code points.
QByteArray nameSortKey(const QString& name);

}  // namespace sorvan::shell
