// Two to eight pictures, looked at closely in step.
#pragma once

#include "shell/actions.h"
#include "shell/views/compare_canvas.h"
#include "shell/views/picture_difference.h"

class QSlider;

namespace sorvan::views {

class Button;
class Chip;
class ElidedLabel;
class HeartButton;
class IconButton;
class Label;
class SegmentedControl;
class StarRow;

enum class CompareLayout { sideBySide, oneAtATime, divider, difference };

// Zoom and place are one for all pictures. Two can also lie over each other, parted by a divider, or be subtracted.
// Main thread.
class CompareView final : public QWidget {
  Q_OBJECT

 public:
  // The store outlives the view.
  explicit CompareView(ThumbnailStore& thumbnails, QWidget* parent = nullptr);
  ~CompareView() override;

  // Other pictures begin fitted, side by side, with the first one chosen; the same ones keep all that.
  void show(const std::vector<ComparedPicture>& pictures);
  using QWidget::show;
  // Lets go of the decoded pictures.
  void clear() { show(std::vector<ComparedPicture>{}); }

  CompareLayout compareLayout() const { return layout_; }
  void setCompareLayout(CompareLayout layout);
  QUuid chosen() const;
  void choose(int index);
  const StepView& view() const { return view_; }
  double divider() const { return divider_; }
  void toggleFit();
  void zoomBy(double factor);
  // The canvases that are shown now, in order.
  std::vector<CompareCanvas*> canvases() const;
  // The share of pixels that differ; nothing until it is known.
  std::optional<double> differing() const { return differing_; }

 Q_SIGNALS:
  // The picture that ratings and marks act on.
  void chosenChanged(QUuid item);
  void ratingChosen(QUuid item, int stars);
  void favoriteToggled(QUuid item);
  void actionRequested(sorvan::shell::ActionId action);
  void opened(QUuid item);
  void closeRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  struct Pane {
    QWidget* frame = nullptr;
    CompareCanvas* canvas = nullptr;
    ElidedLabel* title = nullptr;
    ElidedLabel* detail = nullptr;
    StarRow* stars = nullptr;
    HeartButton* heart = nullptr;
  };
  QWidget* buildHead();
  Pane makePane(int index);
  void fillPanes();
  void arrange();
  void applyView(const StepView& view);
  void refreshHead();
  void refreshDifference();
  void takeDifference(int asking, const PictureDifference& difference);
  void setDivider(double share);
  bool moves(QKeyEvent& event);
  bool zooms(int key);
  CompareCanvas* measure() const;
  QString differenceText() const;
  QString differenceFacts() const;
  const ComparedPicture& overFirst() const { return pictures_[static_cast<size_t>(over_)]; }
  void focusPicture();
  bool isOverlaid() const { return layout_ == CompareLayout::divider || layout_ == CompareLayout::difference; }

  ThumbnailStore& thumbnails_;
  LargePictures large_;
  QThreadPool pool_;
  std::vector<ComparedPicture> pictures_;
  std::vector<Pane> panes_;
  CompareLayout layout_ = CompareLayout::sideBySide;
  StepView view_;
  int chosen_ = 0;
  int over_ = 1;  // which picture lies over the first one, or is compared with it
  int columns_ = 1;
  double divider_ = 0.5;
  int gain_ = 1;
  int asking_ = 0;  // counts the differences that were asked for
  std::optional<double> differing_;
  QString differenceOf_;  // the pictures and the gain of the difference that is shown or being worked out
  QImage difference_;

  QWidget* head_ = nullptr;
  SegmentedControl* layouts_ = nullptr;
  QSlider* dividerSlider_ = nullptr;
  Button* amplify_ = nullptr;
  ElidedLabel* facts_ = nullptr;
  Label* percent_ = nullptr;
  Button* fit_ = nullptr;
  Button* full_ = nullptr;
};

}  // namespace sorvan::views
