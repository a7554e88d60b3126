// Work that is going on and what it came to: spinner, progress line, notice, toast.
#pragma once

#include <QTimer>
#include <QWidget>

#include <optional>

#include "shell/alerts_presenter.h"
#include "shell/views/labels.h"

namespace sorvan::views {

// Milliseconds since the program began, for everything that turns or travels; it stands still with reduced motion.
qint64 motionClock();
// Lets everything that turns or travels stand where it stands after so many milliseconds, for pictures of it;
// without a value it goes on.
void holdMotion(std::optional<qint64> milliseconds);
// Where the spinner stands now, in degrees: one turn a second.
double spinnerDegrees();

// Paints the travelling line of unknown progress into `area`.
void paintTravellingLine(QPainter& painter, const QRectF& area);
// The same where nothing shall move.
void paintStillLine(QPainter& painter, const QRectF& area);

class Spinner final : public QWidget {
  Q_OBJECT

 public:
  explicit Spinner(int side, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {side_, side_}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  int side_;
  QTimer tick_;
};

// The icon and the tone of a message.
QString iconOf(AlertTone tone);
ColorRole colorOf(AlertTone tone);

// One line with an icon on a soft ground, in a dock or a panel.
class NoticeBar final : public QWidget {
  Q_OBJECT

 public:
  NoticeBar(AlertTone tone, const QString& text, QWidget* parent = nullptr);
  // Adds a button at the right end; the caller connects it.
  class Button* addAction(const QString& title);
  // Another drawing than the one of its tone.
  void setIcon(const QString& name);
  // On a neutral ground: news that asks for nothing.
  void setPlain();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  AlertTone tone_;
  class IconView* icon_;
  bool plain_ = false;
};

// A card at the foot of the window; see shell::Toast.
class ToastCard final : public QWidget {
  Q_OBJECT

 public:
  explicit ToastCard(const Toast& toast, QWidget* parent = nullptr);
  quint64 id() const { return id_; }

 Q_SIGNALS:
  void actionRequested(quint64 id);
  void dismissed(quint64 id);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void hold();

  quint64 id_;
  QTimer leave_{this};
  bool leaves_ = false;
  bool hovered_ = false;
  bool focused_ = false;
};

// The stack of cards, newest lowest, placed by its owner at the bottom right of the content.
class Toaster final : public QWidget {
  Q_OBJECT

 public:
  Toaster(AlertsPresenter& alerts, QWidget* parent);
  // The lower right corner of the stack, in the parent's coordinates.
  void setCorner(QPoint corner);

 private:
  void rebuild();
  void place();

  AlertsPresenter& alerts_;
  std::vector<ToastCard*> cards_;
  QPoint corner_;
};

}  // namespace sorvan::views
