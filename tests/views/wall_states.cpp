// The wall with what lies over its cells: what plays, a rubber band, what is dragged there.
#include <QGridLayout>

#include "shell/views/hover_play.h"
#include "shell/views/sound_play.h"
#include "views/item_sheets.h"
#include "views/sample_clip.h"
#include "views/samples.h"
#include "views/sheet_parts.h"
#include "views/spoken_sample.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kWall(640, 280);

// A wall of a picture, a clip and a sound, with what plays in it.
class PlayingWall final : public QWidget {
 public:
  PlayingWall(ThumbnailStore& thumbnails, const QString& pictures) : wall(new MediaWall(source, thumbnails, this)) {
    hovering = new HoverPlay(*wall, source, this);
    sounding = new SoundPlay(*wall, source, this);
    connect(wall, &MediaWall::selectionRequested, wall, &MediaWall::setSelection);
    source.set({picture(pictures), clip(pictures), sound(), picture(pictures)});
    wall->setRowHeight(120);
  }
  // What plays lets go of its wall, which lets go of its source.
  ~PlayingWall() override {
    delete sounding;
    delete hovering;
    delete wall;
  }

  SampleWall source;
  MediaWall* wall;
  HoverPlay* hovering;
  SoundPlay* sounding;

 protected:
  void resizeEvent(QResizeEvent*) override { wall->setGeometry(rect()); }

 private:
  static GalleryCell picture(const QString& pictures) {
    GalleryCell cell = pictureCell(u"tin_4"_s, 1);
    cell.thumbnailPath = cell.filePath = pictures + u"/tin_4.jpg"_s;
    return cell;
  }
  static GalleryCell clip(const QString& pictures) {
    GalleryCell cell = pictureCell(u"boat"_s, 16 / 9.0);
    cell.kind = CellKind::video;
    cell.durationText = u"0:04"_s;
    cell.thumbnailPath = pictures + u"/boat_gold_0.jpg"_s;
    cell.filePath = sampleClip();
    return cell;
  }
  static GalleryCell sound() {
    GalleryCell cell = pictureCell(u"guitar"_s, 1.6);
    cell.kind = CellKind::audio;
    cell.durationText = u"0:04"_s;
    cell.soundText = u"Music"_s;
    cell.soundIcon = u"music"_s;
    cell.title = u"Warm acoustic guitar"_s;
    cell.thumbnailPath = spokenWave();
    cell.filePath = spokenSample();
    return cell;
  }
};

ComponentState wall(const QString& name, const std::function<void(PlayingWall&)>& bring) {
  return {name, [bring](QWidget& widget) { bring(static_cast<PlayingWall&>(widget)); }};
}

void playClip(PlayingWall& it) {
  hover(*it.wall, it.wall->cellRect(1).center());
  awaitThat([&it] { return !it.hovering->cell().isNull() && it.hovering->player().duration() > 0; });
  it.hovering->player().pause();
  it.hovering->player().seek(1.4);
}

void playSound(PlayingWall& it) {
  it.sounding->player().setMuted(true);
  Q_EMIT it.wall->playPressed(it.source.idAt(2));
  awaitThat([&it] { return it.sounding->player().state() == media::PlayerState::ready; });
  it.sounding->player().pause();
  it.sounding->player().seek(1.4);
}

std::vector<ComponentState> wallStates() {
  return {{u"Normal"_s},
          wall(u"A clip plays under the pointer"_s, playClip),
          wall(u"A sound plays in its cell"_s, playSound),
          wall(u"Items are caught with a rubber band"_s, [](PlayingWall& it) { drag(*it.wall, {600, 270}, {300, 20}); }),
          wall(u"Files are dragged over it"_s, [](PlayingWall& it) { dragFilesOver(*it.wall, {60, 60}); }),
          wall(u"Keyboard"_s,
               [](PlayingWall& it) {
                 focusByKey(*it.wall);
                 press(*it.wall, Qt::Key_Right);
               }),
          wall(u"Empty"_s, [](PlayingWall& it) { it.source.set({}); }),
          wall(u"Empty, files are dragged over it"_s, [](PlayingWall& it) {
            it.source.set({});
            dragFilesOver(*it.wall, {60, 60});
          })};
}

}  // namespace

std::unique_ptr<QWidget> wallSheet(const QString& pictures) {
  auto sheet = emptySheet(u"wall"_s, u"The wall"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  box->addWidget(stage.states(u"Wall"_s, [&] { return new PlayingWall(thumbnails, pictures); }, kWall, wallStates(), 2), 0, 0);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
