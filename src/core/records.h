// The persisted records of one workspace. They point at one another by UUID and never by reference: removing one record
// removes no other, and every join must put up with a missing partner.
//
// Records live on the main thread. Outside the record context they are held as `std::shared_ptr<const R>`, one object
// per (table, id); a change goes through `RecordContext::edit`. Each record's members are described once; its table,
// its JSON and its snapshots follow from that. Members are declared in the order of the description.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUuid>
#include <boost/describe.hpp>
#include <boost/mp11.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "base/instant.h"
#include "core/decoded_field.h"
#include "core/enumerations.h"
#include "core/media_metadata.h"
#include "core/request_values.h"

namespace sorvan::core {

/// What every record is besides its described members.
class Record {
 public:
  /// True once the record was removed from the library; it stays readable for whoever still holds it.
  bool isRemoved() const { return removed_; }

 private:
  template <class R>
  friend class RecordTable;
  bool removed_ = false;
};

/// A folder of work.
struct Project : Record {
  QUuid id;
  QString name;
  Instant createdAt;
  Instant updatedAt;   ///< moves when a job lands outputs in the project
  QString rootFolder;  ///< relative to the workspace
  std::optional<QUuid> coverAssetID;
  std::optional<QString> notes;
  bool archived = false;

  Project() = default;
  Project(QString name, QString rootFolder, Instant now);
};
BOOST_DESCRIBE_STRUCT(Project, (), (id, name, createdAt, updatedAt, rootFolder, coverAssetID, notes, archived))

/// One media file that the library knows.
struct Asset : Record {
  QUuid id;
  std::optional<QUuid> projectID;            ///< none means the Inbox
  QString mediaType;                         ///< raw value of MediaType; read it through `type()`
  QString localFilePath;                     ///< relative to the workspace
  std::optional<QString> thumbnailFilePath;  ///< relative to the workspace; none until drawn
  QString originalFilename;                  ///< the name as it came in
  Instant createdAt;
  std::optional<Instant> importedAt;  ///< none for generated items
  int width = 0;                      ///< pixels, 0 for sound
  int height = 0;                     ///< pixels, 0 for sound
  std::optional<double> duration;     ///< seconds
  std::int64_t fileSize = 0;          ///< bytes
  QString mimeType;
  bool favorite = false;
  std::optional<int> rating;  ///< 1 to 5
  std::optional<QString> notes;
  std::optional<Instant> deletedAt;  ///< set while the item is in Trash
  QString statusRaw = QStringLiteral("draft");
  QString sourceTypeRaw;            ///< empty in early rows; read it through `sourceType()`
  std::optional<QString> checksum;  ///< lowercase hexadecimal SHA-256 of the file; none until computed

  Asset() = default;
  Asset(std::optional<QUuid> projectID, MediaType type, QString path, QString originalFilename,
        const MediaMetadata& metadata, Instant now);

  MediaType type() const;      ///< unknown text reads as a picture
  AssetStatus status() const;  ///< unknown text reads as draft
  /// The stored source; where none is stored, an item with an import date was imported and any other was generated.
  AssetSourceType sourceType() const;
  QString filename() const;  ///< last component of `localFilePath`
  bool isTrashed() const { return deletedAt.has_value(); }
};
BOOST_DESCRIBE_STRUCT(Asset, (),
                      (id, projectID, mediaType, localFilePath, thumbnailFilePath, originalFilename, createdAt,
                       importedAt, width, height, duration, fileSize, mimeType, favorite, rating, notes, deletedAt,
                       statusRaw, sourceTypeRaw, checksum))

struct GenerationJob;

/// How an asset was made: one for each output of a job, and one for an imported item whose prompt was recovered.
struct Generation : Record {
  QUuid id;
  QUuid assetID;
  QUuid jobID;       ///< a fresh random UUID for an imported item
  QString provider;  ///< display name at the time: "fal.ai", "Sorvan Credits" or "OpenAI"
  QString model;
  QString prompt;
  std::optional<QString> negativePrompt;
  QByteArray parametersJSON;             ///< UTF-8 text of a JSON object, pretty-printed with sorted keys
  std::optional<QByteArray> recipeData;  ///< JSON of the whole GenerationRequest; none on old rows
  /// Set on a copy made by pasting an item. An item copied to another workspace leaves it empty.
  std::optional<QUuid> copiedFromAssetID;
  std::optional<std::int64_t> seed;
  std::optional<double> estimatedCost;  ///< US dollars for this output
  Instant createdAt;
  std::optional<double> generationDuration;     ///< seconds from the start of the job's run to this output
  QString status = QStringLiteral("complete");  ///< "complete" for generated items, "imported" for imported ones
  std::optional<QString> providerRequestID;

