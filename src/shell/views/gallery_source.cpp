#include "shell/views/gallery_source.h"

namespace sorvan::views {

GallerySource::GallerySource(GalleryPresenter& gallery, QObject* parent) : WallSource(parent), gallery_(gallery) {
  connect(&gallery_, &GalleryPresenter::layoutChanged, this, &WallSource::layoutChanged);
  connect(&gallery_, &GalleryPresenter::contentChanged, this, &WallSource::contentChanged);
}

int GallerySource::count() const { return gallery_.count(); }
QUuid GallerySource::idAt(int index) const { return gallery_.idAt(index); }
double GallerySource::aspectRatioAt(int index) const { return gallery_.aspectRatioAt(index); }
bool GallerySource::isJobAt(int index) const { return gallery_.isJobAt(index); }
GalleryCell GallerySource::cellAt(int index) const { return gallery_.cellAt(index); }
int GallerySource::indexOf(QUuid id) const { return gallery_.indexOf(id); }
const std::vector<WallSection>& GallerySource::sections() const { return gallery_.sections(); }
QString GallerySource::emptyTitle() const { return gallery_.emptyTitle(); }
QString GallerySource::emptyText() const { return gallery_.emptyText(); }
QString GallerySource::emptyAction() const { return gallery_.emptyAction(); }

}  // namespace sorvan::views
