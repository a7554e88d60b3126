// Other items that the inspector names: small pictures that open.
#pragma once

#include <QAbstractButton>

#include "shell/inspector_presenter.h"
#include "shell/views/thumbnail_store.h"

namespace sorvan::views {

// One item: its picture, its name, what it is to the one that is inspected.
class InspectorLinkButton final : public QAbstractButton {
  Q_OBJECT

 public:
  // The store outlives the button.
  InspectorLinkButton(ThumbnailStore& thumbnails, InspectorLink link, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {136, 52}; }
  QSize minimumSizeHint() const override { return {80, 52}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ThumbnailStore& thumbnails_;
  InspectorLink link_;
};

// The links of a section in two columns; the rest of many waits behind a button.
class InspectorLinks final : public QWidget {
  Q_OBJECT

 public:
  InspectorLinks(ThumbnailStore& thumbnails, const std::vector<InspectorLink>& links, QWidget* parent = nullptr);

 Q_SIGNALS:
  void opened(QUuid item);

 private:
  void add(ThumbnailStore& thumbnails, const std::vector<InspectorLink>& links, size_t from, size_t to);
};

}  // namespace sorvan::views
