// Quick look, the row of small pictures, and places of a comparison, in every state.
#include <QGridLayout>

#include "shell/views/asset_view.h"
#include "shell/views/compare_canvas.h"
#include "shell/views/quick_look.h"
#include "views/item_sheets.h"
#include "views/sample_clip.h"
#include "views/samples.h"
#include "views/sheet_parts.h"
#include "views/spoken_sample.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kLook(420, 270);
constexpr QSize kFilm(560, 80);
constexpr QSize kCompare(250, 170);

// A window's body that is looked at through a quick look.
class LookedAt final : public QWidget {
 public:
  LookedAt(ThumbnailStore& thumbnails, std::vector<GalleryCell> cells) {
    QSet<QUuid> ids;
    for (const GalleryCell& cell : cells) ids.insert(cell.id);
    source.set(std::move(cells));
    look = new QuickLook(thumbnails, this);
    items_ = ids;
  }
  ~LookedAt() override { delete look; }
  void open() {
    look->open(items_, source);
    look->setGeometry(rect());
    for (QuickLookPane* pane : look->panes())
      if (pane->player()) hold(*pane->player());
    awaitThat([this] { return !look->graphicsEffect(); });
  }

  SampleWall source;
  QuickLook* look;

 private:
  static void hold(media::Player& player) {
    awaitThat([&player] { return player.state() == media::PlayerState::ready || player.state() == media::PlayerState::failed; });
    player.pause();
    player.seek(1.4);
  }
  QSet<QUuid> items_;
};

struct Samples {
  ThumbnailStore& thumbnails;
  QString pictures;

  GalleryCell picture(const QString& name, double aspect) const {
    GalleryCell cell = pictureCell(name, aspect);
    cell.filePath = cell.thumbnailPath = pictures + u'/' + name + u".jpg"_s;
    return cell;
  }
  GalleryCell clip() const {
    GalleryCell cell = picture(u"boat_gold_0"_s, 1.6);
    cell.kind = CellKind::video;
    cell.fileName = u"boat.mp4"_s;
    cell.filePath = sampleClip();
    return cell;
  }
  GalleryCell sound() const {
    GalleryCell cell = pictureCell(u"guitar"_s, 1.6);
    cell.kind = CellKind::audio;
    cell.fileName = u"guitar.wav"_s;
    cell.filePath = spokenSample();
    cell.thumbnailPath = spokenWave();
    return cell;
  }
  GalleryCell gone() const {
    GalleryCell cell = pictureCell(u"lighthouse"_s, 1.6);
    cell.filePath = cell.thumbnailPath = u"/gone/lighthouse.png"_s;
    return cell;
  }
};

// One picture a kind: what is looked at is what differs.
QWidget* looks(const StateStage& stage, const Samples& samples) {
  const std::pair<QString, std::vector<GalleryCell>> all[] = {
      {u"Picture"_s, {samples.picture(u"boat_gold_0"_s, 16 / 9.0)}},
      {u"Several, the first one chosen"_s,
       {samples.picture(u"tin_1"_s, 0.8), samples.picture(u"vase_1"_s, 0.8), samples.picture(u"orb_1"_s, 1)}},
      {u"Clip"_s, {samples.clip()}},
      {u"Sound"_s, {samples.sound()}},
      {u"Missing file"_s, {samples.gone()}}};
  std::vector<QWidget*> pictures;
  for (const auto& [name, cells] : all)
    pictures.push_back(stage.states(u"Quick look"_s, [&, &cells = cells] { return new LookedAt(samples.thumbnails, cells); }, kLook,
                                    {{name, [](QWidget& body) { static_cast<LookedAt&>(body).open(); }}}, 1));
  auto* lower = row({pictures[3], pictures[4]});
  return column({row({pictures[0], pictures[1], pictures[2]}), lower});
}

class Film final : public QWidget {
 public:
  Film(ThumbnailStore& thumbnails, const QString& pictures) {
    source.set(sampleCells(pictures));
    strip = new Filmstrip(source, thumbnails, this);
    strip->setGeometry(0, 0, kFilm.width(), kFilm.height());
  }
  ~Film() override { delete strip; }
  SampleWall source;
  Filmstrip* strip;
};

QWidget* films(const StateStage& stage, const Samples& samples) {
  const auto current = [](int index) {
    return [index](QWidget& film) {
      auto& it = static_cast<Film&>(film);
      it.strip->setCurrent(it.source.idAt(index));
    };
  };
  return stage.states(u"Filmstrip"_s, [&] { return new Film(samples.thumbnails, samples.pictures); }, kFilm,
                      {{u"The first one"_s, current(0)},
                       {u"In the middle"_s, current(20)},
                       {u"The last one"_s, current(47)},
                       {u"Hover beside the current one"_s, [current](QWidget& film) {
                          current(20)(film);
                          hover(*static_cast<Film&>(film).strip, {200, 40});
                        }}},
                      2);
}

CompareCanvas& canvasIn(QWidget& widget) { return static_cast<CompareCanvas&>(widget); }

QWidget* compared(const StateStage& stage, const Samples& samples, LargePictures& large) {
  const auto make = [&samples, &large](const QString& name) {
    ComparedPicture picture;
    picture.id = QUuid::createUuid();
    picture.title = name;
    picture.path = picture.thumbnailPath = samples.pictures + u'/' + name + u".jpg"_s;
    picture.size = QImage(picture.path).size();
    auto* canvas = new CompareCanvas({large, samples.thumbnails});
    canvas->setCheckable(true);
    canvas->setPicture(picture, 2);
    return canvas;
  };
  QWidget* slots_ = stage.states(u"Place of a comparison"_s, [make] { return make(u"tin_1"_s); }, kCompare,
                                 {{u"Normal"_s},
                                  {u"Chosen"_s, [](QWidget& canvas) { canvasIn(canvas).setChecked(true); }},
                                  {u"Hover"_s, hoverMiddle},
                                  {u"Focus"_s, focusByKey},
                                  {u"Picture not there yet"_s, [](QWidget& canvas) { canvasIn(canvas).setPicture({}, 2); }},
                                  {u"Approved"_s,
                                   [](QWidget& canvas) {
                                     ComparedPicture picture = canvasIn(canvas).picture();
                                     picture.statusText = u"Approved"_s;
                                     picture.statusToken = u"approved"_s;
                                     canvasIn(canvas).setPicture(picture, 2);
                                   }},
                                  {u"Another one beside the divider"_s,
                                   [make](QWidget& canvas) {
                                     const std::unique_ptr<CompareCanvas> other(make(u"tin_4"_s));
                                     canvasIn(canvas).setSecond(other->picture());
                                   }},
                                  {u"The difference is worked out"_s,
                                   [](QWidget& canvas) { canvasIn(canvas).setDifference(QImage(), u"Comparing…"_s); }}},
                                 4);
  return slots_;
}

}  // namespace

std::unique_ptr<QWidget> lookingSheet(const QString& pictures) {
  auto sheet = emptySheet(u"looking"_s, u"Looking closely and comparing"_s);
  const Samples samples{*new ThumbnailStore(sheet.get()), pictures};
  const StateStage stage(samples.thumbnails);
  auto* large = new LargePictures(sheet.get());
  auto* box = new QGridLayout;
  const std::pair<QString, QWidget*> parts[] = {{u"Quick look"_s, looks(stage, samples)},
                                                {u"Filmstrip"_s, films(stage, samples)},
                                                {u"Places of a comparison"_s, compared(stage, samples, *large)}};
  int line = 0;
  for (const auto& [title, part] : parts) box->addWidget(column({caption(title), part}), line++, 0, Qt::AlignLeft);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
