// The places of a contact sheet, in every state.
#include <QGridLayout>

#include "shell/views/controls.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/sheet_place.h"
#include "views/item_sheets.h"
#include "views/job_states.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kPlace(372, 232);

SheetPlace& placeIn(QWidget& widget) { return static_cast<SheetPlace&>(widget); }

PlaceDisplay item(const QString& folder) {
  PlaceDisplay place;
  place.id = u"1"_s;
  place.number = 2;
  place.asset = QUuid::createUuid();
  place.aspectRatio = 1.5;
  place.modelName = u"Nano Banana 2 Edit"_s;
  place.costText = u"12 credits ($0.12)"_s;
  place.tookText = u"21 s"_s;
  place.thumbnailPath = place.filePath = folder + u"/tin_4.jpg"_s;
  place.movable = true;
  return place;
}

PlaceDisplay work(const JobDisplay& job) {
  PlaceDisplay place;
  place.id = u"1"_s;
  place.number = 2;
  place.modelName = job.modelName;
  place.costText = u"about 12 credits"_s;
  place.job = job;
  return place;
}

using Change = std::function<void(PlaceDisplay&)>;

ComponentState being(const QString& name, PlaceDisplay place, const Change& change = {}, const Bring& then = {}) {
  if (change) change(place);
  return {name, [place, then](QWidget& widget) {
            placeIn(widget).show(place);
            if (then) then(widget);
          }};
}

Bring onPicture(const Bring& bring) {
  return [bring](QWidget& widget) { bring(placeIn(widget).picture()); };
}

std::vector<ComponentState> itemStates(const QString& folder) {
  const PlaceDisplay shown = item(folder);
  const auto select = [](QWidget& widget) { placeIn(widget).picture().setSelected(true); };
  return {being(u"Normal"_s, shown),
          being(u"Hover"_s, shown, {}, onPicture(hoverMiddle)),
          being(u"Selected"_s, shown, {}, select),
          being(u"Keyboard"_s, shown, {}, onPicture(focusByKey)),
          being(u"Starred, favorite"_s, shown, [](PlaceDisplay& place) { place.rating = 4, place.favorite = true; }),
          being(u"Reviewed"_s, shown,
                [](PlaceDisplay& place) {
                  place.statusText = u"Shortlist"_s, place.statusToken = u"shortlist"_s, place.markText = u"Reviewed"_s;
                }),
          being(u"Approved"_s, shown,
                [](PlaceDisplay& place) {
                  place.statusText = place.markText = u"Approved"_s, place.statusToken = u"approved"_s;
                }),
          being(u"A clip"_s, shown,
                [](PlaceDisplay& place) { place.kind = CellKind::video, place.durationText = u"0:06"_s; }),
          being(u"Missing file"_s, shown,
                [](PlaceDisplay& place) { place.thumbnailPath = place.filePath = u"/gone/tin.png"_s; }),
          being(u"Hover on its stars"_s, shown, {},
                [](QWidget& widget) { hoverMiddle(*widget.findChild<StarRow*>()); })};
}

std::vector<ComponentState> workStates() {
  std::vector<ComponentState> states{being(u"Nothing here yet"_s, work({}))};
  for (const auto& [title, job] : sampleJobStates()) states.push_back(being(title, work(job)));
  const JobDisplay failed = sampleJobStates().at(4).second;
  states.push_back(being(u"failed, hover on Retry"_s, work(failed), {},
                         onPicture([](QWidget& picture) { hoverMiddle(*picture.findChild<Button*>()); })));
  states.push_back(being(u"failed, keyboard"_s, work(failed), {}, onPicture(focusByKey)));
  return states;
}

std::unique_ptr<QWidget> placesIn(const QString& name, const QString& title, const std::vector<ComponentState>& states) {
  auto sheet = emptySheet(name, title);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  box->addWidget(stage.states(title, [&thumbnails] { return new SheetPlace(thumbnails); }, kPlace, states, 4), 0, 0);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace

std::unique_ptr<QWidget> placesSheet(const QString& folder) {
  return placesIn(u"places"_s, u"Places of a contact sheet"_s, itemStates(folder));
}

std::unique_ptr<QWidget> workPlacesSheet(const QString&) {
  return placesIn(u"places-work"_s, u"Places that wait for their item"_s, workStates());
}

}  // namespace sorvan::views
