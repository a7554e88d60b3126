#include "shell/views/painting.h"

#include <QFontMetrics>
#include <QPainterPath>
#include <QPixmapCache>
#include <QTextLayout>

#include "shell/views/contrast.h"
#include "shell/wording.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

// Three passes of a box filter come close to a Gaussian blur and cost one addition a pixel.
void boxBlurLine(uchar* line, int count, int step, int radius) {
  std::vector<int> source(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) source[static_cast<size_t>(i)] = line[i * step];
  int sum = 0;
  for (int i = -radius; i < count; ++i) {
    if (i + radius < count) sum += source[static_cast<size_t>(i + radius)];
    if (i - radius - 1 >= 0) sum -= source[static_cast<size_t>(i - radius - 1)];
    if (i >= 0) line[i * step] = static_cast<uchar>(sum / (2 * radius + 1));
  }
}

void blur(QImage& mask, int radius) {
  for (int pass = 0; pass < 3; ++pass) {
    for (int y = 0; y < mask.height(); ++y) boxBlurLine(mask.scanLine(y), mask.width(), 1, radius);
    for (int x = 0; x < mask.width(); ++x)
      boxBlurLine(mask.bits() + x, mask.height(), static_cast<int>(mask.bytesPerLine()), radius);
  }
}

QImage blurredBox(QSize size, int margin, int radius, int blurRadius) {
  QImage mask(size, QImage::Format_Alpha8);
  mask.fill(0);
  QPainter painter(&mask);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::black);
  painter.drawRoundedRect(mask.rect().adjusted(margin, margin, -margin, -margin), radius, radius);
  painter.end();
  blur(mask, std::max(1, blurRadius));
  return mask;
}

// The nine patches of a shadow in one picture: corners of two margins and the radius round a middle of one pixel. Where the
// area leaves no middle, across or down, the picture is as wide or high as the shadow itself.
QPixmap shadowPatches(QSize area, int margin, int radius, const Shadow& shadow) {
  const int widest = 2 * (margin + radius) + 1;
  const QSize size = area.boundedTo({widest, widest}) + QSize(2 * margin, 2 * margin);
  const QString key = u"shadow|%1x%2|%3|%4|%5|%6"_s.arg(size.width()).arg(size.height()).arg(margin).arg(radius)
                          .arg(shadow.blur).arg(shadow.color.name(QColor::HexArgb));
  QPixmap patches;
  if (QPixmapCache::find(key, &patches)) return patches;
  const QImage mask = blurredBox(size, margin, radius, shadow.blur / 6);
  QImage picture(size, QImage::Format_ARGB32_Premultiplied);
  picture.fill(shadow.color);
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  painter.drawImage(0, 0, mask);
  painter.end();
  patches = QPixmap::fromImage(picture);
  QPixmapCache::insert(key, patches);
  return patches;
}

struct Span {
  int target, targetLength, source, sourceLength;
};

// Between two edges the middle is stretched; a picture that is as long as its target is one span.
std::vector<Span> spans(int start, int length, int edge, int side) {
  if (length <= side) return {Span{start, length, 0, side}};
  return {Span{start, edge, 0, edge}, Span{start + edge, length - 2 * edge, edge, side - 2 * edge},
          Span{start + length - edge, edge, side - edge, edge}};
}

// A soft fill is lined in the colour of its words when the desktop asks for more contrast; invalid otherwise.
QColor lineOfSoft(const QColor& fill) {
  if (!moreContrast() || !fill.isValid()) return {};
  const Colors& c = colors();
  for (const auto& [soft, words] : {std::pair(c.accentSoft, c.accentText), std::pair(c.successSoft, c.successText),
                                    std::pair(c.warningSoft, c.warningText), std::pair(c.dangerSoft, c.dangerText),
                                    std::pair(c.infoSoft, c.infoText)})
    if (fill == soft) return words;
  return {};
}

}  // namespace

void paintPanel(QPainter& painter, const QRectF& area, double radius, const QColor& fill, const QColor& given) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor line = given.isValid() ? given : lineOfSoft(fill);
  const bool lined = line.isValid() && line.alpha() > 0;
  const QRectF edge = lined ? area.adjusted(0.5, 0.5, -0.5, -0.5) : area;
  painter.setPen(lined ? QPen(line, 1) : QPen(Qt::NoPen));
  painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
  const double round = std::min(radius, std::min(edge.width(), edge.height()) / 2);
  painter.drawRoundedRect(edge, round, round);
  painter.restore();
}

