// The part of the composer's state that is about attached pictures and the marks on the first of them.
#include <algorithm>

#include "base/sorvan_error.h"
#include "composer/composer_state.h"
#include "composer/reference_names.h"
#include "composer/texts.h"
#include "generation/generation_request.h"

namespace sorvan::composer {
namespace {

constexpr std::size_t mostReferences = 8;

bool takesPictures(const SelectableModel& model, MediaType output) {
  const generation::ModelOption& option = model.comparison.model;
  if (!option.supportsReferences || option.mediaType != output) return false;
  return output != MediaType::image || option.needsPrompt;
}

QString notesOf(const std::vector<MarkupBox>& boxes) {
  QStringList notes;
  for (const MarkupBox& box : boxes)
    if (!box.note.trimmed().isEmpty()) notes.append(box.note.trimmed());
  return notes.join(QStringLiteral(". "));
}

}  // namespace

void ComposerState::attachFirst(const QUuid& asset, const std::optional<QString>& role) {
  std::vector<QUuid>& ids = request_.referenceIDs;
  const auto found = std::find(ids.begin(), ids.end(), asset);
  if (found == ids.end() && ids.size() >= mostReferences) throw SorvanError(texts::tooManyReferences());
  if (found != ids.end()) ids.erase(found);
  ids.insert(ids.begin(), asset);
  synchronizeReferenceNames();
  for (ReferenceBinding& binding : *request_.referenceBindings)
    if (binding.assetID == asset && !binding.role) binding.role = role;
  Q_EMIT changed();
}

void ComposerState::detachReference(const QUuid& asset) {
  if (std::erase(request_.referenceIDs, asset) == 0) return;
  synchronizeReferenceNames();
  Q_EMIT changed();
}

void ComposerState::setMarkup(const std::vector<MarkupBox>& boxes, const QUuid& asset) {
  // 1, 2. The marks and their picture.
  request_.markup = boxes.empty() ? std::nullopt : std::optional(boxes);
  markupAssetId_ = boxes.empty() ? std::nullopt : std::optional(asset);
  if (boxes.empty()) request_.confineToMarks.reset();
  // 3, 4. Their notes, where nothing was typed.
  const QString notes = notesOf(boxes);
  if (draft_.trimmed().isEmpty() && !notes.isEmpty()) setText(notes);
  Q_EMIT changed();
}

void ComposerState::setConfinesToMarks(bool confines) {
  request_.confineToMarks = confines ? std::nullopt : std::optional(false);
  Q_EMIT changed();
}

bool ComposerState::useModel(MediaType output) {
  const std::vector<SelectableModel> chosen = chosenModels();
  if (chosen.size() == 1 && takesPictures(chosen.front(), output)) return true;
  const auto fit =
      std::find_if(models_.begin(), models_.end(), [&](const auto& model) { return takesPictures(model, output); });
  if (fit == models_.end()) return false;
  chooseOnly(QString(fit->key));
  return true;
}

// Marks belong to the picture on which they were drawn, and that is the one that is sent first.
void ComposerState::dropStrayMarks() {
  if (!request_.markup) return;
  if (markupAssetId_ && !request_.referenceIDs.empty() && request_.referenceIDs.front() == *markupAssetId_) return;
  request_.markup.reset();
  request_.confineToMarks.reset();
  markupAssetId_.reset();
}

void ComposerState::synchronizeReferenceNames() {
  dropStrayMarks();
  keepNames(synchronizedNames(request_.referenceBindings.value_or(std::vector<ReferenceBinding>()),
                              request_.referenceIDs, draft_));
}

void ComposerState::keepNames(std::vector<ReferenceBinding> bindings) {
  request_.referenceBindings = bindings.empty() ? std::nullopt : std::optional(std::move(bindings));
}

void ComposerState::setReferences(std::vector<QUuid> ids, std::vector<ReferenceBinding> bindings) {
  request_.referenceIDs = std::move(ids);
  keepNames(std::move(bindings));
  dropStrayMarks();
  Q_EMIT changed();
}

void ComposerState::renameReference(const QUuid& asset, const QString& label, const std::optional<QString>& role) {
  synchronizeReferenceNames();
  const std::vector<ReferenceBinding> present = request_.referenceBindings.value_or(std::vector<ReferenceBinding>());
  takeNames(renamedReference({present, draft_}, asset, label, role));
}

void ComposerState::resetReferenceNamesForNewPrompt() {
  takeNames(namesForNewPrompt(orderedReferences(request_), draft_));
}

void ComposerState::takeNames(const NamedReferences& names) {
  keepNames(names.bindings);
  if (names.draft != draft_) setText(names.draft);
  Q_EMIT changed();
}

}  // namespace sorvan::composer
