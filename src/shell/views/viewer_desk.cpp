#include "shell/views/viewer_desk.h"

#include "shell/settings_presenter.h"
#include "shell/views/library_view.h"
#include "shell/workspace_state.h"

namespace sorvan::views {

namespace {
constexpr std::chrono::milliseconds kVolumePause{400};
}

ViewerDesk::ViewerDesk(Presenters presenters, WallSource& source, LibraryView& library, QObject* parent)
    : QObject(parent),
      on_(presenters),
      source_(source),
      library_(library),
      hover_(new HoverPlay(library.wall(), source, this)),
      sound_(new SoundPlay(library.wall(), source, this)),
      look_(new QuickLook(library.thumbnails(), &library)),
      order_(new OrderedItems(*on_.gallery, this)) {
  bindVolume();
  bindQuickLook();
  connect(on_.state, &WorkspaceState::modeChanged, this, &ViewerDesk::refresh);
  refresh();
}

media::Player& ViewerDesk::player() { return library_.asset().playerView().player(); }

void ViewerDesk::bindVolume() {
  if (!on_.settings) return;
  player().setVolume(on_.settings->playerVolume());
  player().setMuted(on_.settings->playerMuted());
  sound_->player().setVolume(player().volume());
  volumePause_.setSingleShot(true);
  volumePause_.setInterval(kVolumePause);
  connect(&player(), &media::Player::volumeChanged, &volumePause_, qOverload<>(&QTimer::start));
  connect(&player(), &media::Player::volumeChanged, sound_, [this] { sound_->player().setVolume(player().volume()); });
  connect(&volumePause_, &QTimer::timeout, this,
          [this] { on_.settings->setPlayerVolume(player().volume(), player().isMuted()); });
}

void ViewerDesk::bindQuickLook() {
  connect(&library_.wall(), &MediaWall::quickLookRequested, this, [this] { perform(ActionId::quickLook); });
  connect(look_, &QuickLook::stepped, this, [this](QUuid item) { on_.state->select({item}); });
  connect(look_, &QuickLook::itemOpened, this, [this](QUuid item) {
    look_->close();
    openItem(item);
  });
  connect(look_, &QuickLook::closed, &library_, &LibraryView::focusContent);
}

void ViewerDesk::refresh() {
  hover_->stop();
  sound_->stop();
  look_->close();
  // A clip that was asked to play is open by now, with its first picture.
  const WorkspaceMode& mode = on_.state->mode();
  if (mode.kind == ModeKind::asset && on_.state->takeAutoplay() == mode.subject)
    library_.asset().show(mode.subject, Begin::playing);
}

// A page with an order of its own is stepped through in that.
void ViewerDesk::look() {
  hover_->stop();
  sound_->stop();
  const std::optional<LookedAt> page = library_.looked();
  if (!page) return look_->open(on_.state->selection(), source_);
  order_->set(page->order);
  look_->open(page->items, *order_);
}

void ViewerDesk::openItem(QUuid item) {
  const std::optional<LookedAt> page = library_.looked();
  if (!page) return Q_EMIT openRequested(item);
  on_.state->openAsset(item, page->order);
}

// In the order of the page or of the wall, items before jobs; elsewhere the one that is inspected.
void ViewerDesk::openSelected() {
  if (const std::optional<LookedAt> page = library_.looked()) {
    for (const QUuid& id : page->order)
      if (page->items.contains(id)) return openItem(id);
    return;
  }
  QUuid first = on_.state->inspectedId();
  for (const QUuid& id : on_.state->selection()) {
    if (!first.isNull()) break;
    const int index = source_.indexOf(id);
    if (index >= 0 && !source_.isJobAt(index)) first = id;
  }
  if (!first.isNull()) openItem(first);
}

bool ViewerDesk::perform(ActionId action) {
  if (action != ActionId::quickLook && action != ActionId::openItem) return library_.asset().perform(action);
  action == ActionId::quickLook ? look() : openSelected();
  return true;
}

}  // namespace sorvan::views
