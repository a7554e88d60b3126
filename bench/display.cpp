#include "bench/display.h"

#include <QStringList>

// Its names are those of everybody else too, so it comes last.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace sorvan::bench {

namespace {
constexpr int lineWidth = 1200;
}

Display::Display() {
  server_.start(QStringLiteral("Xvfb"),
                {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                 QStringLiteral("1440x900x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
  QByteArray number;
  while (!number.contains('\n')) {
    if (!server_.waitForReadyRead(10000)) return;
    number += server_.readAllStandardOutput();
  }
  name_ = ':' + number.trimmed();
  connection_ = XOpenDisplay(name_.constData());
}

Display::~Display() {
  if (connection_) XCloseDisplay(connection_);
  server_.kill();
  server_.waitForFinished(3000);
}

Picture Display::shown() const {
  XImage* line = XGetImage(connection_, DefaultRootWindow(connection_), 100, 300, lineWidth, 1, AllPlanes, ZPixmap);
  if (!line) return Picture::nothing;
  const auto colour = [&](int x) { return XGetPixel(line, x, 0) & 0xFFFFFF; };
  const unsigned long first = colour(0);
  bool plain = true;
  for (int x = 1; x < lineWidth; ++x) plain = plain && colour(x) == first;
  XDestroyImage(line);
  if (!plain) return Picture::content;
  return first == 0 ? Picture::nothing : Picture::plainWindow;
}

}  // namespace sorvan::bench
