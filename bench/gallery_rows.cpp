// Looking through a large library: one keystroke of search, one filter, each order, and the texts that searching needs.
#include <QCoreApplication>
#include <algorithm>
#include <cstring>

#include "base/clock.h"
#include "base/settings.h"
#include "bench/library_data.h"
#include "bench/row.h"
#include "bench/stalls.h"
#include "core/library_store.h"
#include "core/workspace_opening.h"
#include "shell/gallery_index.h"

namespace sorvan::bench {
namespace {

using namespace sorvan::base;
using namespace sorvan::core;
using namespace sorvan::shell;

constexpr int manyItems = 100'000;
constexpr unsigned seed = 7;

QString libraryFolder(const QDir& data) { return data.filePath(QStringLiteral("library")); }
QString textsFile(const QDir& data) { return data.filePath(QStringLiteral("texts")); }

/// An open library and its index.
struct Desk {
  explicit Desk(const QString& folder)
      : store({std::make_shared<Settings>(), std::make_shared<SystemClock>(), {}, {}}),
        index(store, [](const QString& model) { return model; }) {
    openWorkspace(store, folder, Remember::no);
  }
  void awaitSearch() {
    while (!index.searchIsComplete()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (index.texts().count() != manyItems) throw std::runtime_error("not all texts stand");
  }
  LibraryStore store;
  GalleryIndex index;
};

/// The library, and the folded texts of its items as a file of one line for each.
void makeLibraryAndTexts(const QDir& data) {
  makeLibrary(libraryFolder(data), libraryOf(manyItems), seed);
  Desk desk(libraryFolder(data));
  QFile file(textsFile(data));
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("the texts could not be written");
  for (const AssetRef& asset : desk.store.assets()) {
    SearchSource source{asset->localFilePath, asset->originalFilename, {}, {}, {}, {}};
    if (const GenerationRef generation = desk.store.generationOf(asset->id)) {
      source.prompt = generation->prompt;
      source.modelName = generation->model;
    }
    file.write(fold(asset->id, source).text.replace('\n', ' ') + '\n');
  }
}

QByteArray readTexts(const QDir& data) {
  QFile file(textsFile(data));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("the texts are missing");
  return file.readAll();
}

/// The lines that hold the needle, by the C library's own search over all bytes.
std::size_t bareScan(const QByteArray& texts, const QByteArray& needle) {
  std::size_t lines = 0;
  const char* end = texts.constData() + texts.size();
  for (const char* at = texts.constData(); at < end; ++lines) {
    const auto* found = static_cast<const char*>(
        memmem(at, static_cast<std::size_t>(end - at), needle.constData(), static_cast<std::size_t>(needle.size())));
    if (!found) break;
    const auto* line = static_cast<const char*>(std::memchr(found, '\n', static_cast<std::size_t>(end - found)));
    at = line ? line + 1 : end;
  }
  return lines;
}

/// What a person may type, none of it twice in a row.
const QString& needle(int round) {
  static const std::vector<QString> needles{
      QStringLiteral("northern lights painted"), QStringLiteral("rain soft"), QStringLiteral("evening harbour wide"),
      QStringLiteral("red fox under"),           QStringLiteral("oil lens"),  QStringLiteral("portrait with a red fox"),
      QStringLiteral("lens lens rain"),          QStringLiteral("-77777")};
  return needles[static_cast<std::size_t>(round) % needles.size()];
}

enum class Pass { first, repeated };

/// `filterOf` gives the filter of a round and the text that a search for the same would look for.
Contestants looking(const QDir& data, Pass pass, std::function<std::pair<GalleryFilter, QString>(int)> filterOf) {
  const auto desk = std::make_shared<Desk>(libraryFolder(data));
  desk->awaitSearch();
  const auto texts = std::make_shared<QByteArray>(readTexts(data));
  const auto round = std::make_shared<int>(0);
  const auto current = std::make_shared<std::pair<GalleryFilter, QString>>(filterOf(0));
  const QString file = textsFile(data);
  return {.ours =
              [=] {
                *current = filterOf((*round)++);
                if (pass == Pass::repeated) desk->index.matching(current->first);
                std::size_t found = 0;
                const double seconds = timed([&] { found = desk->index.matching(current->first).size(); });
                if (found == 0) throw std::runtime_error("nothing was found");
                return std::optional(seconds);
              },
          .peer =
              [=] {
                return timedCommand({QStringLiteral("rg"), QStringLiteral("-c"), QStringLiteral("-F"),
                                     QStringLiteral("-e"), current->second, file});
              },
          .limit =
              [=] {
                const QByteArray bytes = current->second.toUtf8();
                std::size_t found = 0;
                const double seconds = timed([&] { found = bareScan(*texts, bytes); });
                if (found == 0) throw std::runtime_error("the scan found nothing");
                return std::optional(seconds);
              }};
}

std::pair<GalleryFilter, QString> searchOf(int round) {
  GalleryFilter filter;
  filter.search = needle(round);
  return {filter, needle(round)};
}

/// One filter of each kind in turn; the scan looks for a model's name, which every filter's pass is held against.
std::pair<GalleryFilter, QString> filterOf(int round) {
  GalleryFilter filter;
  const QString model = QStringLiteral("fal-ai/flux/schnell");
  switch (round % 4) {
    case 0:
      filter.model = model;
      break;
    case 1:
      filter.minimumRating = 3;
      break;
    case 2:
      filter.orientation = QStringLiteral("square");
      break;
    default:
      filter.type = QStringLiteral("visual");
      filter.provider = QStringLiteral("fal.ai");
  }
  return {filter, model};
}

// ---- sort-100k

Contestants sorting(const QDir& data, GallerySort sort) {
  const auto desk = std::make_shared<Desk>(libraryFolder(data));
  desk->awaitSearch();
  const auto round = std::make_shared<int>(0);
  GalleryFilter filter;
  filter.sort = sort;
  desk->index.matching(filter);
  return {.ours =
              [=] {
                GalleryFilter other = filter;
                // A limit that nothing reaches makes every round a pass of its own.
                other.days = 100'000 + (*round)++;
                std::size_t found = 0;
                const double seconds = timed([&] { found = desk->index.matching(other).size(); });
                if (found != manyItems) throw std::runtime_error("not all items were sorted");
                return std::optional(seconds);
              },
          .peer = {},
          .limit =
              [=] {
                std::vector<std::pair<double, std::uint32_t>> keyed;
                for (const AssetRow& row : desk->store.assetRows())
                  keyed.emplace_back(std::fmod(row.createdAt.seconds * 7919, 1e6), keyed.size());
                return std::optional(timed([&] { std::ranges::sort(keyed); }));
              }};
}

// ---- search-build-100k

enum class Measured { wholeTime, longestStall };

Contestants building(const QDir& data, Measured measured) {
  const QString folder = libraryFolder(data);
  return {.ours =
              [=] {
                Desk desk(folder);
                Stalls stalls;
                const double seconds = timed([&] { desk.awaitSearch(); });
                return std::optional(measured == Measured::wholeTime ? seconds : stalls.longest());
              },
          .peer = {},
          .limit = [=]() -> std::optional<double> {
            if (measured == Measured::longestStall) return frame;
            return std::nullopt;
          }};
}

// The first is what a keystroke costs, the second what showing the same again costs.
const RegisterRow searchRow{{.name = QStringLiteral("search-100k"),
                             .make = makeLibraryAndTexts,
                             .measure = [](const QDir& data) { return looking(data, Pass::first, searchOf); },
                             .rounds = 33}};
const RegisterRow searchAgainRow{{.name = QStringLiteral("search-100k-again"),
                                  .make = makeLibraryAndTexts,
                                  .measure = [](const QDir& data) { return looking(data, Pass::repeated, searchOf); }}};
const RegisterRow filterRow{{.name = QStringLiteral("filter-100k"),
                             .make = makeLibraryAndTexts,
                             .measure = [](const QDir& data) { return looking(data, Pass::first, filterOf); },
                             .rounds = 33}};
const RegisterRow filterAgainRow{{.name = QStringLiteral("filter-100k-again"),
                                  .make = makeLibraryAndTexts,
                                  .measure = [](const QDir& data) { return looking(data, Pass::repeated, filterOf); }}};
const RegisterRow newestRow{{.name = QStringLiteral("sort-100k-newest"),
                             .make = makeLibraryAndTexts,
                             .measure = [](const QDir& data) { return sorting(data, GallerySort::newest); }}};
const RegisterRow costLowRow{{.name = QStringLiteral("sort-100k-cost-low"),
                              .make = makeLibraryAndTexts,
                              .measure = [](const QDir& data) { return sorting(data, GallerySort::costLow); }}};
const RegisterRow oldestRow{{.name = QStringLiteral("sort-100k-oldest"),
                             .make = makeLibraryAndTexts,
                             .measure = [](const QDir& data) { return sorting(data, GallerySort::oldest); }}};
const RegisterRow ratingRow{{.name = QStringLiteral("sort-100k-rating"),
                             .make = makeLibraryAndTexts,
                             .measure = [](const QDir& data) { return sorting(data, GallerySort::rating); }}};
const RegisterRow costRow{{.name = QStringLiteral("sort-100k-cost"),
                           .make = makeLibraryAndTexts,
                           .measure = [](const QDir& data) { return sorting(data, GallerySort::costHigh); }}};
const RegisterRow nameRow{{.name = QStringLiteral("sort-100k-name"),
                           .make = makeLibraryAndTexts,
                           .measure = [](const QDir& data) { return sorting(data, GallerySort::name); }}};
const RegisterRow buildRow{{.name = QStringLiteral("search-build-100k"),
                            .make = makeLibraryAndTexts,
                            .measure = [](const QDir& data) { return building(data, Measured::wholeTime); },
                            .rounds = 5}};
const RegisterRow stallRow{{.name = QStringLiteral("search-build-100k-stall"),
                            .make = makeLibraryAndTexts,
                            .measure = [](const QDir& data) { return building(data, Measured::longestStall); },
                            .rounds = 5}};

}  // namespace
}  // namespace sorvan::bench
