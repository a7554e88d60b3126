#include "shell/views/inspector_links.h"

#include <QGridLayout>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/icons.h"
#include "shell/views/painting.h"
#include "shell/views/viewer_texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int kColumns = 2;
constexpr size_t kAtFirst = 8;
constexpr int kPicture = 40;
}  // namespace

InspectorLinkButton::InspectorLinkButton(ThumbnailStore& thumbnails, InspectorLink link, QWidget* parent)
    : QAbstractButton(parent), thumbnails_(thumbnails), link_(std::move(link)) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(link_.subtitle.isEmpty() ? link_.title : link_.subtitle + u": "_s + link_.title);
  setToolTip(link_.title);
  setEnabled(link_.canOpen);
  if (link_.canOpen) setCursor(Qt::PointingHandCursor);
  connect(&thumbnails_, &ThumbnailStore::loaded, this, qOverload<>(&QWidget::update));
}

void InspectorLinkButton::paintEvent(QPaintEvent*) {
  const Colors& c = colors();
  QPainter painter(this);
  const bool hover = isEnabled() && underMouse();
  const bool touched = hover || isDown();
  paintPanel(painter, rect(), metrics().radiusControl, touched ? c.statePressed : c.stateHover);
  if (isDown()) paintPanel(painter, rect(), metrics().radiusControl, c.stateHover);
  const QRect picture(6, (height() - kPicture) / 2, kPicture, kPicture);
  const auto answer = thumbnails_.picture(link_.thumbnailPath, {}, 256);
  if (answer.state == ThumbnailStore::State::ready)
    paintCover(painter, picture, metrics().radiusSmall, answer.picture);
  else
    paintPanel(painter, picture, metrics().radiusSmall, c.surfacePlaceholder);
  if (answer.state == ThumbnailStore::State::missing) paintIcon(painter, u"image"_s, picture, 14, {c.textTertiary});
  const int left = picture.right() + 9;
  const int room = width() - left - 6;
  const bool both = !link_.subtitle.isEmpty();
  const bool name = link_.title.startsWith(u'@');
  const QColor ink = name ? c.accentText : (isEnabled() ? c.textPrimary : c.textTertiary);
  paintText(painter, QRect(left, both ? 9 : 0, room, both ? 18 : height()),
            {link_.title, fontFor(Type::small, Weight::medium), ink, Qt::AlignLeft | Qt::AlignVCenter, Qt::ElideMiddle});
  if (both) paintText(painter, QRect(left, 26, room, 16), {link_.subtitle, fontFor(Type::caption), touched ? c.textTertiaryOnSelected : c.textTertiary});
}

InspectorLinks::InspectorLinks(ThumbnailStore& thumbnails, const std::vector<InspectorLink>& links, QWidget* parent)
    : QWidget(parent) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(6);
  for (int column = 0; column < kColumns; ++column) grid->setColumnStretch(column, 1);
  const size_t first = std::min(links.size(), kAtFirst);
  add(thumbnails, links, 0, first);
  if (first == links.size()) return;
  auto* more = new Button(texts::showMoreLinks(static_cast<int>(links.size() - first)), ButtonVariant::quiet);
  grid->addWidget(more, static_cast<int>(links.size()), 0, 1, kColumns);
  connect(more, &Button::clicked, this, [this, more, links, first, &thumbnails] {
    more->hide();
    add(thumbnails, links, first, links.size());
  });
}

void InspectorLinks::add(ThumbnailStore& thumbnails, const std::vector<InspectorLink>& links, size_t from, size_t to) {
  auto* grid = static_cast<QGridLayout*>(layout());
  for (size_t index = from; index < to; ++index) {
    auto* button = new InspectorLinkButton(thumbnails, links[index]);
    connect(button, &QAbstractButton::clicked, this, [this, item = links[index].item] { Q_EMIT opened(item); });
    const int place = static_cast<int>(index);
    grid->addWidget(button, place / kColumns, place % kColumns);
  }
}

}  // namespace sorvan::views
