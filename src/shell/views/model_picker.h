// The list of models behind the composer's first chip.
#pragma once

#include "shell/composer_presenter.h"
#include "shell/views/popover.h"

namespace sorvan::views {

class BrowserPage;
class Label;
class ModelListPage;
class RowList;
class SegmentedControl;
class TextField;

// A click on a row chooses that model alone; its checkbox, Space or Ctrl+click adds or removes it. Typing filters; the
// last tab searches the service's whole catalogue and adds models from it.
class ModelPicker final : public Popover {
  Q_OBJECT

 public:
  // `height` is what there is for the whole picker, in pixels.
  ModelPicker(ComposerPresenter& composer, int height, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void build(int height);
  void buildTabs();
  void connectParts();
  void refresh();
  void showTab(int tab);
  void search(const QString& text);
  void browse();
  bool isBrowsing() const;
  RowList& list();

  ComposerPresenter& composer_;
  std::vector<ModelSection> sections_;
  TextField* search_;
  SegmentedControl* tabs_ = nullptr;
  ModelListPage* models_;
  BrowserPage* browser_ = nullptr;  // null where models cannot be added
  Label* chosen_;
};

}  // namespace sorvan::views
