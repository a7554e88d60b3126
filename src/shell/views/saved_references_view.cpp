#include "shell/views/saved_references_view.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include "shell/views/controls.h"
#include "shell/views/empty_note.h"
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
constexpr int kLeast = 250;
constexpr int kGap = 16;
constexpr int kWords = 58;
constexpr int kSeam = 2;  // between the pictures of a card
int cardHeight(int width) { return width * 62 / 100 + kWords; }
}  // namespace

ReferenceGrid::ReferenceGrid(ThumbnailStore& thumbnails, QWidget* parent)
    : TileGrid(texts::savedReferenceList(), {kLeast, kGap, 16, cardHeight}, Press::selects, parent),
      thumbnails_(thumbnails) {
  connect(&thumbnails_, &ThumbnailStore::loaded, viewport(), qOverload<>(&QWidget::update));
}

void ReferenceGrid::show(const std::vector<ReferenceCard>& cards) {
  if (cards == cards_) return;
  cards_ = cards;
  std::vector<Tile> tiles;
  for (const ReferenceCard& card : cards) tiles.push_back({card.id, card.accessibleName, {}, false});
  setTiles(std::move(tiles));
}

void ReferenceGrid::paintTile(QPainter& painter, int index, const QRect& area, const Look& look) {
  const ReferenceCard& card = cards_[static_cast<std::size_t>(index)];
  paintPanel(painter, area, metrics().radiusCard, look.hovered ? colors().controlFillHover : colors().surfaceRaised,
             colors().lineDefault);
  const QRect pictures(area.x() + 1, area.y() + 1, area.width() - 2, area.height() - kWords);
  painter.setOpacity(card.problem.isEmpty() ? 1 : 0.5);
  paintMosaic(painter, card, pictures);
  painter.setOpacity(1);
  paintWords(painter, card, QRect(area.x() + 12, pictures.bottom() + 1, area.width() - 24, kWords));
  if (look.current)
    paintRing(painter, QRectF(area).adjusted(-2, -2, 2, 2), metrics().radiusCard + 2, look.ring ? 3 : 2,
              colors().accentRing);
}

void ReferenceGrid::paintPicture(QPainter& painter, const std::pair<QString, QString>& picture,
                                 const QRect& area) const {
  const auto answer = thumbnails_.picture(picture.first, picture.second, 512);
  if (answer.state == ThumbnailStore::State::ready) return paintCover(painter, area, 0, answer.picture);
  painter.fillRect(area, colors().surfacePlaceholder);
  if (answer.state == ThumbnailStore::State::missing)
    paintIcon(painter, u"triangle-alert"_s, area, 18, {colors().textTertiary});
}

// One fills the card; two share it; of three the first is large; four stand two by two.
void ReferenceGrid::paintMosaic(QPainter& painter, const ReferenceCard& card, const QRect& area) const {
  painter.save();
  QPainterPath rounded;
  const double radius = metrics().radiusCard - 1;
  rounded.addRoundedRect(QRectF(area).adjusted(0, 0, 0, radius), radius, radius);
  painter.setClipPath(rounded);
  painter.setClipRect(area, Qt::IntersectClip);
  const auto& pictures = card.pictures;
  const int half = (area.width() - kSeam) / 2;
  const int large = pictures.size() == 3 ? area.width() * 61 / 100 : half;
  const int low = (area.height() - kSeam) / 2;
  const QRect left(area.x(), area.y(), large, area.height());
  const QRect right(area.x() + large + kSeam, area.y(), area.width() - large - kSeam, area.height());
  const auto upper = [low](const QRect& part) { return QRect(part.x(), part.y(), part.width(), low); };
  const auto lower = [low](const QRect& part) {
    return QRect(part.x(), part.y() + low + kSeam, part.width(), part.height() - low - kSeam);
  };
  if (pictures.empty()) {
    painter.fillRect(area, colors().surfacePlaceholder);
    paintIcon(painter, u"triangle-alert"_s, area, 22, {colors().textTertiary});
  } else if (pictures.size() == 1) {
    paintPicture(painter, pictures[0], area);
  } else if (pictures.size() < 4) {
    paintPicture(painter, pictures[0], left);
    paintPicture(painter, pictures[1], pictures.size() == 2 ? right : upper(right));
    if (pictures.size() == 3) paintPicture(painter, pictures[2], lower(right));
  } else {
    paintPicture(painter, pictures[0], upper(left));
    paintPicture(painter, pictures[1], upper(right));
    paintPicture(painter, pictures[2], lower(left));
    paintPicture(painter, pictures[3], lower(right));
  }
  painter.restore();
}

void ReferenceGrid::paintWords(QPainter& painter, const ReferenceCard& card, const QRect& area) const {
  int right = area.right();
  if (!card.kind.isEmpty()) {
    const int width = badgeWidth(card.kind);
    const QRect badge(right - width + 1, area.y() + 11, width, 18);
    paintPanel(painter, badge, metrics().radiusSmall, colors().surfaceRaised);
    paintBadge(painter, badge, card.kind, BadgeTone::neutral);
    right -= width + 8;
  }
  paintText(painter, QRect(area.x(), area.y() + 9, right - area.x(), 22),
            {card.handle, fontFor(Type::body, Weight::semibold),
             card.problem.isEmpty() ? colors().accentText : colors().textSecondary});
  const QString line = card.problem.isEmpty() ? card.line : card.problem;
  paintText(painter, QRect(area.x(), area.y() + 31, area.width(), 18),
            {line, fontFor(Type::small), card.problem.isEmpty() ? colors().textSecondary : colors().warningText});
}

