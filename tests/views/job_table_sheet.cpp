// The table of jobs under its heads.
#include <QGridLayout>

#include "shell/views/fields.h"
#include "shell/views/history_view.h"
#include "views/component_sheets.h"
#include "views/samples.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

QWidget* table(ThumbnailStore& thumbnails) {
  auto* holder = new QWidget;
  auto* history = new SampleHistory;
  history->setParent(holder);
  fillHistory(*history);
  auto* view = new HistoryView(*history, thumbnails, holder);
  view->search().setParent(holder);  // it stands in the toolbar otherwise
  view->search().hide();
  view->setActive(2, 1);
  view->list().setSelected(history->idAt(1));
  view->setFixedSize(880, 420);
  holder->setFixedSize(view->size());
  return holder;
}

}  // namespace

std::unique_ptr<QWidget> jobTableSheet() {
  auto sheet = emptySheet(u"job-table"_s, u"Table of jobs"_s);
  auto* box = new QGridLayout;
  box->addWidget(table(*new ThumbnailStore(sheet.get())), 0, 0);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
