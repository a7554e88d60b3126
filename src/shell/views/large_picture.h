// One picture at its full size, read beside the main thread.
#pragma once

#include <QImage>
#include <QObject>
#include <QSize>

#include "shell/views/room.h"

namespace sorvan::views {

// Tells at once how large a picture is, and reads all of its pixels when they are wanted. Both happen on a thread that
// nobody waits for; what was opened before is forgotten. Colours are sRGB, upright. Main thread.
class LargePicture final : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  enum class State { none, reading, ready, missing, unreadable };

  // An empty path closes it.
  void open(const QString& path);
  const QString& path() const { return path_; }
  State state() const { return state_; }
  // Pixels, known as soon as the state is ready.
  QSize size() const { return size_; }
  // Asks for the pixels; `changed` tells when they are there.
  void wantPixels();
  // Null until they were read, and when they could not be.
  const QImage& pixels() const { return pixels_; }
  bool isReadingPixels() const { return wanted_ && pixels_.isNull() && !failed_; }

 Q_SIGNALS:
  void changed();

 private:
  void finishHeader(int opening, State state, QSize size);
  void finishPixels(int opening, const QImage& pixels);

  QString path_;
  State state_ = State::none;
  QSize size_;
  QImage pixels_;
  bool wanted_ = false;
  bool failed_ = false;
  int opening_ = 0;  // counts openings: what an older one read is dropped
};

}  // namespace sorvan::views