SavedReferencesView::SavedReferencesView(SavedReferencesPresenter& references, ReferenceScope scope,
                                         ThumbnailStore& thumbnails, QWidget* parent)
    : QWidget(parent),
      references_(references),
      scope_(scope),
      grid_(new ReferenceGrid(thumbnails)),
      emptyRoom_(new QWidget),
      empty_(new EmptyNote),
      tools_(new QWidget),
      search_(new TextField(texts::searchReferences(), texts::searchReferences())) {
  build();
  connect(&references_, &SavedReferencesPresenter::changed, this, &SavedReferencesView::refresh);
  connect(grid_, &TileGrid::activated, &references_, &SavedReferencesPresenter::attach);
  connect(grid_, &TileGrid::menuRequested, this, &SavedReferencesView::openMenu);
  connect(grid_, &TileGrid::keyPressed, this, [this](QUuid id, int key) {
    if (key == Qt::Key_E) edit(id);
    if (key == Qt::Key_Delete || key == Qt::Key_Backspace) references_.remove(id);
  });
  connect(search_, &QLineEdit::textChanged, this, &SavedReferencesView::refresh);
  connect(search_, &TextField::escapePressed, this, [this] {
    search_->clear();
    grid_->setFocus(Qt::OtherFocusReason);
  });
  refresh();
}

void SavedReferencesView::build() {
  const ReferencePage page = references_.page(scope_, {}, {});
  std::vector<Segment> segments;
  for (const QString& kind : page.kinds) segments.push_back({kind, {}, {}});
  kinds_ = new SegmentedControl(texts::kindsOfReferences(), segments, ControlSize::compact);
  connect(kinds_, &SegmentedControl::chosen, this, [this, kinds = page.kinds](int index) {
    kind_ = kinds.value(index);
    refresh();
  });
  auto* row = new QHBoxLayout;
  row->setContentsMargins(16, 0, 16, 0);
  row->addWidget(kinds_);
  row->addStretch(1);
  auto* hint = new ElidedLabel(Type::small, &Colors::textTertiary, Qt::ElideRight);
  hint->setText(page.hint);
  row->addWidget(hint);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addSpacing((metrics().filterRow - metrics().controlCompact) / 2);
  column->addLayout(row);
  column->addSpacing((metrics().filterRow - metrics().controlCompact) / 2 - 1);
  column->addWidget(new Hairline(&Colors::lineSubtle));
  column->addWidget(grid_, 1);
  auto* room = new QVBoxLayout(emptyRoom_);
  room->addStretch(1);
  room->addWidget(empty_);
  room->addStretch(1);
  column->addWidget(emptyRoom_, 1);
  setFocusProxy(grid_);
  search_->setIconName(u"search"_s);
  search_->setFixedWidth(190);
  auto* add = new Button(texts::newReference());
  add->setIconName(u"plus"_s);
  connect(add, &Button::clicked, this, [this] { Q_EMIT references_.editorRequested(references_.newDraft(scope_, {})); });
  auto* tools = new QHBoxLayout(tools_);
  tools->setContentsMargins(0, 0, 0, 0);
  tools->setSpacing(10);
  tools->addWidget(search_);
  tools->addWidget(add);
}

void SavedReferencesView::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), colors().surfaceCanvas); }

QString SavedReferencesView::title() const { return references_.page(scope_, {}, {}).title; }
QString SavedReferencesView::countText() const { return references_.page(scope_, {}, {}).countText; }

void SavedReferencesView::refresh() {
  const ReferencePage page = references_.page(scope_, kind_, search_->text());
  grid_->show(page.cards);
  grid_->setVisible(!page.cards.empty());
  emptyRoom_->setVisible(page.cards.empty());
  empty_->setWords({u"at-sign"_s, page.emptyTitle, page.emptyText, {}});
  Q_EMIT titleChanged();
}

void SavedReferencesView::edit(QUuid reference) {
  if (const auto draft = references_.draftOf(reference)) Q_EMIT references_.editorRequested(*draft);
}

void SavedReferencesView::openMenu(QUuid reference, QPoint at) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction(texts::attachTitle(), this, [this, reference] { references_.attach(reference); });
  menu->addAction(texts::editReference(), this, [this, reference] { edit(reference); });
  QMenu* places = menu->addMenu(texts::moveReference());
  for (const ReferencePlace& place : references_.places(reference))
    places->addAction(place.name, this, [this, reference, project = place.project] {
      references_.moveTo(reference, project);
    });
  places->setEnabled(!places->isEmpty());
  menu->addSeparator();
  QAction* remove = menu->addAction(texts::deleteReference(), this, [this, reference] { references_.remove(reference); });
  remove->setProperty("tone", u"danger"_s);
  menu->popup(at);
}

}  // namespace sorvan::views
