// Text fields of one line.
#pragma once

#include <QLineEdit>

#include "shell/views/room.h"

namespace sorvan::views {

// A field of 30 pixels, with an icon before its text and a key behind it if asked for.
class TextField : public QLineEdit {
  Q_OBJECT

 public:
  explicit TextField(const QString& name, const QString& placeholder = {}, QWidget* parent = nullptr);

  void setIconName(const QString& iconName);
  // Shown at the right while the field is empty and without the keyboard; with text in it a cross stands there, which
  // takes the text away as Escape does where a search is left by it.
  void setKeyHint(const QString& keys);
  void setInvalid(bool invalid);
  // A small button at the right end, inside the field, which takes it.
  void setInnerControl(QWidget* control);

 Q_SIGNALS:
  void escapePressed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  bool offersClear() const;
  QRect clearArea() const { return {width() - 28, 0, 28, height()}; }
  void paintKeyHint(QPainter& painter) const;
  void setMargins();
  bool isInvalid() const;

  QWidget* inner_ = nullptr;
  QString iconName_;
  QString keyHint_;
};

}  // namespace sorvan::views
