#include "catalogue/fal_catalog.h"

#include <QHash>

#include "catalogue/audio_models.h"
#include "catalogue/fal_model_json.h"
#include "catalogue/listings.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

QString modelsKey() { return u"falModels.v2"_s; }
QString unreadableKey() { return u"falModels.v2.unreadable"_s; }

FalModel imageRow(const QString& id, const QString& name, const QString& summary) {
  FalModel model;
  model.id = id;
  model.name = name;
  model.category = u"text-to-image"_s;
  model.summary = summary;
  model.output = MediaType::image;
  model.maxCount = 4;
  model.hasSeed = true;
  model.pngOutput = true;
  return model;
}

FalModel nanoBananaRow() {
  FalModel model = imageRow(u"fal-ai/nano-banana-2"_s, u"Nano Banana 2"_s, u"Google · fast, strong all-rounder"_s);
  model.promptRequired = true;
  Setting resolution;
  resolution.field = u"resolution"_s;
  resolution.label = u"Resolution"_s;
  resolution.kind = Setting::Kind::choice;
  resolution.values = {u"0.5K"_s, u"1K"_s, u"2K"_s, u"4K"_s};
  resolution.defaultValue = u"1K"_s;
  model.settings = {resolution};
  model.sizing = SizeByAspect{u"aspect_ratio"_s,
                              {u"auto"_s, u"21:9"_s, u"16:9"_s, u"3:2"_s, u"4:3"_s, u"5:4"_s, u"1:1"_s, u"4:5"_s,
                               u"3:4"_s, u"2:3"_s, u"9:16"_s, u"4:1"_s, u"1:4"_s, u"8:1"_s, u"1:8"_s}};
  return model;
}

FalModel fluxSchnellRow() {
  FalModel model = imageRow(u"fal-ai/flux/schnell"_s, u"FLUX.1 Schnell"_s, u"Fast text-to-image drafts."_s);
  model.sizing = SizeByDimensions{u"image_size"_s};
  return model;
}

std::vector<FalModel> builtInRows() {
  std::vector<FalModel> rows{nanoBananaRow(), fluxSchnellRow()};
  for (const auto* part :
       {&audioModels(AudioKind::voice), &audioModels(AudioKind::music), &audioModels(AudioKind::effect), &soundTools(),
        &extendModels(), &clipEffectModels(), &clipMusicModels()}) {
    rows.insert(rows.end(), part->begin(), part->end());
  }
  return rows;
}

using Places = QHash<QString, std::size_t>;

/// The first place of each id. The keys are texts of their own: the models' are counted by whoever copies a model, and a
/// lookup that reads beside those counts waits for the other processor.
Places placesOf(const std::vector<FalModel>& models) {
  Places places;
  for (std::size_t place = models.size(); place > 0; --place) {
    const QString& id = models[place - 1].id;
    places.insert(QString(id.constData(), id.size()), place - 1);
  }
  return places;
}

std::uint64_t nextListNumber() {
  static std::atomic<std::uint64_t> last = 0;
  return ++last;
}

const FalModel* builtInModel(const QString& id) {
  static const Places places = placesOf(builtInModels());
  const auto found = places.constFind(id);
  return found == places.cend() ? nullptr : &builtInModels()[*found];
}

QString textOf(const std::vector<FalModel>& models) { return QString::fromUtf8(modelsToText(models)); }

}  // namespace

const std::vector<FalModel>& builtInModels() {
  static const std::vector<FalModel> rows = builtInRows();
  return rows;
}

const FalModel& nanoBanana2() { return builtInModels().front(); }

struct FalCatalog::AddedModels {
  explicit AddedModels(std::vector<FalModel> list) : models(std::move(list)), places(placesOf(models)) {}
  std::vector<FalModel> models;
  Places places;
};

/// The list that a thread saw last. `keeper` is this thread's own: two threads that look up at the same time would
/// otherwise pass one count of users to and fro.
struct FalCatalog::Seen {
  std::uint64_t number = 0;
  std::shared_ptr<const std::shared_ptr<const AddedModels>> keeper;
};

FalCatalog::FalCatalog(std::shared_ptr<Settings> store) : settings(std::move(store)), listNumber(nextListNumber()) {
  std::vector<FalModel> models;
  if (const auto text = settings->get<QString>(modelsKey())) models = modelsFromText(text->toUtf8()).models;
  std::erase_if(models, [](const FalModel& model) { return builtInModel(model.id) != nullptr; });
  addedModels = std::make_shared<AddedModels>(std::move(models));
}

