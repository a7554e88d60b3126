// The surfaces that pages are made of, and their notices.
#pragma once

#include <QPointer>
#include <QWidget>

#include "shell/alerts_presenter.h"
#include "shell/views/labels.h"

class QHBoxLayout;

namespace sorvan::views {

class NoticeBar;

// A panel with round corners and a hairline; it draws nothing else.
class Card : public QWidget {
  Q_OBJECT

 public:
  explicit Card(ColorRole fill = &Colors::surfaceRaised, ColorRole line = &Colors::lineSubtle,
                int Metrics::*corner = &Metrics::radiusPanel);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ColorRole fill_;
  ColorRole line_;
  int Metrics::*corner_;
};

// A place for at most one notice. Empty it takes no room; a new text is announced.
class NoticeSlot final : public QWidget {
  Q_OBJECT

 public:
  explicit NoticeSlot(QWidget* parent = nullptr);
  // Empty words take the notice away. `button` may be empty.
  void show(AlertTone tone, const QString& words, const QString& button = {});

 Q_SIGNALS:
  void pressed();

 private:
  QHBoxLayout* row_;
  QPointer<NoticeBar> bar_;
  AlertTone tone_ = AlertTone::information;
  QString words_;
  QString button_;
};

// Deletes what the layout holds.
void clearLayout(QLayout& layout);

// Rebuilds a part of a page and gives the keyboard back to the control of the same name, where it was in that part.
void rebuildKeepingFocus(QWidget& part, const std::function<void()>& rebuild);

}  // namespace sorvan::views
