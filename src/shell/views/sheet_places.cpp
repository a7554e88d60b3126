#include "shell/views/sheet_places.h"

#include <QPainter>

#include "shell/views/theme.h"

namespace sorvan::views {

namespace {

constexpr int kPad = 12;  // and four pixels for the ring of each picture
constexpr int kGap = 8;
constexpr int kFew = 4;
constexpr int kThreeUpTo = 6;
constexpr int kWideForFour = 1080;
constexpr double kTallest = 0.8;
constexpr double kWidest = 1.78;
constexpr int kLowest = 120;  // of a picture
constexpr int kInsertion = 2;

int columnsOf(int places, int width) {
  if (places <= 1) return 1;
  if (places <= kFew) return 2;
  return places <= kThreeUpTo || width < kWideForFour ? 3 : 4;
}

QUuid subjectOf(const PlaceDisplay& place) { return place.asset.isNull() ? place.job.id : place.asset; }

// What most places have; one of another shape is shown whole inside it.
double sharedAspect(const std::vector<PlaceDisplay>& places) {
  std::vector<double> aspects;
  for (const PlaceDisplay& place : places) aspects.push_back(place.aspectRatio);
  if (aspects.empty()) return 1;
  std::nth_element(aspects.begin(), aspects.begin() + std::ssize(aspects) / 2, aspects.end());
  return aspects[aspects.size() / 2];
}

}  // namespace

SheetGrid SheetGrid::of(int places, double aspect, QSize view) {
  SheetGrid grid;
  grid.columns = columnsOf(places, view.width());
  const int width = (view.width() - 2 * kPad - (grid.columns - 1) * kGap) / grid.columns;
  int height = qRound(width / std::clamp(aspect, kTallest, kWidest));
  const int words = SheetPlace::wordsHeight(width);
  // A single row is seen whole.
  if (places <= grid.columns) height = std::min(height, view.height() - 2 * kPad - words);
  grid.place = QSize(width, std::max(height, kLowest) + words);
  const int rows = (places + grid.columns - 1) / grid.columns;
  grid.height = 2 * kPad + rows * (grid.place.height() + kGap) - kGap;
  return grid;
}

QRect SheetGrid::rectOf(int index) const {
  const int column = index % columns;
  const int row = index / columns;
  return {QPoint(kPad + column * (place.width() + kGap), kPad + row * (place.height() + kGap)), place};
}

SheetPlaces::SheetPlaces(ThumbnailStore& thumbnails, QWidget* parent) : QWidget(parent), thumbnails_(thumbnails) {}

SheetPlace* SheetPlaces::makePlace() {
  auto* place = new SheetPlace(thumbnails_, this);
  bind(place);
  return place;
}

void SheetPlaces::bind(SheetPlace* place) {
  PlacePicture& picture = place->picture();
  const auto item = [place] { return place->place().asset; };
  connect(&picture, &PlacePicture::selectRequested, this,
          [this, place](Qt::KeyboardModifiers modifiers) { select(place, modifiers); });
  connect(&picture, &QAbstractButton::clicked, this, [this, place] { select(place, Qt::NoModifier); });
  connect(&picture, &PlacePicture::opened, this, [this, item] {
    if (!item().isNull()) Q_EMIT opened(item());
  });
  connect(&picture, &PlacePicture::jobActionRequested, this,
          [this, place] { Q_EMIT jobActionRequested(place->place().job.id, place->place().job.action); });
  connect(&picture, &PlacePicture::menuRequested, this, [this, item](QPoint at) {
    if (!item().isNull()) Q_EMIT moreRequested(item(), at);
  });
  connect(&picture, &PlacePicture::dragged, this, [this, place](QPoint at) { drag(place, at); });
  connect(&picture, &PlacePicture::draggedOut, this, [this, &picture] { Q_EMIT draggedOut(picture.picture()); });
  connect(&picture, &PlacePicture::dropped, this, [this, place](QPoint at) { drop(place, at); });
  connect(place, &SheetPlace::ratingChosen, this, [this, item](int stars) { Q_EMIT ratingChosen(item(), stars); });
  connect(place, &SheetPlace::favoriteToggled, this, [this, item] { Q_EMIT favoriteToggled(item()); });
  connect(place, &SheetPlace::reviewToggled, this, [this, item] { Q_EMIT reviewToggled(item()); });
  connect(place, &SheetPlace::removeRequested, this, [this, item] { Q_EMIT removeRequested(item()); });
  connect(place, &SheetPlace::moreRequested, this, [this, place, item](QPoint at) {
    if (!selection_.contains(subjectOf(place->place()))) select(place, Qt::NoModifier);
    Q_EMIT moreRequested(item(), at);
  });
}

void SheetPlaces::show(const std::vector<PlaceDisplay>& places, QSize view) {
  const int before = placeOf(current_);
  SheetPlace* const current = before < 0 ? nullptr : at(before);
  const bool focused = current && current->isAncestorOf(window()->focusWidget());
  QHash<QString, SheetPlace*> known;
  for (SheetPlace* place : places_) known.insert(place->place().id, place);
  places_.clear();
  for (const PlaceDisplay& place : places) {
    SheetPlace* widget = known.take(place.id);
    if (!widget) widget = makePlace();
    widget->show(place);
    widget->show();
    places_.push_back(widget);
  }
  for (SheetPlace* gone : std::as_const(known)) {
    gone->hide();
    gone->deleteLater();
  }
  for (size_t number = 1; number < places_.size(); ++number)
    QWidget::setTabOrder(places_[number - 1], places_[number]);
  view_ = view;
  arrange();
  setSelection(selection_);
  if (current && known.contains(current->place().id)) comeAfter(*current, before, focused);
}

// What took the place of the current one is the current one, and selected in its stead.
void SheetPlaces::comeAfter(const SheetPlace& gone, int index, bool focused) {
  if (places_.empty()) return;
  SheetPlace* next = at(std::min(index, count() - 1));
  current_ = next->place().id;
  const bool anySelected = std::ranges::any_of(
      places_, [this](const SheetPlace* place) { return selection_.contains(subjectOf(place->place())); });
  if (focused) next->picture().setFocus(Qt::OtherFocusReason);
  // Only what is looked at: another view in front has a selection of its own.
  if (isVisible() && !anySelected && selection_.contains(subjectOf(gone.place()))) select(next, Qt::NoModifier);
}

void SheetPlaces::setView(QSize view) {
  if (view_ == view) return;
  view_ = view;
  arrange();
}

void SheetPlaces::arrange() {
  std::vector<PlaceDisplay> places;
  for (const SheetPlace* place : places_) places.push_back(place->place());
  grid_ = SheetGrid::of(count(), sharedAspect(places), view_);
  setFixedSize(view_.width(), std::max(view_.height(), grid_.height));
  for (int index = 0; index < count(); ++index) at(index)->setGeometry(grid_.rectOf(index));
}

void SheetPlaces::setSelection(const QSet<QUuid>& selection) {
  selection_ = selection;
  for (SheetPlace* place : places_) {
    const bool selected = selection_.contains(subjectOf(place->place()));
    place->picture().setSelected(selected);
    if (selected && selection_.size() == 1) current_ = place->place().id;
  }
}

void SheetPlaces::select(SheetPlace* place, Qt::KeyboardModifiers modifiers) {
  current_ = place->place().id;
  QSet<QUuid> wanted{subjectOf(place->place())};
  const int anchor = placeOf(anchor_);
  if (modifiers.testFlag(Qt::ShiftModifier) && anchor >= 0) {
    const int here = placeOf(current_);
    for (int index = std::min(anchor, here); index <= std::max(anchor, here); ++index)
      wanted.insert(subjectOf(at(index)->place()));
    return Q_EMIT selectionRequested(wanted);
  }
  anchor_ = current_;
  if (modifiers.testFlag(Qt::ControlModifier)) {
    wanted = selection_;
    if (!wanted.remove(subjectOf(place->place()))) wanted.insert(subjectOf(place->place()));
  }
  Q_EMIT selectionRequested(wanted);
}

void SheetPlaces::setPlaying(bool playing) {
  for (SheetPlace* place : places_) place->picture().setPlaying(playing);
}

bool SheetPlaces::isPlaying() const {
  return std::ranges::any_of(places_, [](SheetPlace* place) { return place->picture().isPlaying(); });
}

int SheetPlaces::placeOf(const QString& id) const {
  for (int index = 0; index < count(); ++index)
    if (at(index)->place().id == id) return index;
  return -1;
}

int SheetPlaces::current() const {
  const int index = placeOf(current_);
  return index < 0 && count() > 0 ? 0 : index;
}

void SheetPlaces::setCurrent(int index) {
  if (index < 0 || index >= count()) return;
  at(index)->picture().setFocus(Qt::ShortcutFocusReason);
  select(at(index), Qt::NoModifier);
  Q_EMIT currentChanged(index);
}

void SheetPlaces::returnToCurrent() {
  const int index = current();
  if (index < 0 || !selection_.contains(subjectOf(at(index)->place()))) return setCurrent(index);
  at(index)->picture().setFocus(Qt::ShortcutFocusReason);
  Q_EMIT currentChanged(index);
}

int SheetPlaces::neighbourOf(int index, int key) const {
  switch (key) {
    case Qt::Key_Left:
      return std::max(0, index - 1);
    case Qt::Key_Right:
      return std::min(count() - 1, index + 1);
    case Qt::Key_Up:
      return index >= grid_.columns ? index - grid_.columns : index;
    case Qt::Key_Down:
      return std::min(count() - 1, index + grid_.columns);
    case Qt::Key_Home:
      return 0;
    case Qt::Key_End:
      return count() - 1;
    default:
      return -1;
  }
}

// Before which place a drop would go; behind the last one it is their number.
int SheetPlaces::dropIndex(QPoint globalPosition) const {
  const QPoint point = mapFromGlobal(globalPosition);
  for (int index = 0; index < count(); ++index) {
    const QRect place = grid_.rectOf(index).adjusted(-kGap, -kGap, kGap, kGap);
    if (place.contains(point)) return point.x() < place.center().x() ? index : index + 1;
  }
  return count();
}

// What leaves the part of the sheet that is seen is no longer put in order.
void SheetPlaces::drag(SheetPlace* place, QPoint globalPosition) {
  const bool inside = visibleRegion().boundingRect().contains(mapFromGlobal(globalPosition));
  dropAt_ = inside ? dropIndex(globalPosition) : -1;
  update();
  if (inside) return;
  place->picture().endDrag();
  Q_EMIT draggedOut(place->picture().picture());
}

void SheetPlaces::drop(SheetPlace* place, QPoint globalPosition) {
  const int to = dropIndex(globalPosition);
  dropAt_ = -1;
  update();
  QUuid before;
  for (int index = to; index < count() && before.isNull(); ++index) before = at(index)->place().asset;
  if (before != place->place().asset) Q_EMIT moved(place->place().asset, before);
}

void SheetPlaces::paintEvent(QPaintEvent*) {
  if (dropAt_ < 0 || count() == 0) return;
  const bool last = dropAt_ >= count();
  const QRect place = grid_.rectOf(last ? count() - 1 : dropAt_);
  const int x = last ? place.right() + kGap / 2 : place.left() - kGap / 2;
  const int height = place.height() - SheetPlace::wordsHeight(place.width());
  QPainter(this).fillRect(QRect(x - kInsertion / 2, place.top(), kInsertion, height), colors().accentRing);
}

}  // namespace sorvan::views
