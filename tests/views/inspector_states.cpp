// The parts of the inspector, in every state.
#include <QGridLayout>

#include "shell/views/controls.h"
#include "shell/views/inspector_links.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/picture_button.h"
#include "views/item_sheets.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kStars(90, 22);
constexpr QSize kSection(300, 118);

ComponentState stars(int number) {
  return {u"%1"_s.arg(number), [number](QWidget& row) { static_cast<StarRow&>(row).setStars(number); }};
}

std::vector<ComponentState> starStates() {
  std::vector<ComponentState> states;
  for (int number = 0; number <= 5; ++number) states.push_back(stars(number));
  states.push_back({u"2, hover on 4"_s, [](QWidget& row) {
                      static_cast<StarRow&>(row).setStars(2);
                      hover(row, {62, 11});
                    }});
  states.push_back({u"3, focus"_s, [](QWidget& row) {
                      static_cast<StarRow&>(row).setStars(3);
                      focusByKey(row);
                    }});
  return states;
}

void check(QWidget& button) { static_cast<QAbstractButton&>(button).setChecked(true); }

std::vector<ComponentState> heartStates() {
  return {{u"Off"_s},
          {u"Off, hover"_s, hoverMiddle},
          {u"On"_s, check},
          {u"On, hover"_s, [](QWidget& heart) { check(heart), hoverMiddle(heart); }},
          {u"Focus"_s, focusByKey}};
}

std::vector<ComponentState> buttonStates() {
  return {{u"Normal"_s}, {u"Hover"_s, hoverMiddle}, {u"Focus"_s, focusByKey}};
}

QWidget* statuses(const StateStage& stage) {
  std::vector<QWidget*> rows;
  const std::pair<QString, QString> all[] = {{u"Draft"_s, u"draft"_s},
                                             {u"Shortlist"_s, u"shortlist"_s},
                                             {u"Approved"_s, u"approved"_s},
                                             {u"Final"_s, u"final"_s},
                                             {u"Rejected"_s, u"rejected"_s}};
  for (const auto& [word, token] : all)
    rows.push_back(stage.states(u"Status, "_s + word, [word = word, token = token] { return new StatusButton(word, token); },
                                {}, buttonStates(), 3));
  return column({row({rows[0], rows[1], rows[2]}), row({rows[3], rows[4]})});
}

InspectorSection facts() {
  InspectorSection section;
  section.title = u"Made with"_s;
  section.rows = {{u"Model"_s, u"GPT Image 2.5 Sunburst Edit"_s},
                  {u"Seed"_s, u"418207"_s, true},
                  {u"Cost"_s, u"12 credits ($0.12)"_s},
                  {u"Took"_s, u"21 s"_s}};
  return section;
}

QAbstractButton& headOf(QWidget& section) { return *section.findChild<QAbstractButton*>(); }

std::vector<ComponentState> sectionStates() {
  return {{u"Open"_s},
          {u"Hover on its heading"_s, [](QWidget& section) { hoverMiddle(headOf(section)); }},
          {u"Focus on its heading"_s, [](QWidget& section) { focusByKey(headOf(section)); }},
          {u"Folded"_s, [](QWidget& section) { headOf(section).click(); }},
          {u"Folded, focus"_s, [](QWidget& section) { headOf(section).click(), focusByKey(headOf(section)); }}};
}

std::vector<ComponentState> linkStates() {
  std::vector<ComponentState> states = buttonStates();
  states.push_back({u"Pressed"_s, [](QWidget& link) { static_cast<QAbstractButton&>(link).setDown(true); }});
  return states;
}

QWidget* links(const StateStage& stage, ThumbnailStore& thumbnails, const QString& folder) {
  const InspectorLink open{QUuid::createUuid(), u"boat_gold.png"_s, u"Edited from"_s, folder + u"/boat_gold_0.jpg"_s};
  const InspectorLink deleted{QUuid::createUuid(), u"Deleted"_s, u"Variation of"_s, {}, false};
  const InspectorLink name{QUuid::createUuid(), u"@Tin"_s, u"Product"_s, folder + u"/tin_1.jpg"_s};
  constexpr QSize size(170, 52);
  return row({stage.states(u"Link"_s, [&] { return new InspectorLinkButton(thumbnails, open); }, size, linkStates(), 4),
              stage.states(u"Link, deleted"_s, [&] { return new InspectorLinkButton(thumbnails, deleted); }, size, {{u"Deleted"_s}}, 1),
              stage.states(u"Link, name"_s, [&] { return new InspectorLinkButton(thumbnails, name); }, size, {{u"A reference"_s}}, 1)});
}

QWidget* previews(const StateStage& stage, ThumbnailStore& thumbnails, const QString& folder) {
  const auto showing = [](const QString& name, const QString& path, const Bring& then = {}) {
    return ComponentState{name, [path, then](QWidget& preview) {
                            static_cast<PreviewPicture&>(preview).setPath(path);
                            if (then) then(preview);
                          }};
  };
  const QString picture = folder + u"/boat_gold_0.jpg"_s;
  return stage.states(u"Preview"_s, [&] { return new PreviewPicture(thumbnails); }, {220, 150},
                      {showing(u"Normal"_s, picture), showing(u"Hover"_s, picture, hoverMiddle),
                       showing(u"Focus"_s, picture, focusByKey), showing(u"Missing file"_s, u"/gone/boat.png"_s)},
                      4);
}

QWidget* tiles(const StateStage& stage) {
  return stage.states(u"Action tile"_s, [] { return new TileButton(u"pencil"_s, u"Edit"_s); }, {68, 50},
                      {{u"Normal"_s},
                       {u"Hover"_s, hoverMiddle},
                       {u"Pressed"_s, [](QWidget& tile) { static_cast<QAbstractButton&>(tile).setDown(true); }},
                       {u"Focus"_s, focusByKey},
                       {u"On"_s,
                        [](QWidget& tile) {
                          static_cast<QAbstractButton&>(tile).setCheckable(true);
                          check(tile);
                        }},
                       {u"Disabled"_s, [](QWidget& tile) { tile.setEnabled(false); }}},
                      6);
}

}  // namespace

std::unique_ptr<QWidget> inspectorSheet(const QString& folder) {
  auto sheet = emptySheet(u"inspector-parts"_s, u"Parts of the inspector"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  const std::pair<QString, QWidget*> parts[] = {
      {u"Preview"_s, previews(stage, thumbnails, folder)},
      {u"Stars"_s, stage.states(u"Stars"_s, [] { return new StarRow; }, kStars, starStates(), 8)},
      {u"Heart"_s, stage.states(u"Heart"_s, [] { return new HeartButton; }, {}, heartStates(), 5)},
      {u"Status"_s, statuses(stage)},
      {u"Action tiles"_s, tiles(stage)},
      {u"Links"_s, links(stage, thumbnails, folder)},
      {u"Sections"_s, stage.states(u"Section"_s, [&] { return new InspectorSectionView(facts(), thumbnails); }, kSection,
                                   sectionStates(), 3)}};
  int line = 0;
  for (const auto& [title, part] : parts) box->addWidget(column({caption(title), part}), line++, 0, Qt::AlignLeft);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
