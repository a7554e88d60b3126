// The part of the composer's state that is about attached pictures and the marks on the first of them.
#include <algorithm>

#include "base/sorvan_error.h"
#include "composer/composer_state.h"
#include "composer/texts.h"
#include "generation/mentions.h"

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

bool binds(const std::vector<ReferenceBinding>& bindings, const QUuid& asset) {
  return std::any_of(bindings.begin(), bindings.end(), [&](const auto& binding) { return binding.assetID == asset; });
}

// "Reference{n}" with the smallest number that is free; the name is taken then.
QString freeName(QSet<QString>& taken) {
  for (int number = 1;; ++number) {
    const QString name = QStringLiteral("Reference%1").arg(number);
    if (taken.contains(name.toLower())) continue;
    taken.insert(name.toLower());
    return name;
  }
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
  // 1. Marks that lost their picture.
  dropStrayMarks();
  // 2. Names of pictures that are gone; words may still mention them.
  std::vector<ReferenceBinding> bindings = request_.referenceBindings.value_or(std::vector<ReferenceBinding>());
  const auto& ids = request_.referenceIDs;
  if (draft_.trimmed().isEmpty())
    std::erase_if(bindings, [&](const auto& b) { return std::find(ids.begin(), ids.end(), b.assetID) == ids.end(); });
  // 3. Names in use.
  QSet<QString> taken;
  for (const ReferenceBinding& binding : bindings) taken.insert(generation::handleOf(binding).toLower());
  // 4. A name for each picture that has none.
  for (const QUuid& id : ids)
    if (!binds(bindings, id)) bindings.push_back({id, freeName(taken), std::nullopt, std::nullopt, std::nullopt});
  // 5. Stored.
  request_.referenceBindings = bindings.empty() ? std::nullopt : std::optional(std::move(bindings));
}

}  // namespace sorvan::composer
