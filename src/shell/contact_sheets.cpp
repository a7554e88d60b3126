#include "shell/contact_sheets.h"

#include "base/ids.h"
#include "base/text.h"
#include "core/history.h"
#include "core/sheet_listing.h"
#include "generation/enqueue.h"
#include "shell/sheet_texts.h"
#include "shell/texts.h"
#include "shell/workspace_state.h"

#include <QSet>

#include <algorithm>

namespace sorvan::shell {

namespace {

constexpr std::size_t fewest = 2;
constexpr std::size_t most = 8;

QSet<QUuid> setOf(const std::vector<QUuid>& ids) { return {ids.begin(), ids.end()}; }

// The prompt that all items were made with; empty when they differ or one has none.
QString sharedPrompt(const core::LibraryStore& store, const std::vector<core::AssetRef>& assets) {
  QString shared;
  for (const core::AssetRef& asset : assets) {
    const core::GenerationRef generation = store.generationOf(asset->id);
    if (!generation || base::isBlank(generation->prompt)) return {};
    if (shared.isEmpty()) shared = generation->prompt;
    if (generation->prompt != shared) return {};
  }
  return shared;
}

QString titleFor(const core::LibraryStore& store, const std::vector<core::AssetRef>& assets) {
  const QString prompt = sharedPrompt(store, assets);
  return prompt.isEmpty() ? texts::comparisonOf(static_cast<qsizetype>(assets.size()))
                          : generation::contactSheetTitle(prompt);
}

core::AssetRef liveAsset(const core::LibraryStore& store, const QUuid& id) {
  core::AssetRef asset = store.asset(id);
  return asset && !asset->isTrashed() ? asset : nullptr;
}

template <class Change>
void changeSheet(core::LibraryStore& store, const QString& name, const core::ContactSheetRef& sheet, Change&& change) {
  core::performUndoable(store, name, {{}, core::LibraryTables::contactSheets}, [&] {
    change(store.context().edit(sheet));
    store.save(core::LibraryTables::contactSheets);
  });
}

}  // namespace

core::ContactSheetRef createContactSheet(core::LibraryStore& store, const std::vector<core::AssetRef>& assets,
                                         const std::optional<QUuid>& project) {
  if (!store.hasWorkspace()) throw SorvanError(texts::chooseWorkspaceFirst);
  if (assets.size() < fewest || assets.size() > most) throw SorvanError(texts::selectToCompare);
  const core::UndoScope scope{{}, core::LibraryTables::contactSheets};
  return core::undoable(store, texts::newContactSheet, scope, [&] {
    std::vector<QUuid> ids;
    for (const core::AssetRef& asset : assets) ids.push_back(asset->id);
    const core::ContactSheetRef sheet = store.context().insert(
        core::ContactSheet(project, titleFor(store, assets), std::nullopt, std::move(ids), store.now()));
    store.save(core::LibraryTables::contactSheets);
    return sheet;
  });
}

std::vector<QUuid> sheetAssetIDs(const core::LibraryStore& store, const core::ContactSheet& sheet) {
  std::vector<QUuid> ids = core::listedOn(store, sheet);
  std::erase_if(ids, [&](const QUuid& id) { return !liveAsset(store, id); });
  return ids;
}

void setContactSheetAssets(core::LibraryStore& store, const core::ContactSheetRef& sheet,
                           const std::vector<QUuid>& ids) {
  const QSet<QUuid> wanted = setOf(ids);
  const std::vector<QUuid> shown = sheetAssetIDs(store, *sheet);
  const QSet<QUuid> shownBefore = setOf(shown);
  QSet<QUuid> outputs;
  if (sheet->comparisonID)
    for (const core::JobRef& job : store.comparisonJobs(*sheet->comparisonID))
      for (const core::GenerationRef& generation : store.generationsOf(job->id)) outputs.insert(generation->assetID);
  changeSheet(store, texts::changeContactSheet, sheet, [&](core::ContactSheet& changed) {
    // 1. What is shown and wanted no more is taken out, and what is wanted again is no longer out.
    std::erase_if(changed.excludedAssetIDs, [&](const QUuid& id) { return wanted.contains(id); });
    for (const QUuid& id : shown)
      if (!wanted.contains(id)) changed.excludedAssetIDs.push_back(id);
    // 2. The list: what was asked for, then what it holds unseen. Outputs are listed by their jobs.
    std::vector<QUuid> list;
    std::ranges::copy_if(ids, std::back_inserter(list), [&](const QUuid& id) { return !outputs.contains(id); });
    for (const QUuid& id : changed.assetIDs)
      if (!shownBefore.contains(id) && !wanted.contains(id)) list.push_back(id);
    changed.assetIDs = std::move(list);
    changed.updatedAt = store.now();
  });
}

namespace {

bool isAt(const core::ContactSheet& sheet, const QString& location) {
  if (location == trashLocation) return sheet.deletedAt.has_value();
  if (sheet.deletedAt) return false;
  if (location == inboxLocation) return !sheet.projectID;
  const QUuid project = base::uuidFromText(location);
  return project.isNull() || sheet.projectID == project;
}

// Everything that a sheet can be found by, folded.
QString searchTextOf(const core::LibraryStore& store, const core::ContactSheet& sheet,
                     const std::function<QString(const QString&)>& modelName) {
  QStringList words{sheet.title};
  if (sheet.projectID)
    if (const core::ProjectRef project = store.project(*sheet.projectID)) words << project->name;
  const auto addModel = [&](const QString& model) { words << model << (modelName ? modelName(model) : QString()); };
  if (sheet.comparisonID)
    for (const core::JobRef& job : store.comparisonJobs(*sheet.comparisonID))
      if (const auto request = job->request()) addModel(request->model);
  for (const QUuid& id : core::listedOn(store, sheet))
    if (const core::GenerationRef generation = store.generationOf(id)) addModel(generation->model);
  return base::foldForSearch(words.join(u'\n'));
}

}  // namespace

std::vector<core::ContactSheetRef> sheetsAt(const core::LibraryStore& store, const QString& location,
                                            const QString& query,
                                            const std::function<QString(const QString&)>& modelName) {
  const QString needle = base::foldForSearch(query.trimmed());
  std::vector<core::ContactSheetRef> sheets;
  for (const core::ContactSheetRef& sheet : store.contactSheets())
    if (isAt(*sheet, location) && (needle.isEmpty() || searchTextOf(store, *sheet, modelName).contains(needle)))
      sheets.push_back(sheet);
  std::ranges::stable_sort(sheets, std::greater<>(), [](const auto& sheet) { return sheet->updatedAt; });
  return sheets;
}

void renameContactSheet(core::LibraryStore& store, const core::ContactSheetRef& sheet, const QString& title) {
  const QString wanted = title.trimmed();
  if (wanted.isEmpty() || wanted == sheet->title) return;
  changeSheet(store, texts::renameContactSheet, sheet, [&](core::ContactSheet& changed) {
    changed.title = wanted;
    changed.updatedAt = store.now();
  });
}

void deleteContactSheet(core::LibraryStore& store, const core::ContactSheetRef& sheet) {
  changeSheet(store, texts::deleteContactSheet, sheet,
              [&](core::ContactSheet& changed) { changed.deletedAt = store.now(); });
}

void restoreContactSheet(core::LibraryStore& store, const core::ContactSheetRef& sheet) {
  changeSheet(store, texts::restoreContactSheet, sheet,
              [&](core::ContactSheet& changed) { changed.deletedAt = std::nullopt; });
}

void backfillContactSheets(core::LibraryStore& store) {
  QSet<QUuid> known;
  for (const core::ContactSheetRef& sheet : store.contactSheets())
    if (sheet->comparisonID) known.insert(*sheet->comparisonID);
  // Only a request that names a comparison is decoded: most do not.
  for (const core::JobRef& job : store.jobs()) {
    if (!job->requestData.contains("\"comparisonID\"")) continue;
    const auto request = job->request();
    if (!request || !request->comparisonID || known.contains(*request->comparisonID)) continue;
    known.insert(*request->comparisonID);
    store.context().insert(core::ContactSheet(job->projectID, generation::contactSheetTitle(request->prompt),
                                              request->comparisonID, {}, job->createdAt));
  }
}

// ---- Places

core::ContactSheetRef sheetFor(const core::LibraryStore& store, const ContactSheetSource& source) {
  const auto* stored = std::get_if<StoredSheet>(&source);
  const auto* batch = std::get_if<ComparisonBatch>(&source);
  for (const core::ContactSheetRef& sheet : store.contactSheets()) {
    if (stored && sheet->id == stored->sheet) return sheet;
    if (batch && sheet->comparisonID == batch->comparison) return sheet;
  }
  return nullptr;
}

namespace {

class Placing {
 public:
  Placing(const core::LibraryStore& store, QSet<QUuid> excluded) : store_(store), placed_(std::move(excluded)) {}

