#include "shell/gallery_filter.h"

#include "base/ids.h"
#include "base/settings.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace sorvan::shell {

namespace {

constexpr double secondsOfDay = 86400;
constexpr double secondsOfRecent = 604800;

const QString all = QStringLiteral("all");

struct NamedSort {
  GallerySort sort;
  QString text;
};

const std::array<NamedSort, 6>& namedSorts() {
  static const std::array<NamedSort, 6> names{{{GallerySort::newest, QStringLiteral("newest")},
                                               {GallerySort::oldest, QStringLiteral("oldest")},
                                               {GallerySort::rating, QStringLiteral("rating")},
                                               {GallerySort::costHigh, QStringLiteral("costHigh")},
                                               {GallerySort::costLow, QStringLiteral("costLow")},
                                               {GallerySort::name, QStringLiteral("name")}}};
  return names;
}

QString sortKey(const QString& workspace) { return QStringLiteral("gallerySort.") + workspace; }

}  // namespace

QString sortText(GallerySort sort) {
  for (const NamedSort& named : namedSorts())
    if (named.sort == sort) return named.text;
  return {};
}

GallerySort sortFromText(const QString& text) {
  for (const NamedSort& named : namedSorts())
    if (named.text == text) return named.sort;
  return GallerySort::newest;
}

void keepSort(base::Settings& settings, const std::optional<QString>& workspace, GallerySort sort) {
  if (workspace) settings.set(sortKey(*workspace), sortText(sort));
}

GallerySort keptSort(const base::Settings& settings, const std::optional<QString>& workspace) {
  return workspace ? sortFromText(settings.get(sortKey(*workspace), QString())) : GallerySort::newest;
}

bool GalleryFilter::narrows() const {
  GalleryFilter plain;
  plain.location = location;
  plain.projectID = projectID;
  plain.sort = sort;
  return !(*this == plain);
}

ModelTest::ModelTest(QString filter, const std::vector<QString>& knownModels,
                     std::function<QString(const QString&)> displayName)
    : filter_(std::move(filter)),
      lowered_(base::lowered(filter_)),
      exact_(std::ranges::find(knownModels, filter_) != knownModels.end()),
      displayName_(std::move(displayName)) {}

bool ModelTest::operator()(const std::optional<QString>& model) const {
  if (!model) return false;
  for (const auto& [known, passes] : decided_)
    if (known.constData() == model->constData()) return passes;
  constexpr std::size_t most = 64;
  if (decided_.size() == most) decided_.clear();
  decided_.emplace_back(*model, decide(*model));
  return decided_.back().second;
}

bool ModelTest::decide(const QString& model) const {
  if (exact_) return model == filter_;
  return base::lowered(model).contains(lowered_) ||
         (displayName_ && base::lowered(displayName_(model)).contains(lowered_));
}

base::Instant recentCutoff(base::Instant now) { return now - secondsOfRecent; }

RowTest::RowTest(const GalleryFilter& filter, base::Instant now, ModelTest model)
    : filter_(filter),
      model_(std::move(model)),
      recentCutoff_(recentCutoff(now)),
      daysCutoff_(now - secondsOfDay * filter.days),
      anyType_(filter.type == all),
      anyStatus_(filter.status == all),
      anyProvider_(filter.provider == all),
      anyModel_(filter.model == all),
      anyOrientation_(filter.orientation == all) {
  const QString& place = filter.location;
  project_ = base::uuidFromText(place);
  if (place == QStringLiteral("recent")) place_ = Place::recent;
  if (place == QStringLiteral("favorites")) place_ = Place::favorites;
  if (place == QStringLiteral("inbox")) place_ = Place::inbox;
  if (place == QStringLiteral("trash")) place_ = Place::trash;
  if (!project_.isNull()) place_ = Place::project;
}

bool RowTest::operator()(const core::AssetRow& row) const {
  if (!isHere(row)) return false;
  if (filter_.favoritesOnly && !row.favorite) return false;
  if (row.rating < filter_.minimumRating) return false;
  if (!anyType_ && !hasType(row)) return false;
  if (!anyStatus_ && row.status != filter_.status) return false;
  if (!anyProvider_ && row.provider != filter_.provider) return false;
  if (!anyModel_ && !model_(row.model)) return false;
  if (!anyOrientation_ && !hasShape(row)) return false;
  return hasDates(row);
}

bool RowTest::isHere(const core::AssetRow& row) const {
  if (row.trashed != (place_ == Place::trash)) return false;
  if (filter_.projectID && row.projectID != filter_.projectID) return false;
  switch (place_) {
    case Place::everything:
    case Place::trash:
      return true;
    case Place::recent:
      return row.recentDate >= recentCutoff_;
    case Place::favorites:
      return row.favorite;
    case Place::inbox:
      return !row.projectID;
    case Place::project:
      return row.projectID == project_;
  }
  return true;
}

bool RowTest::hasType(const core::AssetRow& row) const {
  static const QString audio = rawValue(core::MediaType::audio);
  static const QString visual = QStringLiteral("visual");
  if (filter_.type == visual) return row.mediaType != audio;
  return row.mediaType == filter_.type;
}

// Sounds have no shape.
bool RowTest::hasShape(const core::AssetRow& row) const {
  if (row.width == 0) return false;
  if (filter_.orientation == QStringLiteral("portrait")) return row.width < row.height;
  if (filter_.orientation == QStringLiteral("landscape")) return row.height < row.width;
  return row.width == row.height;
}

