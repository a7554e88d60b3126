// What came of a job, as the source of a wall: its results, or the job itself while it has none.
#pragma once

#include "shell/views/wall_source.h"

namespace sorvan::shell {
class InspectorPresenter;
}

namespace sorvan::views {

// Both presenters outlive it.
class ResultsSource final : public WallSource {
  Q_OBJECT

 public:
  ResultsSource(const InspectorPresenter& inspector, const GalleryPresenter& gallery, QObject* parent = nullptr);

  void open(QUuid job);
  QUuid job() const { return job_; }
  const std::vector<QUuid>& results() const { return results_; }

  int count() const override { return static_cast<int>(cells_.size()); }
  QUuid idAt(int index) const override { return cells_.at(static_cast<size_t>(index)); }
  double aspectRatioAt(int index) const override { return cellAt(index).aspectRatio; }
  bool isJobAt(int index) const override { return idAt(index) == job_; }
  GalleryCell cellAt(int index) const override { return gallery_.cellOf(idAt(index)); }
  int indexOf(QUuid id) const override;
  QString emptyTitle() const override;
  QString emptyText() const override;

 Q_SIGNALS:
  // The job that was open is gone.
  void lost();

 private:
  void refresh();

  const InspectorPresenter& inspector_;
  const GalleryPresenter& gallery_;
  QUuid job_;
  std::vector<QUuid> results_;
  std::vector<QUuid> cells_;
};

}  // namespace sorvan::views