  Generation() = default;
  /// For an output of a job. `elapsedSeconds` counts from the start of the job's run; without a seed of the output the
  /// request's is taken. `parametersJSON` and `recipeData` are left to the caller.
  Generation(const QUuid& assetID, const GenerationJob& job, const GenerationRequest& request, double elapsedSeconds,
             std::optional<std::int64_t> outputSeed, Instant now);

  /// The request that made the item, decoded once; null when there is none that decodes.
  std::shared_ptr<const GenerationRequest> recipe() const;
  /// The "cost" entry of the parameters, decoded once; null when there is none that decodes.
  std::shared_ptr<const GenerationCost> costRecord() const;
  /// Whether it stands for a copy, so that it was not paid for again and is no output of its job.
  bool isCopy() const;

 private:
  DecodedField<GenerationRequest> recipe_;
  DecodedField<GenerationCost> cost_;
};
BOOST_DESCRIBE_STRUCT(Generation, (),
                      (id, assetID, jobID, provider, model, prompt, negativePrompt, parametersJSON, recipeData,
                       copiedFromAssetID, seed, estimatedCost, createdAt, generationDuration, status,
                       providerRequestID))

/// One edge of the lineage graph.
struct AssetRelationship : Record {
  QUuid id;
  QUuid parentAssetID;       ///< the source
  QUuid childAssetID;        ///< the derived item
  QString relationshipType;  ///< raw value of RelationshipType

  AssetRelationship() = default;
  AssetRelationship(const QUuid& parent, const QUuid& child, RelationshipType type);

  std::optional<RelationshipType> type() const;
};
BOOST_DESCRIBE_STRUCT(AssetRelationship, (), (id, parentAssetID, childAssetID, relationshipType))

/// One reference of a generation.
struct ReferenceAsset : Record {
  QUuid id;
  QUuid generationID;
  QUuid assetID;
  int position = 0;  ///< place in the reference list, from 0

  ReferenceAsset() = default;
  ReferenceAsset(const QUuid& generationID, const QUuid& assetID, int position);
};
BOOST_DESCRIBE_STRUCT(ReferenceAsset, (), (id, generationID, assetID, position))

/// The states of a job, as stored.
namespace jobStatus {
inline const QString queued = QStringLiteral("queued");
inline const QString generating = QStringLiteral("generating");
inline const QString complete = QStringLiteral("complete");
inline const QString failed = QStringLiteral("failed");
inline const QString cancelled = QStringLiteral("cancelled");
}  // namespace jobStatus

/// One request to a provider, from queue to outcome: the unit of durability of the pipeline.
struct GenerationJob : Record {
  QUuid id;
  std::optional<QUuid> projectID;  ///< destination; none means the Inbox
  QByteArray requestData;          ///< JSON of the GenerationRequest
  Instant createdAt;
  std::optional<Instant> finishedAt;
  QString status = jobStatus::queued;
  std::optional<QString> errorMessage;
  std::optional<QString> providerRequestID;    ///< none until the provider reports one
  std::optional<QByteArray> remoteHandleData;  ///< JSON of a RemoteHandle; none until the provider reports one
  QString detail;                              ///< one line that tells the progress
  bool saveOriginal = false;                   ///< keep the provider's output as it came, whatever areas are marked

  GenerationJob() = default;
  /// Throws base::SorvanError when the request cannot be encoded.
  GenerationJob(std::optional<QUuid> projectID, const GenerationRequest& request, Instant now);

