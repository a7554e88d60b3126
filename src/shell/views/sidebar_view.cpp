#include "shell/views/sidebar_view.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

#include "shell/item_transfer.h"
#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/plain_scroll_area.h"
#include "shell/views/texts.h"
#include "shell/views/touch.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kPadding = 8;
constexpr int kGap = 9;
constexpr int kMark = 26;
constexpr int kCover = 18;
}  // namespace

// SidebarRowButton

SidebarRowButton::SidebarRowButton(const SidebarRow& row, ThumbnailStore* thumbnails, QWidget* parent)
    : QAbstractButton(parent), thumbnails_(thumbnails) {
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setFixedHeight(metrics().sidebarRow);
  if (thumbnails_) connect(thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
  setRow(row);
}

void SidebarRowButton::setRow(const SidebarRow& row) {
  row_ = row;
  setChecked(row.current);
  setText(row.title);
  setAccessibleName(row.title);
  setAccessibleDescription(row.countText);
  setAcceptDrops(row.takesItems);
  update();
}

void SidebarRowButton::setNarrow(bool narrow) {
  narrow_ = narrow;
  setToolTip(narrow ? row_.title : QString());
  update();
}

QSize SidebarRowButton::sizeHint() const { return {36, metrics().sidebarRow}; }

void SidebarRowButton::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  if (row_.current) paintPanel(painter, rect(), metrics().radiusControl, c.stateSelected);
  paintTouch(painter, rect(), metrics().radiusControl, *this);
  if (dropHere_) paintPanel(painter, rect(), metrics().radiusControl, c.stateSelected, c.accentRing);
  QRect inner = rect().adjusted(kPadding, 0, -kPadding, 0);
  const QRect icon(narrow_ ? (width() - 16) / 2 : inner.left(), 0, 16, height());
  ThumbnailStore::Answer cover;
  cover.state = ThumbnailStore::State::missing;
  if (thumbnails_ && !row_.thumbnailPath.isEmpty())
    cover = thumbnails_->picture(row_.thumbnailPath, {}, qRound(kCover * devicePixelRatioF()));
  if (cover.state == ThumbnailStore::State::ready)
    paintCover(painter, QRectF(icon.left() - 1, (height() - kCover) / 2.0, kCover, kCover), metrics().radiusSmall,
               cover.picture);
  else
    paintIcon(painter, row_.iconName, icon, metrics().iconRegular, {row_.current ? c.accentText : c.textSecondary});
  if (narrow_) return;
  inner.setLeft(inner.left() + 16 + kGap);
  QColor dim = row_.current || dropHere_ || isDown() ? c.textTertiaryOnSelected : c.textTertiary;
  if (row_.attention) dim = c.warningText;
  const int count =
      row_.countText.isEmpty()
          ? 0
          : paintText(painter, inner, {row_.countText, fontFor(Type::small), dim, Qt::AlignRight | Qt::AlignVCenter}) +
                8;
  paintText(painter, inner.adjusted(0, 0, -count, 0),
            {row_.title, fontFor(Type::body, row_.current ? Weight::medium : Weight::regular),
             row_.current ? c.textPrimary : c.textSecondary});
}

// Arrows walk the list, Enter chooses like Space.
void SidebarRowButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Down)
    focusNextChild();
  else if (event->key() == Qt::Key_Up)
    focusPreviousChild();
  else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    click();
  else if (event->key() == Qt::Key_F2 && row_.kind != SidebarRowKind::plain)
    Q_EMIT renameRequested();
  else
    QAbstractButton::keyPressEvent(event);
}

void SidebarRowButton::contextMenuEvent(QContextMenuEvent* event) {
  if (row_.kind == SidebarRowKind::plain) return;
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  Q_EMIT menuRequested(byKey ? mapToGlobal(rect().center()) : event->globalPos());
}

void SidebarRowButton::mouseDoubleClickEvent(QMouseEvent* event) {
  if (row_.kind == SidebarRowKind::plain) return QAbstractButton::mouseDoubleClickEvent(event);
  Q_EMIT renameRequested();
}

void SidebarRowButton::dragEnterEvent(QDragEnterEvent* event) {
  if (!row_.takesItems || !event->mimeData()->hasFormat(itemsFormat)) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  dropHere_ = true;
  update();
}

void SidebarRowButton::dragLeaveEvent(QDragLeaveEvent*) {
  dropHere_ = false;
  update();
}

