// The selected items large over the window.
#pragma once

#include <QWidget>

#include "media/player.h"
#include "shell/views/thumbnail_store.h"
#include "shell/views/wall_source.h"

namespace sorvan::views {

class IconButton;

// One item at a glance: a picture, a clip that plays, or a sound with its playhead.
class QuickLookPane final : public QWidget {
  Q_OBJECT

 public:
  // The store outlives the pane.
  QuickLookPane(ThumbnailStore& thumbnails, GalleryCell cell, QWidget* parent);

  const GalleryCell& cell() const { return cell_; }
  // Null for pictures.
  media::Player* player() const { return player_; }
  double aspectRatio() const { return cell_.aspectRatio; }
  void setCurrent(bool current);

 Q_SIGNALS:
  void chosen();
  void opened();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  QRect pictureArea() const;
  QPixmap picture() const;
  QString problem() const;
  void paintTime(QPainter& painter, const QRect& place) const;

  ThumbnailStore& thumbnails_;
  GalleryCell cell_;
  media::Player* player_ = nullptr;
  bool current_ = false;
};

// Covers its parent while it is open. Arrows step through what it was opened from, or among the items that stand side by side; M turns
// the sound on and off, Enter opens, Space or Escape closes. Main thread.
class QuickLook final : public QWidget {
  Q_OBJECT

 public:
  static constexpr int mostItems = 8;

  // The store outlives it; the parent is the window's body.
  QuickLook(ThumbnailStore& thumbnails, QWidget* parent);

  // Shows these items, at most eight of them, in the order of `source`, which outlives the look; jobs are left out.
  // Does nothing for none.
  void open(const QSet<QUuid>& items, const WallSource& source);
  void close();
  bool isOpen() const { return !panes_.empty(); }
  const std::vector<QuickLookPane*>& panes() const { return panes_; }
  QUuid current() const;

 Q_SIGNALS:
  // The one item that is looked at now is another one.
  void stepped(QUuid item);
  void itemOpened(QUuid item);
  void closed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  void fill(const std::vector<QUuid>& items);
  void arrange();
  void fadeIn();
  void step(int direction);
  void makeCurrent(int index);
  void toggleMute();

  const WallSource* source_ = nullptr;  // while it is open
  ThumbnailStore& thumbnails_;
  IconButton* close_;
  std::vector<QuickLookPane*> panes_;
  int current_ = 0;
};

}  // namespace sorvan::views
