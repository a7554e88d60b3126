#pragma once

#include "core/request_values.h"
#include "shell/room.h"

#include <QPoint>
#include <QRectF>
#include <QSize>

#include <vector>

namespace sorvan::shell {

// The boxes that are being drawn on one picture: what may be done to them, and the way back. Boxes are fractions of the
// upright picture; their edges lie on its pixels and inside it, and none is smaller than a pixel. A value; any thread.
class MarksEditor {
 public:
  // Starts with these boxes: what of them lies in the picture. Boxes of which nothing does are left out.
  MarksEditor(const std::vector<core::MarkupBox>& boxes, QSize picture);

  const std::vector<core::MarkupBox>& boxes() const { return boxes_; }
  int count() const { return static_cast<int>(boxes_.size()); }
  QRectF areaOf(int index) const;
  QSize picture() const { return picture_; }
  // The index of the selected box; -1 without one.
  int selected() const { return selected_; }
  void select(int index);

  // Adds a box and selects it; -1 when nothing of the area lies in the picture.
  int add(const QRectF& area);
  // Moves or resizes a box. An area that has nothing in the picture changes nothing.
  void place(int index, const QRectF& area);
  // Moves the box by whole pixels of the picture, as far as it stays inside. Steps in a row are one step back.
  void nudge(int index, QPoint pixels);
  // Grows or shrinks it at its lower right corner.
  void stretch(int index, QPoint pixels);
  // Words typed in a row are one step back.
  void setNote(int index, const QString& note);
  void remove(int index);
  void clear();

  bool canUndo() const { return !past_.empty(); }
  bool canRedo() const { return !future_.empty(); }
  void undo();
  void redo();

  // An area moved so that all of it lies in the picture; its size stays.
  static QRectF movedInside(QRectF area);
  // What of the area lies in the picture, on whole pixels; empty when nothing does.
  static QRectF onPixels(const QRectF& area, QSize picture);

 private:
  struct Moment {
    std::vector<core::MarkupBox> boxes;
    int selected = -1;
  };
  // What the next change continues, so that a row of small ones is one step.
  struct Row {
    enum class Kind { none, nudge, stretch, note } kind = Kind::none;
    int index = -1;
    bool operator==(const Row&) const = default;
  };

  bool has(int index) const { return index >= 0 && index < count(); }
  void remember() { remember(Row()); }
  void remember(const Row& row);
  void give(int index, const QRectF& area);
  void travel(std::vector<Moment>& from, std::vector<Moment>& to);

  QSize picture_;
  std::vector<core::MarkupBox> boxes_;
  int selected_ = -1;
  std::vector<Moment> past_;
  std::vector<Moment> future_;
  Row row_;
};

}  // namespace sorvan::shell