  void addJob(const core::JobRef& job) {
    places_.jobs.push_back(job);
    places_.running = places_.running || job->isActive();
    int index = 0;
    for (const core::GenerationRef& generation : store_.generationsOf(job->id)) addOutput(job, index++, generation);
    if (job->isActive()) {
      // A count that was never set still makes one.
      const auto request = job->request();
      for (const int count = request ? std::max(request->count, 1) : 1; index < count; ++index)
        addSlot(job, index, nullptr);
    } else if (job->status != core::jobStatus::complete) {
      addSlot(job, index, nullptr);
    }
  }

  void addByHand(const QUuid& id) {
    if (placed_.contains(id)) return;
    placed_.insert(id);
    if (core::AssetRef asset = liveAsset(store_, id))
      places_.slots.push_back({base::uuidText(id), nullptr, 0, std::move(asset)});
  }

  ContactSheetPlaces take() { return std::move(places_); }

 private:
  void addOutput(const core::JobRef& job, int index, const core::GenerationRef& generation) {
    if (placed_.contains(generation->assetID)) return;
    placed_.insert(generation->assetID);
    if (core::AssetRef asset = liveAsset(store_, generation->assetID)) addSlot(job, index, std::move(asset));
  }

  void addSlot(const core::JobRef& job, int index, core::AssetRef asset) {
    places_.slots.push_back(
        {QStringLiteral("%1-%2").arg(base::uuidText(job->id)).arg(index), job, index, std::move(asset)});
  }

