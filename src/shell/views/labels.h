// Words on a surface: labels of a role and a colour of the theme, badges, hairlines.
#pragma once

#include <QLabel>

#include "shell/views/theme.h"
#include "shell/views/typography.h"

namespace sorvan::views {

using ColorRole = QColor Colors::*;

// A label that takes its colour anew when the look changes.
class Label : public QLabel {
  Q_OBJECT

 public:
  explicit Label(const QString& text = {}, Type type = Type::body, ColorRole color = &Colors::textPrimary,
                 QWidget* parent = nullptr);

  void setColorRole(ColorRole color);
  void setWeight(Weight weight);

 private:
  void recolour();

  Type type_;
  ColorRole color_;
};

// Running text with the line distance of its role; may be selected with the mouse.
class Paragraph final : public Label {
  Q_OBJECT

 public:
  explicit Paragraph(const QString& text = {}, Type type = Type::body, ColorRole color = &Colors::textPrimary,
                     QWidget* parent = nullptr);

  // Plain text; line breaks are kept.
  void setParagraph(const QString& text);
  // The same with parts of it marked as names: start and length in UTF-16 units, in order and without overlap.
  void setParagraph(const QString& text, const std::vector<std::pair<int, int>>& names);
  const QString& paragraph() const { return plain_; }
  void setSelectable(bool selectable);
  // The distance of two lines in logical pixels, where the text stands more openly than its size asks for.
  void setLineDistance(int pixels);
  // A long word is broken: it does not make its surroundings wider.
  QSize minimumSizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  QString selectedWords() const;

  int linePercent_;
  QString plain_;
};

// One line, shortened to the width that is there.
class ElidedLabel final : public QWidget {
  Q_OBJECT

 public:
  ElidedLabel(Type type, ColorRole color, Qt::TextElideMode elide, QWidget* parent = nullptr);

  void setText(const QString& text);
  const QString& text() const { return text_; }
  void setWeight(Weight weight);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text_;
  QFont font_;
  ColorRole color_;
  Qt::TextElideMode elide_;
  int line_;
};

enum class BadgeTone { neutral, accent, success, warning, danger, info };

// A word on a soft ground, 18 pixels high.
class Badge final : public QWidget {
  Q_OBJECT

 public:
  Badge(const QString& text, BadgeTone tone, QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text_;
  BadgeTone tone_;
};

struct ToneColors {
  QColor text;
  QColor soft;
};
ToneColors toneColors(BadgeTone tone);
void paintBadge(QPainter& painter, const QRect& area, const QString& text, BadgeTone tone);
int badgeWidth(const QString& text);

// A picture from the icon set; decorative, hidden from assistive technology.
class IconView final : public QWidget {
  Q_OBJECT

 public:
  IconView(const QString& iconName, int size, ColorRole color, QWidget* parent = nullptr);
  void setIcon(const QString& iconName, ColorRole color);
  QSize sizeHint() const override { return {size_, size_}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString iconName_;
  int size_;
  ColorRole color_;
};

// A line of one pixel across its parent's layout.
class Hairline final : public QWidget {
  Q_OBJECT

 public:
  explicit Hairline(ColorRole color = &Colors::lineSubtle, Qt::Orientation orientation = Qt::Horizontal,
                    QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ColorRole color_;
};

// A plain surface of one colour of the theme.
class Surface : public QWidget {
  Q_OBJECT

 public:
  explicit Surface(ColorRole color, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ColorRole color_;
};

}  // namespace sorvan::views
