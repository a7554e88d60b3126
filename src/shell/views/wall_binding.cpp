#include "shell/views/wall_binding.h"

#include "shell/curation_presenter.h"
#include "shell/filter_presenter.h"
#include "shell/jobs_presenter.h"
#include "shell/views/item_drag.h"
#include "shell/views/media_wall.h"
#include "shell/workspace_state.h"

namespace sorvan::views {

WallBinding::WallBinding(MediaWall& wall, Presenters presenters, QObject* parent)
    : QObject(parent), wall_(wall), on_(presenters) {
  connect(&wall_, &MediaWall::selectionRequested, on_.state, &WorkspaceState::select);
  connect(on_.state, &WorkspaceState::selectionChanged, &wall_, [this] { wall_.setSelection(on_.state->selection()); });
  connect(&wall_, &MediaWall::jobActionRequested, on_.jobs, &JobsPresenter::perform);
  connect(&wall_, &MediaWall::jobDismissed, on_.gallery, &GalleryPresenter::dismissJob);
  connect(&wall_, &MediaWall::favoriteToggled, on_.curation, &CurationPresenter::toggleFavoriteOf);
  connect(&wall_, &MediaWall::emptyActionRequested, on_.filters, &FilterPresenter::clear);
  // The press that began the drag is still being handled: the drag begins after it.
  connect(&wall_, &MediaWall::dragRequested, this, &WallBinding::drag, Qt::QueuedConnection);
  connect(&wall_, &MediaWall::filesDropped, this,
          [this](const QList<QUrl>& files) { on_.transfer->refuseFiles(files.size()); });
  wall_.setSelection(on_.state->selection());
}

void WallBinding::drag() {
  const int index = on_.gallery->indexOf(wall_.currentRow());
  const QPixmap thumbnail = index >= 0 ? wall_.pictureOf(index) : QPixmap();
  dragSelectedItems(wall_, *on_.transfer,
                    dragPicture(thumbnail, wall_.selection().size(), wall_.devicePixelRatioF()));
}

}  // namespace sorvan::views