  const core::LibraryStore& store_;
  QSet<QUuid> placed_;  // and what was taken out of the sheet
  ContactSheetPlaces places_;
};

}  // namespace

ContactSheetPlaces placesOf(const core::LibraryStore& store, const ContactSheetSource& source) {
  const core::ContactSheetRef sheet = sheetFor(store, source);
  Placing placing(store, sheet ? setOf(sheet->excludedAssetIDs) : QSet<QUuid>());
  std::optional<QUuid> comparison = sheet ? sheet->comparisonID : std::nullopt;
  if (const auto* batch = std::get_if<ComparisonBatch>(&source)) comparison = batch->comparison;
  if (comparison)
    for (const core::JobRef& job : store.comparisonJobs(*comparison)) placing.addJob(job);
  if (const auto* selection = std::get_if<PassingSelection>(&source))
    for (const QUuid& id : selection->assets) placing.addByHand(id);
  if (sheet)
    for (const QUuid& id : sheet->assetIDs) placing.addByHand(id);
  return placing.take();
}

std::vector<core::AssetRef> assetsOf(const ContactSheetPlaces& places) {
  std::vector<core::AssetRef> assets;
  for (const ComparisonSlot& slot : places.slots)
    if (slot.asset) assets.push_back(slot.asset);
  return assets;
}

}  // namespace sorvan::shell
