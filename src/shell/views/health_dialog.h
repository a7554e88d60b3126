// Workspace Health: what is wrong with the workspace, and its repair.
#pragma once

#include <QDialog>

#include "shell/health_presenter.h"
#include "shell/views/room.h"

class QLayout;
class QVBoxLayout;

namespace sorvan::views {

class Button;
class IconView;
class HealthSign;
class Paragraph;

// A sheet over the window. It is opened, never executed, and checks whenever it is shown. The presenter outlives it.
class HealthDialog final : public QDialog {
  Q_OBJECT

 public:
  HealthDialog(HealthPresenter& health, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void build();
  QLayout* buildHead();
  QWidget* buildSection();
  void refresh();
  void showRows(const HealthDisplay& display);

  HealthPresenter& health_;
  HealthSign* sign_;
  Paragraph* head_;
  Paragraph* line_;
  QWidget* section_;
  IconView* stateIcon_;
  QVBoxLayout* badge_;  // what the section says of itself in a word or two
  QVBoxLayout* rows_;
  Button* repair_;
  Paragraph* feedback_;
  Button* again_;
  Button* done_;
};

}  // namespace sorvan::views
