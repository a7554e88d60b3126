// The page of one generation: what was asked for at the left, what came of it at the right.
#pragma once

#include "shell/inspector_presenter.h"
#include "shell/views/pages.h"

#include <QWidget>

namespace sorvan::views {

class InspectorView;
class MediaWall;
class ResultsSource;

// Shows the job that was opened last. Main thread.
class GenerationView final : public QWidget {
  Q_OBJECT

 public:
  // All of it outlives the view.
  explicit GenerationView(const PageDesk& desk);

  void open(QUuid job);
  MediaWall& wall() { return *wall_; }
  InspectorView& request() { return *request_; }
  const ResultsSource& source() const { return *source_; }

 Q_SIGNALS:
  // What the page says of itself may be another.
  void changed();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void bindWall();
  void bindRequest();
  void refresh();
  void openItem(QUuid item);
  // Acts on the job of the page, whatever is selected on its wall.
  void perform(ActionId action);

  LibraryView& library_;
  const Presenters& on_;
  ResultsSource* source_;
  InspectorView* request_;
  MediaWall* wall_;
};

void addGenerationPage(const PageDesk& desk);

}  // namespace sorvan::views
