// The buttons of the program. Each paints itself from the theme and is an ordinary button to assistive technology.
#pragma once

#include <QAbstractButton>
#include <QPushButton>

#include "shell/views/room.h"

namespace sorvan::views {

enum class ButtonVariant { primary, secondary, quiet, destructive, link };
enum class ControlSize { compact, regular, large };

// A button with words. `compact` is 26 pixels high, `regular` 30, `large` 36.
class Button : public QPushButton {
  Q_OBJECT

 public:
  explicit Button(const QString& text, ButtonVariant variant = ButtonVariant::secondary, QWidget* parent = nullptr);

  void setVariant(ButtonVariant variant);
  ButtonVariant variant() const { return variant_; }
  void setControlSize(ControlSize size);
  // With little room beside its words, where it begins a line and the line is to stand in its column.
  void setSnug();
  void setIconName(const QString& name);
  void setTrailingIconName(const QString& name);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont textFont() const;
  QColor textColor() const;
  void paintGround(QPainter& painter) const;
  int padding() const;
  int gap() const { return size_ == ControlSize::compact ? 5 : 7; }
  int iconSide() const;

  ButtonVariant variant_;
  ControlSize size_ = ControlSize::regular;
  bool snug_ = false;
  QString iconName_;
  QString trailingIconName_;
};

// A square with an icon. Its name for assistive technology is the tooltip's title.
class IconButton : public QAbstractButton {
  Q_OBJECT

 public:
  // `keys` is shown behind the name in the tooltip, and may be empty.
  IconButton(const QString& iconName, const QString& name, const QString& keys = {}, QWidget* parent = nullptr);

  void setIconName(const QString& iconName);
  void setName(const QString& name, const QString& keys = {});
  void setControlSize(ControlSize size);
  void setIconSide(int pixels);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString iconName_;
  int side_;
  int iconSide_;
};

enum class ChipTone { set, quiet, active, attention };

// A round button that opens a choice: icon, text, a dimmer value, a chevron.
class Chip : public QAbstractButton {
  Q_OBJECT

 public:
  explicit Chip(const QString& iconName = {}, QWidget* parent = nullptr);

  void setLabel(const QString& text, const QString& value = {});
  void setTone(ChipTone tone);
  void setChevron(bool shown);
  // A cross in the chevron's place; a press on it, and Delete, ask to take the choice back.
  void setClearable(bool clearable);
  // Without its words the chip is its icon alone.
  void setWordsShown(bool shown);
  // Without its value: what `sizeHint` becomes then.
  int widthWithoutValue() const;
  QSize sizeHint() const override;
  // Long names are shortened down to this many pixels of text.
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void clearRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void paintGround(QPainter& painter) const;
  QRect endArea() const;

  QString iconName_;
  QString value_;
  ChipTone tone_ = ChipTone::set;
  bool chevron_ = true;
  bool clearable_ = false;
  bool words_ = true;
};

// A button of 50 pixels: an icon above a word.
class TileButton : public QAbstractButton {
  Q_OBJECT

 public:
  TileButton(const QString& iconName, const QString& text, QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString iconName_;
};

// On and off, at once.
class Switch : public QAbstractButton {
  Q_OBJECT

 public:
  explicit Switch(const QString& name, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {34, 20}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace sorvan::views
