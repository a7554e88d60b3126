// The composer's references, and the marks that it takes over from where they were drawn.
#include "composer/attach_items.h"
#include "core/library_store.h"
#include "generation/generation_request.h"
#include "generation/mentions.h"
#include "shell/composer_texts.h"
#include "shell/generation_composer.h"
#include "shell/texts.h"

#include <algorithm>

namespace sorvan::shell {

std::vector<AttachedReference> GenerationComposer::attachedReferences() const {
  const core::GenerationRequest& request = ports_.state.request();
  std::vector<AttachedReference> shown;
  for (const core::ReferenceBinding& binding : generation::orderedReferences(request)) {
    AttachedReference reference;
    reference.id = binding.assetID;
    reference.name = u'@' + generation::handleOf(binding);
    reference.role = binding.role.value_or(texts::noRole);
    if (const core::AssetRef asset = ports_.store.asset(binding.assetID)) {
      reference.filePath = ports_.store.fileOf(*asset);
      reference.thumbnailPath = ports_.store.thumbnailOf(*asset).value_or(QString());
    }
    if (request.markup && ports_.state.markupAssetId() == binding.assetID) {
      reference.marks = static_cast<int>(request.markup->size());
      reference.marksLabel = texts::marksCount(reference.marks);
    }
    shown.push_back(std::move(reference));
  }
  return shown;
}

// Throws SorvanError when as many are attached as a prompt may have.
void GenerationComposer::attach(QUuid item, const std::optional<QString>& role) {
  ports_.state.attachFirst(item, role);
  if (!chooseModelFor(role)) ports_.state.report(texts::noModelForThis, true);
}

// Models that take a picture stay chosen, those that animate it too: another in their place would be paid for
// unasked. Else one that takes it is chosen, of the kind that is being made. Marks are for models that edit.
bool GenerationComposer::chooseModelFor(const std::optional<QString>& role) {
  if (role) return ports_.state.useModel(core::MediaType::image);
  const auto chosen = ports_.state.chosenModels();
  const bool allTakeIt = std::all_of(chosen.begin(), chosen.end(), [](const SelectableModel& model) {
    return model.comparison.model.supportsReferences;
  });
  if (!chosen.empty() && allTakeIt) return true;
  const bool makesClip = chosen.size() == 1 && chosen.front().record.output == core::MediaType::video;
  return ports_.state.useModel(makesClip ? core::MediaType::video : core::MediaType::image);
}

void GenerationComposer::useAsReference(QUuid item) {
  const core::AssetRef asset = ports_.store.asset(item);
  if (!asset || asset->isTrashed() || asset->type() != core::MediaType::image) return;
  try {
    attach(item, std::nullopt);
  } catch (const SorvanError& failure) {
    ports_.state.report(failure.message(), true);
  }
  ports_.state.focus();
}

// All of them or none: half a set is nobody's wish.
void GenerationComposer::useAsReferences(const std::vector<QUuid>& items) {
  if (items.size() == 1) return useAsReference(items.front());
  try {
    const int added = composer::attachItems(ports_.store, items, ports_.state);
    if (added > 0 && !chooseModelFor(std::nullopt)) ports_.state.report(texts::noModelForThis, true);
  } catch (const SorvanError& failure) {
    ports_.state.report(failure.message(), true);
  }
  ports_.state.focus();
}

void GenerationComposer::detachReference(QUuid item) { ports_.state.detachReference(item); }

void GenerationComposer::removeMarks() {
  if (const auto item = ports_.state.markupAssetId()) ports_.state.setMarkup({}, *item);
}

void GenerationComposer::openMarks(QUuid item) { Q_EMIT marksRequested(item); }

// What cannot be taken stays where it is, so that nothing that was drawn is lost.
void GenerationComposer::takePendingMarks() {
  const auto marks = ports_.store.pendingMarks();
  if (!marks) return;
  const core::AssetRef asset = ports_.store.asset(marks->assetID);
  if (!asset || asset->isTrashed()) return ports_.state.report(texts::markedItemGone, true);
  if (marks->boxes.empty()) {
    if (ports_.state.markupAssetId() == marks->assetID) removeMarks();
    return ports_.store.setPendingMarks(std::nullopt);
  }
  try {
    attach(marks->assetID, generation::editSourceRole.toString());
  } catch (const SorvanError& failure) {
    return ports_.state.report(failure.message(), true);
  }
  ports_.state.setMarkup(marks->boxes, marks->assetID);
  ports_.state.setConfinesToMarks(marks->confine);
  ports_.store.setPendingMarks(std::nullopt);
  ports_.state.focus();
}

}  // namespace sorvan::shell
