// Draws the program's icon at one size: draw-icons MARK.svg SIZE OUT.png. Used by the build.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int count, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(count, arguments);
  if (count != 4) {
    std::fputs("usage: draw-icons MARK.svg SIZE OUT.png\n", stderr);
    return 2;
  }
  const int size = QByteArray(arguments[2]).toInt();
  QSvgRenderer mark(QString::fromLocal8Bit(arguments[1]));
  QImage icon(size, size, QImage::Format_ARGB32_Premultiplied);
  if (!mark.isValid() || icon.isNull()) return 1;
  icon.fill(Qt::transparent);
  QPainter painter(&icon);
  mark.render(&painter);
  painter.end();
  return icon.convertToFormat(QImage::Format_ARGB32).save(QString::fromLocal8Bit(arguments[3])) ? 0 : 1;
}
