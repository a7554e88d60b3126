#include "shell/views/attach_panel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPainter>

#include "composer/notice_texts.h"
#include "composer/reference_texts.h"
#include "shell/views/controls.h"
#include "shell/views/dropped_media.h"
#include "shell/views/fields.h"
#include "shell/views/icons.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/reference_texts.h"
#include "shell/views/segmented_control.h"
#include "shell/views/theme.h"
#include "shell/views/thumbnail_store.h"
#include "shell/views/typography.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kWidth = 460;
constexpr int kMostGrid = 300;
constexpr int kWords = 20;
}  // namespace

AttachGrid::AttachGrid(ThumbnailStore& thumbnails, QWidget* parent)
    : TileGrid(texts::pictures(), {84, 8, 4, [](int width) { return width + kWords; }}, Press::activates, parent),
      thumbnails_(thumbnails) {
  connect(&thumbnails_, &ThumbnailStore::loaded, viewport(), qOverload<>(&QWidget::update));
}

void AttachGrid::show(const std::vector<ReferenceTile>& tiles) {
  if (tiles == shown_) return;
  shown_ = tiles;
  std::vector<Tile> named;
  for (const ReferenceTile& tile : tiles) {
    QStringList about;
    for (const QString& part : {tile.detail, tile.attached ? texts::attachedState() : QString(), tile.problem})
      if (!part.isEmpty()) about << part;
    named.push_back({tile.id, tile.title, about.join(u", "_s), tile.attached});
  }
  setTiles(std::move(named));
}

const ReferenceTile* AttachGrid::tile(QUuid id) const {
  const int index = rowIndex(id);
  return index < 0 ? nullptr : &shown_[static_cast<std::size_t>(index)];
}

void AttachGrid::paintTile(QPainter& painter, int index, const QRect& area, const Look& look) {
  const ReferenceTile& tile = shown_[static_cast<std::size_t>(index)];
  const QRect square(area.x(), area.y(), area.width(), area.width());
  painter.setOpacity(tile.problem.isEmpty() ? 1 : 0.45);
  const auto answer = thumbnails_.picture(tile.thumbnailPath, tile.filePath, 256);
  if (answer.state == ThumbnailStore::State::ready)
    paintCover(painter, square, metrics().radiusControl, answer.picture);
  else
    paintPanel(painter, square, metrics().radiusControl, colors().surfacePlaceholder);
  if (answer.state == ThumbnailStore::State::missing)
    paintIcon(painter, u"triangle-alert"_s, square, 16, {colors().textTertiary});
  painter.setOpacity(1);
  // A picture may fade, words may not.
  const bool named = tile.isSaved && tile.problem.isEmpty();
  paintText(painter, QRect(area.x(), square.bottom() + 2, area.width(), kWords - 2),
            {tile.title, fontFor(Type::caption), named ? colors().accentText : colors().textTertiary});
  if (tile.attached) {
    const QRect tick(square.right() - 22, square.top() + 6, 18, 18);
    paintPanel(painter, tick, 9, colors().accentFill);
    paintCheck(painter, tick, 11, colors().textOnAccent);
    paintRing(painter, square, metrics().radiusControl, 2, colors().accentFill);
  }
  if (look.ring) paintRing(painter, square.adjusted(-2, -2, 2, 2), metrics().radiusControl + 2, 2, colors().accentRing);
  else if (look.hovered) paintRing(painter, square, metrics().radiusControl, 1, colors().controlBorder);
}

