// The sections of the inspector for items: pure reading of the library.
#pragma once

#include "shell/inspector_presenter.h"

#include "core/records.h"

namespace sorvan::shell {

// The prompt with its mentions marked, and what it was before it was rewritten. Without sections when there is none.
std::vector<InspectorSection> promptSections(const core::LibraryStore& store, QUuid item);
// The pictures that were sent with the prompt, in their order. No links: there were none.
InspectorSection referencesSection(const core::LibraryStore& store, const core::Generation& generation);
// The same of a request that may have made nothing yet.
InspectorSection referencesOf(const core::LibraryStore& store, const core::GenerationRequest& request);
// What was chosen for a request beside its prompt.
InspectorSection settingsOf(const core::GenerationRequest& request, const QString& modelName);
// Where the item belongs, and the way to another place.
InspectorSection projectSectionOf(const core::LibraryStore& store, const core::Asset& asset);
// What the item was made from, each with what it is to it; no links: it is an original.
InspectorSection parentsSection(const core::LibraryStore& store, QUuid item);
// What was made from it.
InspectorSection childrenSection(const core::LibraryStore& store, QUuid item);
// Everything that is known of the file and of the record.
InspectorSection fileSectionOf(const core::LibraryStore& store, const core::Asset& asset);
// What several items have in common.
struct CommonFacts {
  bool live = true;  // outside Trash
  bool oneKind = true;
  bool oneStatus = true;
  bool oneRating = true;
  bool oneProject = true;
  qsizetype favorites = 0;
  std::int64_t bytes = 0;  // of the originals
};
// One pass over the items, of which there is one at least: they may be all of a large library.
CommonFacts commonFactsOf(const std::vector<core::AssetRef>& items);
// The same as it is shown; “Mixed” where they differ.
InspectorSection commonSection(const core::LibraryStore& store, const std::vector<core::AssetRef>& items,
                               const CommonFacts& common);

}  // namespace sorvan::shell