// Whoever dragged keeps what it has: where an item belongs is the library's business, not that of the drag.
void SidebarRowButton::dropEvent(QDropEvent* event) {
  dropHere_ = false;
  update();
  event->setDropAction(Qt::CopyAction);
  event->accept();
  Q_EMIT dropped(itemsFromInside(*event->mimeData()));
}

// WorkspaceButton

WorkspaceButton::WorkspaceButton(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setFixedHeight(40);
}

void WorkspaceButton::setWorkspace(const QString& name, const QString& path) {
  name_ = name;
  path_ = path;
  setAccessibleName(texts::workspace(name));
  setAccessibleDescription(path);
  setToolTip(path);
  update();
}

void WorkspaceButton::setNarrow(bool narrow) {
  narrow_ = narrow;
  update();
}

void WorkspaceButton::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  paintTouch(painter, rect(), metrics().radiusCard, *this);
  const int left = narrow_ ? (width() - kMark) / 2 : kPadding;
  painter.drawPixmap(left, (height() - kMark) / 2, markPixmap(kMark, devicePixelRatioF()));
  if (narrow_) return;
  const int x = left + kMark + kGap;
  const int words = width() - x - 24;
  paintText(painter, QRect(x, 4, words, 17), {name_, fontFor(Type::body, Weight::semibold), c.textPrimary});
  paintText(painter, QRect(x, 21, words, 15),
            {path_, fontFor(Type::caption, Weight::regular), isDown() ? c.textTertiaryOnSelected : c.textTertiary, Qt::AlignLeft | Qt::AlignVCenter,
             Qt::ElideMiddle});
  paintIcon(painter, u"chevrons-up-down"_s, QRect(width() - 24, 0, 16, height()), 14, {c.textTertiary});
}

// SidebarView

SidebarView::SidebarView(ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent), thumbnails_(thumbnails), workspace_(new WorkspaceButton), list_(new QWidget) {
  setAccessibleName(texts::sidebarZone());
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(8, 10, 9, 8);
  column->setSpacing(8);
  column->addWidget(workspace_);
  column->addWidget(plainScrollArea(list_), 1);
  auto* rows = new QVBoxLayout(list_);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  connect(workspace_, &WorkspaceButton::clicked, this, &SidebarView::workspacePressed);
}

void SidebarView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceChrome);
  painter.fillRect(QRect(width() - 1, 0, 1, height()), colors().lineSubtle);
}

void SidebarView::show(const SidebarDisplay& display) {
  display_ = display;
  workspace_->setWorkspace(display.workspaceName, display.workspacePath);
  const bool same =
      std::equal(rows_.begin(), rows_.end(), display.rows.begin(), display.rows.end(),
                 [](const SidebarRowButton* button, const SidebarRow& row) { return button->key() == row.key; });
  if (!same) return rebuild();
  for (size_t index = 0; index < rows_.size(); ++index) rows_[index]->setRow(display.rows[index]);
}

void SidebarView::setNarrow(bool narrow) {
  narrow_ = narrow;
  workspace_->setNarrow(narrow);
  for (SidebarRowButton* row : rows_) row->setNarrow(narrow);
  for (QWidget* heading : headings_) heading->setVisible(!narrow);
}

void SidebarView::addHeading(QVBoxLayout& column, SidebarSection section, const QString& title) {
  auto* heading = new QWidget;
  auto* row = new QHBoxLayout(heading);
  row->setContentsMargins(8, 12, 3, 3);
  row->setSpacing(0);
  auto* words = new Label(title, Type::caption, &Colors::textTertiary);
  words->setWeight(Weight::semibold);
  row->addWidget(words, 1);
  if (section == SidebarSection::projects && !display_.addTitle.isEmpty()) {
    auto* add = new IconButton(u"plus"_s, display_.addTitle, u"Ctrl+Shift+N"_s);
    add->setControlSize(ControlSize::compact);
    connect(add, &IconButton::clicked, this, &SidebarView::newProjectPressed);
    row->addWidget(add);
  }
  column.addWidget(heading);
  headings_.push_back(heading);
}

void SidebarView::addRow(QVBoxLayout& column, const SidebarRow& row) {
  auto* button = new SidebarRowButton(row, &thumbnails_);
  connect(button, &SidebarRowButton::clicked, this, [this, key = row.key] { Q_EMIT chosen(key); });
  connect(button, &SidebarRowButton::renameRequested, this, [this, key = row.key] { startRenaming(key); });
  connect(button, &SidebarRowButton::menuRequested, this,
          [this, button](QPoint place) { openMenu(button->row(), place); });
  connect(button, &SidebarRowButton::dropped, this,
          [this, key = row.key](const std::vector<QUuid>& items) { Q_EMIT dropped(items, key); });
  column.addWidget(button);
  rows_.push_back(button);
}

