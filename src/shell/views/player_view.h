// A clip or a sound with its controls.
#pragma once

#include <QWidget>

#include "media/player.h"
#include "shell/views/thumbnail_store.h"

class QStackedLayout;

namespace sorvan::views {

class TransportBar;
class WaveStrip;

// Paints the frames of a player, fitted and never cropped.
class FrameView final : public QWidget {
  Q_OBJECT

 public:
  // Both outlive the view.
  FrameView(media::Player& player, ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  // Stands in until the first frame is there.
  void setPoster(const QString& thumbnailPath);
  // Where the picture lies.
  QRectF picturePlace() const;

 Q_SIGNALS:
  void pressed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  QSizeF shownSize() const;
  void paintWords(QPainter& painter) const;

  media::Player& player_;
  ThumbnailStore& thumbnails_;
  QString poster_;
};

enum class Begin { paused, playing };

// Owns its player. Main thread.
class PlayerView final : public QWidget {
  Q_OBJECT

 public:
  // The store outlives the view.
  explicit PlayerView(ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  struct Subject {
    QString path;
    QString thumbnailPath;
    QString name;
    bool isSound = false;
  };
  // Opens it unless it is open already; one that is open only begins to play.
  void open(const Subject& subject, Begin begin);
  // Stops and lets go of the file.
  void close();

  media::Player& player() { return player_; }
  TransportBar& transport() { return *transport_; }
  WaveStrip& wave() { return *wave_; }
  // The keys of players: one frame, one second, the ends.
  void skip(double seconds) { player_.seek(player_.position() + seconds); }
  void goToStart() { player_.seek(0); }
  void goToEnd();

 private:
  void follow();

  media::Player player_;
  QStackedLayout* pages_;
  FrameView* frame_;
  WaveStrip* wave_;
  TransportBar* transport_;
};

}  // namespace sorvan::views