  /// The stored request, decoded once; null when the row does not decode, which is never an error.
  std::shared_ptr<const GenerationRequest> request() const;
  bool isActive() const { return status == jobStatus::queued || status == jobStatus::generating; }

 private:
  DecodedField<GenerationRequest> request_;
};
BOOST_DESCRIBE_STRUCT(GenerationJob, (),
                      (id, projectID, requestData, createdAt, finishedAt, status, errorMessage, providerRequestID,
                       remoteHandleData, detail, saveOriginal))

/// A saved comparison of several outputs.
struct ContactSheet : Record {
  QUuid id;
  std::optional<QUuid> projectID;
  QString title;
  Instant createdAt;
  Instant updatedAt;
  std::optional<QUuid> comparisonID;    ///< ties the sheet to the jobs of one comparison
  std::vector<QUuid> assetIDs;          ///< members, in order
  std::vector<QUuid> excludedAssetIDs;  ///< members that the user took out
  std::optional<Instant> deletedAt;

  ContactSheet() = default;
  ContactSheet(std::optional<QUuid> projectID, QString title, std::optional<QUuid> comparisonID,
               std::vector<QUuid> assetIDs, Instant createdAt);
};
BOOST_DESCRIBE_STRUCT(ContactSheet, (),
                      (id, projectID, title, createdAt, updatedAt, comparisonID, assetIDs, excludedAssetIDs, deletedAt))

/// A named reference for use again.
struct SavedReference : Record {
  QUuid id;
  QString name;
  QString kind;
  std::optional<QUuid> projectID;
  std::vector<QUuid> assetIDs;
  QString notes;
  QString subject;
  Instant createdAt;
  Instant updatedAt;
};
BOOST_DESCRIBE_STRUCT(SavedReference, (), (id, name, kind, projectID, assetIDs, notes, subject, createdAt, updatedAt))

/// An edited sequence of clips. What its blobs hold is told by the room `media`.
struct ClipSequence : Record {
  QUuid id;
  std::optional<QUuid> projectID;
  QString title;
  Instant createdAt;
  Instant updatedAt;
  std::optional<Instant> deletedAt;
  QByteArray clipsData = QByteArrayLiteral("[]");   ///< JSON array
  QByteArray soundsData = QByteArrayLiteral("[]");  ///< JSON array
  QString transition = QStringLiteral("cut");
  double clipVolume = 1.0;
  std::optional<QUuid> exportedAssetID;
  std::optional<QByteArray> storyboardData;  ///< JSON

  ClipSequence() = default;
  ClipSequence(std::optional<QUuid> projectID, QString title, QByteArray clipsData, Instant now);
};
BOOST_DESCRIBE_STRUCT(ClipSequence, (),
                      (id, projectID, title, createdAt, updatedAt, deletedAt, clipsData, soundsData, transition,
                       clipVolume, exportedAssetID, storyboardData))

template <class R>
using Ref = std::shared_ptr<const R>;
using ProjectRef = Ref<Project>;
using AssetRef = Ref<Asset>;
using GenerationRef = Ref<Generation>;
using RelationshipRef = Ref<AssetRelationship>;
using ReferenceRef = Ref<ReferenceAsset>;
using JobRef = Ref<GenerationJob>;
using ContactSheetRef = Ref<ContactSheet>;
using SavedReferenceRef = Ref<SavedReference>;
using SequenceRef = Ref<ClipSequence>;

/// Calls `visit` with each described member pointer of R, in declared order.
template <class R, class Visit>
void forEachField(Visit&& visit) {
  boost::mp11::mp_for_each<boost::describe::describe_members<R, boost::describe::mod_public>>(
      [&](auto described) { visit(described.name, described.pointer); });
}

/// Copies the persisted values of one record over another: what a snapshot and a rollback are made of.
template <class R>
void copyFields(const R& from, R& to) {
  forEachField<R>([&](const char*, auto member) { to.*member = from.*member; });
}

/// Whether all persisted values agree.
template <class R>
bool sameFields(const R& left, const R& right) {
  bool same = true;
  forEachField<R>([&](const char*, auto member) { same = same && left.*member == right.*member; });
  return same;
}

}  // namespace sorvan::core
