// One contact sheet: its prompt, its places, and its pictures compared closely.
#pragma once

#include "shell/actions.h"
#include "shell/views/compare_view.h"
#include "shell/views/sheet_places.h"

class QMimeData;
class QScrollArea;
class QStackedLayout;

namespace sorvan::shell {
class ContactSheetWorkspace;
class JobDisplays;
}  // namespace sorvan::shell

namespace sorvan::views {

class DropFrame;
class EmptyNote;
class Label;
class Paragraph;
class SheetTools;

// Main thread.
class SheetView final : public QWidget {
  Q_OBJECT

 public:
  struct Parts {
    ContactSheetWorkspace& sheet;
    ThumbnailStore& thumbnails;
  };
  // All of it outlives the view.
  explicit SheetView(Parts parts, QWidget* parent = nullptr);

  // What stands in the window's toolbar while the sheet is in front.
  SheetTools& tools() { return *tools_; }
  SheetPlaces& places() { return *places_; }
  CompareView& comparing() { return *comparing_; }
  void setSelection(const QSet<QUuid>& selection);
  // What Delete takes out of the sheet: its selected items; while none is selected, `item`.
  std::vector<QUuid> leaving(QUuid item) const;

  // Two to eight pictures: the selected ones, or all there are.
  bool canCompare() const;
  bool isComparing() const;
  void compare();
  void leaveComparing();
  // Compares at once: leaving the comparison then leaves the sheet too, which was opened for nothing else.
  void compareOnly();
  // Another sheet comes: the comparison ends without a word.
  void leaveQuietly();

 Q_SIGNALS:
  void selectionRequested(const QSet<QUuid>& selection);
  void opened(QUuid item);
  // Space: the selected items large over the window.
  void lookRequested();
  void actionRequested(sorvan::shell::ActionId action);
  void menuRequested(QUuid item, QPoint globalPosition);
  void backRequested();
  void comparingChanged();
  // Items or files were let go over the sheet. The data is gone afterwards.
  void mediaDropped(const QMimeData& data);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QWidget* buildSheet();
  void bindPlaces();
  void bindComparing();
  void endComparing();
  void refresh();
  void refreshTools();
  std::vector<QUuid> toCompare() const;
  bool movesPlace(QKeyEvent& event);

  Parts on_;
  SheetTools* tools_;
  QStackedLayout* stack_;
  Paragraph* prompt_;
  Label* facts_;
  class Spinner* working_;
  Label* progress_;
  QWidget* head_;
  QScrollArea* scroll_;
  SheetPlaces* places_;
  EmptyNote* empty_;
  CompareView* comparing_;
  DropFrame* frame_;
  std::vector<QUuid> compared_;
  bool onlyComparing_ = false;
};

}  // namespace sorvan::views
