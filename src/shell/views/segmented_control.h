// A row of choices of which one is on.
#pragma once

#include <QAbstractButton>
#include <QTimer>
#include <QWidget>

#include "shell/views/controls.h"

class QButtonGroup;

namespace sorvan::views {

struct Segment {
  QString text;
  QString iconName;
  QString accessibleName;  // empty: the text
};

// One stop of the tab key; arrows move; a choice acts at once.
class SegmentedControl final : public QWidget {
  Q_OBJECT

 public:
  SegmentedControl(const QString& name, const std::vector<Segment>& segments, ControlSize size = ControlSize::regular,
                   QWidget* parent = nullptr);

  int current() const;
  // Does not emit `chosen`.
  void setCurrent(int index);
  // All segments share the width.
  void setStretched(bool stretched);
  // Items that are dragged and rest over a segment choose it, so that they can be dropped on what it shows.
  void setSpringLoaded() { setAcceptDrops(true); }

 Q_SIGNALS:
  void chosen(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;

 private:
  void restOn(int index);

  QButtonGroup* group_;
  QTimer rest_;
  int restsOn_ = -1;
};

}  // namespace sorvan::views
