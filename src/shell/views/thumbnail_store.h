// The decoded pictures of everything that is on the screen.
#pragma once

#include <QCache>
#include <QPixmap>
#include <QThreadPool>
#include <optional>
#include <vector>

#include "shell/views/fitted_picture.h"
#include "shell/views/room.h"

namespace sorvan::views {

// Decodes on threads of its own and keeps at most 250 pictures and 100 MiB. A file that could not be read is read again
// only when it has changed. Main thread.
class ThumbnailStore final : public QObject {
  Q_OBJECT

 public:
  explicit ThumbnailStore(QObject* parent = nullptr);
  ~ThumbnailStore() override;

  // `missing`: there is no file; `unreadable`: there is one, but no picture can be made of it.
  enum class State { ready, loading, missing, unreadable };
  struct Answer {
    State state = State::loading;
    QPixmap picture;
    bool originalMissing = false;  // a fitted picture is there, what it was made from is not
  };

  // The picture of the file, at least `longSide` device pixels long where the file has them. When it is not there yet
  // it is asked for, the newest request first, and `loaded` follows. The second path is tried when the first cannot be
  // read; either may be empty.
  Answer picture(const QString& path, const QString& otherPath, int longSide);

  // A picture that fills a cell. Wished for by `want`, never by looking. Until one of just that size is there, one of
  // another size is answered.
  Answer fitted(const PictureFiles& files) const;
  struct Wish {
    PictureFiles files;
    QSize size;  // device pixels
    double pixelRatio = 1;
  };
  // What this asker needs now, the most urgent first. It replaces what the asker wished for before: what has not been
  // begun then is forgotten. Comes before all that `picture` asks for.
  void want(const void* asker, const std::vector<Wish>& wishes);

  // Files that could not be read are looked at again when asked for next: they may have appeared or changed.
  void forgetMissing() { ++doubt_; }

  int pending() const { return static_cast<int>(waiting_.size() + wished()) + running_; }
  // What is kept now.
  int kibibytes() const { return static_cast<int>(kept_.totalCost()); }
  int pictures() const { return static_cast<int>(kept_.count()); }
  static constexpr int mostPictures = 250;
  static constexpr int mostKibibytes = 100 * 1024;

 Q_SIGNALS:
  void loaded();

 private:
  struct Kept {
    QPixmap picture;
    QSize size;  // as it was wished for
    bool originalMissing = false;
  };
  struct Failure {
    FileStamps stamps;
    int doubt = 0;  // the doubt at which the files were looked at last
  };
  struct Request {
    QString key;
    PictureFiles files;
    int longSide = 0;  // of a picture that is not fitted
    QSize size;        // of one that is
    double pixelRatio = 1;
  };
  struct Queue {
    const void* asker = nullptr;
    std::vector<Request> requests;  // the most urgent last
  };

  bool needed(const Request& request) const;
  std::size_t wished() const;
  std::optional<Request> takeNext();
  void start();
  void run(const Request& request);
  void finish(const Request& request, const DecodedPicture& decoded);
  void announce();

  QThreadPool pool_;
  QCache<QString, Kept> kept_;
  std::vector<Queue> queues_;     // a wall each
  std::vector<Request> waiting_;  // the newest last
  QSet<QString> asked_;           // waiting
  QSet<QString> busy_;            // running
  QHash<QString, Failure> failed_;
  int doubt_ = 0;
  int running_ = 0;
  bool announcing_ = false;
};

}  // namespace sorvan::views
