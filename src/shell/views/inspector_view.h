// The pane at the right: what the selected item or job is, and what can be done with it.
#pragma once

#include <QWidget>

#include "shell/inspector_presenter.h"
#include "shell/views/thumbnail_store.h"

class QVBoxLayout;

namespace sorvan::views {

class ElidedLabel;
class InspectorSectionView;
class MarkedPicture;
class Paragraph;
class PreviewPicture;
class StarRow;

// Shows a display and forwards presses. While only words change, the widgets stay, so that the keyboard keeps its
// place.
class InspectorView final : public QWidget {
  Q_OBJECT

 public:
  // The store outlives the view.
  explicit InspectorView(ThumbnailStore& thumbnails, QWidget* parent = nullptr);

  void show(const InspectorDisplay& display);

 Q_SIGNALS:
  void actionRequested(sorvan::shell::ActionId action);
  void ratingChosen(int stars);
  void favoriteToggled();
  void previewOpened(QUuid item);
  // The menu of what is selected, at this place of the screen.
  void moreRequested(QPoint globalPosition);
  // The statuses to choose from, at this place of the screen.
  void statusMenuRequested(QPoint globalPosition);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void rebuild();
  void buildNothing(QVBoxLayout& column);
  void buildItemHead(QVBoxLayout& column);
  QWidget* buildStatus();
  void buildJobHead(QVBoxLayout& column);
  void buildButtons(QVBoxLayout& column);
  void buildTiles(QVBoxLayout& column);
  void buildMarks(QVBoxLayout& column);
  void buildSections(QVBoxLayout& column);
  void refreshWords();
  QString shapeOf(const InspectorDisplay& display) const;

  ThumbnailStore& thumbnails_;
  InspectorDisplay display_;
  QString shape_;  // what widgets there are: the display without its words
  QWidget* body_ = nullptr;
  PreviewPicture* preview_ = nullptr;
  ElidedLabel* title_ = nullptr;
  Paragraph* facts_ = nullptr;
  Paragraph* message_ = nullptr;
  Paragraph* detail_ = nullptr;
  MarkedPicture* marks_ = nullptr;
  StarRow* stars_ = nullptr;
  QWidget* heart_ = nullptr;
  std::vector<InspectorSectionView*> sections_;
};

}  // namespace sorvan::views
