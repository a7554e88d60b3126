// The controls of players, the wave of a sound and the bar that zooms, in every state.
#include <QGridLayout>
#include <QSlider>

#include "shell/views/controls.h"
#include "shell/views/picture_canvas.h"
#include "shell/views/transport_bar.h"
#include "shell/views/viewer_texts.h"
#include "shell/views/wave_strip.h"
#include "shell/views/zoom_bar.h"
#include "views/item_sheets.h"
#include "views/sample_clip.h"
#include "views/sheet_parts.h"
#include "views/spoken_sample.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kTransport(560, 62);
constexpr QSize kWave(376, 150);
constexpr QSize kZoom(186, 30);
constexpr double kInside = 1.5;  // seconds into the sample

// A bar with the player that it follows.
class PlayerBar final : public QWidget {
 public:
  PlayerBar() : player(this), bar(new TransportBar(player, this)) {}
  media::Player player;
  TransportBar* bar;

  void open(const QString& path, double at) {
    player.setMuted(true);
    player.open(path);
    awaitThat([this] { return player.state() == media::PlayerState::ready; });
    player.seek(at);
    player.setMuted(false);
  }

 protected:
  void resizeEvent(QResizeEvent*) override { bar->setGeometry(rect()); }
};

using Prepare = std::function<void(PlayerBar&)>;

ComponentState playing(const QString& name, double at, const Prepare& prepare = {}) {
  return {name, [at, prepare](QWidget& widget) {
            auto& player = static_cast<PlayerBar&>(widget);
            player.open(sampleClip(), at);
            if (prepare) prepare(player);
          }};
}

template <class Control>
Control& named(QWidget& bar, const QString& name) {
  for (Control* control : bar.findChildren<Control*>())
    if (control->accessibleName() == name) return *control;
  qFatal("the bar has no such control");
}

QSlider& seekBar(PlayerBar& player) { return named<QSlider>(*player.bar, texts::playingPosition()); }
IconButton& button(PlayerBar& player, const QString& name) { return named<IconButton>(*player.bar, name); }

std::vector<ComponentState> transportStates() {
  return {{u"Disabled: nothing is open"_s},
          playing(u"Paused"_s, kInside),
          playing(u"At its start"_s, 0),
          playing(u"At its end"_s, 4),
          playing(u"Playing"_s, kInside, [](PlayerBar& it) { it.player.setMuted(true), it.player.play(); }),
          playing(u"Muted, over and over"_s, kInside, [](PlayerBar& it) {
            it.player.setMuted(true);
            button(it, texts::loop()).click();
          }),
          playing(u"Half as loud"_s, kInside, [](PlayerBar& it) { it.player.setVolume(0.5); }),
          playing(u"Hover on Play"_s, kInside, [](PlayerBar& it) { hoverMiddle(button(it, texts::play())); }),
          playing(u"Play pressed"_s, kInside, [](PlayerBar& it) { button(it, texts::play()).setDown(true); }),
          playing(u"Focus on Play"_s, kInside, [](PlayerBar& it) { focusByKey(button(it, texts::play())); }),
          playing(u"Focus on Mute"_s, kInside, [](PlayerBar& it) { focusByKey(button(it, texts::mute())); }),
          playing(u"Hover on the seek bar"_s, kInside, [](PlayerBar& it) { hoverMiddle(seekBar(it)); }),
          playing(u"Seek bar dragged"_s, kInside, [](PlayerBar& it) { drag(seekBar(it), {200, 8}, {330, 8}); }),
          playing(u"Focus on the seek bar"_s, kInside, [](PlayerBar& it) { focusByKey(seekBar(it)); })};
}

WaveStrip& waveIn(QWidget& widget) { return static_cast<WaveStrip&>(widget); }

void openWave(QWidget& widget, double at) {
  waveIn(widget).setSound(spokenSample());
  awaitThat([&widget] { return !waveIn(widget).levels().empty(); });
  waveIn(widget).setTimes(at, 4);
}

std::vector<ComponentState> waveStates() {
  return {{u"Not measured yet"_s},
          {u"At its start"_s, [](QWidget& strip) { openWave(strip, 0); }},
          {u"Playhead inside"_s, [](QWidget& strip) { openWave(strip, kInside); }},
          {u"At its end"_s, [](QWidget& strip) { openWave(strip, 4); }},
          {u"Hover"_s,
           [](QWidget& strip) {
             openWave(strip, kInside);
             hover(strip, {280, 75});
           }}};
}

// The bar with the canvas that it follows.
class Zoomed final : public QWidget {
 public:
  Zoomed(ThumbnailStore& thumbnails, const QString& picture) : canvas(new PictureCanvas(thumbnails, &room_)) {
    canvas->resize(300, 200);
    canvas->setPicture(picture, {}, u"Boat"_s);
    bar = new ZoomBar(*canvas, this);
    awaitThat([this] { return canvas->percent() > 0; });
  }

 private:
  QWidget room_;

 public:
  PictureCanvas* canvas;
  ZoomBar* bar;

 protected:
  void resizeEvent(QResizeEvent*) override { bar->setGeometry(rect()); }
};

ComponentState zoomed(const QString& name, const std::function<void(Zoomed&)>& zoom) {
  return {name, [zoom](QWidget& widget) { zoom(static_cast<Zoomed&>(widget)); }};
}

std::vector<ComponentState> zoomStates() {
  return {{u"Fitted"_s},
          zoomed(u"100 %"_s, [](Zoomed& it) { it.canvas->toggleFit(); }),
          zoomed(u"In between"_s, [](Zoomed& it) { it.canvas->zoomIn(), it.canvas->zoomIn(), it.canvas->zoomIn(); }),
          zoomed(u"As large as it goes"_s, [](Zoomed& it) { for (int step = 0; step < 12; ++step) it.canvas->zoomIn(); }),
          zoomed(u"As small as it goes"_s, [](Zoomed& it) { for (int step = 0; step < 12; ++step) it.canvas->zoomOut(); }),
          zoomed(u"Hover on +"_s, [](Zoomed& it) { hoverMiddle(named<IconButton>(*it.bar, texts::zoomIn())); }),
          zoomed(u"Hover on Fit"_s, [](Zoomed& it) { hoverMiddle(*it.bar->findChild<Button*>()); }),
          zoomed(u"Focus on Fit"_s, [](Zoomed& it) { focusByKey(*it.bar->findChild<Button*>()); })};
}

}  // namespace

std::unique_ptr<QWidget> transportSheet(const QString& pictures) {
  auto sheet = emptySheet(u"transport"_s, u"Playing, waves, zooming"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  const std::pair<QString, QWidget*> parts[] = {
      {u"Controls of a player"_s, stage.states(u"Transport bar"_s, [] { return new PlayerBar; }, kTransport, transportStates(), 2)},
      {u"Wave of a sound"_s, stage.states(u"Wave"_s, [] { return new WaveStrip; }, kWave, waveStates(), 3)},
      {u"Zoom"_s, stage.states(u"Zoom bar"_s,
                               [&] { return new Zoomed(thumbnails, pictures + u"/boat_gold_0.jpg"_s); }, kZoom,
                               zoomStates(), 5)}};
  int line = 0;
  for (const auto& [title, part] : parts) box->addWidget(column({caption(title), part}), line++, 0, Qt::AlignLeft);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
