// Pictures of components in states that only one thing at a time can be in, such as having the keyboard.
#pragma once

#include <QImage>
#include <QPicture>
#include <QPixmap>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace sorvan::views {

class ThumbnailStore;

// How a component looked once. Main thread.
class StatePicture final : public QWidget {
  Q_OBJECT

 public:
  // `texts` is what was painted stroke by stroke, for whoever reads the texts; `shown` is what is seen.
  StatePicture(QPixmap shown, QPicture texts);
  // The component itself, hidden.
  void keep(QWidget* whole);

  QSize sizeHint() const override { return size(); }
  QImage image() const { return shown_.toImage(); }
  // What the sheet calls the component and its state.
  QString component;
  QString state;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPixmap shown_;
  QPicture texts_;
};

// Brings a component, which is shown alone in a window, into a state as a person would.
using Bring = std::function<void(QWidget& component)>;

struct ComponentState {
  QString name;
  Bring bring = {};
};

// Shows components one at a time on a stage nobody sees, and keeps what they look like. Main thread.
class StateStage {
 public:
  // The store outlives the stage; its pictures are waited for.
  explicit StateStage(const ThumbnailStore& thumbnails) : thumbnails_(thumbnails) {}

  // Takes the component, at that size; one that is empty is what the component asks for.
  StatePicture* take(QWidget* component, QSize size, const Bring& bring = {}) const;
  // One picture a state over its name, in so many columns. `make` makes the component anew for each.
  QWidget* states(const QString& component, const std::function<QWidget*()>& make, QSize size,
                  const std::vector<ComponentState>& states, int columns) const;

 private:
  const ThumbnailStore& thumbnails_;
};

// The pointer comes to rest on the widget; areas that scroll take it in their viewport.
void hover(QWidget& widget, QPointF at);
void hoverMiddle(QWidget& widget);
// Goes over the widget with the button down.
void drag(QWidget& widget, QPointF from, QPointF to);
// Files are being dragged over the place.
void dragFilesOver(QWidget& widget, QPointF at);
// The keyboard comes to the widget by a key.
void focusByKey(QWidget& widget);
void press(QWidget& widget, Qt::Key key);
// Waits until it is so, at most five seconds.
void awaitThat(const std::function<bool()>& isSo);

}  // namespace sorvan::views
