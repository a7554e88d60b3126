// The decoded pictures of everything that is on the screen.
#pragma once

#include <QCache>
#include <QPixmap>
#include <QThreadPool>

#include "shell/views/room.h"

namespace sorvan::views {

// Decodes on threads of its own, newest request first, and keeps at most 250 pictures and 100 MiB. Main thread.
class ThumbnailStore final : public QObject {
  Q_OBJECT

 public:
  explicit ThumbnailStore(QObject* parent = nullptr);
  ~ThumbnailStore() override;

  enum class State { ready, loading, missing };
  struct Answer {
    State state = State::loading;
    QPixmap picture;
  };

  // The picture of the file, at least `longSide` device pixels long where the file has them. When it is not there yet
  // it is asked for and `loaded` follows. The second path is tried when the first cannot be read; either may be empty.
  Answer picture(const QString& path, const QString& otherPath, int longSide);

  // Files that could not be read are tried again when asked for next: they may have appeared.
  void forgetMissing();

  int pending() const { return static_cast<int>(waiting_.size()) + running_; }

 Q_SIGNALS:
  void loaded();

 private:
  struct Request {
    QString key;
    QStringList paths;
    int longSide = 0;
  };
  void start();
  void finish(const QString& key, const QImage& image);
  void announce();

  QThreadPool pool_;
  QCache<QString, QPixmap> kept_;
  std::vector<Request> waiting_;  // the newest last
  QSet<QString> asked_;           // waiting or running
  QSet<QString> missing_;
  int running_ = 0;
  bool announcing_ = false;
};

// Reads a picture scaled to that long side, upright; a null image when there is none. Any thread.
QImage decodeThumbnail(const QStringList& paths, int longSide);

}  // namespace sorvan::views
