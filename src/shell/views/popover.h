// A small surface over the window that offers a choice and goes away.
#pragma once

#include <QPointer>
#include <QWidget>

#include "shell/views/room.h"

namespace sorvan::views {

// A child of the window, opened above (or, without room, below) the control that it belongs to. A click elsewhere and
// Escape close it and give the keyboard back to that control. It deletes itself when it has closed.
class Popover : public QWidget {
  Q_OBJECT

 public:
  explicit Popover(const QString& name, QWidget* parent = nullptr);

  // The panel inside, which holds the contents.
  QWidget* panel() const { return panel_; }

  // `above`, when given, is what the popover stands over: the dock of its chip, which stays visible.
  void openAt(QWidget* anchor, QWidget* above = nullptr);
  // Pixels between the window's edge and what the popover stands over.
  static int roomAbove(QWidget* above);
  void dismiss();
  // Sizes and places it anew after the contents changed.
  void refit();

 Q_SIGNALS:
  void closed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  QWidget* panel_;
  QPointer<QWidget> anchor_;
  QPointer<QWidget> above_;
  bool open_ = false;
};

}  // namespace sorvan::views
