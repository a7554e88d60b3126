// The marks as a list, where the inspector stands otherwise: what should change in each of them.
#pragma once

#include <QWidget>

#include "shell/marking_presenter.h"
#include "shell/views/room.h"

class QLabel;
class QVBoxLayout;

namespace sorvan::views {

class MarkRow;
class Paragraph;
class Switch;

class MarkPanel final : public QWidget {
  Q_OBJECT

 public:
  // The presenter outlives the panel.
  explicit MarkPanel(MarkingPresenter& marking, QWidget* parent = nullptr);

  // Turns the keyboard to the note of this box.
  void focusNote(int index);

 Q_SIGNALS:
  // A note was finished: the keyboard goes back to the picture.
  void noteLeft();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void build();
  QWidget* buildHead();
  void buildRules(QVBoxLayout& column);
  void refresh();
  void fitRows(int count);

  MarkingPresenter& marking_;
  QWidget* body_ = nullptr;
  QVBoxLayout* list_ = nullptr;
  std::vector<MarkRow*> rows_;
  Switch* confine_ = nullptr;
  Paragraph* rule_ = nullptr;
};

}  // namespace sorvan::views
