// Prompts that were saved, and those that were used lately.
#include "core/library_store.h"
#include "shell/alerts_presenter.h"
#include "shell/composer_texts.h"
#include "shell/generation_composer.h"
#include "shell/recipes.h"
#include "shell/texts.h"

#include <QSet>

namespace sorvan::shell {

namespace {

constexpr std::size_t mostPastPrompts = 60;
// A library in which one prompt made everything is not read to its end.
constexpr std::size_t mostJobsRead = 2000;

QString inOneLine(const QString& text) { return text.simplified(); }

}  // namespace

std::vector<PastPrompt> GenerationComposer::pastPrompts() const {
  std::vector<PastPrompt> prompts;
  QSet<QString> seen;
  // 1. The saved ones, newest first.
  for (const core::PromptEntry& entry : ports_.store.prompts().entries()) {
    seen.insert(entry.text.trimmed());
    prompts.push_back({entry.id, inOneLine(entry.text), entry.text});
  }
  // 2. What was generated lately.
  const std::size_t most = prompts.size() + mostPastPrompts;
  std::size_t read = 0;
  for (const core::JobRef& job : ports_.store.jobs()) {
    if (prompts.size() >= most || ++read > mostJobsRead) break;
    const auto request = job->request();
    if (!request || request->prompt.trimmed().isEmpty() || seen.contains(request->prompt.trimmed())) continue;
    seen.insert(request->prompt.trimmed());
    prompts.push_back({QUuid(), inOneLine(request->prompt), request->prompt});
  }
  return prompts;
}

void GenerationComposer::usePastPrompt(const QString& text) {
  const auto takeOver = [this, &text] {
    ports_.state.setMode(ComposerMode::generation);
    ports_.state.setText(text);
  };
  replaceDraft(takeOver, texts::composerReplaced);
}

void GenerationComposer::savePrompt() {
  try {
    ports_.store.prompts().save(std::nullopt, ports_.state.saved().text, ports_.store.now());
    ports_.state.report(texts::promptSaved, false);
  } catch (const std::exception& failure) {
    ports_.state.report(describe(failure), true);
  }
  Q_EMIT changed();
}

void GenerationComposer::forgetSavedPrompt(QUuid saved) {
  const auto& entries = ports_.store.prompts().entries();
  const auto entry = std::find_if(entries.begin(), entries.end(), [&](const auto& each) { return each.id == saved; });
  if (entry == entries.end()) return;
  const QString text = entry->text;
  ports_.store.prompts().remove(saved);
  Toast card;
  card.text = texts::promptForgotten;
  card.actionTitle = texts::undo;
  ports_.alerts.showToast(card, [this, text, root = ports_.store.workspaceRoot()] {
    if (ports_.store.workspaceRoot() != root) return;
    try {
      ports_.store.prompts().save(std::nullopt, text, ports_.store.now());
    } catch (const std::exception& failure) {
      ports_.state.report(describe(failure), true);
    }
  });
  Q_EMIT changed();
}

}  // namespace sorvan::shell
