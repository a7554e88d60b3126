// A few pictures at full size, for looking at them closely.
#pragma once

#include <QHash>
#include <QImage>
#include <QThreadPool>

#include "shell/views/room.h"

namespace sorvan::views {

// Decodes on threads of its own and keeps only the pictures that are wanted now, together at most 64 megapixels: of
// larger ones it keeps a smaller version. Main thread.
class LargePictures final : public QObject {
  Q_OBJECT

 public:
  explicit LargePictures(QObject* parent = nullptr);
  ~LargePictures() override;

  // From now on these; all others are forgotten, and what is being decoded for them is dropped when it arrives.
  void want(const QStringList& paths);
  // Null until it `arrived`. `small` is enough for at most `enoughFor` device pixels of the long side, and faster to
  // paint.
  QImage picture(const QString& path) const { return kept_.value(path).full; }
  QImage smallPicture(const QString& path) const { return kept_.value(path).small; }
  // The file's own size in pixels; empty until it arrived.
  QSize sizeOf(const QString& path) const { return kept_.value(path).size; }
  bool isMissing(const QString& path) const { return kept_.contains(path) && kept_.value(path).full.isNull(); }

  static constexpr int enoughFor = 1600;

 Q_SIGNALS:
  void arrived(const QString& path);

 private:
  struct Kept {
    QImage full;
    QImage small;
    QSize size;
  };
  static Kept decode(const QString& path, qint64 mostPixels);
  void take(int asking, const QString& path, const Kept& kept);

  QThreadPool pool_;
  QHash<QString, Kept> kept_;
  QSet<QString> asked_;
  qint64 share_ = 0;  // pixels that each picture may have
  int asking_ = 0;    // counts the calls of `want` that changed the share
};

}  // namespace sorvan::views
