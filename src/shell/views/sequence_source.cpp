#include "shell/views/sequence_source.h"

#include "shell/workspace_state.h"

namespace sorvan::views {

SequenceSource::SequenceSource(const WorkspaceState& state, const GalleryPresenter& gallery, QObject* parent)
    : WallSource(parent), state_(state), gallery_(gallery) {
  connect(&state_, &WorkspaceState::assetSequenceChanged, this, &SequenceSource::chooseOrder);
  connect(&state_, &WorkspaceState::modeChanged, this, &SequenceSource::chooseOrder);
  connect(&gallery_, &GalleryPresenter::layoutChanged, this, &WallSource::layoutChanged);
  connect(&gallery_, &GalleryPresenter::contentChanged, this, &WallSource::layoutChanged);
}

void SequenceSource::chooseOrder() {
  const std::vector<QUuid>& order = state_.assetSequence();
  const WorkspaceMode& mode = state_.mode();
  const bool open = mode.kind == ModeKind::asset && !mode.subject.isNull();
  followsGallery_ = open && std::find(order.begin(), order.end(), mode.subject) == order.end();
  Q_EMIT layoutChanged();
}

int SequenceSource::count() const {
  return followsGallery_ ? gallery_.count() : static_cast<int>(state_.assetSequence().size());
}

QUuid SequenceSource::idAt(int index) const {
  return followsGallery_ ? gallery_.idAt(index) : state_.assetSequence().at(static_cast<size_t>(index));
}

bool SequenceSource::isJobAt(int index) const { return followsGallery_ && gallery_.isJobAt(index); }

double SequenceSource::aspectRatioAt(int index) const {
  return followsGallery_ ? gallery_.aspectRatioAt(index) : cellAt(index).aspectRatio;
}

GalleryCell SequenceSource::cellAt(int index) const {
  return followsGallery_ ? gallery_.cellAt(index) : gallery_.cellOf(idAt(index));
}

int SequenceSource::indexOf(QUuid id) const {
  if (followsGallery_) return gallery_.indexOf(id);
  const std::vector<QUuid>& all = state_.assetSequence();
  const auto found = std::find(all.begin(), all.end(), id);
  return found == all.end() || !gallery_.canShow(id) ? -1 : static_cast<int>(found - all.begin());
}

}  // namespace sorvan::views
