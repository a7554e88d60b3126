#include "shell/inspector_presenter.h"

#include "account/charges.h"
#include "account/paying_with.h"
#include "base/ids.h"
#include "core/image_format.h"
#include "core/library_store.h"
#include "core/small_edits.h"
#include "shell/composer_texts.h"
#include "shell/inspector_sections.h"
#include "shell/inspector_texts.h"
#include "shell/job_displays.h"
#include "shell/location_facts.h"
#include "shell/locations.h"
#include "shell/recipes.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

#include <QFileInfo>

#include <algorithm>

namespace sorvan::shell {

namespace {

constexpr std::size_t mostPreviews = 4;
constexpr std::size_t mostCompared = 8;

void addRow(InspectorSection& section, const QString& label, const QString& value, bool monospaced = false) {
  if (!value.isEmpty()) section.rows.push_back({label, value, monospaced});
}

QString ratioText(const core::GenerationRequest& request) {
  const core::ImageFormat* format = core::ImageFormat::find(request.size);
  return format ? QStringLiteral("%1 %2").arg(format->ratio, format->name) : QString();
}

QString factsOf(const core::Asset& asset, Instant now) {
  QStringList facts;
  if (asset.width > 0 && asset.height > 0) facts << QStringLiteral("%1 × %2").arg(asset.width).arg(asset.height);
  if (asset.duration && asset.type() != core::MediaType::image) facts << clockText(*asset.duration);
  facts << QFileInfo(asset.localFilePath).suffix().toUpper() << fileSizeText(asset.fileSize)
        << dayAndTimeText(asset.createdAt, now);
  facts.removeAll(QString());
  return facts.join(QStringLiteral(" · "));
}

QString jobTitle(JobState state) {
  switch (state) {
    case JobState::queued:
      return texts::generationQueued;
    case JobState::running:
      return texts::generationRunning;
    case JobState::failed:
      return texts::generationFailed;
    case JobState::cancelled:
    case JobState::salvaging:
      return texts::generationCancelled;
    case JobState::complete:
      return texts::generationComplete;
  }
  return {};
}

std::vector<InspectorButton> jobButtons(const JobDisplay& job) {
  std::vector<InspectorButton> buttons;
  switch (job.action) {
    case JobAction::cancel:
      buttons.push_back({ActionId::cancelJob, texts::cancel, false});
      break;
    case JobAction::retry:
      buttons.push_back({ActionId::retryJob, texts::retry, true});
      break;
    case JobAction::saveResult:
      buttons.push_back({ActionId::saveResult, texts::saveResult, true});
      break;
    case JobAction::submitAgain:
      buttons.push_back({ActionId::submitAgain, texts::submitAgain, false});
      break;
    case JobAction::none:
    case JobAction::show:
      break;
  }
  if (job.canSaveRawResult) buttons.push_back({ActionId::saveRawResult, texts::saveRawResult, false});
  if (!job.prompt.isEmpty()) buttons.push_back({ActionId::reusePrompt, texts::reusePrompt, false});
  buttons.push_back({ActionId::copyJobDetails, texts::copyDetails, false});
  return buttons;
}

}  // namespace

InspectorPresenter::InspectorPresenter(core::LibraryStore& store, WorkspaceState& state, JobDisplays& jobs,
                                       QObject* parent)
    : QObject(parent), store_(store), state_(state), jobs_(jobs), overview_(std::make_unique<LocationOverview>()) {
  connect(&state_, &WorkspaceState::locationChanged, &changeSoon_, &OncePerTurn::request);
  connect(&state_, &WorkspaceState::modeChanged, &changeSoon_, &OncePerTurn::request);
  connect(&store_, &core::LibraryStore::revisionChanged, &changeSoon_, &OncePerTurn::request);
  connect(&store_, &core::LibraryStore::workspaceChanged, &changeSoon_, &OncePerTurn::request);
  connect(&state_, &WorkspaceState::inspectedChanged, &changeSoon_, &OncePerTurn::request);
  connect(&state_, &WorkspaceState::selectionChanged, &changeSoon_, &OncePerTurn::request);
  connect(&jobs_, &JobDisplays::ticked, this, &InspectorPresenter::tick);
}

InspectorPresenter::~InspectorPresenter() = default;

void InspectorPresenter::tick() {
  const core::JobRef job = store_.job(state_.inspectedId());
  if (job && job->isActive()) Q_EMIT changed();
}

InspectorDisplay InspectorPresenter::display() const {
  const QUuid inspected = state_.inspectedId();
  if (store_.asset(inspected)) return itemDisplay(inspected);
  if (store_.job(inspected)) return selectedJobDisplay(inspected);
  const qsizetype selected = state_.selection().size();
  if (selected < 2) return overview_->display(store_, state_.location(), jobs_.spend());
  InspectorDisplay display;
  display.subject = InspectorSubject::severalItems;
  const auto items = selectedItems();
  const QString count = countText(selected);
  display.title = items.empty() ? texts::severalGenerations(count) : texts::severalItems(count);
  if (items.size() > 1) describeItems(display, items);
  return display;
}

// What several items have in common, and what can be done with all of them.
void InspectorPresenter::describeItems(InspectorDisplay& display, const std::vector<core::AssetRef>& items) const {
  const std::size_t shown = std::min<std::size_t>(items.size(), mostPreviews);
  for (std::size_t index = 0; index < shown; ++index)
    display.previews.push_back(store_.thumbnailOf(*items[index]).value_or(QString()));
  const core::Asset& first = *items.front();
  const CommonFacts common = commonFactsOf(items);
  display.hasRating = common.live;
  display.rating = common.oneRating ? first.rating.value_or(0) : 0;
  display.favorite = common.favorites == static_cast<qsizetype>(items.size());
  display.statusText = common.oneStatus ? statusText(first.status()) : texts::mixed;
  display.statusToken = common.oneStatus ? rawValue(first.status()) : QString();
  display.canChangeStatus = common.live;
  if (common.live && items.size() <= mostCompared)
    display.buttons = {{ActionId::compareItems, texts::compareItems(static_cast<qsizetype>(items.size())), false}};
  display.sections.push_back(commonSection(store_, items, common));
  display.sections.back().headActions = {{ActionId::moveToProject, texts::moveToProjectButton}};
  if (!common.live) display.sections.back().headActions.clear();
}

// A picture shows itself; where its file is gone, what is left of it.
QString InspectorPresenter::previewOf(const core::Asset& asset) const {
  const QString file = store_.fileOf(asset);
  if (asset.type() == core::MediaType::image && QFileInfo::exists(file)) return file;
  return store_.thumbnailOf(asset).value_or(QString());
}

InspectorDisplay InspectorPresenter::itemDisplay(QUuid id) const {
  const core::AssetRef asset = store_.asset(id);
  InspectorDisplay display;
  display.subject = InspectorSubject::item;
  display.id = id;
  display.title = asset->filename();
  display.facts = factsOf(*asset, store_.now());
  display.previewPath = previewOf(*asset);
  display.hasRating = true;
  display.rating = asset->rating.value_or(0);
  display.favorite = asset->favorite;
  display.statusText = statusText(asset->status());
  display.statusToken = rawValue(asset->status());
  display.canChangeStatus = !asset->isTrashed();
  if (asset->type() == core::MediaType::image && !asset->isTrashed())
    display.buttons = {{ActionId::useAsReference, texts::useAsReference, false, texts::referenceTile},
                       {ActionId::markAreas, texts::markAreas, false}};
  display.buttons.push_back({ActionId::showLineage, texts::lineageMode, false});
  display.moreTitle = texts::moreTile;
  display.sections = itemSections(*asset);
  return display;
}

std::vector<InspectorSection> InspectorPresenter::itemSections(const core::Asset& asset) const {
  std::vector<InspectorSection> sections = promptSections(store_, asset.id);
  const auto addLinks = [&sections](InspectorSection section) {
    if (!section.links.empty()) sections.push_back(std::move(section));
  };
  if (const core::GenerationRef generation = store_.generationOf(asset.id)) {
    sections.push_back(madeWith(*generation));
    addLinks(referencesSection(store_, *generation));
  }
  addLinks(parentsSection(store_, asset.id));
  addLinks(childrenSection(store_, asset.id));
  const QString notes = asset.notes.value_or(QString());
  if (!notes.isEmpty()) sections.push_back({texts::notesSection, notes, {}});
  if (!asset.isTrashed()) sections.push_back(projectSectionOf(store_, asset));
  sections.push_back(fileSectionOf(store_, asset));
  return sections;
}

InspectorSection InspectorPresenter::madeWith(const core::Generation& generation) const {
  InspectorSection section{texts::madeWithSection, {}, {}};
  addRow(section, texts::modelLabel, jobs_.modelName(generation.model));
  const auto recipe = generation.recipe();
  if (recipe) {
    const core::AssetRef asset = store_.asset(generation.assetID);
    if (!asset || asset->type() != core::MediaType::audio) addRow(section, texts::ratioLabel, ratioText(*recipe));
  }
  if (recipe) {
    addRow(section, texts::shotLabel, recipe->shot.value_or(QString()));
    addRow(section, texts::varianceLabel, recipe->variance.value_or(QString()));
  }
  addRow(section, texts::negativePromptLabel, generation.negativePrompt.value_or(QString()));
  if (const auto seed = seedOf(store_, generation.assetID)) {
    addRow(section, texts::seedLabel, QString::number(*seed), true);
    section.headActions = {{ActionId::useSeed, texts::useSeed}};
  }
  const account::Charge charge = account::chargeOf(generation, nullptr);
  const account::Spend spend = jobs_.spend();
  section.rows.push_back({texts::costLabel, charge.costDisplay(spend), false, account::spendNote(charge, spend)});
  addRow(section, texts::paidWithLabel, charge.paidWith());
  if (generation.generationDuration) addRow(section, texts::tookLabel, clockText(*generation.generationDuration));
  addRow(section, texts::modelIdLabel, generation.model, true);
  addRow(section, texts::requestLabel, generation.providerRequestID.value_or(QString()), true);
  return section;
}

InspectorMarks InspectorPresenter::marksOf(const core::GenerationRequest& request) const {
  InspectorMarks marks;
  if (!request.markup || request.referenceIDs.empty()) return marks;
  const core::AssetRef original = store_.asset(request.referenceIDs.front());
  if (!original) return marks;
  for (const core::MarkupBox& box : *request.markup) marks.areas.emplace_back(box.x, box.y, box.width, box.height);
  marks.title = texts::markedAreas;
  marks.countText = texts::boxesCount(static_cast<int>(marks.areas.size()));
  marks.picturePath = store_.fileOf(*original);
  return marks;
}

InspectorDisplay InspectorPresenter::displayOfJob(QUuid id) const {
  InspectorDisplay display;
  const core::JobRef job = store_.job(id);
  if (!job) return display;
  const JobDisplay shown = jobs_.display(*job);
  display.subject = InspectorSubject::job;
  display.id = id;
  display.jobState = shown.state;
  display.title = jobTitle(shown.state);
  QStringList facts{shown.modelName, dayAndTimeText(job->createdAt, store_.now()), shown.elapsedText};
  facts.removeAll(QString());
  display.facts = facts.join(QStringLiteral(" · "));
  display.previewPath = shown.thumbnailPath;
  display.message = shown.message;
  display.detail = shown.detail;
  display.canSaveRawResult = shown.canSaveRawResult;
  display.buttons = jobButtons(shown);
  display.sections = promptSections(store_, id);
  if (const auto request = job->request()) {
    display.marks = marksOf(*request);
    display.sections.push_back(settingsOf(*request, jobs_.modelName(request->model)));
    InspectorSection references = referencesOf(store_, *request);
    if (!references.links.empty()) display.sections.push_back(std::move(references));
  }
  display.sections.push_back(outcomeOf(*job, shown));
  return display;
}

// Beside what is known of it, the way to its page and to its results.
InspectorDisplay InspectorPresenter::selectedJobDisplay(QUuid id) const {
  InspectorDisplay display = displayOfJob(id);
  const bool open = state_.mode().kind == ModeKind::generation && state_.mode().subject == id;
  if (!open && state_.isAvailable(ModeKind::generation))
    display.buttons.push_back({ActionId::openItem, texts::openGeneration, false});
  InspectorSection results{texts::resultsSection, {}, {}};
  for (const QUuid& item : resultsOf(id)) {
    const core::AssetRef asset = store_.asset(item);
    results.links.push_back({item, asset->filename(), {}, store_.thumbnailOf(*asset).value_or(QString())});
  }
  if (!results.links.empty() && !open) display.sections.insert(display.sections.begin(), std::move(results));
  return display;
}

InspectorSection InspectorPresenter::outcomeOf(const core::GenerationJob& job, const JobDisplay& shown) const {
  InspectorSection section{texts::requestSection, {}, {}};
  const auto request = job.request();
  if (request) addRow(section, texts::paidWithLabel, account::paidWith(rawValue(request->provider)));
  addRow(section, texts::savedToLabel, shown.destination);
  addRow(section, texts::costLabel, shown.costText);
  addRow(section, texts::startedLabel, dayAndTimeText(job.createdAt, store_.now()));
  if (job.finishedAt) addRow(section, texts::endedLabel, dayAndTimeText(*job.finishedAt, store_.now()));
  addRow(section, texts::requestLabel, job.providerRequestID.value_or(QString()), true);
  addRow(section, texts::jobLabel, uuidText(job.id), true);
  return section;
}

std::vector<QUuid> InspectorPresenter::resultsOf(QUuid job) const {
  std::vector<QUuid> results;
  for (const core::AssetRef& item : store_.outputs(job))
    if (!item->isTrashed()) results.push_back(item->id);
  return results;
}

std::vector<core::AssetRef> InspectorPresenter::selectedItems() const {
  std::vector<core::AssetRef> items;
  for (const QUuid& id : state_.selection())
    if (core::AssetRef asset = store_.asset(id)) items.push_back(std::move(asset));
  return items;
}

void InspectorPresenter::toggleFavorite() {
  const auto items = selectedItems();
  const bool allMarked = std::all_of(items.begin(), items.end(), [](const auto& item) { return item->favorite; });
  core::setFavorite(store_, items, !allMarked);
}

void InspectorPresenter::setRating(int stars) { core::setRating(store_, selectedItems(), stars); }

}  // namespace sorvan::shell
