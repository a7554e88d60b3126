// What a press of the composer's button does, in its fixed order.
#include "base/ids.h"
#include "base/text.h"
#include "catalogue/audio_models.h"
#include "composer/command_texts.h"
#include "composer/notice_texts.h"
#include "core/library_store.h"
#include "generation/job_queue.h"
#include "shell/alerts_presenter.h"
#include "shell/composer_controls.h"
#include "shell/generation_composer.h"
#include "shell/locations.h"
#include "shell/texts.h"
#include "shell/workspace_state.h"

#include <QPointer>

namespace sorvan::shell {

namespace {

template <class... Parts>
struct Cases : Parts... {
  using Parts::operator()...;
};
template <class... Parts>
Cases(Parts...) -> Cases<Parts...>;

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

}  // namespace

void GenerationComposer::submit() { run(false); }

void GenerationComposer::setCommandMode(bool command) {
  ports_.state.setMode(command ? ComposerMode::command : ComposerMode::generation);
  ports_.state.focus();
}

PressedSubmit GenerationComposer::pressed(bool confirmed) const {
  PressedSubmit press;
  press.draft = ports_.state.draft();
  press.mode = ports_.state.mode();
  press.interpretWithAI = interprets();
  press.isInterpreting = review_ && review_->isInterpreting();
  press.importsReferences = importsReferences();
  press.isConfirmed = confirmed;
  if (review_) press.reviewed = review_->intent();
  if (review_) press.reviewedSelection = review_->selection();
  press.selection = ports_.window.selection();
  press.credits = creditEstimate(estimateInput(), knownPrices());
  return press;
}

// A second press while the first is on its way is the same press.
void GenerationComposer::run(bool confirmed) {
  if (submitting_ || confirming_) return;
  const Cases steps{[](const DoNothing&) {},
                    [this](const ConfirmCredits& question) { confirm(question.credits); },
                    [this](const RefuseSelection&) {
                      ports_.state.report(composer::texts::selectionChanged(), true);
                    },
                    [this](const Interpret&) { review_->interpret(); },
                    [this](const Execute& step) { execute(step.intent); }};
  std::visit(steps, submitStep(pressed(confirmed)));
}

void GenerationComposer::confirm(std::int64_t credits) {
  confirming_ = true;
  Alert question;
  question.tone = AlertTone::warning;
  question.title = composer::texts::useCredits(credits);
  question.text = composer::texts::confirmCredits(balanceText(ports_.payment.account()));
  // A key that is still held down from the first press must not spend anything: the way out has the focus.
  question.buttons = {{texts::cancel, AlertButtonRole::plain, true}, {texts::generate, AlertButtonRole::primary}};
  const QPointer<GenerationComposer> self(this);
  const QString draft = ports_.state.draft();
  ports_.alerts.ask(question, [self, draft](int button) {
    if (!self) return;
    self->confirming_ = false;
    // What was agreed to is what was asked about.
    if (button == 1 && self->ports_.state.draft() == draft) self->run(true);
  });
}

void GenerationComposer::execute(const SorvanIntent& intent) {
  const auto* instruction = std::get_if<GenerationInstruction>(&intent);
  instruction ? generate(*instruction) : command(intent);
}

void GenerationComposer::command(const SorvanIntent& intent) {
  // 1. The library does it, or says why not and the text stays.
  if (!router_.route(intent)) return;
  // 2. What was reviewed is done, and the prompt that waited is back.
  if (review_) review_->clear();
  ports_.state.setMode(ComposerMode::generation);
}

void GenerationComposer::generate(const GenerationInstruction& instruction) {
  try {
    const auto models = ports_.state.chosenModels();
    const bool makesOneSound = models.size() == 1 && makesSound(models.front());
    // 1. What is missing is said before anything happens.
    Submission made = makeSubmission(ports_.store, ports_.state, instruction, router_.selected());
    if (makesOneSound) made = makeSoundSubmission(models.front());
    // 2. The draft is on its way to the disk too, whatever becomes of the press.
    keeper_.keepNow();
    submitting_ = true;
    Q_EMIT changed();
    tasks_.spawn(submitWhenKeyIsKnown({std::move(made), ports_.state.draft()}, tasks_.token()));
  } catch (const std::exception& failure) {
    ports_.state.report(describe(failure), true);
  }
}

Submission GenerationComposer::makeSoundSubmission(const SelectableModel& model) const {
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
  return {std::move(request), {model.comparison}, state.projectId(), note};
}

Task<> GenerationComposer::submitWhenKeyIsKnown(Press press, std::stop_token stop) {
  // 1. Whether the request can be paid for by the user's key is known only once the key store has answered.
  co_await ports_.awaitKey(stop);
  throwIfStopped(stop);
  // 2. Into the queue, or say why not.
  try {
    enqueue(press);
  } catch (const std::exception& failure) {
    ports_.state.report(describe(failure), true);
  }
  // 3. What was pressed meanwhile is handled first, and is ignored.
  co_await yieldToLoop();
  throwIfStopped(stop);
  submitting_ = false;
  Q_EMIT changed();
}

void GenerationComposer::enqueue(const Press& press) {
  // 1. One request, or one for each model.
  const Submission& submission = press.submission;
  const std::optional<QUuid> comparison = ports_.desk.enqueue(submission);
  // 2. To the place where the outputs will appear.
  ports_.desk.showGallery(submission.project ? uuidText(*submission.project) : inboxLocation);
  if (comparison) ports_.desk.openComparison(*comparison);
  // 3. The composer is free for the next prompt, unless something else was typed while the key was awaited.
  if (ports_.state.draft() == press.draft) ports_.state.finishPrompt();
  ports_.state.report(submission.note, false);
  keeper_.keepNow();
}

CommandReview::Situation GenerationComposer::situation() const {
  CommandReview::Situation present;
  present.draft = ports_.state.draft();
  present.project = ports_.state.projectId();
  present.selection = ports_.window.selection();
  QStringList projects;
  for (const core::ProjectRef& project : ports_.store.projects()) projects << project->name;
  const core::ProjectRef current = present.project ? ports_.store.project(*present.project) : nullptr;
  present.context = commandContext(projects, static_cast<int>(router_.selected().size()),
                                   current ? std::optional(current->name) : std::nullopt);
  return present;
}

}  // namespace sorvan::shell
