// Small strokes of the brush that many widgets share.
#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

#include "shell/views/theme.h"
#include "shell/views/typography.h"

namespace sorvan::views {

// A filled rounded rectangle; with a valid `line` also a hairline just inside its edge.
void paintPanel(QPainter& painter, const QRectF& area, double radius, const QColor& fill, const QColor& line = {});

// A soft shadow around `area`, from pictures that are drawn once a theme and kept.
void paintShadow(QPainter& painter, const QRect& area, int radius, const Shadow& shadow);

// The ring around what holds the keyboard, or around what is selected.
void paintRing(QPainter& painter, const QRectF& area, double radius, double width, const QColor& color);

// One line of text, shortened at `elide` when it is too long. Answers the width that it took.
struct TextLine {
  QString text;
  QFont font;
  QColor color;
  Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
  Qt::TextElideMode elide = Qt::ElideRight;
};
int paintText(QPainter& painter, const QRect& area, const TextLine& line);

// Running text in at most `area.height() / line` lines; the last one is shortened when more would follow.
void paintParagraph(QPainter& painter, const QRect& area, const TextLine& line, int lineDistance);

// How many lines that text takes in `width`, at most `most`.
int paragraphLines(const TextLine& line, int width, int most);

int textWidth(const QString& text, const QFont& font);

// A tick of firm strokes, `side` pixels across, in the middle of `area`.
void paintCheck(QPainter& painter, const QRectF& area, double side, const QColor& color);

// A picture that fills `area` with its middle part, with rounded corners.
void paintCover(QPainter& painter, const QRectF& area, double radius, const QPixmap& picture);

// Seconds as m:ss or h:mm:ss.
QString clockText(double seconds);

}  // namespace sorvan::views
