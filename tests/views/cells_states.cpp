// The cells of items, in every state.
#include <QGridLayout>

#include "core/waveform.h"
#include "views/cell_picture.h"
#include "views/item_sheets.h"
#include "views/samples.h"
#include "views/sheet_parts.h"
#include "views/spoken_sample.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kCell(170, 108);
constexpr QSize kWave(320, 200);
constexpr int kColumns = 5;

GalleryCell picture() { return pictureCell(u"room_1"_s, 1.6); }

GalleryCell clip() {
  GalleryCell cell = pictureCell(u"boat"_s, 1.6);
  cell.kind = CellKind::video;
  cell.durationText = u"0:06"_s;
  cell.modelName = u"Wan 3.0"_s;
  return cell;
}

GalleryCell sound() {
  GalleryCell cell = clip();
  cell.kind = CellKind::audio;
  cell.durationText = u"0:04"_s;
  cell.soundText = u"Music"_s;
  cell.soundIcon = u"music"_s;
  cell.title = u"Warm acoustic guitar"_s;
  cell.filePath = spokenSample();
  return cell;
}

CellLook waveLook() {
  CellLook look;
  look.thumbnail.state = ThumbnailStore::State::ready;
  look.thumbnail.picture = QPixmap::fromImage(core::waveformPicture(spokenSample(), kWave));
  return look;
}

CellPicture& cellIn(QWidget& widget) { return static_cast<CellPicture&>(widget); }

ComponentState looking(const QString& name, const std::function<void(CellLook&)>& change) {
  return {name, [change](QWidget& widget) { change(cellIn(widget).look); }};
}

ComponentState being(const QString& name, const std::function<void(GalleryCell&)>& change) {
  return {name, [change](QWidget& widget) { change(cellIn(widget).cell); }};
}

// What every cell can be in, whatever it shows.
std::vector<ComponentState> attentions() {
  return {{u"Normal"_s},
          looking(u"Hover"_s, [](CellLook& look) { look.hovered = true; }),
          looking(u"Hover, on its circle"_s, [](CellLook& look) { look.hovered = true, look.hoveredPart = CellPart::selectCircle; }),
          looking(u"Hover, on its heart"_s, [](CellLook& look) { look.hovered = true, look.hoveredPart = CellPart::heart; }),
          looking(u"Hover, on its menu"_s, [](CellLook& look) { look.hovered = true, look.hoveredPart = CellPart::more; }),
          looking(u"Selected"_s, [](CellLook& look) { look.selected = true; }),
          looking(u"Selected, hover"_s, [](CellLook& look) { look.selected = look.hovered = true; }),
          looking(u"One of several"_s, [](CellLook& look) { look.selected = look.several = true; }),
          looking(u"Keyboard"_s, [](CellLook& look) { look.keyboardCurrent = true; }),
          looking(u"Keyboard, selected"_s, [](CellLook& look) { look.keyboardCurrent = look.selected = true; })};
}

ComponentState withStatus(const QString& name, const QString& token) {
  return being(name, [name, token](GalleryCell& cell) { cell.statusText = name, cell.statusToken = token; });
}

std::vector<ComponentState> conditions() {
  return {being(u"Favorite"_s, [](GalleryCell& cell) { cell.favorite = true; }),
          {u"Favorite, hover"_s,
           [](QWidget& widget) { cellIn(widget).cell.favorite = cellIn(widget).look.hovered = true; }},
          withStatus(u"Shortlist"_s, u"shortlist"_s),
          withStatus(u"Approved"_s, u"approved"_s),
          withStatus(u"Final"_s, u"final"_s),
          withStatus(u"Rejected"_s, u"rejected"_s),
          being(u"Work on it"_s, [](GalleryCell& cell) { cell.workText = u"Upscaling…"_s; }),
          being(u"In Trash"_s, [](GalleryCell& cell) { cell.inTrash = true; }),
          looking(u"Original missing"_s, [](CellLook& look) { look.thumbnail.originalMissing = true; }),
          looking(u"Nothing to show"_s, [](CellLook& look) { look.thumbnail = {ThumbnailStore::State::missing, {}}; }),
          looking(u"Unreadable"_s, [](CellLook& look) { look.thumbnail = {ThumbnailStore::State::unreadable, {}}; }),
          looking(u"Picture not there yet"_s, [](CellLook& look) { look.thumbnail = {ThumbnailStore::State::loading, {}}; })};
}

QWidget* pictures(const StateStage& stage, const QString& folder) {
  std::vector<ComponentState> states = attentions();
  for (ComponentState& state : conditions()) states.push_back(std::move(state));
  return stage.states(u"Picture"_s, [&folder] { return new CellPicture(picture(), lookWith(folder + u"/room_1.jpg"_s)); },
                      kCell, states, kColumns);
}

QWidget* clips(const StateStage& stage, const QString& folder) {
  return stage.states(u"Clip"_s, [&folder] { return new CellPicture(clip(), lookWith(folder + u"/boat_gold_0.jpg"_s)); },
                      kCell,
                      {{u"Normal"_s},
                       looking(u"Hover, before it plays"_s, [](CellLook& look) { look.hovered = true; }),
                       looking(u"Selected"_s, [](CellLook& look) { look.selected = true; }),
                       being(u"Favorite"_s, [](GalleryCell& cell) { cell.favorite = true; }),
                       being(u"In Trash"_s, [](GalleryCell& cell) { cell.inTrash = true; })},
                      kColumns);
}

QWidget* sounds(const StateStage& stage) {
  return stage.states(u"Sound"_s, [] { return new CellPicture(sound(), waveLook()); }, kCell,
                      {{u"Normal"_s},
                       looking(u"Hover"_s, [](CellLook& look) { look.hovered = true; }),
                       looking(u"Hover, on Play"_s, [](CellLook& look) { look.hovered = true, look.hoveredPart = CellPart::play; }),
                       {u"Playing"_s,
                        [](QWidget& widget) {
                          cellIn(widget).cell.durationText = u"0:02 / 0:04"_s;
                          cellIn(widget).look.played = 0.45;
                        }},
                       looking(u"Selected"_s, [](CellLook& look) { look.selected = true; }),
                       looking(u"One of several"_s, [](CellLook& look) { look.selected = look.several = true; }),
                       being(u"In Trash"_s, [](GalleryCell& cell) { cell.inTrash = true; }),
                       looking(u"Wave not there yet"_s, [](CellLook& look) { look.thumbnail = {ThumbnailStore::State::loading, {}}; })},
                      kColumns);
}

}  // namespace

std::unique_ptr<QWidget> cellsSheet(const QString& folder) {
  auto sheet = emptySheet(u"cells"_s, u"Cells of items"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  const std::pair<QString, QWidget*> parts[] = {
      {u"Picture"_s, pictures(stage, folder)}, {u"Clip"_s, clips(stage, folder)}, {u"Sound"_s, sounds(stage)}};
  int line = 0;
  for (const auto& [title, part] : parts) box->addWidget(column({caption(title), part}), line++, 0, Qt::AlignLeft);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
