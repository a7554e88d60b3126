#include "composer/attach_items.h"

#include <QFileInfo>

#include "base/sorvan_error.h"
#include "composer/composer_rules.h"
#include "composer/notice_texts.h"
#include "composer/reference_names.h"

namespace sorvan::composer {

namespace {

void keep(std::vector<QUuid> ids, ComposerState& state) {
  const auto present = state.request().referenceBindings.value_or(std::vector<ReferenceBinding>());
  auto bindings = synchronizedNames(present, ids, state.draft());
  state.setReferences(std::move(ids), std::move(bindings));
}

}  // namespace

bool canAttach(const LibraryStore& store, const QUuid& item) {
  const AssetRef asset = store.asset(item);
  return asset && !asset->isTrashed() && asset->type() == MediaType::image && QFileInfo(store.fileOf(*asset)).isFile();
}

int attachItems(const LibraryStore& store, const std::vector<QUuid>& items, ComposerState& state) {
  std::vector<QUuid> ids = state.request().referenceIDs;
  const std::size_t before = ids.size();
  for (const QUuid& item : items)
    if (std::find(ids.begin(), ids.end(), item) == ids.end() && canAttach(store, item)) ids.push_back(item);
  if (ids.size() == before) return 0;
  if (ids.size() > mostReferences) throw SorvanError(texts::eightReferencesAtMost());
  const int added = static_cast<int>(ids.size() - before);
  keep(std::move(ids), state);
  return added;
}

void moveAttached(const QUuid& item, int place, ComposerState& state) {
  std::vector<QUuid> ids = state.request().referenceIDs;
  const auto found = std::find(ids.begin(), ids.end(), item);
  if (found == ids.end()) return;
  const bool marked = state.markupAssetId().has_value() && !ids.empty() && ids.front() == *state.markupAssetId();
  if (marked && item == ids.front()) return;
  ids.erase(found);
  const int to = std::clamp(place, marked ? 1 : 0, static_cast<int>(ids.size()));
  ids.insert(ids.begin() + to, item);
  if (ids != state.request().referenceIDs) keep(std::move(ids), state);
}

}  // namespace sorvan::composer