void paintShadow(QPainter& painter, const QRect& area, int radius, const Shadow& shadow) {
  if (area.isEmpty()) return;
  const int margin = shadow.blur / 2;
  const QPixmap patches = shadowPatches(area.size(), margin, radius, shadow);
  const int edge = 2 * margin + radius;
  const QRect outer = area.translated(0, shadow.offsetY).adjusted(-margin, -margin, margin, margin);
  for (const Span& row : spans(outer.top(), outer.height(), edge, patches.height())) {
    for (const Span& column : spans(outer.left(), outer.width(), edge, patches.width())) {
      painter.drawPixmap(QRect(column.target, row.target, column.targetLength, row.targetLength), patches,
                         QRect(column.source, row.source, column.sourceLength, row.sourceLength));
    }
  }
}

void paintRing(QPainter& painter, const QRectF& area, double radius, double width, const QColor& color) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, width));
  painter.setBrush(Qt::NoBrush);
  const double half = width / 2;
  painter.drawRoundedRect(area.adjusted(half, half, -half, -half), radius, radius);
  painter.restore();
}

int textWidth(const QString& text, const QFont& font) {
  return QFontMetrics(font).horizontalAdvance(text.left(2000));
}

namespace {

constexpr qsizetype kMostShown = 600;  // characters of a line: no screen shows more, and shaping them all takes long

// What can be seen of a very long text, cut where it would be shortened anyway.
QString visiblePart(const QString& text, Qt::TextElideMode elide) {
  if (text.size() <= kMostShown) return text;
  if (elide == Qt::ElideLeft) return text.right(kMostShown);
  if (elide == Qt::ElideMiddle) return text.left(kMostShown / 2) + text.right(kMostShown / 2);
  return text.left(kMostShown);
}

}  // namespace

int paintText(QPainter& painter, const QRect& area, const TextLine& line) {
  if (area.width() <= 0) return 0;
  const QFontMetrics measure(line.font);
  const QString shown = measure.elidedText(visiblePart(line.text, line.elide), line.elide, area.width());
  painter.setFont(line.font);
  painter.setPen(line.color);
  painter.drawText(area, static_cast<int>(line.alignment) | Qt::TextSingleLine, shown);
  return measure.horizontalAdvance(shown);
}

void paintParagraph(QPainter& painter, const QRect& area, const TextLine& line, int lineDistance) {
  const int most = area.height() / std::max(1, lineDistance);
  const QString text = line.text.left(kMostShown * std::clamp(most, 1, 40)).simplified();
  QTextLayout layout(text, line.font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  painter.setFont(line.font);
  painter.setPen(line.color);
  const QFontMetrics measure(line.font);
  for (int number = 0; number < most; ++number) {
    QTextLine part = layout.createLine();
    if (!part.isValid()) break;
    part.setLineWidth(area.width());
    QString shown = text.mid(part.textStart(), part.textLength());
    if (number == most - 1 && part.textStart() + part.textLength() < text.size())
      shown = measure.elidedText(text.mid(part.textStart()), Qt::ElideRight, area.width());
    const QRect row(area.left(), area.top() + number * lineDistance, area.width(), lineDistance);
    painter.drawText(row, static_cast<int>(line.alignment) | Qt::TextSingleLine, shown.trimmed());
  }
  layout.endLayout();
}

void paintCheck(QPainter& painter, const QRectF& area, double side, const QColor& color) {
  const QPointF corner = area.center() - QPointF(side / 2, side / 2);
  const auto at = [&](double x, double y) { return corner + QPointF(x, y) * side / 24; };
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, std::max(1.6, side / 7), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(QPolygonF{at(4, 12.5), at(9.5, 18), at(20, 6.5)});
  painter.restore();
}

int paragraphLines(const TextLine& line, int width, int most) {
  if (line.text.isEmpty()) return 0;
  QTextLayout layout(line.text.left(kMostShown * std::clamp(most, 1, 40)).simplified(), line.font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  int lines = 0;
  while (lines < most) {
    QTextLine part = layout.createLine();
    if (!part.isValid()) break;
    part.setLineWidth(width);
    ++lines;
  }
  layout.endLayout();
  return lines;
}

void paintCover(QPainter& painter, const QRectF& area, double radius, const QPixmap& picture) {
  if (picture.isNull()) return;
  const QSizeF size = QSizeF(picture.size());
  const QSizeF part = area.size().scaled(size, Qt::KeepAspectRatio);
  const QRectF source((size.width() - part.width()) / 2, (size.height() - part.height()) / 2, part.width(),
                      part.height());
  painter.save();
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  QPainterPath shape;
  shape.addRoundedRect(area, radius, radius);
  painter.setClipPath(shape, Qt::IntersectClip);
  painter.drawPixmap(area, picture, source);
  painter.restore();
}

QString clockText(double seconds) { return shell::clockText(seconds); }

}  // namespace sorvan::views
