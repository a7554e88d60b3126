// The list of models behind the composer's first chip.
#pragma once

#include "shell/composer_presenter.h"
#include "shell/views/popover.h"

class QVBoxLayout;

namespace sorvan::views {

class Label;
class ModelRow;
class TextField;

// A click on a row chooses that model alone; its checkbox, Space or Ctrl+click adds or removes it. Typing filters.
class ModelPicker final : public Popover {
  Q_OBJECT

 public:
  // `height` is what there is for the whole picker, in pixels.
  ModelPicker(ComposerPresenter& composer, int height, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void fill();
  void filter(const QString& text);
  void refresh();
  void moveFocus(int step);

  ComposerPresenter& composer_;
  TextField* search_;
  QWidget* list_;
  Label* nothing_;
  Label* chosen_;
  std::vector<ModelRow*> rows_;
  std::vector<std::pair<QWidget*, std::pair<size_t, size_t>>> headings_;  // each with its rows [first, end)
};

}  // namespace sorvan::views
