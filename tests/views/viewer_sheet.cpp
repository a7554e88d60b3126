// A picture and a clip as large as their place lets them.
#include "shell/views/picture_canvas.h"
#include "shell/views/player_view.h"
#include "shell/views/thumbnail_store.h"
#include "views/component_sheets.h"
#include "views/component_states.h"
#include "views/sample_clip.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kCanvas(260, 170);
constexpr QSize kPlayer(540, 300);

// What is asked for while it is painted has arrived.
void settle(PictureCanvas& canvas, ThumbnailStore& thumbnails) {
  canvas.grab();
  awaitThat([&] { return canvas.percent() > 0 && thumbnails.pending() == 0; });
}

QWidget* canvases(ThumbnailStore& thumbnails, const QString& pictures) {
  const QString boat = pictures + u"/boat_gold_0.jpg"_s;
  const Component canvas{u"Canvas"_s, [&thumbnails, boat] {
                           auto* made = new PictureCanvas(thumbnails);
                           made->setFixedSize(kCanvas);
                           made->setPicture(boat, boat, u"Boat"_s);
                           settle(*made, thumbnails);
                           return made;
                         }};
  const State enlarged{u"Enlarged"_s, [](QWidget&, QWidget& part) {
                         auto& shown = static_cast<PictureCanvas&>(part);
                         shown.toggleFit();
                         shown.zoomIn();
                         shown.grab();
                         awaitThat([&shown] { return shown.showsFullSize(); });
                       }};
  const State missing{u"Original missing"_s, [](QWidget&, QWidget& part) {
                        auto& shown = static_cast<PictureCanvas&>(part);
                        shown.setPicture(u"/gone/lighthouse.png"_s, {}, u"Lighthouse"_s);
                        awaitThat([&shown] { return !shown.problem().isEmpty(); });
                      }};
  return stateFlow(canvas, {{u"Fitted"_s}, enlarged, focusState(), missing}, 4);
}

QWidget* players(ThumbnailStore& thumbnails) {
  const Component player{u"Player"_s, [&thumbnails] {
                           auto* made = new PlayerView(thumbnails);
                           made->setFixedSize(kPlayer);
                           return made;
                         }};
  const State opened{u"A clip at its start"_s, [](QWidget&, QWidget& part) {
                       auto& view = static_cast<PlayerView&>(part);
                       view.open({sampleClip(), {}, u"Harbour"_s, false}, Begin::paused);
                       awaitThat([&view] { return view.player().state() != media::PlayerState::opening; });
                     }};
  return stateFlow(player, {{u"Nothing open"_s}, opened}, 2);
}

}  // namespace

std::unique_ptr<QWidget> viewerSheet(const QString& pictures) {
  auto* thumbnails = new ThumbnailStore;
  std::unique_ptr<QWidget> sheet =
      sheetOf(u"viewer"_s, u"Viewer"_s,
              {{u"Canvas"_s, canvases(*thumbnails, pictures)}, {u"Player"_s, players(*thumbnails)}});
  QObject::connect(sheet.get(), &QObject::destroyed, thumbnails, &QObject::deleteLater);
  return sheet;
}

}  // namespace sorvan::views
