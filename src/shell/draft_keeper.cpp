#include "shell/draft_keeper.h"

#include "composer/composer_state.h"
#include "core/library_store.h"

#include <QPointer>

#include <chrono>

namespace sorvan::shell {

namespace {

// Long enough that a typist is not followed by a disk, short enough that a power cut costs a few words.
constexpr std::chrono::milliseconds keepDelay{400};

}  // namespace

DraftKeeper::DraftKeeper(core::LibraryStore& store, composer::ComposerState& state, const Clock& clock, QObject* parent)
    : QObject(parent), store_(store), state_(state), clock_(clock) {
  connect(&state, &ComposerState::changed, this, &DraftKeeper::schedule);
  connect(&state, &ComposerState::draftEdited, this, &DraftKeeper::schedule);
  // What was typed last belongs to the workspace that is being left; the draft of the next is known once it is open.
  const QPointer<DraftKeeper> self(this);
  store.beforeClose.push_back([self](core::LibraryStore&) {
    if (self) self->flush();
  });
  store.afterOpen.push_back([self](core::LibraryStore&) {
    if (self) self->restoreKept();
  });
  restoreKept();
}

bool DraftKeeper::isUsable(const QUuid& asset) const {
  const core::AssetRef found = store_.asset(asset);
  return found && !found->isTrashed();
}

void DraftKeeper::takeBack(const core::ComposerDraft& draft) {
  state_.restore(
      draft, [this](const QUuid& id) { return isUsable(id); },
      [this](const QUuid& id) { return store_.project(id) != nullptr; });
}

void DraftKeeper::restoreKept() {
  if (!store_.hasWorkspace()) return;
  state_.setProject(std::nullopt);
  kept_ = store_.keptComposer();
  state_.reset();
  if (kept_) takeBack(*kept_);
}

void DraftKeeper::schedule() {
  if (scheduled_ || !store_.hasWorkspace()) return;
  scheduled_ = true;
  tasks_.spawn(keepLater(tasks_.token()));
}

Task<> DraftKeeper::keepLater(std::stop_token stop) {
  co_await clock_.sleep(keepDelay, stop);
  throwIfStopped(stop);
  scheduled_ = false;
  keepNow();
}

// A composer that was never touched leaves no file behind.
std::optional<core::ComposerDraft> DraftKeeper::unkept() const {
  if (!store_.hasWorkspace() || (!kept_ && state_.isUntouched())) return std::nullopt;
  core::ComposerDraft draft = state_.saved();
  if (kept_ == draft) return std::nullopt;
  return draft;
}

void DraftKeeper::keepNow() {
  const auto draft = unkept();
  if (!draft) return;
  kept_ = draft;
  store_.keepComposerSoon(*draft);
}

void DraftKeeper::flush() {
  const auto draft = unkept();
  const bool isOnItsWay = store_.composer().isWriting();
  if (!draft && !(isOnItsWay && kept_)) return;
  if (draft) kept_ = draft;
  store_.keepComposer(*kept_);
}

}  // namespace sorvan::shell
