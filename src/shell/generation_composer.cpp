#include "shell/generation_composer.h"

#include "account/spend.h"
#include "base/ids.h"
#include "base/text.h"
#include "catalogue/audio_models.h"
#include "core/library_store.h"
#include "generation/enqueue.h"
#include "generation/job_queue.h"
#include "shell/composer_controls.h"
#include "shell/locations.h"
#include "shell/model_prices.h"
#include "shell/texts.h"
#include "shell/wording.h"
#include "shell/workspace_state.h"

#include <QPointer>
#include <QRandomGenerator>

#include <algorithm>
#include <chrono>

namespace sorvan::shell {

namespace {

// Long enough that a typist is not followed by a disk, short enough that a power cut costs a few words.
constexpr std::chrono::milliseconds keepDelay{400};
// What a dice roll may show: every service takes a number of this size.
constexpr quint32 largestRolledSeed = 2'147'483'647;

std::optional<qint64> readSeed(const QString& text) {
  if (text.trimmed().isEmpty()) return std::nullopt;
  bool isNumber = false;
  const qint64 seed = text.trimmed().toLongLong(&isNumber, 10);
  if (!isNumber || seed < 0) throw SorvanError(texts::seedNotNumber);
  return seed;
}

QString whatIsMade(const FalModel& model) {
  switch (audioKindOf(model.id).value_or(AudioKind::effect)) {
    case AudioKind::voice:
      return texts::theVoice;
    case AudioKind::music:
      return texts::theMusic;
    case AudioKind::effect:
      break;
  }
  return texts::theEffect;
}

// A model that cannot work without more words than the prompt says so before anything is queued.
void requireTexts(const FalModel& model, const TextByKey& options) {
  for (const TextInput& input : model.texts.value_or(std::vector<TextInput>()))
    if (input.required && options.value(input.field).trimmed().isEmpty())
      throw SorvanError(texts::textMissing(model.name, input.label));
}

bool hasSound(const std::vector<SelectableModel>& models) { return !models.empty() && makesSound(models.front()); }

}  // namespace

GenerationComposer::GenerationComposer(Ports ports, QObject* parent)
    : ComposerPresenter(parent), ports_(std::move(ports)) {
  ComposerState& state = ports_.state;
  connect(&state, &ComposerState::changed, this, &GenerationComposer::changed);
  connect(&state, &ComposerState::changed, this, &GenerationComposer::scheduleKeeping);
  connect(&state, &ComposerState::changed, this, &GenerationComposer::noteChoice);
  connect(&state, &ComposerState::draftEdited, this, &GenerationComposer::scheduleKeeping);
  connect(&ports_.prices, &ModelPrices::changed, this, &GenerationComposer::changed);
  connect(&state, &ComposerState::draftReplaced, this, &GenerationComposer::draftReplaced);
  connect(&state, &ComposerState::messageChanged, this, &GenerationComposer::messageChanged);
  connect(&state, &ComposerState::focusRequested, this, &GenerationComposer::focusRequested);
  // What was typed last belongs to the workspace that is being left; the draft of the next is known once it is open.
  const QPointer<GenerationComposer> self(this);
  ports_.store.beforeClose.push_back([self](core::LibraryStore&) {
    if (self) self->keepNow();
  });
  ports_.store.afterOpen.push_back([self](core::LibraryStore&) {
    if (self) self->restoreKept();
  });
  connect(&ports_.window, &WorkspaceState::locationChanged, this, &GenerationComposer::adoptLocation);
  connect(&ports_.store, &core::LibraryStore::pendingMarksChanged, this, &GenerationComposer::takePendingMarks);
  restoreKept();
  noteChoice();
}

GenerationComposer::~GenerationComposer() = default;

ComposerDisplay GenerationComposer::display() const {
  ComposerDisplay display = makeComposerControls(ports_.state);
  const bool hasPrompt = !isBlank(ports_.state.draft());
  display.destination = destinationName(ports_.store, ports_.state.projectId());
  if (hasPrompt) display.estimate = estimate();
  if (!display.estimate.isEmpty()) display.estimateTooltip = texts::estimateTooltip;
  display.submitEmphasised = hasPrompt;
  display.submitBusy = submitting_;
  display.submitTooltip = submitting_ ? texts::waitingForKey : hasPrompt ? QString() : texts::emptyPromptTooltip;
  display.expanded = ports_.state.isExpanded();
  display.references = attachedReferences();
  return display;
}

// The total of all chosen models, or nothing when one of them cannot be told: no figure rather than a false one.
QString GenerationComposer::estimate() const {
  const core::Billing billing = ports_.queue.ports().billing();
  const auto chosen = ports_.state.chosenModels();
  if (!billing.ownKeyAllowed || billing.payWith != core::PayWith::ownKey || chosen.empty()) return {};
  double total = 0;
  for (const SelectableModel& model : chosen) {
    const GenerationRequest request = ports_.queue.ports().forModel(ports_.state.request(), model.comparison);
    const auto cost = ports_.prices.estimate(request, model.record);
    if (!cost) return {};
    total += *cost;
  }
  return account::Spend::estimate(total);
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
void GenerationComposer::chooseOnlyModel(const QString& key) { ports_.state.chooseOnly(key); }
void GenerationComposer::chooseSize(const QString& size) { ports_.state.setSize(size); }
void GenerationComposer::chooseCount(int count) { ports_.state.setCount(count); }
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
  for (const SelectableModel& model : chosen) lengths.insert(model.record.id, value);
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

// ---- Generate

void GenerationComposer::submit() {
  // A second press while the first is on its way is the same press.
  if (submitting_ || isBlank(ports_.state.draft())) return;
  try {
    Submission submission = makeSubmission();
    submitting_ = true;
    Q_EMIT changed();
    tasks_.spawn(submitWhenKeyIsKnown(std::move(submission), tasks_.token()));
  } catch (const std::exception& failure) {
    ports_.state.report(describe(failure), true);
  }
}

Task<> GenerationComposer::submitWhenKeyIsKnown(Submission submission, std::stop_token stop) {
  // 1. Whether the request can be paid for is known only once the key store has answered.
  co_await ports_.awaitKey(stop);
  throwIfStopped(stop);
  // 2. Into the queue, or say why not.
  try {
    enqueue(submission);
  } catch (const std::exception& failure) {
    ports_.state.report(describe(failure), true);
  }
  // 3. What was pressed meanwhile is handled first, and is ignored.
  co_await yieldToLoop();
  throwIfStopped(stop);
  submitting_ = false;
  Q_EMIT changed();
}

GenerationComposer::Submission GenerationComposer::makeSubmission() const {
  const ComposerState& state = ports_.state;
  if (state.projectId() && !ports_.store.project(*state.projectId())) throw SorvanError(texts::destinationGone);
  const auto models = state.chosenModels();
  if (models.empty() || static_cast<qsizetype>(models.size()) < state.selectedModels().size())
    throw SorvanError(texts::selectAvailableModel);
  return hasSound(models) ? makeSoundSubmission(models.front()) : makePictureSubmission(models);
}

GenerationComposer::Submission GenerationComposer::makePictureSubmission(
    const std::vector<SelectableModel>& models) const {
  const ComposerState& state = ports_.state;
  Submission submission{state.request(), models, state.projectId(), state.draft(), {}};
  GenerationRequest& request = submission.request;
  request.prompt = state.draft().trimmed();
  if (!state.improvements().empty()) request.improvements = state.improvements();
  if (models.size() == 1) {
    request.provider = models.front().comparison.provider;
    request.model = models.front().record.id;
    request.lengthByModel.reset();
    request.quality = QStringLiteral("default");
  }
  request.seed = readSeed(state.seedText());
  submission.note = texts::queued(destinationName(ports_.store, state.projectId()));
  return submission;
}

GenerationComposer::Submission GenerationComposer::makeSoundSubmission(const SelectableModel& model) const {
  const ComposerState& state = ports_.state;
  const QString words = state.draft().trimmed();
  if (model.record.promptLimit && chars(words) > *model.record.promptLimit)
    throw SorvanError(texts::promptTooLong(model.record.name, *model.record.promptLimit));
  requireTexts(model.record, state.request().options.value_or(TextByKey()));
  GenerationRequest request;
  request.provider = model.comparison.provider;
  request.model = model.record.id;
  request.prompt = words;
  request.options = state.request().options;
  const QString destination = destinationName(ports_.store, state.projectId());
  const QString note = texts::makingSound(whatIsMade(model.record), model.record.name, destination);
  return {std::move(request), {model}, state.projectId(), state.draft(), note};
}

void GenerationComposer::enqueue(const Submission& submission) {
  // 1. One request, or one for each model.
  if (submission.models.size() == 1) {
    generation::enqueueRequests(ports_.queue, {submission.request}, submission.project);
  } else {
    std::vector<ComparisonModel> models;
    for (const SelectableModel& model : submission.models) models.push_back(model.comparison);
    generation::enqueueComparison(ports_.queue, submission.request, models, submission.project);
  }
  // 2. To the place where the outputs will appear.
  ports_.window.setLocation(submission.project ? uuidText(*submission.project) : inboxLocation);
  // 3. The composer is free for the next prompt, unless something else was typed while the key was awaited.
  if (ports_.state.draft() == submission.draft) ports_.state.finishPrompt();
  ports_.state.report(submission.note, false);
}

// ---- The unfinished prompt

void GenerationComposer::restoreKept() {
  if (!ports_.store.hasWorkspace()) return;
  ports_.state.setProject(std::nullopt);
  const auto kept = ports_.store.keptComposer();
  ports_.state.reset();
  if (!kept) return;
  takeBack(*kept);
}

void GenerationComposer::scheduleKeeping() {
  if (keepingScheduled_ || !ports_.store.hasWorkspace()) return;
  keepingScheduled_ = true;
  tasks_.spawn(keepLater(tasks_.token()));
}

Task<> GenerationComposer::keepLater(std::stop_token stop) {
  co_await ports_.queue.clock().sleep(keepDelay, stop);
  throwIfStopped(stop);
  keepingScheduled_ = false;
  keepNow();
}

void GenerationComposer::keepNow() {
  if (!ports_.store.hasWorkspace()) return;
  const core::ComposerDraft draft = ports_.state.saved();
  const auto kept = ports_.store.keptComposer();
  // A composer that was never touched leaves no file behind.
  if (kept ? *kept == draft : ports_.state.isUntouched()) return;
  ports_.store.keepComposer(draft);
}

void GenerationComposer::adoptLocation() {
  const QString& location = ports_.window.location();
  if (location == inboxLocation) ports_.state.setProject(std::nullopt);
  if (const auto project = locationProject(ports_.store, location)) ports_.state.setProject(project);
}

}  // namespace sorvan::shell
