#include "shell/views/sheet_view.h"

#include <QHBoxLayout>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedLayout>

#include "base/text.h"
#include "shell/contact_sheet_workspace.h"
#include "shell/item_transfer.h"
#include "shell/sheet_texts.h"
#include "shell/views/accessible_role.h"
#include "shell/views/drop_frame.h"
#include "shell/views/dropped_media.h"
#include "shell/views/empty_note.h"
#include "shell/views/feedback.h"
#include "shell/views/focus_ring.h"
#include "shell/views/labels.h"
#include "shell/views/sheet_keys.h"
#include "shell/views/sheet_tools.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPromptWidth = 700;
constexpr int kReveal = 24;
constexpr int kMostPrompt = 400;  // characters

// The room for places. It leaves that of the scroll bar free, there or not: the bar may not come and go by itself.
QSize roomOf(const QScrollArea& area) {
  return {area.width() - area.verticalScrollBar()->sizeHint().width(), area.height()};
}

// The arrows walk from place to place; the sheet scrolls by itself. The places take the width that there is.
class PlacesArea final : public QScrollArea {
 public:
  explicit PlacesArea(SheetPlaces& places) : places_(places) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
  void resizeEvent(QResizeEvent* event) override {
    QScrollArea::resizeEvent(event);
    places_.setView(roomOf(*this));
  }

 private:
  SheetPlaces& places_;
};

}  // namespace

SheetView::SheetView(Parts parts, QWidget* parent)
    : QWidget(parent),
      on_(parts),
      tools_(new SheetTools),
      stack_(new QStackedLayout(this)),
      prompt_(new Paragraph({}, Type::body, &Colors::textPrimary)),
      facts_(new Label({}, Type::small, &Colors::textTertiary)),
      working_(new Spinner(12)),
      progress_(new Label({}, Type::small, &Colors::accentText)),
      places_(new SheetPlaces(on_.thumbnails)),
      comparing_(new CompareView(on_.thumbnails)),
      frame_(new DropFrame(this)) {
  setAcceptDrops(true);
  setFocusPolicy(Qt::StrongFocus);
  giveRole(*this, QAccessible::Grouping);
  stack_->setContentsMargins(0, 0, 0, 0);
  stack_->addWidget(buildSheet());
  stack_->addWidget(comparing_);
  bindPlaces();
  bindComparing();
  connect(&on_.sheet, &ContactSheetWorkspace::changed, this, &SheetView::refresh);
  connect(tools_, &SheetTools::compareToggled, this, [this] { isComparing() ? leaveComparing() : compare(); });
  connect(tools_, &SheetTools::playToggled, this, [this] {
    places_->setPlaying(!places_->isPlaying());
    refreshTools();
  });
  refresh();
}

QWidget* SheetView::buildSheet() {
  auto* page = new QWidget;
  head_ = new QWidget;
  prompt_->setMaximumWidth(kPromptWidth);
  auto* line = new QHBoxLayout;
  line->setSpacing(6);
  line->addWidget(facts_);
  line->addWidget(working_);
  line->addWidget(progress_);
  line->addStretch(1);
  auto* words = new QVBoxLayout(head_);
  words->setContentsMargins(16, 14, 16, 12);
  words->setSpacing(6);
  words->addWidget(prompt_);
  words->addLayout(line);
  scroll_ = new PlacesArea(*places_);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll_->viewport()->setAutoFillBackground(false);
  scroll_->setWidget(places_);
  places_->setAutoFillBackground(false);
  places_->setAccessibleName(shell::texts::sheetPlaces);
  empty_ = new EmptyNote;
  empty_->setWords({u"grid-2x2"_s, shell::texts::emptySheetTitle, shell::texts::emptySheet, {}});
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(head_);
  column->addWidget(new Hairline);
  column->addWidget(scroll_, 1);
  column->addWidget(empty_, 1);
  return page;
}

