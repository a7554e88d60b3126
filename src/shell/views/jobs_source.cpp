#include "shell/views/jobs_source.h"

namespace sorvan::views {

JobsSource::JobsSource(JobsPresenter& jobs, QObject* parent) : HistorySource(parent), jobs_(jobs) {
  connect(&jobs_, &JobsPresenter::layoutChanged, this, &HistorySource::layoutChanged);
  connect(&jobs_, &JobsPresenter::contentChanged, this, &HistorySource::contentChanged);
}

}  // namespace sorvan::views
