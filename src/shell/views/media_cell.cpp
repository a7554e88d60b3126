#include "shell/views/media_cell.h"

#include <QLinearGradient>
#include <QPixmapCache>

#include "shell/views/feedback.h"
#include "shell/views/icons.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/job_cell.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kBadgeInset = 6;
constexpr int kBadgeHeight = 19;
constexpr int kRound = 22;  // heart and select circle
constexpr int kShadeHeight = 48;
constexpr int kButton = 26;         // heart and more, under the pointer
constexpr int kRoomForButtons = 130;  // narrower cells keep the circle alone
constexpr double kTrashOpacity = 0.38;

QFont badgeFont() { return fontFor(Type::caption, Weight::semibold); }

QRect circleAt(const QRect& cell) { return {cell.left() + kBadgeInset, cell.top() + kBadgeInset, kRound, kRound}; }

void paintShade(QPainter& painter, const QRect& area) {
  const QRect foot(area.left(), area.bottom() + 1 - std::min(kShadeHeight, area.height()), area.width(),
                   std::min(kShadeHeight, area.height()));
  QLinearGradient shade(foot.topLeft(), foot.bottomLeft());
  shade.setColorAt(0, Qt::transparent);
  QColor end = colors().pictureShade;
  end.setAlphaF(0.74F);
  shade.setColorAt(1, end);
  painter.fillRect(foot, shade);
}

QRect moreAt(const QRect& cell) {
  if (cell.width() < kRoomForButtons) return {};
  return {cell.right() - kBadgeInset - kButton + 1, cell.top() + kBadgeInset, kButton, kButton};
}

QRect heartAt(const QRect& cell) { return moreAt(cell).translated(-kButton - 4, 0); }

void paintPlaceholder(QPainter& painter, const QRect& area, const GalleryCell& cell, ThumbnailStore::State state) {
  const Colors& c = colors();
  // A sound's words are written in white, as on its waveform.
  const bool sound = cell.kind == CellKind::audio;
  const QColor ink = sound ? c.textOnPicture : c.textSecondary;
  paintPanel(painter, area, metrics().radiusPicture, sound ? c.waveGround : c.surfacePlaceholder);
  if (state == ThumbnailStore::State::loading) return;
  const QString words =
      state == ThumbnailStore::State::missing ? texts::originalMissing() : texts::pictureUnreadable();
  paintIcon(painter, u"triangle-alert"_s, area.adjusted(0, -10, 0, -10), 18, {ink});
  paintText(painter, QRect(area.left() + 6, area.center().y() + 8, area.width() - 12, 16),
            {words, fontFor(Type::caption), ink, Qt::AlignCenter});
}

// Without its colours; each picture is made grey once while it is shown.
QPixmap grey(const QPixmap& picture) {
  const QString key = u"grey %1"_s.arg(picture.cacheKey());
  QPixmap made;
  if (QPixmapCache::find(key, &made)) return made;
  const QImage colored = picture.toImage();
  QImage plain = colored.convertToFormat(QImage::Format_Grayscale8);
  if (colored.hasAlphaChannel()) {
    plain = plain.convertToFormat(QImage::Format_ARGB32);
    plain.setAlphaChannel(colored.convertToFormat(QImage::Format_Alpha8));
  }
  made = QPixmap::fromImage(plain);
  made.setDevicePixelRatio(picture.devicePixelRatio());
  QPixmapCache::insert(key, made);
  return made;
}

// A picture of just that size is laid down as it is; another one stands in, scaled.
void paintPicture(QPainter& painter, const QRect& area, const QPixmap& picture) {
  const QSizeF size = picture.deviceIndependentSize();
  const bool fits = std::abs(size.width() - area.width()) < 1 && std::abs(size.height() - area.height()) < 1;
  if (fits)
    painter.drawPixmap(area.topLeft(), picture);
  else
    paintCover(painter, area, metrics().radiusPicture, picture);
}

void paintHoverButton(QPainter& painter, const QRect& button, const QString& icon, const QColor& ink, IconFill fill,
                      bool hot) {
  const Colors& c = colors();
  paintPanel(painter, button, metrics().radiusControl, c.pictureBadge, hot ? c.pictureBadgeText : QColor());
  paintIcon(painter, icon, button, 15, {ink, fill});
}

void paintHoverButtons(QPainter& painter, const QRect& area, const GalleryCell& cell, CellPart hot) {
  const QColor white = colors().pictureBadgeText;
  const QColor heart = cell.favorite ? Theme::instance().colorsOf(Look::dark).favorite : white;
  paintHoverButton(painter, heartAt(area), u"heart"_s, heart, cell.favorite ? IconFill::filled : IconFill::outline,
                   hot == CellPart::heart);
  paintHoverButton(painter, moreAt(area), u"ellipsis"_s, white, IconFill::outline, hot == CellPart::more);
}

void paintHeart(QPainter& painter, const QRect& area) {
  const QRect round(area.right() - kBadgeInset - kRound + 1, area.top() + kBadgeInset, kRound, kRound);
  paintPanel(painter, round, kRound / 2.0, colors().pictureBadge);
  paintIcon(painter, u"heart"_s, round, 12, {Theme::instance().colorsOf(Look::dark).favorite, IconFill::filled});
}