void SidebarView::addRows(QVBoxLayout& column, SidebarSection section, const QString& title) {
  const bool canAdd = section == SidebarSection::projects && !display_.addTitle.isEmpty();
  const auto wanted = [section](const SidebarRow& row) { return row.section == section; };
  if (!canAdd && std::none_of(display_.rows.begin(), display_.rows.end(), wanted)) return;
  if (!title.isEmpty()) addHeading(column, section, title);
  for (const SidebarRow& row : display_.rows)
    if (wanted(row)) addRow(column, row);
}

void SidebarView::openMenu(const SidebarRow& row, QPoint globalPosition) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(row.title);
  const bool archived = row.kind == SidebarRowKind::archivedProject;
  connect(menu->addAction(texts::renameEllipsis()), &QAction::triggered, this,
          [this, key = row.key] { startRenaming(key); });
  connect(menu->addAction(archived ? texts::unarchive() : texts::archive()), &QAction::triggered, this,
          [this, key = row.key, archived] { Q_EMIT archiveChosen(key, !archived); });
  menu->popup(globalPosition);
}

void SidebarView::startRenaming(const QString& key) {
  const auto found = std::find_if(rows_.begin(), rows_.end(), [&key](auto* row) { return row->key() == key; });
  if (found == rows_.end()) return;
  SidebarRowButton* row = *found;
  if (narrow_) return Q_EMIT renameAsked(key, row->row().title);
  delete renaming_;
  auto* field = new TextField(texts::projectName(), {}, list_);
  renaming_ = field;
  field->setText(row->row().title);
  field->selectAll();
  field->setGeometry(row->geometry().adjusted(kPadding + kCover, 0, 0, 0));
  field->show();
  field->setFocus(Qt::OtherFocusReason);
  // Enter and a press elsewhere keep the name, Escape leaves the old one.
  const auto close = [this, row = QPointer(row)] {
    const bool hadFocus = renaming_ && renaming_->hasFocus();
    if (renaming_) renaming_->disconnect(this), renaming_->hide(), renaming_->deleteLater();
    renaming_ = nullptr;
    if (hadFocus && row) row->setFocus(Qt::OtherFocusReason);
  };
  connect(field, &TextField::escapePressed, this, close);
  connect(field, &TextField::editingFinished, this, [this, key, close, field] {
    const QString name = field->text().trimmed();
    close();
    if (!name.isEmpty()) Q_EMIT renamed(key, name);
  });
}

void SidebarView::rebuild() {
  auto* column = static_cast<QVBoxLayout*>(list_->layout());
  const QWidget* focused = QApplication::focusWidget();
  const auto* focusedRow = qobject_cast<const SidebarRowButton*>(focused);
  const QString focusedKey = focusedRow && list_->isAncestorOf(focused) ? focusedRow->key() : QString();
  for (QWidget* child : list_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
    if (child != renaming_) child->hide(), child->deleteLater();
  while (QLayoutItem* item = column->takeAt(0)) delete item;
  rows_.clear();
  headings_.clear();
  addRows(*column, SidebarSection::library, {});
  addRows(*column, SidebarSection::projects, display_.projectsTitle);
  addRows(*column, SidebarSection::everywhere, display_.everywhereTitle);
  column->addStretch(1);
  addRows(*column, SidebarSection::foot, {});
  setNarrow(narrow_);
  if (!focusedKey.isEmpty()) giveKeyboardTo(focusedKey);
  if (renaming_) renaming_->raise();
}

// A row that went, as one that was put away, leaves the keyboard to the place that is open.
void SidebarView::giveKeyboardTo(const QString& key) {
  const auto same = std::find_if(rows_.begin(), rows_.end(), [&key](auto* row) { return row->key() == key; });
  const auto open = std::find_if(rows_.begin(), rows_.end(), [](auto* row) { return row->row().current; });
  const auto next = same != rows_.end() ? same : open != rows_.end() ? open : rows_.begin();
  if (next == rows_.end()) return;
  (*next)->show();  // a row that the layout has not shown yet would let it go again
  (*next)->setFocus(Qt::OtherFocusReason);
}

}  // namespace sorvan::views
