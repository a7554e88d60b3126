#include "shell/sheet_display.h"

#include "account/charges.h"
#include "core/image_format.h"
#include "shell/job_displays.h"
#include "shell/sheet_texts.h"
#include "shell/wording.h"

#include <QSet>

#include <algorithm>
#include <cmath>

namespace sorvan::shell {

namespace {

constexpr double soundAspect = 1.6;
constexpr int secondsInMinute = 60;

CellKind kindOf(core::MediaType type) {
  if (type == core::MediaType::audio) return CellKind::audio;
  return type == core::MediaType::video ? CellKind::video : CellKind::image;
}

double aspectOf(const core::Asset& asset) {
  if (asset.type() == core::MediaType::audio) return soundAspect;
  const bool measured = asset.width > 0 && asset.height > 0;
  return measured ? static_cast<double>(asset.width) / static_cast<double>(asset.height) : 1;
}

void fillItem(PlaceDisplay& place, const core::LibraryStore& store, const core::Asset& asset) {
  place.asset = asset.id;
  place.kind = kindOf(asset.type());
  place.aspectRatio = aspectOf(asset);
  place.fileName = asset.filename();
  place.thumbnailPath = store.thumbnailOf(asset).value_or(QString());
  place.filePath = store.fileOf(asset);
  if (asset.duration && place.kind != CellKind::image) place.durationText = clockText(*asset.duration);
  if (asset.status() != core::AssetStatus::draft) place.statusText = statusText(asset.status());
  place.markText = asset.status() == core::AssetStatus::shortlist ? texts::reviewed : place.statusText;
  place.statusToken = rawValue(asset.status());
  place.favorite = asset.favorite;
  place.rating = asset.rating.value_or(0);
}

void fillMaking(PlaceDisplay& place, const core::LibraryStore& store, const JobDisplays& displays) {
  const core::GenerationRef made = store.generationOf(place.asset);
  if (made) {
    const account::Charge charge = account::chargeOf(*made, store.asset(place.asset));
    place.modelName = displays.modelName(made->model);
    if (charge.cost) place.costText = charge.costDisplay(displays.spend());
    const core::JobRef job = store.job(made->jobID);
    if (job && job->finishedAt) place.tookText = tookText(displays.secondsAtWork(*job));
  }
  if (place.modelName.isEmpty()) place.modelName = place.fileName;
  if (place.costText.isEmpty()) place.costText = texts::noCostRecorded;
}

QString nameOf(const PlaceDisplay& place, qsizetype count) {
  const QString state = place.asset.isNull() ? (place.job.message.isEmpty() ? place.job.detail : place.job.message)
                                             : place.costText;
  QStringList words{QStringLiteral("%1 of %2").arg(place.number).arg(count), place.modelName, state, place.statusText};
  if (place.markText != place.statusText) words.insert(3, place.markText);
  words.removeAll(QString());
  return words.join(QStringLiteral(", "));
}

bool isAtWork(JobState state) { return state == JobState::queued || state == JobState::running; }

template <class Value>
void keepIfShared(std::optional<Value>& shared, bool& first, const std::optional<Value>& value) {
  shared = first || shared == value ? value : std::nullopt;
  first = false;
}

QString ratioText(const QString& size) {
  const core::ImageFormat* format = core::ImageFormat::find(size);
  return format ? QString(format->ratio) : QString();
}

}  // namespace

std::vector<PlaceDisplay> displayPlaces(const core::LibraryStore& store, const JobDisplays& displays,
                                        const ContactSheetPlaces& places, const PriceOf& priceOf) {
  std::vector<PlaceDisplay> shown;
  for (const ComparisonSlot& slot : places.slots) {
    PlaceDisplay place;
    place.id = slot.id;
    place.number = static_cast<int>(shown.size()) + 1;
    place.movable = !slot.job && slot.asset;
    if (slot.asset) {
      fillItem(place, store, *slot.asset);
      fillMaking(place, store, displays);
    } else if (slot.job) {
      place.job = displays.display(*slot.job);
      place.aspectRatio = place.job.aspectRatio;
      place.modelName = place.job.modelName;
      const auto request = slot.job->request();
      if (request && priceOf && isAtWork(place.job.state)) place.costText = priceOf(*request);
    }
    place.accessibleName = nameOf(place, static_cast<qsizetype>(places.slots.size()));
    shown.push_back(std::move(place));
  }
  return shown;
}

QString tookText(double seconds) {
  const qint64 whole = std::max<qint64>(0, std::llround(seconds));
  if (whole < secondsInMinute) return texts::tookSeconds(whole);
  return texts::tookMinutes(whole / secondsInMinute, whole % secondsInMinute);
}

QString comparisonFacts(const std::vector<core::JobRef>& jobs) {
  QSet<QString> models;
  std::optional<QString> size;
  std::optional<int> count;
  std::optional<std::int64_t> seed;
  bool firstSize = true;
  bool firstCount = true;
  bool firstSeed = true;
  for (const core::JobRef& job : jobs) {
    const auto request = job->request();
    if (!request) continue;
    models.insert(request->model);
    keepIfShared<QString>(size, firstSize, request->size);
    keepIfShared<int>(count, firstCount, request->count);
    keepIfShared<std::int64_t>(seed, firstSeed, request->seed);
  }
  QStringList facts;
  if (!models.isEmpty()) facts << texts::comparedModels(models.size());
  if (size && !ratioText(*size).isEmpty()) facts << ratioText(*size);
  if (count) facts << texts::outputsPerModel(*count);
  if (seed) facts << texts::seedIs(*seed);
  return facts.join(QStringLiteral(" · "));
}

}  // namespace sorvan::shell
