#include "generation/generation_request.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>

#include "base/ids.h"
#include "base/json.h"
#include "core/image_format.h"
#include "generation/markup.h"
#include "generation/mentions.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

constexpr int mostReferences = 8;

void require(bool condition, const QString& message) {
  if (!condition) throw SorvanError(message);
}

const ModelOption& listedModel(const GenerationRequest& request, const std::vector<ModelOption>& models) {
  const auto found =
      std::find_if(models.begin(), models.end(), [&](const ModelOption& option) { return option.id == request.model; });
  if (found == models.end()) throw SorvanError(texts::chooseSupportedModel());
  return *found;
}

/// Rows 5 to 8: the prompt, the marks and the end frame.
void validateContent(const GenerationRequest& request, const ModelOption& model) {
  // 5. A prompt where one is needed.
  require(!model.needsPrompt || !request.prompt.trimmed().isEmpty(), texts::enterPrompt());
  // 6. Marks stand on a picture.
  require(!request.markup || request.markup->empty() || !request.referenceIDs.empty(), texts::marksNeedImage());
  // 7. and 8. The end frame.
  const std::size_t endFrames = endFrameIDs(request).size();
  require(endFrames <= 1, texts::oneEndFrame());
  require(endFrames == 0 || model.supportsEndFrame, texts::noEndFrame(model.name));
}

/// Rows 9 to 12: what the model accepts.
void validateAgainstModel(const GenerationRequest& request, const ModelOption& model) {
  const ImageFormat* format = ImageFormat::find(request.size);
  // 9. The ratio.
  require(!model.ratios || (format != nullptr && model.ratios->contains(format->ratio)),
          texts::supportedRatios(model.name, model.ratios.value_or(QStringList()).join(QStringLiteral(", "))));
  // 10. The number of outputs.
  require(request.count <= model.maxCount, texts::tooManyOutputs(model.name, model.maxCount));
  // 11. and 12. References as such.
  require(request.referenceIDs.empty() || model.supportsReferences, texts::textOnly(model.name));
  require(!request.referenceIDs.empty() || !model.requiresReference, texts::needsInputImage(model.name));
}

/// Rows 14 and 15: the references one by one.
void validateReferences(const GenerationRequest& request, const ModelOption& model) {
  // 14. None twice.
  const QSet<QUuid> distinct(request.referenceIDs.begin(), request.referenceIDs.end());
  require(static_cast<std::size_t>(distinct.size()) == static_cast<std::size_t>(request.referenceIDs.size()),
          texts::referenceTwice());
  // 15. Not too many.
  const bool ownLimit = model.maxReferences >= 1 && model.maxReferences <= mostReferences;
  const int limit = ownLimit ? model.maxReferences : mostReferences;
  require(static_cast<int>(request.referenceIDs.size()) <= limit,
          limit == 1 ? texts::oneInputImage(model.name) : texts::eightReferences());
}

QJsonObject optionsJSON(const GenerationRequest& request) {
  QJsonObject object;
  for (auto option = request.options->cbegin(); option != request.options->cend(); ++option)
    object.insert(option.key(), option.value());
  return object;
}

void insertSettings(QJsonObject& object, const GenerationRequest& request, const std::optional<ModelFact>& fact) {
  object.insert(QStringLiteral("outputs"), request.count);
  if (!fact || fact->output != MediaType::audio) object.insert(QStringLiteral("size"), request.size);
  if (!fact || fact->output == MediaType::image) {
    object.insert(QStringLiteral("quality"), request.quality);
    object.insert(QStringLiteral("output_format"), QStringLiteral("png"));
  }
  if (request.seed) object.insert(QStringLiteral("seed"), static_cast<qint64>(*request.seed));
  if (request.options && !request.options->empty()) object.insert(QStringLiteral("options"), optionsJSON(request));
  if (request.variance) object.insert(QStringLiteral("variation"), *request.variance);
  if (request.shot) object.insert(QStringLiteral("shot"), *request.shot);
}

/// Puts a nested value in, or leaves its key out when it cannot be made.
template <class Make>
void insertIfPossible(QJsonObject& object, const QString& key, Make make) {
  try {
    object.insert(key, make());
  } catch (const std::exception&) {
    object.remove(key);
  }
}

