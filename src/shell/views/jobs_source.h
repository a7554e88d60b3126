// The jobs' presenter as the source of a history.
#pragma once

#include "shell/views/history_view.h"

namespace sorvan::views {

// The presenter outlives it.
class JobsSource final : public HistorySource {
 public:
  explicit JobsSource(JobsPresenter& jobs, QObject* parent = nullptr);

  int count() const override { return jobs_.count(); }
  JobDisplay rowAt(int index) const override { return jobs_.rowAt(index); }
  QUuid idAt(int index) const override { return jobs_.idAt(index); }
  int indexOf(QUuid id) const override { return jobs_.indexOf(id); }
  std::vector<JobGroup> groups() const override { return jobs_.groups(); }
  QString emptyTitle() const override { return jobs_.emptyTitle(); }

 private:
  JobsPresenter& jobs_;
};

}  // namespace sorvan::views