void SheetView::bindPlaces() {
  ContactSheetWorkspace& sheet = on_.sheet;
  connect(places_, &SheetPlaces::selectionRequested, this, &SheetView::selectionRequested);
  connect(places_, &SheetPlaces::opened, this, &SheetView::opened);
  connect(places_, &SheetPlaces::jobActionRequested, &sheet, &ContactSheetWorkspace::perform);
  connect(places_, &SheetPlaces::ratingChosen, &sheet, &ContactSheetWorkspace::setRating);
  connect(places_, &SheetPlaces::favoriteToggled, &sheet, &ContactSheetWorkspace::toggleFavorite);
  connect(places_, &SheetPlaces::reviewToggled, &sheet, &ContactSheetWorkspace::toggleReview);
  connect(places_, &SheetPlaces::removeRequested, &sheet, &ContactSheetWorkspace::remove);
  connect(places_, &SheetPlaces::moved, &sheet, &ContactSheetWorkspace::move);
  connect(places_, &SheetPlaces::moreRequested, this, &SheetView::menuRequested);
  connect(places_, &SheetPlaces::currentChanged, this,
          [this](int index) { scroll_->ensureWidgetVisible(places_->at(index), 0, kReveal); });
}

void SheetView::bindComparing() {
  ContactSheetWorkspace& sheet = on_.sheet;
  connect(comparing_, &CompareView::chosenChanged, this, [this](QUuid item) { Q_EMIT selectionRequested({item}); });
  connect(comparing_, &CompareView::ratingChosen, &sheet, &ContactSheetWorkspace::setRating);
  connect(comparing_, &CompareView::favoriteToggled, &sheet, &ContactSheetWorkspace::toggleFavorite);
  connect(comparing_, &CompareView::actionRequested, this, &SheetView::actionRequested);
  connect(comparing_, &CompareView::opened, this, &SheetView::opened);
  connect(comparing_, &CompareView::closeRequested, this, &SheetView::leaveComparing);
}

void SheetView::refresh() {
  const SheetDisplay& sheet = on_.sheet.display();
  const QString words = sheet.prompt.isEmpty() ? sheet.title : sheet.prompt;
  const QString shown = base::firstChars(words, kMostPrompt);
  std::vector<std::pair<int, int>> names;
  for (const PromptName& name : sheet.names)
    if (name.start + name.length <= shown.size()) names.emplace_back(name.start, name.length);
  prompt_->setParagraph(shown, names);
  facts_->setText(sheet.factsText);
  facts_->setVisible(!sheet.factsText.isEmpty());
  progress_->setText(sheet.progressText);
  progress_->setVisible(!sheet.progressText.isEmpty());
  working_->setVisible(!sheet.progressText.isEmpty());
  const bool any = !sheet.places.empty();
  const bool held = places_->isAncestorOf(window()->focusWidget());
  scroll_->setVisible(any);
  empty_->setVisible(!any);
  // Without places the keyboard is on the sheet itself, which has to show it.
  setProperty(ownFocusProperty, any);
  setFocusPolicy(any ? Qt::ClickFocus : Qt::StrongFocus);
  places_->show(sheet.places, roomOf(*scroll_));
  if (held && !any) setFocus(Qt::OtherFocusReason);
  if (isComparing()) {
    comparing_->show(on_.sheet.compared(compared_));
    if (on_.sheet.compared(compared_).size() < static_cast<size_t>(fewestCompared)) leaveComparing();
  }
  setAccessibleName(sheet.title);
  refreshTools();
}

void SheetView::refreshTools() {
  const SheetDisplay& sheet = on_.sheet.display();
  tools_->setCompare(static_cast<int>(on_.sheet.compared(toCompare()).size()), isComparing());
  tools_->setClips(sheet.clips > 0 && !isComparing(), places_->isPlaying());
  tools_->setAdding(on_.sheet.canAdd(), on_.sheet.canAdd() ? shell::texts::addMediaHint : shell::texts::addAfterComparison);
  tools_->setSaving(sheet.canSave);
  tools_->setMore(sheet.stored);
}

void SheetView::setSelection(const QSet<QUuid>& selection) {
  places_->setSelection(selection);
  refreshTools();
}

std::vector<QUuid> SheetView::leaving(QUuid item) const {
  std::vector<QUuid> items;
  for (const QUuid& id : on_.sheet.ids())
    if (places_->selection().contains(id)) items.push_back(id);
  if (items.empty()) items.push_back(item);
  return items;
}

std::vector<QUuid> SheetView::toCompare() const {
  if (isComparing()) return compared_;
  const std::vector<QUuid> all = on_.sheet.ids();
  std::vector<QUuid> chosen;
  for (const QUuid& id : all)
    if (places_->selection().contains(id)) chosen.push_back(id);
  return chosen.size() >= static_cast<size_t>(fewestCompared) ? chosen : all;
}