void insertHistory(QJsonObject& object, const GenerationRequest& request) {
  if (request.improvements && !request.improvements->empty()) {
    insertIfPossible(object, QStringLiteral("improvements"), [&] { return toJson(*request.improvements); });
    object.insert(QStringLiteral("originalPrompt"), request.improvements->front().from);
  }
  if (request.markup && !request.markup->empty())
    insertIfPossible(object, QStringLiteral("markup"), [&] { return toJson(*request.markup); });
  if (request.referenceIDs.empty()) return;
  insertIfPossible(object, QStringLiteral("references"), [&] { return toJson(orderedReferences(request)); });
  insertIfPossible(object, QStringLiteral("submittedPrompt"), [&] { return QJsonValue(submittedPrompt(request)); });
}

}  // namespace

void validate(const GenerationRequest& request, const std::vector<ModelOption>& models) {
  // 1. The number of outputs.
  require(request.count >= 1 && request.count <= 4, texts::chooseCount());
  // 2. The size.
  require(ImageFormat::find(request.size) != nullptr, texts::unsupportedSize());
  // 3. The provider.
  require(request.provider != ProviderID::openAI, texts::retiredProvider());
  // 4. The model.
  const ModelOption& model = listedModel(request, models);
  // 5. to 8. What is asked for; 9. to 12. what the model accepts.
  validateContent(request, model);
  validateAgainstModel(request, model);
  // 13. The names and mentions of references.
  submittedPrompt(request);
  // 14. and 15. The references one by one.
  validateReferences(request, model);
}

std::vector<ReferenceBinding> orderedReferences(const GenerationRequest& request) {
  std::vector<ReferenceBinding> ordered;
  const auto bindings = request.referenceBindings.value_or(std::vector<ReferenceBinding>());
  for (const QUuid& id : request.referenceIDs) {
    const auto stored = std::find_if(bindings.begin(), bindings.end(),
                                     [&](const ReferenceBinding& binding) { return binding.assetID == id; });
    if (stored != bindings.end()) {
      ordered.push_back(*stored);
      continue;
    }
    ReferenceBinding binding;
    binding.assetID = id;
    binding.label = QStringLiteral("Reference%1").arg(ordered.size() + 1);
    ordered.push_back(binding);
  }
  return ordered;
}

std::vector<QUuid> endFrameIDs(const GenerationRequest& request) {
  std::vector<QUuid> ids;
  for (const ReferenceBinding& binding : orderedReferences(request))
    if (binding.role && *binding.role == endFrameRole) ids.push_back(binding.assetID);
  return ids;
}

QString submittedPrompt(const GenerationRequest& request) {
  if (request.plainPrompt.value_or(false)) return request.prompt;
  const QString resolved = ReferenceMentions::resolve(request.prompt, orderedReferences(request));
  return resolved + Markup::instruction(request.markup.value_or(std::vector<MarkupBox>()));
}

RelationshipType relationshipFor(const GenerationRequest& request, const QUuid& reference) {
  if (request.relationship == RelationshipType::variationOf) return request.relationship;
  for (const ReferenceBinding& binding : orderedReferences(request))
    if (binding.assetID == reference && binding.role && *binding.role == editSourceRole)
      return RelationshipType::editedFrom;
  return request.relationship;
}

QByteArray parametersJSON(const GenerationRequest& request, const ModelFacts& models) {
  QJsonObject object;
  insertSettings(object, request, models.find(request.model));
  insertHistory(object, request);
  object.insert(QStringLiteral("billingSource"),
                request.provider == ProviderID::credits ? QStringLiteral("sorvanCredits") : QStringLiteral("byok"));
  if (request.creditRequestID) object.insert(QStringLiteral("creditRequestID"), uuidText(*request.creditRequestID));
  return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

bool hasNotedMarks(const GenerationRequest& request) {
  if (!request.markup) return false;
  return std::any_of(request.markup->begin(), request.markup->end(),
                     [](const MarkupBox& box) { return !box.note.trimmed().isEmpty(); });
}

}  // namespace sorvan::generation
