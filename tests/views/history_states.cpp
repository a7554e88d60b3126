// The rows of the history: each state of a job, left alone, under the pointer, selected and with the keyboard.
#include <QGridLayout>

#include "shell/views/history_row.h"
#include "shell/views/theme.h"
#include "views/item_sheets.h"
#include "views/job_states.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kRow(780, historyRowHeight);

class RowPicture final : public QWidget {
 public:
  explicit RowPicture(JobDisplay job) : job_(std::move(job)) {}
  HistoryRowLook look;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), colors().surfaceCanvas);
    if (!job_.thumbnailPath.isEmpty()) look.thumbnail = {ThumbnailStore::State::ready, QPixmap(job_.thumbnailPath)};
    paintHistoryRow(painter, rect(), job_, look);
  }

 private:
  JobDisplay job_;
};

HistoryRowLook& lookIn(QWidget& widget) { return static_cast<RowPicture&>(widget).look; }

std::vector<ComponentState> attentions(const JobDisplay& job) {
  std::vector<ComponentState> states{{u"Normal"_s},
                                     {u"Hover"_s, [](QWidget& row) { lookIn(row).hovered = true; }},
                                     {u"Selected"_s, [](QWidget& row) { lookIn(row).selected = true; }},
                                     {u"Keyboard"_s, [](QWidget& row) { lookIn(row).keyboardCurrent = true; }}};
  if (job.action != JobAction::none)
    states[1] = {u"Hover, on its button"_s, [](QWidget& row) { lookIn(row).hovered = lookIn(row).buttonHovered = true; }};
  return states;
}

std::unique_ptr<QWidget> rowsOf(const QString& name, const std::vector<std::pair<QString, JobDisplay>>& jobs) {
  auto sheet = emptySheet(name, u"Rows of the history"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  box->setVerticalSpacing(2);
  int line = 0;
  for (const auto& [title, job] : jobs)
    box->addWidget(column({caption(title), stage.states(u"History row, "_s + title,
                                                        [job = job] { return new RowPicture(job); },
                                                        kRow, attentions(job), 2)}),
                   line++, 0, Qt::AlignLeft);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace

std::unique_ptr<QWidget> historySheet(const QString&) {
  const auto all = sampleHistoryStates();
  return rowsOf(u"history-work"_s, {all.begin(), all.begin() + 4});
}

std::unique_ptr<QWidget> endedHistorySheet(const QString&) {
  const auto all = sampleHistoryStates();
  return rowsOf(u"history-ended"_s, {all.begin() + 4, all.end()});
}

}  // namespace sorvan::views
