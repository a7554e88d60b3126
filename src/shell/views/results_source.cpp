#include "shell/views/results_source.h"

#include "shell/inspector_presenter.h"
#include "shell/inspector_texts.h"

namespace sorvan::views {

ResultsSource::ResultsSource(const InspectorPresenter& inspector, const GalleryPresenter& gallery, QObject* parent)
    : WallSource(parent), inspector_(inspector), gallery_(gallery) {
  connect(&gallery_, &GalleryPresenter::layoutChanged, this, &ResultsSource::refresh);
  connect(&gallery_, &GalleryPresenter::contentChanged, this, &ResultsSource::refresh);
}

void ResultsSource::open(QUuid job) {
  job_ = job;
  refresh();
}

void ResultsSource::refresh() {
  if (job_.isNull()) return;
  const InspectorDisplay shown = inspector_.displayOfJob(job_);
  if (shown.id.isNull()) {
    job_ = {};
    Q_EMIT lost();
    return;
  }
  results_ = inspector_.resultsOf(job_);
  std::vector<QUuid> cells = results_;
  if (cells.empty() && shown.jobState != JobState::complete) cells = {job_};
  if (cells == cells_) return Q_EMIT contentChanged();
  cells_ = std::move(cells);
  Q_EMIT layoutChanged();
}

int ResultsSource::indexOf(QUuid id) const {
  const auto found = std::find(cells_.begin(), cells_.end(), id);
  return found == cells_.end() ? -1 : static_cast<int>(found - cells_.begin());
}

QString ResultsSource::emptyTitle() const { return shell::texts::noResults; }
QString ResultsSource::emptyText() const { return shell::texts::resultsElsewhere; }

}  // namespace sorvan::views
