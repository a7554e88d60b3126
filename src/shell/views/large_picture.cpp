#include "shell/views/large_picture.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>

#include <limits>

#include "base/task.h"
#include "platform/pictures.h"

namespace sorvan::views {

namespace {

struct Header {
  LargePicture::State state = LargePicture::State::unreadable;
  QSize size;
};

Header readHeader(const QString& path) {
  if (!QFileInfo::exists(path)) return {LargePicture::State::missing, {}};
  try {
    const auto facts = platform::probePicture(path);
    if (facts) return {LargePicture::State::ready, facts->size};
  } catch (const std::exception&) {
    // Told as unreadable below.
  }
  return {};
}

QImage readPixels(const QString& path) {
  try {
    return platform::decodeWithin(path, std::numeric_limits<int>::max());
  } catch (const std::exception&) {
    return {};
  }
}

}  // namespace

void LargePicture::open(const QString& path) {
  if (path == path_) return;
  path_ = path;
  ++opening_;
  size_ = {};
  pixels_ = {};
  wanted_ = failed_ = false;
  state_ = path.isEmpty() ? State::none : State::reading;
  if (path.isEmpty()) return;
  runOnPool([path, opening = opening_, self = QPointer<LargePicture>(this)] {
    const Header header = readHeader(path);
    if (!qApp) return;
    QMetaObject::invokeMethod(
        qApp, [=] { self ? self->finishHeader(opening, header.state, header.size) : void(); }, Qt::QueuedConnection);
  });
}

void LargePicture::finishHeader(int opening, State state, QSize size) {
  if (opening != opening_) return;
  state_ = state;
  size_ = size;
  Q_EMIT changed();
}

void LargePicture::wantPixels() {
  if (wanted_ || path_.isEmpty()) return;
  wanted_ = true;
  runOnPool([path = path_, opening = opening_, self = QPointer<LargePicture>(this)] {
    const QImage pixels = readPixels(path);
    if (!qApp) return;
    QMetaObject::invokeMethod(
        qApp, [=] { self ? self->finishPixels(opening, pixels) : void(); }, Qt::QueuedConnection);
  });
}

void LargePicture::finishPixels(int opening, const QImage& pixels) {
  if (opening != opening_) return;
  pixels_ = pixels;
  failed_ = pixels.isNull();
  Q_EMIT changed();
}

}  // namespace sorvan::views