bool RowTest::hasDates(const core::AssetRow& row) const {
  if (filter_.days >= 1 && row.createdAt < daysCutoff_) return false;
  if (!filter_.generatedInterval) return true;
  const DateInterval& interval = *filter_.generatedInterval;
  return row.generatedAt && *row.generatedAt >= interval.from && *row.generatedAt <= interval.to;
}

namespace {

// Linear, since the numbers stand newest first: turned round, then each run of one date turned back.
void sortOldestFirst(const Rows& rows, RowNumbers& numbers) {
  std::ranges::reverse(numbers);
  for (auto run = numbers.begin(); run != numbers.end();) {
    const base::Instant date = rows[*run].createdAt;
    const auto end =
        std::find_if(run, numbers.end(), [&](std::uint32_t number) { return rows[number].createdAt != date; });
    std::reverse(run, end);
    run = end;
  }
}

void sortByRating(const Rows& rows, RowNumbers& numbers) {
  constexpr int highest = 5;
  std::array<RowNumbers, highest + 1> piles;
  for (const std::uint32_t number : numbers)
    piles[static_cast<std::size_t>(std::clamp(rows[number].rating, 0, highest))].push_back(number);
  numbers.clear();
  for (std::size_t stars = piles.size(); stars-- > 0;)
    numbers.insert(numbers.end(), piles[stars].begin(), piles[stars].end());
}

// A stable sort in four passes of 16 bits over the keys, ascending.
void sortByKeys(std::vector<std::pair<std::uint64_t, std::uint32_t>>& keyed) {
  constexpr int bits = 16;
  constexpr std::size_t values = std::size_t{1} << bits;
  std::vector<std::pair<std::uint64_t, std::uint32_t>> other(keyed.size());
  std::vector<std::uint32_t> starts(values);
  for (int shift = 0; shift < 64; shift += bits) {
    const auto digit = [shift](std::uint64_t key) { return (key >> shift) & (values - 1); };
    std::ranges::fill(starts, 0);
    for (const auto& [key, number] : keyed) ++starts[digit(key)];
    // A pass in which all keys agree orders nothing.
    if (!keyed.empty() && starts[digit(keyed.front().first)] == keyed.size()) continue;
    std::exclusive_scan(starts.begin(), starts.end(), starts.begin(), std::uint32_t{0});
    for (const auto& entry : keyed) other[starts[digit(entry.first)]++] = entry;
    keyed.swap(other);
  }
}

// Bits whose order as a whole number is the order of the doubles.
std::uint64_t orderedBits(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value + 0.0);
  constexpr std::uint64_t sign = std::uint64_t{1} << 63;
  return (bits & sign) != 0 ? ~bits : bits | sign;
}

template <class Key>
void sortByKey(RowNumbers& numbers, Key&& keyOf) {
  std::vector<std::pair<std::uint64_t, std::uint32_t>> keyed;
  keyed.reserve(numbers.size());
  for (const std::uint32_t number : numbers) keyed.emplace_back(keyOf(number), number);
  sortByKeys(keyed);
  for (std::size_t place = 0; place < keyed.size(); ++place) numbers[place] = keyed[place].second;
}

void sortByCost(const Rows& rows, RowNumbers& numbers, GallerySort sort) {
  constexpr std::uint64_t last = ~std::uint64_t{0};
  sortByKey(numbers, [&](std::uint32_t number) {
    const std::optional<double>& credits = rows[number].credits;
    if (!credits || std::isnan(*credits)) return last;
    return orderedBits(sort == GallerySort::costLow ? *credits : -*credits);
  });
}

}  // namespace

void sortRows(const Rows& rows, RowNumbers& numbers, GallerySort sort, const std::vector<std::uint32_t>& nameRanks) {
  switch (sort) {
    case GallerySort::newest:
      return;
    case GallerySort::oldest:
      return sortOldestFirst(rows, numbers);
    case GallerySort::rating:
      return sortByRating(rows, numbers);
    case GallerySort::costHigh:
    case GallerySort::costLow:
      return sortByCost(rows, numbers, sort);
    case GallerySort::name:
      if (!nameRanks.empty()) sortByKey(numbers, [&](std::uint32_t number) { return nameRanks[number]; });
  }
}

namespace {

void addUnit(QByteArray& key, char16_t unit) {
  key += static_cast<char>(unit >> 8);
  key += static_cast<char>(unit & 0xFF);
}

bool isDigit(QChar unit) { return unit >= u'0' && unit <= u'9'; }

// A run of digits: a mark where a digit stands, how many follow the zeros, and those.
qsizetype addNumber(QByteArray& key, const QString& folded, qsizetype from) {
  qsizetype end = from;
  while (end < folded.size() && isDigit(folded[end])) ++end;
  qsizetype first = from;
  while (first < end - 1 && folded[first] == u'0') ++first;
  addUnit(key, u'0');
  addUnit(key, static_cast<char16_t>(std::min<qsizetype>(end - first, 0xFFFF)));
  for (qsizetype at = first; at < end; ++at) addUnit(key, folded[at].unicode());
  return end;
}

}  // namespace

QByteArray nameSortKey(const QString& name) {
  const QString folded = base::foldForSearch(name);
  QByteArray key;
  key.reserve(4 * (folded.size() + name.size()));
  for (qsizetype at = 0; at < folded.size();) {
    if (isDigit(folded[at])) {
      at = addNumber(key, folded, at);
    } else {
      addUnit(key, folded[at++].unicode());
    }
  }
  // What is equal so far is ordered by its code points.
  addUnit(key, 0);
  for (const char32_t point : name.toUcs4()) {
    addUnit(key, static_cast<char16_t>(point >> 16));
    addUnit(key, static_cast<char16_t>(point & 0xFFFF));
  }
  return key;
}

}  // namespace sorvan::shell
