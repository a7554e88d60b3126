#include "shell/views/icons.h"

#include <QPainter>
#include <QSvgRenderer>

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

// Thin strokes look lighter when a drawing is enlarged, so the two large sizes get a thinner one.
constexpr int kLargeIconFrom = 28;
constexpr double kStroke = 1.75;
constexpr double kLargeStroke = 1.5;

QByteArray resource(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) qFatal("no such icon: %s", qPrintable(path));
  return file.readAll();
}

QByteArray tinted(const QString& name, int size, const IconLook& look) {
  const QByteArray color = look.color.name(QColor::HexRgb).toLatin1();
  QByteArray drawing = resource(u":/sorvan/icons/"_s + name + u".svg"_s);
  drawing.replace("currentColor", color);
  drawing.replace("stroke-width=\"2\"",
                  "stroke-width=\"" + QByteArray::number(size >= kLargeIconFrom ? kLargeStroke : kStroke) + "\"");
  if (look.fill == IconFill::filled) drawing.replace("fill=\"none\"", "fill=\"" + color + "\"");
  return drawing;
}

QPixmap rendered(const QByteArray& drawing, int size, double pixelRatio) {
  QPixmap pixmap(qRound(size * pixelRatio), qRound(size * pixelRatio));
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer renderer(drawing);
  renderer.render(&painter, QRectF(0, 0, pixmap.width(), pixmap.height()));
  painter.end();
  pixmap.setDevicePixelRatio(pixelRatio);
  return pixmap;
}

QHash<QString, QPixmap>& kept() {
  static auto* pixmaps = new QHash<QString, QPixmap>;
  return *pixmaps;
}

QRectF centred(const QRectF& area, int size) {
  return QRectF(area.center().x() - size / 2.0, area.center().y() - size / 2.0, size, size);
}

}  // namespace

QPixmap iconPixmap(const QString& name, int size, const IconLook& look, double pixelRatio) {
  const QString key =
      u"%1|%2|%3|%4|%5"_s.arg(name, QString::number(size), look.color.name(QColor::HexRgb), QString::number(pixelRatio),
                              QString::number(static_cast<int>(look.fill)));
  auto found = kept().constFind(key);
  if (found == kept().constEnd()) found = kept().insert(key, rendered(tinted(name, size, look), size, pixelRatio));
  return *found;
}

void paintIcon(QPainter& painter, const QString& name, const QRectF& area, int size, const IconLook& look) {
  const double ratio = painter.device()->devicePixelRatioF();
  const QPointF corner = centred(area, size).topLeft();
  const QPointF onGrid(qRound(corner.x() * ratio) / ratio, qRound(corner.y() * ratio) / ratio);
  const double before = painter.opacity();
  painter.setOpacity(before * look.color.alphaF());
  painter.drawPixmap(onGrid, iconPixmap(name, size, look, ratio));
  painter.setOpacity(before);
}

void paintSpinner(QPainter& painter, const QRectF& area, int size, const QColor& color, double degrees) {
  const double stroke = std::max(1.5, size / 9.0);
  const double side = size * 0.75;  // the ring of the drawings: radius 9 in a square of 24
  const QRectF ring(area.center().x() - side / 2, area.center().y() - side / 2, side, side);
  QColor faint = color;
  faint.setAlphaF(0.25F * color.alphaF());
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(faint, stroke));
  painter.drawEllipse(ring);
  painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap));
  painter.drawArc(ring, static_cast<int>((90 - degrees) * 16), -90 * 16);
  painter.restore();
}

QPixmap markPixmap(int size, double pixelRatio) {
  return rendered(resource(u":/sorvan/sorvan-mark.svg"_s), size, pixelRatio);
}

QIcon windowIcon() {
  QIcon icon;
  for (const int size : {16, 32, 48, 64, 128, 256}) icon.addPixmap(markPixmap(size, 1.0));
  return icon;
}

}  // namespace sorvan::views
