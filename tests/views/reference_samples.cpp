#include "views/reference_samples.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

ReferenceTile tile(const QString& pictures, const QString& picture, const QString& title) {
  ReferenceTile tile;
  tile.id = QUuid::createUuidV5(QUuid(), picture);
  tile.title = title;
  tile.thumbnailPath = tile.filePath = pictures + u'/' + picture;
  return tile;
}

std::vector<ReferenceTile> tilesOf(const QString& pictures) {
  std::vector<ReferenceTile> tiles{tile(pictures, u"tin_1.jpg"_s, u"tin_studio_2.png"_s),
                                   tile(pictures, u"boat_gold_0.jpg"_s, u"boat_gold.png"_s),
                                   tile(pictures, u"room_1.jpg"_s, u"@Atelier"_s)};
  tiles[0].attached = true;
  tiles[2].isSaved = true;
  tiles[2].detail = u"Location · 3 images"_s;
  tiles[2].problem = u"This reference's images are missing or in Trash."_s;
  return tiles;
}

}  // namespace

AttachPanel SampleReferences::attachPanel(ReferenceSource, const QString&) const {
  AttachPanel panel;
  panel.countText = countText();
  panel.sources = {u"Workspace Gallery"_s, u"Project References"_s, u"Global References"_s};
  if (hasTiles) panel.tiles = tilesOf(pictures_);
  panel.emptyText = u"No references yet. Attach an image with the Reference button, or save one to reuse it here."_s;
  panel.inertText = inert;
  panel.canSaveAttached = hasTiles;
  panel.importing = importing;
  return panel;
}

ReferencePage SampleSavedReferences::page(ReferenceScope, const QString&, const QString&) const {
  ReferencePage page;
  page.title = u"Global References"_s;
  page.countText = u"2 references"_s;
  page.kinds = {u"All"_s, u"Character"_s, u"Product"_s};
  page.emptyTitle = u"No references here yet"_s;
  page.emptyText = u"Save pictures under a name to use them again with @."_s;
  if (!hasCards) return page;
  ReferenceCard tin;
  tin.id = QUuid::createUuid();
  tin.handle = u"@Tin"_s;
  tin.kind = u"Product"_s;
  tin.line = u"a round coffee tin · 3 images"_s;
  for (const char* picture : {"tin_1.jpg", "tin_4.jpg", "boat_gold_0.jpg"})
    tin.pictures.emplace_back(pictures_ + u'/' + QLatin1StringView(picture), QString());
  ReferenceCard gone;
  gone.id = QUuid::createUuid();
  gone.handle = u"@Atelier"_s;
  gone.kind = u"Location"_s;
  gone.line = u"a bright studio room · 1 image"_s;
  gone.problem = u"This reference's images are missing or in Trash. Restore one, or edit the reference and choose others."_s;
  page.cards = {tin, gone};
  return page;
}

std::optional<ReferencePlace> SampleSavedReferences::projectFor(const SavedReferenceDraft&) const {
  return ReferencePlace{QUuid::createUuidV5(QUuid(), u"project"_s), u"Coffee Launch"_s};
}

ReferenceTile SampleSavedReferences::tileOf(QUuid item) const {
  for (ReferenceTile& each : tilesOf(pictures_))
    if (each.id == item) return each;
  return tilesOf(pictures_).front();
}

std::vector<ReferenceTile> SampleSavedReferences::pictures(const QString&) const { return tilesOf(pictures_); }

}  // namespace sorvan::views