FalCatalog::~FalCatalog() = default;

std::shared_ptr<const FalCatalog::AddedModels> FalCatalog::current() const {
  const std::scoped_lock held(lock);
  return addedModels;
}

const FalCatalog::Seen& FalCatalog::seen() const {
  thread_local Seen last;
  if (last.number != listNumber.load(std::memory_order_acquire)) {
    const std::scoped_lock held(lock);
    last = {listNumber.load(std::memory_order_relaxed),
            std::make_shared<const std::shared_ptr<const AddedModels>>(addedModels)};
  }
  return last;
}

std::shared_ptr<const FalModel> FalCatalog::find(const QString& id) const {
  // Compiled-in models are there as long as the program.
  if (const FalModel* found = builtInModel(id)) return {std::shared_ptr<const FalModel>(), found};
  const auto& keeper = seen().keeper;
  const AddedModels& own = **keeper;
  const auto place = own.places.constFind(id);
  if (place == own.places.cend()) return nullptr;
  return {keeper, &own.models[*place]};
}

std::optional<FalModel> FalCatalog::model(const QString& id) const {
  const auto found = find(id);
  if (!found) return std::nullopt;
  return *found;
}

std::vector<FalModel> FalCatalog::added() const { return current()->models; }

QSet<QString> FalCatalog::addedIDs() const {
  QSet<QString> ids;
  for (const FalModel& each : builtInModels()) ids.insert(each.id);
  for (const FalModel& each : current()->models) ids.insert(each.id);
  return ids;
}

std::vector<FalModel> FalCatalog::all() const {
  std::vector<FalModel> models = builtInModels();
  const auto own = current();
  models.insert(models.end(), own->models.begin(), own->models.end());
  return models;
}

void FalCatalog::add(const FalModel& model) {
  if (builtInModel(model.id)) return;
  std::vector<FalModel> models = added();
  const auto same =
      std::find_if(models.begin(), models.end(), [&](const FalModel& each) { return each.id == model.id; });
  if (same == models.end()) {
    models.push_back(model);
  } else {
    *same = model;
  }
  change(std::move(models));
}

std::optional<RemovedModel> FalCatalog::remove(const QString& id) {
  const auto own = current();
  const auto place = own->places.constFind(id);
  if (place == own->places.cend()) return std::nullopt;
  std::vector<FalModel> models = own->models;
  models.erase(models.begin() + static_cast<std::ptrdiff_t>(*place));
  change(std::move(models));
  return RemovedModel{own->models[*place], *place};
}

void FalCatalog::restore(const RemovedModel& removed) {
  if (find(removed.model.id)) return;
  std::vector<FalModel> models = added();
  models.insert(models.begin() + static_cast<std::ptrdiff_t>(std::min(removed.place, models.size())), removed.model);
  change(std::move(models));
}

void FalCatalog::change(std::vector<FalModel> models) {
  const QString text = textOf(models);
  std::shared_ptr<const AddedModels> next = std::make_shared<AddedModels>(std::move(models));
  {
    const std::scoped_lock held(lock);
    addedModels.swap(next);
    listNumber.store(nextListNumber(), std::memory_order_release);
  }
  // What this version could not read may be a newer one's models: it is kept before it is written over.
  const auto stored = settings->get<QString>(modelsKey());
  if (stored && !modelsFromText(stored->toUtf8()).complete) settings->set(unreadableKey(), *stored);
  settings->set(modelsKey(), text);
}

QString FalCatalog::displayName(const QString& id) const {
  if (const auto found = find(id)) return found->name;
  if (const auto name = listedName(id)) return *name;
  const QString prefix = u"fal-ai/"_s;
  return id.startsWith(prefix) ? id.mid(prefix.size()) : id;
}

std::vector<ModelOption> FalCatalog::options() const {
  std::vector<ModelOption> options;
  for (const FalModel& each : all()) options.push_back(each.option());
  return options;
}

std::vector<ComparisonModel> FalCatalog::comparisonModels() const {
  std::vector<ComparisonModel> offered;
  for (const FalModel& each : all()) {
    const bool worksOnMedia = each.videoInput.value_or(false) || each.audioInput.value_or(false);
    if (each.output == MediaType::audio || worksOnMedia) continue;
    offered.push_back({ProviderID::fal, each.option()});
  }
  return offered;
}

}  // namespace sorvan::catalogue
