// The picker's tab with the service's whole catalogue.
#pragma once

#include <QSet>
#include <QWidget>

#include "shell/model_browser.h"
#include "shell/views/room.h"

namespace sorvan::views {

class BrowserRowView;
class Button;
class EmptyNote;
class Label;
class RowList;
class SegmentedControl;

// Categories over a list that grows as one scrolls. The rows of before stay while an answer is awaited.
class BrowserPage final : public QWidget {
  Q_OBJECT

 public:
  // The presenter outlives the page.
  explicit BrowserPage(ModelBrowserPresenter& browser, QWidget* parent = nullptr);

  RowList& list() { return *list_; }
  // The models that are chosen in the composer, by key.
  void setChosen(const QSet<QString>& keys);

 Q_SIGNALS:
  void onlyRequested(const QString& key);
  void toggleRequested(const QString& key, bool chosen);

 private:
  void build();
  void refresh();
  void refreshRows(const std::vector<BrowserRow>& rows);
  void refreshFoot(const BrowserDisplay& display);
  BrowserRowView* makeRow(const BrowserRow& row);
  void wantMore();

  ModelBrowserPresenter& browser_;
  SegmentedControl* categories_ = nullptr;
  RowList* list_;
  QWidget* heading_;
  Label* headingText_;
  QWidget* headingSpinner_;
  EmptyNote* empty_;
  QWidget* foot_;
  QWidget* footSpinner_;
  Label* footText_;
  Button* footButton_;
  std::vector<BrowserRowView*> rows_;
  QSet<QString> chosen_;
};

}  // namespace sorvan::views