AttachPanelView::AttachPanelView(ReferencesPresenter& references, ThumbnailStore& thumbnails, int mostHeight)
    : Popover(texts::attachPanel()),
      references_(references),
      source_(references.firstSource()),
      count_(new Label({}, Type::small, &Colors::textSecondary)),
      search_(new TextField(texts::searchPictures(), texts::searchPictures())),
      grid_(new AttachGrid(thumbnails)),
      empty_(new Paragraph({}, Type::small, &Colors::textSecondary)),
      files_(new Button(texts::chooseFiles())),
      paste_(new Button(texts::pastePicture())),
      stop_(new Button(texts::cancelImport())),
      save_(new Button(composer::texts::saveAttached(), ButtonVariant::quiet)) {
  build(mostHeight);
  typing_.setSingleShot(true);
  typing_.setInterval(120);
  connect(&typing_, &QTimer::timeout, this, &AttachPanelView::refresh);
  connect(search_, &QLineEdit::textChanged, this, [this] { typing_.start(); });
  connect(search_, &TextField::escapePressed, this, &Popover::dismiss);
  connect(grid_, &TileGrid::activated, this, [this](QUuid id) {
    const ReferenceTile* tile = grid_->tile(id);
    if (!tile) return;
    tile->isSaved ? references_.attachSaved(id) : references_.toggleItem(id);
  });
  connect(files_, &Button::clicked, this, [this] {
    Q_EMIT filesRequested();
    dismiss();
  });
  connect(paste_, &Button::clicked, this, &AttachPanelView::paste);
  connect(stop_, &Button::clicked, &references_, &ReferencesPresenter::cancelImport);
  connect(save_, &Button::clicked, this, [this] {
    dismiss();
    references_.saveAttached();
  });
  connect(&references_, &ReferencesPresenter::changed, this, &AttachPanelView::refresh, Qt::QueuedConnection);
  refresh();
}

void AttachPanelView::build(int mostHeight) {
  auto* column = new QVBoxLayout(panel());
  column->setContentsMargins(14, 12, 14, 12);
  column->setSpacing(10);
  panel()->setFixedWidth(kWidth);
  auto* head = new QHBoxLayout;
  auto* title = new Label(texts::attachTitle(), Type::body);
  title->setWeight(Weight::semibold);
  head->addWidget(title);
  head->addStretch(1);
  head->addWidget(count_);
  column->addLayout(head);
  std::vector<Segment> segments;
  for (const QString& source : references_.attachPanel(source_, {}).sources) segments.push_back({source, {}, {}});
  sources_ = new SegmentedControl(texts::referenceSources(), segments, ControlSize::compact);
  sources_->setStretched(true);
  sources_->setCurrent(static_cast<int>(source_));
  connect(sources_, &SegmentedControl::chosen, this, [this](int index) {
    source_ = static_cast<ReferenceSource>(index);
    refresh();
  });
  column->addWidget(sources_);
  search_->setIconName(u"search"_s);
  column->addWidget(search_);
  grid_->setFixedHeight(std::clamp(mostHeight - 230, 110, kMostGrid));
  empty_->setContentsMargins(4, 4, 4, 4);
  empty_->setFixedHeight(grid_->height());
  empty_->setAlignment(Qt::AlignCenter);
  column->addWidget(grid_);
  column->addWidget(empty_);
  save_->setToolTip(composer::texts::saveAttachedDetail());
  save_->setAccessibleDescription(composer::texts::saveAttachedDetail());
  files_->setIconName(u"folder"_s);
  paste_->setIconName(u"image"_s);
  auto* foot = new QHBoxLayout;
  foot->setSpacing(8);
  for (Button* button : {files_, paste_, stop_, save_}) button->setControlSize(ControlSize::compact);
  foot->addWidget(files_);
  foot->addWidget(paste_);
  foot->addWidget(stop_);
  foot->addStretch(1);
  foot->addWidget(save_);
  column->addLayout(foot);
}

void AttachPanelView::refresh() {
  const AttachPanel panel = references_.attachPanel(source_, search_->text());
  count_->setText(panel.inertText.isEmpty() ? panel.countText : panel.inertText);
  grid_->show(panel.tiles);
  grid_->setEnabled(panel.inertText.isEmpty());
  grid_->setVisible(!panel.tiles.empty());
  empty_->setParagraph(panel.emptyText);
  empty_->setVisible(panel.tiles.empty());
  const QMimeData* clipboard = QGuiApplication::clipboard()->mimeData();
  files_->setVisible(!panel.importing);
  paste_->setVisible(!panel.importing && clipboard && holdsMedia(*clipboard));
  stop_->setVisible(panel.importing);
  save_->setVisible(panel.canSaveAttached);
}

void AttachPanelView::paste() {
  if (const QMimeData* clipboard = QGuiApplication::clipboard()->mimeData()) attachMedia(*clipboard, references_);
}

}  // namespace sorvan::views
