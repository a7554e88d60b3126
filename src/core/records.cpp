#include "core/records.h"

#include "base/ids.h"
#include "base/json.h"
#include "core/texts.h"

namespace sorvan::core {
namespace {

/// Decodes what may be damaged: a value that does not decode is no value, and no error.
template <class Value>
std::shared_ptr<const Value> decodedOrNull(const QByteArray& json) {
  try {
    return std::make_shared<const Value>(decodeJson<Value>(json));
  } catch (const SorvanError&) {
    return nullptr;
  }
}

QJsonObject objectOf(const QByteArray& json) { return QJsonDocument::fromJson(json).object(); }

}  // namespace

QByteArray encodeRequest(const GenerationRequest& request) { return encodeJson(request); }
GenerationRequest decodeRequest(const QByteArray& json) { return decodeJson<GenerationRequest>(json); }
QByteArray encodeHandle(const RemoteHandle& handle) { return encodeJson(handle); }

std::optional<RemoteHandle> decodeHandle(const QByteArray& json) {
  const auto handle = decodedOrNull<RemoteHandle>(json);
  return handle ? std::optional(*handle) : std::nullopt;
}

Project::Project(QString projectName, QString folder, Instant now)
    : id(newUuid()), name(std::move(projectName)), createdAt(now), updatedAt(now), rootFolder(std::move(folder)) {}

Asset::Asset(std::optional<QUuid> project, MediaType mediaKind, QString path, QString nameAsItCame,
             const MediaMetadata& metadata, Instant now)
    : id(newUuid()),
      projectID(project),
      mediaType(rawValue(mediaKind)),
      localFilePath(std::move(path)),
      originalFilename(std::move(nameAsItCame)),
      createdAt(now),
      width(metadata.width),
      height(metadata.height),
      duration(metadata.duration),
      fileSize(metadata.fileSize),
      mimeType(metadata.mimeType) {}

MediaType Asset::type() const { return fromRawValue<MediaType>(mediaType).value_or(MediaType::image); }
AssetStatus Asset::status() const { return fromRawValue<AssetStatus>(statusRaw).value_or(AssetStatus::draft); }

AssetSourceType Asset::sourceType() const {
  if (const auto stored = fromRawValue<AssetSourceType>(sourceTypeRaw)) return *stored;
  return importedAt ? AssetSourceType::imported : AssetSourceType::generated;
}

QString Asset::filename() const { return localFilePath.mid(localFilePath.lastIndexOf(u'/') + 1); }

Generation::Generation(const QUuid& asset, const GenerationJob& job, const GenerationRequest& request,
                       double elapsedSeconds, std::optional<std::int64_t> outputSeed, Instant now)
    : id(newUuid()),
      assetID(asset),
      jobID(job.id),
      provider(rawValue(request.provider)),
      model(request.model),
      prompt(request.prompt),
      seed(outputSeed ? outputSeed : request.seed),
      createdAt(now),
      generationDuration(elapsedSeconds),
      providerRequestID(job.providerRequestID) {}

std::shared_ptr<const GenerationRequest> Generation::recipe() const {
  if (!recipeData) return nullptr;
  return recipe_.read(*recipeData, decodedOrNull<GenerationRequest>);
}

std::shared_ptr<const GenerationCost> Generation::costRecord() const {
  // Most parameters of a large library are never looked into: the key is searched before anything is parsed.
  if (!parametersJSON.contains("\"cost\"")) return nullptr;
  return cost_.read(parametersJSON, [](const QByteArray& json) {
    return decodedOrNull<GenerationCost>(
        QJsonDocument(objectOf(json).value(QStringLiteral("cost")).toObject()).toJson(QJsonDocument::Compact));
  });
}

bool Generation::isCopy() const {
  if (copiedFromAssetID) return true;
  // Rows from before the field existed say it in their parameters.
  return parametersJSON.contains("\"copiedFromAssetID\"") &&
         objectOf(parametersJSON).contains(QStringLiteral("copiedFromAssetID"));
}

AssetRelationship::AssetRelationship(const QUuid& parent, const QUuid& child, RelationshipType kind)
    : id(newUuid()), parentAssetID(parent), childAssetID(child), relationshipType(rawValue(kind)) {}

std::optional<RelationshipType> AssetRelationship::type() const {
  return fromRawValue<RelationshipType>(relationshipType);
}

ReferenceAsset::ReferenceAsset(const QUuid& generation, const QUuid& asset, int place)
    : id(newUuid()), generationID(generation), assetID(asset), position(place) {}

GenerationJob::GenerationJob(std::optional<QUuid> project, const GenerationRequest& request, Instant now)
    : id(newUuid()),
      projectID(project),
      requestData(encodeRequest(request)),
      createdAt(now),
      detail(texts::waitingToStart()) {}

std::shared_ptr<const GenerationRequest> GenerationJob::request() const {
  return request_.read(requestData, decodedOrNull<GenerationRequest>);
}

ContactSheet::ContactSheet(std::optional<QUuid> project, QString sheetTitle, std::optional<QUuid> comparison,
                           std::vector<QUuid> assets, Instant created)
    : id(newUuid()),
      projectID(project),
      title(std::move(sheetTitle)),
      createdAt(created),
      updatedAt(created),
      comparisonID(comparison),
      assetIDs(std::move(assets)) {}

ClipSequence::ClipSequence(std::optional<QUuid> project, QString sequenceTitle, QByteArray clips, Instant now)
    : id(newUuid()),
      projectID(project),
      title(std::move(sequenceTitle)),
      createdAt(now),
      updatedAt(now),
      clipsData(std::move(clips)) {}

}  // namespace sorvan::core
