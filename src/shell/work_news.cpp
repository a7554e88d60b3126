#include "shell/work_news.h"

#include "base/text.h"
#include "core/library_store.h"
#include "generation/job_queue.h"
#include "shell/job_displays.h"
#include "shell/jobs_presenter.h"
#include "shell/news_texts.h"
#include "shell/window_presenter.h"
#include "shell/workspace_state.h"

#include <algorithm>

namespace sorvan::shell {

namespace {
// Desktops cut cards at a few lines; a prompt may be a page.
constexpr int longestText = 160;
}  // namespace

WorkNews::WorkNews(Ports ports, QObject* parent) : QObject(parent), ports_(ports) {
  connect(&ports_.queue, &generation::JobQueue::jobFinished, this, &WorkNews::tell);
  connect(&ports_.stand, &NewsStand::activated, this, [this](const QString& token) {
    ports_.window.comeForward(token);
    open();
  });
  connect(&ports_.window, &WindowPresenter::inFrontChanged, this, [this] {
    if (ports_.window.isInFront()) forget();
  });
  connect(&ports_.store, &core::LibraryStore::workspaceChanged, this, &WorkNews::forget);
}

void WorkNews::tell(QUuid id) {
  const core::JobRef job = ports_.store.job(id);
  if (!job || ports_.window.isInFront()) return;
  if (job->status != core::jobStatus::complete && job->status != core::jobStatus::failed) return;
  ended_.push_back(id);
  const bool last = ports_.store.activeJobs().empty();
  ports_.stand.show(last && ended_.size() > 1 ? newsOfAll() : newsOf(id));
}

DesktopNews WorkNews::newsOf(QUuid id) const {
  const JobDisplay job = ports_.displays.display(id);
  const bool failed = job.state == JobState::failed;
  const QString text = failed ? job.message : job.prompt;
  return {failed ? texts::generationFailed : job.detail, firstChars(text, longestText), texts::showResult};
}

DesktopNews WorkNews::newsOfAll() const {
  const auto failed = std::ranges::count_if(ended_, [this](const QUuid& id) {
    const core::JobRef job = ports_.store.job(id);
    return job && job->status == core::jobStatus::failed;
  });
  const auto all = static_cast<int>(ended_.size());
  return {texts::allGenerationsEnded, texts::endedCounts(all - static_cast<int>(failed), static_cast<int>(failed)),
          texts::showResult};
}

void WorkNews::open() {
  if (ended_.empty()) return;
  const std::vector<QUuid> ended = std::exchange(ended_, {});
  const core::JobRef only = ended.size() == 1 ? ports_.store.job(ended.front()) : nullptr;
  if (only && only->status == core::jobStatus::complete) return ports_.jobs.show(only->id);
  ports_.state.setMode({ModeKind::activity});
  ports_.state.select(QSet<QUuid>(ended.begin(), ended.end()));
}

void WorkNews::forget() {
  if (ended_.empty()) return;
  ended_.clear();
  ports_.stand.withdraw();
}

}  // namespace sorvan::shell
