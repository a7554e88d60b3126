// The popover of prompts that were saved or used lately.
#pragma once

#include "shell/composer_presenter.h"
#include "shell/views/popover.h"

namespace sorvan::views {

class RowList;

// Enter takes the prompt of a row over, Delete forgets a saved one. Stays until a prompt is taken. The presenter
// outlives it.
class PromptHistory final : public Popover {
  Q_OBJECT

 public:
  // `room` is how many pixels high it may become.
  PromptHistory(ComposerPresenter& composer, int room);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void fill();
  void take(const QString& text);

  ComposerPresenter& composer_;
  RowList* list_;
  QWidget* empty_;
  std::vector<QWidget*> rows_;
  int room_;
};

}  // namespace sorvan::views
