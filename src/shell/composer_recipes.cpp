// What the composer takes over from elsewhere, and the way back to what it held before.
#include "core/library_store.h"
#include "shell/alerts_presenter.h"
#include "shell/composer_texts.h"
#include "shell/generation_composer.h"
#include "shell/recipes.h"
#include "shell/texts.h"

#include <QPointer>

#include <algorithm>

namespace sorvan::shell {

namespace {

QString modelName(const ComposerState& state, const QString& id) {
  const auto& all = state.allModels();
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const SelectableModel& model) { return model.record.id == id; });
  return found == all.end() ? id : found->record.name;
}

}  // namespace

// The card leaves with the workspace: a draft belongs to the one in which it was written.
void GenerationComposer::offerUndo(const QString& text, const core::ComposerDraft& before) {
  const QPointer<GenerationComposer> self(this);
  const core::ComposerDraft after = ports_.state.saved();
  const auto root = ports_.store.workspaceRoot();
  Toast card;
  card.tone = AlertTone::information;
  card.text = text;
  card.actionTitle = texts::undo;
  ports_.alerts.showToast(card, [self, before, after, root] {
    if (!self || self->ports_.store.workspaceRoot() != root) return;
    const core::ComposerDraft present = self->ports_.state.saved();
    self->keeper_.takeBack(before);
    // What was written since then would be lost by the way back.
    if (present.text != after.text && !present.text.trimmed().isEmpty())
      self->offerUndo(texts::laterPromptReplaced, present);
  });
}

void GenerationComposer::clear() {
  const bool hadSomething = !ports_.state.isUntouched();
  const core::ComposerDraft before = ports_.state.saved();
  ports_.state.reset();
  if (hadSomething) offerUndo(texts::composerCleared, before);
}

// The way back is offered where something is lost without it.
void GenerationComposer::replaceDraft(const std::function<void()>& change, const QString& text) {
  const core::ComposerDraft before = ports_.state.saved();
  const bool hadSomething = !before.text.trimmed().isEmpty() || !ports_.state.request().referenceIDs.empty();
  change();
  if (hadSomething && ports_.state.saved() != before) offerUndo(text, before);
  ports_.state.focus();
}

void GenerationComposer::reusePrompt(QUuid itemOrJob) {
  const auto recipe = recipeOf(ports_.store, itemOrJob);
  if (!recipe || recipe->prompt.isEmpty()) return;
  const auto takeOver = [this, &recipe] {
    if (ports_.state.reuse(*recipe, [this](const QUuid& id) { return keeper_.isUsable(id); })) {
      ports_.state.clearMessage();
    } else {
      ports_.state.report(texts::reusedModelGone(modelName(ports_.state, recipe->model)), true);
    }
  };
  replaceDraft(takeOver, texts::composerReplaced);
}

void GenerationComposer::useSeed(QUuid itemOrJob) {
  const auto seed = seedOf(ports_.store, itemOrJob);
  if (!seed) return;
  ports_.state.setSeedText(QString::number(*seed));
  ports_.state.report(texts::seedTaken(QString::number(*seed)), false);
  ports_.state.focus();
}

void GenerationComposer::copyPrompt(QUuid itemOrJob) {
  const auto recipe = recipeOf(ports_.store, itemOrJob);
  if (!recipe || recipe->prompt.isEmpty()) return;
  ports_.copyText(recipe->prompt);
  Toast card;
  card.tone = AlertTone::success;
  card.text = texts::promptCopied;
  ports_.alerts.showToast(card);
}

}  // namespace sorvan::shell
