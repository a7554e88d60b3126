#include "composer/composer_state.h"

#include <algorithm>
#include <cmath>

#include "catalogue/video_length.h"
#include "core/image_format.h"

namespace sorvan::composer {

namespace {

const QString startingModel = QStringLiteral("fal-ai/nano-banana-2");

GenerationRequest startingRequest() {
  GenerationRequest request;
  request.model = startingModel;
  request.size = ComposerState::defaultSize;
  return request;
}

bool takesRatio(const SelectableModel& model, const ImageFormat& format) {
  const auto& ratios = model.comparison.model.ratios;
  return !ratios || ratios->contains(format.ratio);
}

bool allTakeRatio(const std::vector<SelectableModel>& models, const ImageFormat& format) {
  return std::all_of(models.begin(), models.end(), [&](const auto& model) { return takesRatio(model, format); });
}

std::vector<FalModel> records(const std::vector<SelectableModel>& models) {
  std::vector<FalModel> result;
  for (const SelectableModel& model : models) result.push_back(model.record);
  return result;
}

}  // namespace

const QString ComposerState::defaultSize = QStringLiteral("1536x864");
const QString ComposerState::defaultModel = QStringLiteral("fal.ai:fal-ai/nano-banana-2");

ComposerState::ComposerState(std::vector<SelectableModel> models, std::shared_ptr<const Clock> clock, QObject* parent)
    : QObject(parent),
      models_(std::move(models)),
      clock_(std::move(clock)),
      request_(startingRequest()),
      selectedModels_({defaultModel}) {}

ComposerState::~ComposerState() = default;

std::vector<SelectableModel> ComposerState::chosenModels() const {
  std::vector<SelectableModel> chosen;
  for (const SelectableModel& model : models_)
    if (selectedModels_.contains(model.key)) chosen.push_back(model);
  return chosen;
}

ComposerDraft ComposerState::saved() const {
  ComposerDraft snapshot;
  snapshot.text = prompt();
  try {
    encodedRequest_ = encodeRequest(request_);
  } catch (const std::exception&) {
    // The last that could be encoded keeps the words beside it restorable.
  }
  snapshot.request = encodedRequest_;
  snapshot.selectedModels = std::vector<QString>(selectedModels_.begin(), selectedModels_.end());
  std::sort(snapshot.selectedModels.begin(), snapshot.selectedModels.end());
  snapshot.projectID = projectId_;
  snapshot.seedText = seedText_;
  snapshot.improvements = improvements_;
  snapshot.markupAssetID = markupAssetId_;
  return snapshot;
}

void ComposerState::takeRequest(GenerationRequest request, const std::function<bool(const QUuid&)>& usable) {
  std::erase_if(request.referenceIDs, [&](const QUuid& id) { return !usable(id); });
  if (request.referenceBindings) {
    std::erase_if(*request.referenceBindings, [&](const auto& binding) { return !usable(binding.assetID); });
    if (request.referenceBindings->empty()) request.referenceBindings.reset();
  }
  request_ = std::move(request);
}

void ComposerState::restore(const ComposerDraft& saved, const std::function<bool(const QUuid&)>& usable,
                            const std::function<bool(const QUuid&)>& project) {
  // 1. A snapshot without its request is no snapshot.
  GenerationRequest request;
  try {
    request = decodeRequest(saved.request);
  } catch (const std::exception&) {
    return;
  }
  mode_ = ComposerMode::generation;
  waitingPrompt_.clear();
  // 2, 3. What is gone from the library goes from the request.
  takeRequest(std::move(request), usable);
  seedText_ = saved.seedText;
  // 4, 5. Marks and destination, where they still stand for something.
  markupAssetId_ = request_.markup ? saved.markupAssetID : std::nullopt;
  dropStrayMarks();
  if (saved.projectID && project(*saved.projectID)) projectId_ = saved.projectID;
  // 6 to 8. Models that can still be chosen, and the settings that suit them.
  selectedModels_ = QSet<QString>(saved.selectedModels.begin(), saved.selectedModels.end());
  setModels(models_);
  // 9, 10. The words, and the composer opened out when there is something to go on with.
  setText(saved.text);
  improvements_ = saved.text.isEmpty() ? std::vector<PromptImprovement>() : saved.improvements;
  if (!saved.text.isEmpty() || !request_.referenceIDs.empty()) expanded_ = true;
  Q_EMIT changed();
}

void ComposerState::reset() {
  request_ = startingRequest();
  selectedModels_ = {defaultModel};
  seedText_.clear();
  markupAssetId_.reset();
  waitingPrompt_.clear();
  improvements_.clear();
  setText({});
  clearMessage();
  fitOutputSettings();
  Q_EMIT changed();
}

bool ComposerState::isUntouched() const {
  const GenerationRequest start = startingRequest();
  const bool noOptions = !request_.options || request_.options->isEmpty();
  return prompt().trimmed().isEmpty() && request_.referenceIDs.empty() &&
         selectedModels_ == QSet<QString>{defaultModel} && request_.size == start.size &&
         request_.count == start.count && noOptions && seedText_.isEmpty() && !request_.markup;
}

void ComposerState::updateLiveDraft(const QString& text) {
  if (text == draft_) return;
  const bool emptinessChanged = text.isEmpty() != draft_.isEmpty();
  if (text.isEmpty() && mode_ == ComposerMode::generation) improvements_.clear();
  draft_ = text;
  Q_EMIT draftEdited();
  if (emptinessChanged) Q_EMIT changed();
}

void ComposerState::setText(const QString& text) {
  draft_ = text;
  if (text.isEmpty() && mode_ == ComposerMode::generation) improvements_.clear();
  Q_EMIT draftReplaced(text);
  Q_EMIT draftEdited();
  Q_EMIT changed();
}

void ComposerState::setMode(ComposerMode mode) {
  if (mode_ == mode) return;
  // The words of one mode mean nothing in the other, and a prompt is not given up for a command.
  const QString shown = mode == ComposerMode::command ? QString() : std::exchange(waitingPrompt_, QString());
  if (mode == ComposerMode::command) waitingPrompt_ = draft_;
  mode_ = ComposerMode::command;
  setText(shown);
  mode_ = mode;
  Q_EMIT changed();
}

void ComposerState::setSeedText(const QString& text) {
  if (seedText_ == text) return;
  seedText_ = text;
  Q_EMIT changed();
}

void ComposerState::setProject(std::optional<QUuid> project) {
  if (projectId_ == project) return;
  projectId_ = project;
  Q_EMIT changed();
}

void ComposerState::setExpanded(bool expanded) {
  if (expanded_ == expanded) return;
  expanded_ = expanded;
  Q_EMIT changed();
}

void ComposerState::setAdvanced(bool advanced) {
  if (advanced_ == advanced) return;
  advanced_ = advanced;
  Q_EMIT changed();
}

void ComposerState::setCount(int count) {
  request_.count = count;
  fitOutputSettings();
  Q_EMIT changed();
}

void ComposerState::setSize(const QString& size) {
  if (!ImageFormat::find(size)) return;
  request_.size = size;
  request_.shapeChosen = true;
  Q_EMIT changed();
}

void ComposerState::setOption(const QString& field, const QString& value) {
  TextByKey options = request_.options.value_or(TextByKey());
  if (value.isEmpty()) {
    options.remove(field);
  } else {
    options.insert(field, value);
  }
  request_.options = options.isEmpty() ? std::nullopt : std::optional(options);
  // One length for all takes the place of each model's own.
  if (field == QStringLiteral("duration")) request_.lengthByModel.reset();
  Q_EMIT changed();
}

void ComposerState::setLengths(const TextByKey& lengthByModel) {
  request_.lengthByModel = lengthByModel;
  fitOutputSettings();
  Q_EMIT changed();
}

void ComposerState::finishPrompt() {
  request_.referenceIDs.clear();
  request_.referenceBindings.reset();
  request_.relationship = RelationshipType::referenceFor;
  request_.markup.reset();
  request_.confineToMarks.reset();
  request_.plainPrompt.reset();
  request_.shot.reset();
  request_.variance.reset();
  request_.layUnder.reset();
  request_.keepOwnSound.reset();
  request_.storyShot.reset();
  request_.shapeChosen.reset();
  markupAssetId_.reset();
  improvements_.clear();
  expanded_ = false;
  setText({});
}

void ComposerState::focus() {
  setExpanded(true);
  Q_EMIT focusRequested();
}

void ComposerState::report(const QString& text, bool isError) {
  message_ = text;
  isError_ = isError;
  const quint64 number = ++messageNumber_;
  Q_EMIT messageChanged();
  if (!isError) tasks_.spawn(clearLater(number, noteSeconds, tasks_.token()));
}

Task<> ComposerState::clearLater(quint64 message, double seconds, std::stop_token stop) {
  co_await clock_->sleep(std::chrono::milliseconds(std::llround(seconds * 1000)), stop);
  throwIfStopped(stop);
  if (messageNumber_ == message) clearMessage();
}

void ComposerState::clearMessage() {
  ++messageNumber_;
  if (message_.isEmpty() && !isError_) return;
  message_.clear();
  isError_ = false;
  Q_EMIT messageChanged();
}

void ComposerState::chooseOnly(const QString& key) {
  selectedModels_ = {key};
  adoptFirstSelected();
  fitOutputSettings();
  Q_EMIT changed();
}

void ComposerState::selectModel(const QString& key, bool selected) {
  if (selected) {
    selectedModels_.insert(key);
  } else {
    selectedModels_.remove(key);
  }
  adoptFirstSelected();
  fitOutputSettings();
  Q_EMIT changed();
}

void ComposerState::setModels(std::vector<SelectableModel> models) {
  models_ = std::move(models);
  QSet<QString> known;
  for (const SelectableModel& model : models_) known.insert(model.key);
  selectedModels_.intersect(known);
  if (selectedModels_.isEmpty()) selectedModels_ = {defaultModel};
  adoptFirstSelected();
  fitOutputSettings();
  Q_EMIT changed();
}

void ComposerState::adoptFirstSelected() {
  for (const SelectableModel& model : models_) {
    if (!selectedModels_.contains(model.key)) continue;
    request_.provider = model.comparison.provider;
    request_.model = model.comparison.model.id;
    return;
  }
}

void ComposerState::fitOutputSettings() {
  // 1. Nothing chosen, nothing to fit.
  const std::vector<SelectableModel> chosen = chosenModels();
  if (chosen.empty()) return;
  // 2. No more outputs than the most modest model makes.
  int limit = chosen.front().comparison.model.maxCount;
  for (const SelectableModel& model : chosen) limit = std::min(limit, model.comparison.model.maxCount);
  request_.count = std::max(1, std::min(limit, request_.count));
  // 3 to 5. Options, lengths and shape that all of them know.
  fitOptions(chosen);
  fitLengths(chosen);
  fitRatio(chosen);
}

void ComposerState::fitOptions(const std::vector<SelectableModel>& chosen) {
  if (!request_.options) return;
  QSet<QString> shared;
  for (const Setting& setting : sharedSettings(records(chosen))) shared.insert(setting.field);
  TextByKey kept;
  for (auto option = request_.options->cbegin(); option != request_.options->cend(); ++option)
    if (shared.contains(option.key())) kept.insert(option.key(), option.value());
  request_.options = kept.isEmpty() ? std::nullopt : std::optional(kept);
}

void ComposerState::fitLengths(const std::vector<SelectableModel>& chosen) {
  if (!request_.lengthByModel) return;
  TextByKey kept;
  if (chosen.size() > 1)
    for (const auto& choice : video_length::plan(request_, records(chosen), video_length::Lengths::all)) {
      const QString length = request_.lengthByModel->value(choice.id);
      if (choice.values.contains(length)) kept.insert(choice.id, length);
    }
  request_.lengthByModel = kept.isEmpty() ? std::nullopt : std::optional(kept);
}

void ComposerState::fitRatio(const std::vector<SelectableModel>& chosen) {
  const ImageFormat* format = ImageFormat::find(request_.size);
  if (!format || allTakeRatio(chosen, *format)) return;
  for (const ImageFormat& other : ImageFormat::all()) {
    if (!allTakeRatio(chosen, other)) continue;
    request_.size = other.size;
    return;
  }
}

}  // namespace sorvan::composer
