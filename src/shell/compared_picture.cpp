#include "shell/compared_picture.h"

#include "core/library_store.h"
#include "shell/job_displays.h"
#include "shell/wording.h"

namespace sorvan::shell {

namespace {

ComparedPicture comparedPicture(const core::LibraryStore& store, const JobDisplays& displays,
                                const core::Asset& asset) {
  ComparedPicture picture;
  picture.id = asset.id;
  picture.size = QSize(static_cast<int>(asset.width), static_cast<int>(asset.height));
  picture.detail =
      QStringLiteral("%1 · %2 × %3").arg(asset.filename()).arg(picture.size.width()).arg(picture.size.height());
  picture.path = store.fileOf(asset);
  picture.thumbnailPath = store.thumbnailOf(asset).value_or(QString());
  picture.rating = asset.rating.value_or(0);
  picture.favorite = asset.favorite;
  if (asset.status() != core::AssetStatus::draft) picture.statusText = statusText(asset.status());
  picture.statusToken = rawValue(asset.status());
  if (const core::GenerationRef made = store.generationOf(asset.id)) picture.title = displays.modelName(made->model);
  if (picture.title.isEmpty()) picture.title = asset.filename();
  return picture;
}

}  // namespace

std::vector<ComparedPicture> comparedPictures(const core::LibraryStore& store, const JobDisplays& displays,
                                              const std::vector<QUuid>& items) {
  std::vector<ComparedPicture> pictures;
  for (const QUuid& id : items) {
    const core::AssetRef asset = store.asset(id);
    if (!asset || asset->isTrashed() || asset->type() != core::MediaType::image) continue;
    if (std::ssize(pictures) == mostCompared) break;
    pictures.push_back(comparedPicture(store, displays, *asset));
  }
  return pictures;
}

}  // namespace sorvan::shell
