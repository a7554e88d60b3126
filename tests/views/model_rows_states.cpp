// The rows of the model picker and of its catalogue, in every state.
#include <QGridLayout>

#include "shell/views/browser_row.h"
#include "shell/views/controls.h"
#include "shell/views/model_row.h"
#include "views/item_sheets.h"
#include "views/samples.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kRow(452, modelRowHeight);

ModelChoice model() {
  ModelChoice choice = SampleComposer().sections.front().models.front();
  choice.chosen = false;
  return choice;
}

ComponentState being(const QString& name, const std::function<void(ModelChoice&)>& change) {
  return {name, [change](QWidget& row) {
            ModelChoice choice = model();
            change(choice);
            static_cast<ModelRow&>(row).setModel(choice);
          }};
}

std::vector<ComponentState> modelStates() {
  return {{u"Normal"_s},
          {u"Hover"_s, hoverMiddle},
          {u"Focus"_s, focusByKey},
          being(u"Chosen"_s, [](ModelChoice& it) { it.chosen = true; }),
          being(u"Does not suit"_s, [](ModelChoice& it) { it.unsuitable = u"Takes no reference images"_s; }),
          being(u"Chosen, does not suit"_s,
                [](ModelChoice& it) { it.chosen = true, it.unsuitable = u"Takes no reference images"_s; }),
          being(u"Price unavailable"_s, [](ModelChoice& it) { it.price = u"Price unavailable"_s, it.priceDate.clear(); }),
          being(u"With what it can do"_s,
                [](ModelChoice& it) { it.abilities = {{u"image-plus"_s, u"8"_s, u"Takes up to 8 reference images"_s}}; })};
}

BrowserRow offered() {
  BrowserRow row = sampleBrowserRow(u"sunburst"_s, u"GPT Image 2.5 Sunburst Edit"_s, u"OpenAI · top rated, tightly scoped edits"_s);
  row.badge = u"Top rated"_s;
  return row;
}

ComponentState holding(const QString& name, BrowserRowState state, const QString& problem = {}, bool chosen = false) {
  return {name, [state, problem, chosen](QWidget& widget) {
            BrowserRow row = offered();
            row.state = state;
            row.problem = problem;
            static_cast<BrowserRowView&>(widget).setRow(row);
            static_cast<BrowserRowView&>(widget).setChosen(chosen);
          }};
}

std::vector<ComponentState> browserStates() {
  return {holding(u"Can be added"_s, BrowserRowState::offered),
          {u"Hover"_s, hoverMiddle},
          {u"Hover on Add"_s, [](QWidget& row) { hoverMiddle(*row.findChild<Button*>()); }},
          {u"Focus"_s, focusByKey},
          holding(u"Being added"_s, BrowserRowState::adding),
          holding(u"Added"_s, BrowserRowState::added),
          holding(u"Added, chosen"_s, BrowserRowState::added, {}, true),
          holding(u"Comes with the program"_s, BrowserRowState::builtIn),
          holding(u"Could not be added"_s, BrowserRowState::offered, u"This model could not be read."_s)};
}

}  // namespace

std::unique_ptr<QWidget> modelRowsSheet(const QString&) {
  auto sheet = emptySheet(u"model-rows"_s, u"Rows of models"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  box->addWidget(column({caption(u"In the picker"_s), stage.states(u"Model row"_s, [] { return new ModelRow(model(), true); }, kRow,
                                                                   modelStates(), 3)}), 0, 0);
  box->addWidget(column({caption(u"In the catalogue"_s), stage.states(u"Catalogue row"_s, [] { return new BrowserRowView(offered()); },
                                                                      kRow, browserStates(), 3)}), 1, 0);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
