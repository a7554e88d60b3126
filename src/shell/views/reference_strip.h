// The pictures that go along with a prompt, as a row of chips.
#pragma once

#include <QWidget>

#include "shell/composer_presenter.h"
#include "shell/views/room.h"

class QMenu;

namespace sorvan::views {

class ReferenceButton;
class ReferenceChip;
class ThumbnailStore;

// A chip a reference, with a cross that detaches it and a menu for its name, part and place; behind the reference that
// is marked a chip of its marks, which opens them, with a cross that removes them; at the end the button that attaches
// more. Chips can be dragged to another place. Wraps into as many rows as it needs.
class ReferenceStrip final : public QWidget {
  Q_OBJECT

 public:
  // Both outlive the strip.
  ReferenceStrip(ComposerPresenter& composer, ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  void show(const std::vector<AttachedReference>& references);
  bool isEmpty() const { return chips_.empty() && !button_; }
  int heightForWidth(int width) const override;
  // The button that opens the panel; null where nothing can be attached.
  ReferenceButton* button() const { return button_; }

 Q_SIGNALS:
  void attachRequested();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  int arrange(int width, bool place) const;
  void refreshButton();
  void rebuild();
  void addChip(const AttachedReference& reference, int place);
  void addMarks(const AttachedReference& reference);
  void fillMenu(QMenu& menu, const AttachedReference& reference, int place);
  void openMenu(QUuid item);
  void rename(QUuid item);
  void takeKey(QUuid item, int key, Qt::KeyboardModifiers modifiers);
  int placeOf(QUuid item) const;
  int placeAt(QPoint point) const;

  ComposerPresenter& composer_;
  ThumbnailStore& thumbnails_;
  std::vector<AttachedReference> shown_;
  std::vector<QWidget*> chips_;
  std::vector<ReferenceChip*> referenceChips_;
  ReferenceButton* button_ = nullptr;
};

}  // namespace sorvan::views
