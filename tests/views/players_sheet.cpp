// Looking closely and playing: the transport bar, zoom, waveform, quick look; the table of jobs, links and page parts.
#include <QGridLayout>
#include <QHBoxLayout>

#include "shell/views/history_view.h"
#include "shell/views/inspector_links.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/labels.h"
#include "shell/views/picture_canvas.h"
#include "shell/views/quick_look.h"
#include "shell/views/transport_bar.h"
#include "shell/views/wave_strip.h"
#include "shell/views/zoom_bar.h"
#include "views/component_sheets.h"
#include "views/samples.h"
#include "views/sheet_parts.h"
#include "views/spoken_sample.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kWide = 620;

QWidget* transport(const std::function<void(media::Player&)>& prepare) {
  auto* holder = new QWidget;
  auto* player = new media::Player(holder);
  prepare(*player);
  auto* bar = new TransportBar(*player, holder);
  auto* row = new QHBoxLayout(holder);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(bar);
  holder->setFixedWidth(kWide);
  return holder;
}

QWidget* transports() {
  const QString sound = spokenSample();
  return column({transport([](media::Player&) {}), transport([&](media::Player& player) { player.open(sound); }),
                 transport([&](media::Player& player) {
                   player.open(sound);
                   player.setMuted(true);
                   player.setLooping(true);
                 })});
}

QWidget* zooms(ThumbnailStore& thumbnails, const QString& pictures) {
  std::vector<QWidget*> bars;
  auto* hidden = new QWidget;
  for (const bool full : {false, true}) {
    auto* canvas = new PictureCanvas(thumbnails, hidden);
    canvas->setPicture(pictures + u"/boat_gold_0.jpg"_s, {}, u"Boat"_s);
    canvas->resize(300, 200);
    for (int step = 0; full && step < 4; ++step) canvas->zoomIn();
    bars.push_back(new ZoomBar(*canvas));
  }
  hidden->hide();
  bars.push_back(hidden);
  return row(bars);
}

QWidget* waves() {
  std::vector<QWidget*> strips;
  for (const double at : {0.0, 1.2}) {
    auto* strip = new WaveStrip;
    strip->setSound(at > 0 ? spokenSample() : QString());
    strip->setTimes(at, 4);
    strip->setFixedSize(kWide / 2 - 4, 64);
    strips.push_back(strip);
  }
  return row(strips);
}

QWidget* looks(ThumbnailStore& thumbnails, const QString& pictures) {
  std::vector<GalleryCell> cells(3);
  cells[0].thumbnailPath = cells[0].filePath = pictures + u"/boat_gold_0.jpg"_s;
  cells[1].filePath = cells[1].thumbnailPath = u"/gone/lighthouse.png"_s;
  cells[2].kind = CellKind::audio;
  cells[2].title = u"Warm acoustic guitar"_s;
  cells[2].filePath = spokenSample();
  cells[2].durationText = u"0:04"_s;
  auto* holder = new Surface(&Colors::surfaceSurround);
  auto* line = new QHBoxLayout(holder);
  for (GalleryCell& cell : cells) {
    cell.id = QUuid::createUuid();
    auto* pane = new QuickLookPane(thumbnails, cell, holder);
    pane->setFixedSize(190, 130);
    pane->setCurrent(&cell == &cells[0]);
    line->addWidget(pane);
  }
  return holder;
}

QWidget* links(ThumbnailStore& thumbnails, const QString& pictures) {
  std::vector<InspectorLink> all{
      {QUuid::createUuid(), u"@Tin"_s, u"Product"_s, pictures + u"/tin_1.jpg"_s},
      {QUuid::createUuid(), u"boat_gold.png"_s, u"Edited from · In Trash"_s, pictures + u"/boat_gold_0.jpg"_s},
      {QUuid::createUuid(), u"Deleted"_s, u"Variation of"_s, {}, false}};
  auto* view = new InspectorLinks(thumbnails, all);
  view->setFixedWidth(288);
  auto* stars = new StarRow;
  stars->setStars(3);
  auto* heart = new HeartButton;
  heart->setChecked(true);
  return row({view, new StarRow, stars, new HeartButton, heart, new StatusButton(u"Approved"_s, u"approved"_s)});
}

QWidget* table(ThumbnailStore& thumbnails) {
  auto* holder = new QWidget;
  auto* history = new SampleHistory;
  history->setParent(holder);
  fillHistory(*history);
  auto* view = new HistoryView(*history, thumbnails, holder);
  view->setActive(2, 1);
  view->list().setSelected(history->idAt(1));
  view->setFixedSize(880, 420);
  holder->setFixedSize(view->size());
  return holder;
}

}  // namespace

std::unique_ptr<QWidget> playersSheet(const QString& pictures) {
  auto sheet = emptySheet(u"players"_s, u"Playing, looking closely, tables"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  auto* box = new QGridLayout;
  box->setVerticalSpacing(8);
  const std::pair<QString, QWidget*> parts[] = {{u"Transport bar: empty, ready, muted and looping"_s, transports()},
                                                {u"Zoom bar: fitted, enlarged"_s, zooms(thumbnails, pictures)},
                                                {u"Waveform: empty, with a playhead"_s, waves()},
                                                {u"Quick look: picture, missing file, sound"_s, looks(thumbnails, pictures)},
                                                {u"Links, stars, heart, status"_s, links(thumbnails, pictures)},
                                                {u"Table of jobs"_s, table(thumbnails)}};
  int line = 0;
  for (const auto& [title, part] : parts) box->addWidget(column({caption(title), part}), line++, 0, Qt::AlignLeft);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
