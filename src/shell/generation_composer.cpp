#include "shell/generation_composer.h"

#include "core/library_store.h"
#include "generation/job_queue.h"
#include "shell/alerts_presenter.h"
#include "shell/composer_controls.h"
#include "shell/composer_texts.h"
#include "shell/locations.h"
#include "shell/model_prices.h"
#include "shell/references_presenter.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

#include <QRandomGenerator>

#include <algorithm>

namespace sorvan::shell {

namespace {

// What a dice roll may show: every service takes a number of this size.
constexpr quint32 largestRolledSeed = 2'147'483'647;

bool hasSound(const std::vector<SelectableModel>& models) { return !models.empty() && makesSound(models.front()); }

}  // namespace

GenerationComposer::GenerationComposer(Ports ports, QObject* parent)
    : ComposerPresenter(parent),
      ports_(std::move(ports)),
      keeper_(ports_.store, ports_.state, ports_.queue.clock()),
      router_(ports_.store, ports_.state, ports_.desk),
      preview_(ports_.store.services().clock) {
  if (ports_.interpreting) {
    CommandReview::Ports review{ports_.interpreting->interpreter, ports_.interpreting->books, {}, {}, {}};
    review.situation = [this] { return situation(); };
    review.report = [this](const QString& text, bool isError) { ports_.state.report(text, isError); };
    review.newKey = [] { return QUuid::createUuid(); };
    review_ = std::make_unique<CommandReview>(std::move(review));
    connect(review_.get(), &CommandReview::changed, this, &GenerationComposer::changed);
  }
  connectState();
  noteChoice();
}

void GenerationComposer::connectState() {
  ComposerState& state = ports_.state;
  connect(&state, &ComposerState::changed, this, &GenerationComposer::changed);
  connect(&state, &ComposerState::changed, this, &GenerationComposer::noteChoice);
  connect(&state, &ComposerState::changed, this, &GenerationComposer::noteContext);
  connect(&state, &ComposerState::draftEdited, this, [this] {
    if (review_) review_->draftEdited();
    preview_.schedule(ports_.state.draft(), ports_.state.mode());
  });
  connect(&state, &ComposerState::draftReplaced, this, &GenerationComposer::draftReplaced);
  connect(&state, &ComposerState::messageChanged, this, &GenerationComposer::messageChanged);
  connect(&state, &ComposerState::focusRequested, this, &GenerationComposer::focusRequested);
  connect(&preview_, &ComposerIntentPreview::changed, this, &GenerationComposer::changed);
  // A voice is paid by the character.
  connect(&preview_, &ComposerIntentPreview::textRead, this, [this] {
    if (composesSound(ports_.state)) Q_EMIT changed();
  });
  connect(&ports_.prices, &ModelPrices::changed, this, &GenerationComposer::changed);
  if (ports_.references)
    connect(ports_.references, &ReferencesPresenter::importingChanged, this, &GenerationComposer::changed);
  connect(&ports_.payment, &PaymentDesk::changed, this, &GenerationComposer::changed);
  connect(&ports_.window, &WorkspaceState::locationChanged, this, &GenerationComposer::adoptLocation);
  connect(&ports_.window, &WorkspaceState::selectionChanged, this, [this] {
    if (review_) review_->selectionChanged();
  });
  connect(&ports_.store, &core::LibraryStore::pendingMarksChanged, this, &GenerationComposer::takePendingMarks);
}

// A command that is understood for one place or picture is not run for another.
void GenerationComposer::noteContext() {
  const std::pair context{ports_.state.projectId(), ports_.state.request().referenceIDs};
  if (context_ == context) return;
  context_ = context;
  if (review_) review_->contextChanged();
}

GenerationComposer::~GenerationComposer() = default;

ComposerDisplay GenerationComposer::display() const {
  ComposerDisplay display = makeComposerControls(ports_.state);
  display.destination = destinationName(ports_.store, ports_.state.projectId());
  display.expanded = ports_.state.isExpanded();
  display.references = attachedReferences();
  fillEstimate(display);
  fillNotices(display);
  fillPayer(display);
  fillCommand(display);
  fillSubmit(display);
  return display;
}

std::vector<ModelSection> GenerationComposer::modelSections() const {
  return makeModelSections(ports_.state, [this](const QString& id) { return ports_.prices.text(id); });
}

void GenerationComposer::showModels() {
  QStringList ids;
  for (const SelectableModel& model : ports_.state.allModels())
    if (makesSound(model) == composesSound(ports_.state)) ids << model.record.id;
  ports_.prices.refresh(ids);
}

void GenerationComposer::refreshPrices() {
  QStringList ids;
  for (const SelectableModel& model : ports_.state.chosenModels()) ids << model.record.id;
  ports_.prices.refresh(ids);
}

// A model that is chosen is about to cost something.
void GenerationComposer::noteChoice() {
  const QSet<QString>& chosen = ports_.state.selectedModels();
  if (chosen == pricedChoice_) return;
  pricedChoice_ = chosen;
  if (!composesSound(ports_.state) && !chosen.isEmpty()) visualChoice_ = chosen;
  refreshPrices();
}

MessageLine GenerationComposer::message() const { return {ports_.state.message(), ports_.state.messageIsError()}; }
QString GenerationComposer::draft() const { return ports_.state.draft(); }

void GenerationComposer::editDraft(const QString& text) { ports_.state.updateLiveDraft(text); }
void GenerationComposer::refusePaste(qsizetype characters) {
  ports_.state.report(texts::promptWouldBeTooLong(countText(characters), countText(longestPastedPrompt)), true);
}
void GenerationComposer::chooseOnlyModel(const QString& key) { ports_.state.chooseOnly(key); }
void GenerationComposer::chooseSize(const QString& size) { ports_.state.setSize(size); }
void GenerationComposer::chooseCount(int count) { ports_.state.setCount(count); }
void GenerationComposer::chooseSetting(const QString& field, const QString& value) {
  ports_.state.setOption(field, value);
}
void GenerationComposer::setSettingsShown(bool shown) { ports_.state.setAdvanced(shown); }
void GenerationComposer::editSeed(const QString& text) { ports_.state.setSeedText(text); }
void GenerationComposer::setExpanded(bool expanded) { ports_.state.setExpanded(expanded); }
void GenerationComposer::focus() { ports_.state.focus(); }

void GenerationComposer::setModelChosen(const QString& key, bool chosen) {
  // Pictures and clips combine with one another; a sound stands alone.
  const auto& all = ports_.state.allModels();
  const auto model =
      std::find_if(all.begin(), all.end(), [&key](const auto& candidate) { return candidate.key == key; });
  if (model == all.end()) return;
  if (chosen && (makesSound(*model) || hasSound(ports_.state.chosenModels()))) {
    ports_.state.chooseOnly(key);
  } else {
    ports_.state.selectModel(key, chosen);
  }
}

void GenerationComposer::chooseLength(const QString& value) {
  const auto chosen = ports_.state.chosenModels();
  if (chosen.size() == 1) {
    if (const Setting* setting = lengthSetting(chosen.front().record)) ports_.state.setOption(setting->field, value);
    return;
  }
  TextByKey lengths;
  for (const video_length::Choice& row : lengthPlan(ports_.state.request(), chosen)) lengths.insert(row.id, value);
  ports_.state.setLengths(lengths);
}

void GenerationComposer::chooseLengthOf(const QString& model, const QString& value) {
  TextByKey lengths = ports_.state.request().lengthByModel.value_or(TextByKey());
  lengths.insert(model, value);
  ports_.state.setLengths(lengths);
}

void GenerationComposer::rollSeed() {
  ports_.state.setSeedText(QString::number(QRandomGenerator::global()->bounded(largestRolledSeed)));
}

void GenerationComposer::startAudio() {
  if (!hasSound(ports_.state.chosenModels())) {
    const auto& all = ports_.state.allModels();
    const auto sound = std::find_if(all.begin(), all.end(), makesSound);
    if (sound != all.end()) ports_.state.chooseOnly(sound->key);
  }
  ports_.state.focus();
}

void GenerationComposer::startImages() {
  if (!composesSound(ports_.state)) return;
  const QSet<QString> before = visualChoice_.isEmpty() ? QSet<QString>{ComposerState::defaultModel} : visualChoice_;
  bool any = false;
  for (const SelectableModel& model : ports_.state.allModels()) {
    if (!before.contains(model.key)) continue;
    any ? ports_.state.selectModel(model.key, true) : ports_.state.chooseOnly(model.key);
    any = true;
  }
  if (!any) ports_.state.chooseOnly(ComposerState::defaultModel);
}

void GenerationComposer::keepNow() { keeper_.flush(); }

std::vector<ComposerDestination> GenerationComposer::destinations() const {
  const auto chosen = ports_.state.projectId();
  std::vector<ComposerDestination> places{{std::nullopt, destinationName(ports_.store, std::nullopt), !chosen}};
  for (const core::ProjectRef& project : ports_.store.projects())
    if (!project->archived || chosen == project->id) places.push_back({project->id, project->name, chosen == project->id});
  return places;
}

void GenerationComposer::chooseDestination(std::optional<QUuid> project) { ports_.state.setProject(project); }

void GenerationComposer::adoptLocation() {
  const QString& location = ports_.window.location();
  if (location == inboxLocation) ports_.state.setProject(std::nullopt);
  if (const auto project = locationProject(ports_.store, location)) ports_.state.setProject(project);
}

}  // namespace sorvan::shell
