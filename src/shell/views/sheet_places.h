// The places of a sheet, in rows of equal height.
#pragma once

#include <QSet>
#include <QWidget>

#include "shell/views/sheet_place.h"

namespace sorvan::views {

// Where the places of a sheet lie: one or two columns for up to four, then three or four.
struct SheetGrid {
  int columns = 1;
  QSize place;  // with its words
  int height = 0;

  // `aspect` is width by height of the pictures; `view` what is seen of the sheet.
  static SheetGrid of(int places, double aspect, QSize view);
  QRect rectOf(int index) const;
};

// Keeps the widget of a place while results arrive in it. Main thread.
class SheetPlaces final : public QWidget {
  Q_OBJECT

 public:
  // The store outlives the view.
  explicit SheetPlaces(ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  void show(const std::vector<PlaceDisplay>& places, QSize view);
  using QWidget::show;
  void setView(QSize view);
  void setSelection(const QSet<QUuid>& selection);
  const QSet<QUuid>& selection() const { return selection_; }
  void setPlaying(bool playing);
  bool isPlaying() const;

  int count() const { return static_cast<int>(places_.size()); }
  SheetPlace* at(int index) const { return places_.at(static_cast<size_t>(index)); }
  // The place that has the keyboard, or had it last; -1 when there is none.
  int current() const;
  void setCurrent(int index);
  // Gives the keyboard back to its place; one that is selected among others stays so.
  void returnToCurrent();
  int neighbourOf(int index, int key) const;

 Q_SIGNALS:
  // Items and jobs, as the window's selection knows them.
  void selectionRequested(const QSet<QUuid>& selection);
  void opened(QUuid item);
  void jobActionRequested(QUuid job, sorvan::shell::JobAction action);
  void ratingChosen(QUuid item, int stars);
  void favoriteToggled(QUuid item);
  void reviewToggled(QUuid item);
  void removeRequested(QUuid item);
  void moreRequested(QUuid item, QPoint globalPosition);
  // The item is put before another one, or at the end when that is null.
  void moved(QUuid item, QUuid before);
  void currentChanged(int index);
  // The selected item is dragged to where it cannot be put in order: another part of the window, another program.
  void draggedOut(const QPixmap& picture);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  SheetPlace* makePlace();
  void bind(SheetPlace* place);
  void arrange();
  void select(SheetPlace* place, Qt::KeyboardModifiers modifiers);
  int placeOf(const QString& id) const;
  void comeAfter(const SheetPlace& gone, int index, bool focused);
  int dropIndex(QPoint globalPosition) const;
  void drag(SheetPlace* place, QPoint globalPosition);
  void drop(SheetPlace* place, QPoint globalPosition);

  ThumbnailStore& thumbnails_;
  std::vector<SheetPlace*> places_;
  QSet<QUuid> selection_;
  SheetGrid grid_;
  QSize view_;
  QString current_;  // of a place
  QString anchor_;   // where a range begins
  int dropAt_ = -1;
};

}  // namespace sorvan::views
