// The dock at the foot of the content, in which a generation is asked for.
#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "shell/composer_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

class Button;
class Chip;
class ComposerSettings;
class ElidedLabel;
class HeadChoice;
class IconButton;
class Label;
class NoticeBar;
class Popover;
class PromptEdit;
class ReferenceStrip;
class SegmentedControl;
class ThumbnailStore;

// Floats over the content: its owner places it with `heightForWidth` whenever `heightChanged` asks. Collapsed it is one
// line; with the keyboard in it, or a draft, it opens.
class ComposerDock final : public QWidget {
  Q_OBJECT

 public:
  // Both outlive the dock.
  ComposerDock(ComposerPresenter& composer, ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  ~ComposerDock() override;

  // Of the panel with the room for its shadow around it.
  int heightForWidth(int width) const override;
  // How far the shadow reaches around the panel.
  static constexpr int margin = 16;

  void openModelPicker();
  void openAttachPanel();
  void openPromptHistory();
  void openLengths();
  void focusPrompt();

 Q_SIGNALS:
  void heightChanged();
  // Picture files are to be chosen for attaching.
  void filesRequested();
  // Escape was pressed in the prompt: the keyboard goes back to the content.
  void left();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void build(ThumbnailStore& thumbnails);
  void connectReferences();
  bool takeDrag(QDropEvent& event);
  bool takeDrop(QDropEvent& event);
  void connectControls();
  void refresh();
  void refreshEstimate(const ComposerDisplay& display);
  void refreshChips(const ComposerDisplay& display);
  void refreshNotices(const ComposerDisplay& display);
  void refreshMessage();
  void refreshCommand(const ComposerDisplay& display);
  void addNotice(const ComposerNotice& notice);
  void leave();
  void chooseKind(int index);
  void arrange();
  // Sounds take none; what is attached all the same can be taken off.
  bool hasReferences() const;
  int arrangeCollapsed(int width, bool place) const;
  int arrangeExpanded(int width, bool place) const;
  int placeControls(int left, int right, int top, bool place) const;
  int placePrompt(int left, int right, int top, bool place) const;
  int placeHead(int left, int right, int top) const;
  int placeEstimate(int right, int top, int height) const;
  void fitChips(int room) const;
  void open(Popover* popover, Chip* chip = nullptr);

  ComposerPresenter& composer_;
  ThumbnailStore& thumbnails_;
  ComposerDisplay display_;
  bool dropping_ = false;  // something that can be attached is held over the dock
  SegmentedControl* kind_;
  SegmentedControl* kindIcons_;
  HeadChoice* payer_;
  HeadChoice* destination_;
  IconButton* command_;
  QWidget* commandIcon_;
  ElidedLabel* commandLabel_;
  NoticeBar* review_ = nullptr;  // none: nothing awaits Run
  Chip* interpret_;
  IconButton* history_;
  IconButton* clear_;
  IconButton* collapse_;
  ReferenceStrip* references_;
  PromptEdit* prompt_;
  Chip* model_;
  Chip* ratio_;
  Chip* length_;
  Chip* count_;
  Chip* seed_;
  IconButton* more_;
  ComposerSettings* settings_;
  ElidedLabel* estimate_;
  Button* submit_;
  QWidget* messageIcon_;
  ElidedLabel* message_;
  std::vector<NoticeBar*> notices_;
  std::vector<ComposerNotice> noticesShown_;
  QPointer<Popover> popover_;
  QTimer messageLeaves_;
};

}  // namespace sorvan::views