void paintSelectCircle(QPainter& painter, const QRect& area, bool checked, bool hot) {
  const Colors& c = colors();
  const QRect circle = circleAt(area);
  paintPanel(painter, circle, checked ? kRound / 2.0 : metrics().radiusSmall, checked ? c.accentFill : c.pictureBadge,
             hot ? c.pictureBadgeText : QColor());
  if (checked)
    paintCheck(painter, circle, 12, c.textOnAccent);
  else
    paintRing(painter, QRectF(circle).adjusted(4, 4, -4, -4), 7, 1.5, Qt::white);
}

// A sound: its title on the shade, what it is at the top unless the circle is there.
void paintSoundTexts(QPainter& painter, const QRect& area, const GalleryCell& cell, bool badge) {
  paintShade(painter, area);
  const int clock = cell.durationText.isEmpty() ? 0 : textWidth(cell.durationText, badgeFont()) + 36;
  paintText(painter, QRect(area.left() + 9, area.bottom() - 24, area.width() - 18 - clock, 18),
            {cell.title, fontFor(Type::caption), colors().textOnPicture});
  if (badge) paintPictureBadge(painter, area, Qt::TopLeftCorner, cell.soundIcon, cell.soundText);
}

void paintHoverTexts(QPainter& painter, const QRect& area, const GalleryCell& cell) {
  paintShade(painter, area);
  const QColor white = colors().textOnPicture;
  const QRect line(area.left() + 8, area.bottom() - 22, area.width() - 16, 16);
  const bool clock = !cell.durationText.isEmpty();
  const int cost = clock ? 0 : std::min(textWidth(cell.costText, fontFor(Type::caption)) + 1, line.width());
  paintText(painter, line.adjusted(0, 0, -cost - (clock ? 56 : 6), 0), {cell.modelName, fontFor(Type::caption), white});
  if (!clock)
    paintText(painter, line, {cell.costText, fontFor(Type::caption), white, Qt::AlignRight | Qt::AlignVCenter});
}

// The icon of a badge; a circle that loads turns.
void paintBadgeIcon(QPainter& painter, const QString& name, const QRectF& place) {
  const Colors& c = colors();
  if (name == u"loader-circle"_s)
    return paintSpinner(painter, place, 12, Theme::instance().colorsOf(Look::dark).accentText, spinnerDegrees());
  const bool filled = name == u"play"_s;
  paintIcon(painter, name, place, filled ? 10 : 12,
            {c.pictureBadgeText, filled ? IconFill::filled : IconFill::outline});
}

// Where a badge keeps to its corner; empty when the cell has no room for one.
QRect badgeAt(const QRect& cell, Qt::Corner corner, int content) {
  // One digit stands in a square.
  const int width = std::min(std::max(content + 12, kBadgeHeight), cell.width() - 2 * kBadgeInset);
  if (width < kBadgeHeight || cell.height() < kBadgeHeight + 2 * kBadgeInset) return {};
  const bool right = corner == Qt::TopRightCorner || corner == Qt::BottomRightCorner;
  const bool bottom = corner == Qt::BottomLeftCorner || corner == Qt::BottomRightCorner;
  return QRect(right ? cell.right() - kBadgeInset - width + 1 : cell.left() + kBadgeInset,
               bottom ? cell.bottom() - kBadgeInset - kBadgeHeight + 1 : cell.top() + kBadgeInset, width, kBadgeHeight);
}

// The room before the words.
int leadOf(const QString& icon, const QString& text, const QColor& dot) {
  if (icon.isEmpty()) return dot.isValid() ? 11 : 0;
  return text.isEmpty() ? 12 : 15;
}

// The badge that plays a sound in its cell.
QRect playBadgeAt(const QRect& area, const GalleryCell& cell) {
  if (cell.kind != CellKind::audio || cell.inTrash || cell.durationText.isEmpty()) return {};
  return badgeAt(area, Qt::BottomRightCorner,
                 textWidth(cell.durationText, badgeFont()) + leadOf(u"play"_s, cell.durationText, {}));
}

void paintDuration(QPainter& painter, const QRect& area, const GalleryCell& cell, const CellLook& look) {
  if (cell.durationText.isEmpty()) return;
  const QRect badge =
      paintPictureBadge(painter, area, Qt::BottomRightCorner, look.played ? u"pause"_s : u"play"_s, cell.durationText);
  if (look.hoveredPart == CellPart::play && !badge.isEmpty())
    paintRing(painter, badge, metrics().radiusSmall, 1, colors().pictureBadgeText);
}

// The part of a sound that was heard, and the place that is.
void paintPlayhead(QPainter& painter, const QRect& area, double share) {
  const double x = area.left() + (area.width() - 1.5) * std::clamp(share, 0.0, 1.0);
  painter.fillRect(QRectF(x, area.top(), 1.5, area.height()), colors().pictureBadgeText);
}

