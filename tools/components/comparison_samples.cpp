#include "comparison_samples.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "shell/sheet_texts.h"
#include "shell/texts.h"
#include "shell/views/compare_view.h"
#include "shell/views/lineage_tree.h"
#include "shell/views/sheet_places.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kContent(888, 740);

// The samples as files, since full sizes are read from files.
struct SampleFiles {
  QTemporaryDir folder;
  QString file(const QString& name) const {
    const QString path = folder.filePath(name);
    if (!QFile::exists(path)) QFile::copy(u":/sorvan/samples/"_s + name, path);
    return path;
  }
};

PlaceDisplay itemPlace(const SampleFiles& files, int number, const QString& picture, const QString& model) {
  PlaceDisplay place;
  place.id = QString::number(number);
  place.number = number;
  place.asset = QUuid::createUuid();
  place.aspectRatio = 1.5;
  place.modelName = model;
  place.costText = u"12 credits ($0.12)"_s;
  place.tookText = u"21 s"_s;
  place.thumbnailPath = place.filePath = files.file(picture);
  place.movable = true;
  place.accessibleName = u"%1 of 4, %2"_s.arg(number).arg(model);
  return place;
}

PlaceDisplay workPlace(int number, JobState state, const QString& model, const QString& detail) {
  PlaceDisplay place;
  place.id = QString::number(number);
  place.number = number;
  place.modelName = place.job.modelName = model;
  place.aspectRatio = 1.5;
  place.job.id = QUuid::createUuid();
  place.job.state = state;
  place.job.detail = detail;
  place.job.elapsedText = state == JobState::running ? u"0:34"_s : QString();
  place.job.action = state == JobState::failed ? JobAction::retry : JobAction::cancel;
  place.job.actionTitle = state == JobState::failed ? u"Retry"_s : u"Cancel"_s;
  if (state == JobState::failed) place.job.message = u"The model refused this prompt. Nothing was charged."_s;
  return place;
}

std::vector<PlaceDisplay> samplePlaces(const SampleFiles& files) {
  std::vector<PlaceDisplay> places{itemPlace(files, 1, u"tin_1.jpg"_s, u"GPT Image 2.5 Sunburst Edit"_s),
                                   itemPlace(files, 2, u"tin_4.jpg"_s, u"Nano Banana 2 Edit"_s),
                                   workPlace(3, JobState::running, u"Seedream V5 Pro Edit"_s, u"Generating…"_s),
                                   workPlace(4, JobState::failed, u"FLUX 3 Edit"_s, {})};
  places[0].rating = 4;
  places[0].favorite = true;
  places[0].statusText = u"Shortlist"_s;
  places[0].statusToken = u"shortlist"_s;
  places[1].rating = 3;
  places[1].costText = shell::texts::noCostRecorded;
  return places;
}

LineageRowDisplay sampleRow(const SampleFiles& files, int depth, int parent, const QString& name, const QString& label,
                            const QString& detail) {
  LineageRowDisplay row;
  row.id = QUuid::createUuid();
  row.depth = depth;
  row.parentRow = parent;
  row.name = name;
  row.label = label;
  row.detail = detail;
  row.dateText = u"12 Nov"_s;
  row.thumbnailPath = files.file(parent % 2 == 0 ? u"tin_4.jpg"_s : u"tin_1.jpg"_s);
  return row;
}

std::vector<LineageRowDisplay> sampleFamily(const SampleFiles& files) {
  const QString edited = u"Edited from"_s;
  std::vector<LineageRowDisplay> rows{
      sampleRow(files, 0, -1, u"tin-front-001.png"_s, u"Original"_s, u"Imported"_s),
      sampleRow(files, 1, 0, u"Studio-still-of-the-Tin-001.png"_s, u"Reference for"_s, u"GPT Image 2.5"_s),
      sampleRow(files, 2, 1, u"Studio-still-of-the-Tin-003.png"_s, u"Noticeable"_s, u"Nano Banana 2 Edit"_s),
      sampleRow(files, 2, 1, u"make-the-label-blue-001.png"_s, edited, u"Nano Banana 2 Edit"_s),
      sampleRow(files, 3, 3, u"make-the-label-blue-Topaz-001.png"_s, u"Upscaled from"_s, u"Topaz"_s),
      sampleRow(files, 2, 1, shell::texts::lineageDeleted, {}, shell::texts::lineageDeletedText),
      sampleRow(files, 3, 5, u"night-version-Seedream-001.png"_s, edited, u"Seedream V5 Pro Edit"_s),
      sampleRow(files, 2, 1, u"Shot-set-Close-up-001.png"_s, u"Shot Set"_s, u"Qwen Multiple Angles"_s)};
  rows[1].openedFrom = true;
  rows[1].statusText = u"Approved"_s;
  rows[1].statusToken = u"approved"_s;
  rows[3].inspected = true;
  rows[5].deleted = true;
  rows[5].dateText.clear();
  rows[6].trashed = true;
  return rows;
}

ComparedPicture sampleCompared(const SampleFiles& files, const QString& name, const QString& model) {
  ComparedPicture picture;
  picture.id = QUuid::createUuid();
  picture.title = model;
  picture.detail = name;
  picture.path = picture.thumbnailPath = files.file(name);
  picture.size = QImage(picture.path).size();
  picture.rating = 3;
  return picture;
}

}  // namespace

void saveComparison(const std::function<void(QWidget&, const QString&)>& save) {
  const SampleFiles files;
  ThumbnailStore thumbnails;
  SheetPlaces places(thumbnails);
  const std::vector<PlaceDisplay> shown = samplePlaces(files);
  places.show(shown, kContent);
  places.setSelection({shown.front().asset});
  save(places, u"contact-sheet"_s);
  LineageTree tree(thumbnails);
  tree.resize(kContent);
  tree.show(sampleFamily(files));
  save(tree, u"lineage"_s);
  CompareView compare(thumbnails);
  compare.resize(kContent);
  compare.show({sampleCompared(files, u"tin_1.jpg"_s, u"GPT Image 2.5"_s),
                sampleCompared(files, u"tin_4.jpg"_s, u"Nano Banana 2 Edit"_s)});
  save(compare, u"compare"_s);
  compare.zoomBy(3);
  save(compare, u"compare-zoomed"_s);
  compare.setCompareLayout(CompareLayout::divider);
  save(compare, u"compare-divider"_s);
  compare.setCompareLayout(CompareLayout::difference);
  save(compare, u"compare-difference"_s);
}

}  // namespace sorvan::views
