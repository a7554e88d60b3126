// The cells of jobs, in every state.
#include <QGridLayout>

#include "views/cell_picture.h"
#include "views/item_sheets.h"
#include "views/job_states.h"
#include "views/samples.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kCell(240, 116);

CellPicture& cellIn(QWidget& widget) { return static_cast<CellPicture&>(widget); }

std::vector<ComponentState> attentions(const JobDisplay& job) {
  std::vector<ComponentState> states{
      {u"Normal"_s},
      {u"Hover"_s, [](QWidget& widget) { cellIn(widget).look.hovered = true; }},
      {u"Selected"_s, [](QWidget& widget) { cellIn(widget).look.selected = true; }},
      {u"Keyboard"_s, [](QWidget& widget) { cellIn(widget).look.keyboardCurrent = true; }}};
  const bool cancels = job.action == JobAction::cancel;
  if (job.action == JobAction::none) return states;
  states.push_back({cancels ? u"Hover, on ×"_s : u"Hover, on its button"_s, [cancels](QWidget& widget) {
                      CellLook& look = cellIn(widget).look;
                      look.hovered = true;
                      look.hoveredPart = cancels ? CellPart::dismiss : CellPart::action;
                    }});
  return states;
}

}  // namespace

std::unique_ptr<QWidget> jobCellsSheet(const QString&) {
  auto sheet = emptySheet(u"job-cells"_s, u"Cells of jobs"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  box->setVerticalSpacing(6);
  int line = 0;
  for (const auto& [title, job] : sampleJobStates())
    box->addWidget(column({caption(title), stage.states(u"Job cell, "_s + title,
                                                        [job = job] { return new CellPicture(jobCell(job), {}); }, kCell,
                                                        attentions(job), 5)}),
                   line++, 0, Qt::AlignLeft);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