void paintBadges(QPainter& painter, const QRect& area, const GalleryCell& cell, const CellLook& look) {
  const bool hovered = look.hovered;
  if (!cell.workText.isEmpty())
    paintPictureBadge(painter, area, Qt::BottomLeftCorner, u"loader-circle"_s, cell.workText);
  else if (!cell.statusText.isEmpty() && !hovered && cell.kind != CellKind::audio)
    paintPictureBadge(painter, area, Qt::BottomLeftCorner, {}, cell.statusText, statusColorOnPicture(cell.statusToken));
  paintDuration(painter, area, cell, look);
  if (cell.inTrash) paintPictureBadge(painter, area, Qt::TopLeftCorner, u"trash-2"_s, texts::inTrash());
  const bool buttons = hovered && !cell.inTrash && !moreAt(area).isNull();
  if (cell.favorite && !buttons && area.width() > 2 * kRound) paintHeart(painter, area);
}

}  // namespace

QRect paintPictureBadge(QPainter& painter, const QRect& cell, Qt::Corner corner, const QString& iconName,
                        const QString& text, const QColor& dot) {
  const int words = text.isEmpty() ? 0 : textWidth(text, badgeFont());
  const int lead = leadOf(iconName, text, dot);
  const QRect badge = badgeAt(cell, corner, words + lead);
  if (badge.isEmpty()) return {};
  paintPanel(painter, badge, metrics().radiusSmall, colors().pictureBadge);
  const int space = std::max(6, (badge.width() - words - lead) / 2);
  QRect inner = badge.adjusted(space, 0, -space, 0);
  if (dot.isValid()) paintPanel(painter, QRectF(inner.left(), inner.center().y() - 3, 7, 7), 3.5, dot);
  if (!iconName.isEmpty()) paintBadgeIcon(painter, iconName, QRectF(inner.left(), inner.top(), 12, inner.height()));
  inner.setLeft(inner.left() + lead);
  if (words > 0) paintText(painter, inner.adjusted(0, 0, 1, 0), {text, badgeFont(), colors().pictureBadgeText});
  return badge;
}

void paintMediaCell(QPainter& painter, const QRect& area, const GalleryCell& cell, const CellLook& look) {
  if (cell.kind == CellKind::job) return paintJobCell(painter, area, cell.job, look);
  painter.save();
  if (cell.inTrash) painter.setOpacity(kTrashOpacity);
  if (look.thumbnail.state == ThumbnailStore::State::ready)
    paintPicture(painter, area, cell.inTrash ? grey(look.thumbnail.picture) : look.thumbnail.picture);
  else
    paintPlaceholder(painter, area, cell, look.thumbnail.state);
  painter.setOpacity(1);
  painter.setClipRect(area);
  if (cell.kind == CellKind::audio)
    paintSoundTexts(painter, area, cell, !cell.inTrash && !look.hovered && !(look.several && look.selected));
  else if (look.hovered)
    paintHoverTexts(painter, area, cell);
  if (look.played) paintPlayhead(painter, area, *look.played);
  paintBadges(painter, area, cell, look);
  if (look.thumbnail.originalMissing && !look.hovered && !cell.inTrash)
    paintPictureBadge(painter, area, Qt::TopLeftCorner, u"triangle-alert"_s, texts::originalMissing());
  if (look.hovered && !cell.inTrash && !moreAt(area).isNull())
    paintHoverButtons(painter, area, cell, look.hoveredPart);
  painter.restore();
  const bool hot = look.hoveredPart == CellPart::selectCircle;
  if (look.several && look.selected)
    paintSelectCircle(painter, area, true, hot);
  else if (look.hovered && area.width() > 60)
    paintSelectCircle(painter, area, look.selected, hot);
}

void paintCellRings(QPainter& painter, const QRect& area, const CellLook& look) {
  const Colors& c = colors();
  const int width = metrics().borderSelection;
  if (look.selected) {
    paintRing(painter, QRectF(area).adjusted(-0.5, -0.5, 0.5, 0.5), metrics().radiusPicture, 1.5, c.surfaceCanvas);
    paintRing(painter, QRectF(area).adjusted(-width, -width, width, width), metrics().radiusPicture + 2, width,
              c.accentRing);
  }
  if (!look.keyboardCurrent) return;
  // Around the cell, or inside the selection's ring.
  const int outset = look.selected ? -3 : 2;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(c.accentRing, metrics().borderFocus, Qt::DashLine));
  painter.drawRoundedRect(QRectF(area).adjusted(-outset, -outset, outset, outset), metrics().radiusControl, metrics().radiusControl);
  painter.restore();
}

CellPart partAt(const QRect& area, const GalleryCell& cell, QPoint point) {
  if (!area.contains(point)) return CellPart::none;
  if (cell.kind == CellKind::job) return jobPartAt(area, cell.job, point);
  if (playBadgeAt(area, cell).contains(point)) return CellPart::play;
  if (!cell.inTrash && moreAt(area).contains(point)) return CellPart::more;
  if (!cell.inTrash && heartAt(area).contains(point)) return CellPart::heart;
  return circleAt(area).contains(point) && area.width() > 60 ? CellPart::selectCircle : CellPart::body;
}

}  // namespace sorvan::views
