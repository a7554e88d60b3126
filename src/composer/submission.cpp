#include "composer/submission.h"

#include <QRegularExpression>

#include <limits>

#include "base/sorvan_error.h"
#include "composer/command_texts.h"
#include "generation/enqueue.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

void require(bool holds, const QString& message) {
  if (!holds) throw SorvanError(message);
}

QString destinationName(const LibraryStore& store, const std::optional<QUuid>& project) {
  const ProjectRef found = project ? store.project(*project) : nullptr;
  return found ? found->name : texts::inbox();
}

std::vector<ComparisonModel> chosenModels(const ComposerState& state) {
  std::vector<ComparisonModel> models;
  for (const SelectableModel& model : state.chosenModels()) models.push_back(model.comparison);
  // A chosen model that is gone must not be left out silently.
  require(!models.empty() && static_cast<qsizetype>(models.size()) >= state.selectedModels().size(),
          texts::selectAvailableModel());
  return models;
}

void useSelection(GenerationRequest& request, const GenerationInstruction& instruction,
                  const std::vector<AssetRef>& selected) {
  const bool areImages = std::all_of(selected.begin(), selected.end(),
                                     [](const AssetRef& asset) { return asset->type() == MediaType::image; });
  require(!selected.empty() && areImages, texts::selectImages());
  request.referenceIDs.clear();
  for (const AssetRef& asset : selected) request.referenceIDs.push_back(asset->id);
  request.relationship = instruction.relationship;
}

/// A number beyond what a request can hold stays too large for every model.
int countOf(std::int64_t count) {
  return static_cast<int>(std::clamp<std::int64_t>(count, 1, std::numeric_limits<int>::max()));
}

GenerationRequest requestOf(const ComposerState& state, const GenerationInstruction& instruction,
                            const std::vector<ComparisonModel>& models) {
  GenerationRequest request = state.request();
  request.prompt = instruction.prompt;
  if (!state.improvements().empty()) request.improvements = state.improvements();
  if (instruction.count) request.count = countOf(*instruction.count);
  if (models.size() != 1) return request;
  request.provider = models.front().provider;
  request.model = models.front().model.id;
  request.lengthByModel.reset();
  request.quality = u"default"_s;
  return request;
}

}  // namespace

std::optional<std::int64_t> readSeed(const QString& text) {
  if (text.isEmpty()) return std::nullopt;
  static const QRegularExpression wholeNumber(u"\\A[+-]?[0-9]+\\z"_s);
  bool fits = false;
  const qlonglong seed = text.toLongLong(&fits);
  require(wholeNumber.match(text).hasMatch() && fits && seed >= 0, texts::badSeed());
  return seed;
}

Submission makeSubmission(const LibraryStore& store, const ComposerState& state,
                          const GenerationInstruction& instruction, const std::vector<AssetRef>& selected) {
  // 1. The destination.
  require(!state.projectId() || store.project(*state.projectId()), texts::destinationGone());
  // 2. The models.
  Submission submission{{}, chosenModels(state), state.projectId(), {}};
  // 3. and 4. The request and its references.
  submission.request = requestOf(state, instruction, submission.models);
  if (instruction.usesSelection) useSelection(submission.request, instruction, selected);
  // 5. The seed.
  submission.request.seed = readSeed(state.seedText());
  submission.note = texts::queued(destinationName(store, state.projectId()));
  return submission;
}

std::optional<QUuid> enqueue(JobQueue& queue, const Submission& submission) {
  if (submission.isComparison())
    return enqueueComparison(queue, submission.request, submission.models, submission.project);
  enqueueRequests(queue, {submission.request}, submission.project);
  return std::nullopt;
}

}  // namespace sorvan::composer
