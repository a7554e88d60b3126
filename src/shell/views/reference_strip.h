// The pictures that go along with a prompt, as a row of chips.
#pragma once

#include <QWidget>

#include "shell/composer_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

class ThumbnailStore;

// A chip a reference, with a cross that detaches it; behind the reference that is marked a chip of its marks, which
// opens them, with a cross that removes them. Wraps into as many rows as it needs.
class ReferenceStrip final : public QWidget {
  Q_OBJECT

 public:
  // Both outlive the strip.
  ReferenceStrip(ComposerPresenter& composer, ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  void show(const std::vector<AttachedReference>& references);
  bool isEmpty() const { return chips_.empty(); }
  int heightForWidth(int width) const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  int arrange(int width, bool place) const;

  ComposerPresenter& composer_;
  ThumbnailStore& thumbnails_;
  std::vector<AttachedReference> shown_;
  std::vector<QWidget*> chips_;
};

}  // namespace sorvan::views
