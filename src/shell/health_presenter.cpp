#include "shell/health_presenter.h"

#include "base/task.h"
#include "shell/texts.h"

#include <algorithm>

namespace sorvan::shell {

namespace {

bool hasIssue(const core::SavedInformation& row) { return row.issue.has_value(); }

QString headOf(bool failed, bool attention) {
  if (failed) return texts::healthFailed;
  return attention ? texts::healthAreas(1) : texts::healthNoRepairs;
}

}  // namespace

HealthPresenter::HealthPresenter(core::LibraryStore& store, QObject* parent) : QObject(parent), store_(store) {
  connect(&store_, &core::LibraryStore::workspaceChanged, this, &HealthPresenter::forget);
  connect(&store_, &core::LibraryStore::metadataChanged, this, &HealthPresenter::changed);
}

void HealthPresenter::forget() {
  ++checkId_;
  rows_.reset();
  feedback_.clear();
  checking_ = failed_ = repaired_ = false;
  Q_EMIT changed();
}

void HealthPresenter::check() {
  if (!store_.hasWorkspace()) return;
  if (!repaired_) feedback_.clear();
  checking_ = true;
  failed_ = false;
  tasks_.spawn(inspect(this, ++checkId_, tasks_.token()));
  Q_EMIT changed();
}

Task<> HealthPresenter::inspect(HealthPresenter* self, quint64 id, std::stop_token stop) {
  std::optional<std::vector<core::SavedInformation>> rows;
  try {
    const auto work = [files = self->store_.files(), known = core::savedInformation(self->store_)] {
      return core::inspectSavedInformation(files, known);
    };
    rows = co_await onPool(work, stop);
  } catch (const Cancelled&) {
    // The presenter may be gone.
    co_return;
  } catch (const std::exception&) {
    // Told by the head.
  }
  if (id != self->checkId_) co_return;
  self->checking_ = false;
  self->failed_ = !rows;
  if (rows) self->finish(std::move(*rows));
  Q_EMIT self->changed();
}

void HealthPresenter::finish(std::vector<core::SavedInformation> rows) {
  rows_ = std::move(rows);
  if (!std::exchange(repaired_, false)) return;
  feedbackIsError_ = canRepair();
  feedback_ = feedbackIsError_ ? texts::healthStillUnsaved : texts::healthSaved;
}

bool HealthPresenter::canRepair() const {
  if (store_.isBackingUp()) return false;
  return store_.canRetryMetadataSave() || (rows_ && std::ranges::any_of(*rows_, core::canSaveFromMemory));
}

void HealthPresenter::trySavingAgain() {
  if (!store_.hasWorkspace() || store_.isBackingUp()) return;
  core::saveInformationAgain(store_, rows_.value_or(std::vector<core::SavedInformation>()));
  repaired_ = true;
  check();
}

HealthDisplay HealthPresenter::display() const {
  HealthDisplay display;
  display.title = texts::workspaceHealth;
  display.section = texts::savedInformation;
  display.foot = texts::healthFoot;
  display.checkAgain = texts::checkAgain;
  display.done = texts::done;
  display.checking = checking_;
  display.feedback = feedback_;
  display.feedbackIsError = feedbackIsError_;
  if (canRepair()) display.repair = texts::trySavingAgain;
  display.needsAttention = store_.canRetryMetadataSave() || (rows_ && std::ranges::any_of(*rows_, hasIssue));
  display.head = checking_ ? texts::healthChecking : headOf(failed_, display.needsAttention);
  if (checking_) display.line = texts::healthCheckingLine;
  if (!rows_) return display;
  display.state = display.needsAttention ? texts::healthNeedsAttention : texts::healthNoIssues;
  for (const core::SavedInformation& row : *rows_)
    display.rows.push_back({row.title, texts::savedCount(row.count), row.issue.value_or(QString())});
  return display;
}

}  // namespace sorvan::shell