bool SheetView::canCompare() const {
  return on_.sheet.compared(toCompare()).size() >= static_cast<size_t>(fewestCompared);
}

bool SheetView::isComparing() const { return stack_->currentWidget() == comparing_; }

void SheetView::compare() {
  if (isComparing() || !canCompare()) return;
  compared_ = toCompare();
  places_->setPlaying(false);
  stack_->setCurrentWidget(comparing_);
  comparing_->show(on_.sheet.compared(compared_));
  comparing_->setFocus(Qt::OtherFocusReason);
  refreshTools();
  Q_EMIT comparingChanged();
}

void SheetView::compareOnly() {
  compare();
  onlyComparing_ = isComparing();
}

void SheetView::endComparing() {
  stack_->setCurrentIndex(0);
  comparing_->clear();
  compared_.clear();
  refreshTools();
  Q_EMIT comparingChanged();
}

void SheetView::leaveQuietly() {
  onlyComparing_ = false;
  if (isComparing()) endComparing();
}

void SheetView::leaveComparing() {
  if (!isComparing()) return;
  endComparing();
  if (std::exchange(onlyComparing_, false)) {
    Q_EMIT backRequested();
    return;
  }
  places_->setCurrent(places_->current());
}

void SheetView::focusInEvent(QFocusEvent*) {
  if (isComparing())
    comparing_->setFocus(Qt::TabFocusReason);
  else if (places_->count() > 0)
    places_->returnToCurrent();
}

// With Ctrl the arrows carry the item itself along.
bool SheetView::movesPlace(QKeyEvent& event) {
  const int now = places_->current();
  const int next = now < 0 ? -1 : places_->neighbourOf(now, event.key());
  if (next < 0) return false;
  if (event.modifiers() == Qt::ControlModifier) {
    const bool sideways = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
    if (sideways) on_.sheet.moveBy(places_->at(now)->place().asset, event.key() == Qt::Key_Left ? -1 : +1);
    return sideways;
  }
  if (event.modifiers() != Qt::NoModifier) return false;
  places_->setCurrent(next);
  return true;
}

void SheetView::keyPressEvent(QKeyEvent* event) {
  const int place = placeFor(*event);
  if (place >= 0) return places_->setCurrent(place);
  if (movesPlace(*event)) return;
  const int now = places_->current();
  const QUuid item = now < 0 ? QUuid() : places_->at(now)->place().asset;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!item.isNull()) Q_EMIT opened(item);
      return;
    case Qt::Key_Space:
      if (item.isNull()) return;
      if (!places_->selection().contains(item)) Q_EMIT selectionRequested({item});
      Q_EMIT lookRequested();
      return;
    case Qt::Key_Delete:
      if (!item.isNull()) on_.sheet.removeAll(leaving(item));
      return;
    case Qt::Key_Menu:
      if (!item.isNull()) Q_EMIT menuRequested(item, places_->at(now)->mapToGlobal(places_->at(now)->rect().center()));
      return;
    case Qt::Key_Escape:
      Q_EMIT backRequested();
      return;
    default:
      break;
  }
  if (event->key() == Qt::Key_C && event->modifiers() == Qt::NoModifier) return compare();
  if (const auto action = itemActionFor(*event)) {
    Q_EMIT actionRequested(*action);
    return;
  }
  QWidget::keyPressEvent(event);
}

// Everything that may hold items is taken, for the sake of what is said where it cannot be added.
void SheetView::dragEnterEvent(QDragEnterEvent* event) {
  const QMimeData& data = *event->mimeData();
  if (isComparing() || (itemsFromInside(data).empty() && localFiles(data).isEmpty())) return event->ignore();
  event->setDropAction(Qt::CopyAction);
  event->accept();
  frame_->open();
}

void SheetView::dragLeaveEvent(QDragLeaveEvent*) { frame_->hide(); }

// Nothing is ever moved: a program that offers to gets a copy.
void SheetView::dropEvent(QDropEvent* event) {
  frame_->hide();
  event->setDropAction(Qt::CopyAction);
  event->accept();
  Q_EMIT mediaDropped(*event->mimeData());
}

void SheetView::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), colors().surfaceCanvas); }

}  // namespace sorvan::views
