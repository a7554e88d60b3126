#include "core/records.h"

#include <gtest/gtest.h>

#include "base/ids.h"
#include "base/json.h"

namespace sorvan::core {
namespace {

Asset assetWithSource(const QString& source, std::optional<Instant> importedAt) {
  Asset asset;
  asset.sourceTypeRaw = source;
  asset.importedAt = importedAt;
  return asset;
}

TEST(Asset, WithoutStoredSourceReadsAsImportedWhenItHasAnImportDate) {
  EXPECT_EQ(assetWithSource({}, Instant{5}).sourceType(), AssetSourceType::imported);
}

TEST(Asset, WithoutStoredSourceAndImportDateReadsAsGenerated) {
  EXPECT_EQ(assetWithSource({}, {}).sourceType(), AssetSourceType::generated);
}

TEST(Asset, StoredSourceWinsOverTheImportDate) {
  EXPECT_EQ(assetWithSource(QStringLiteral("clipboard"), Instant{5}).sourceType(), AssetSourceType::clipboard);
}

TEST(Asset, FilenameFollowsTheStoredPathAndNotTheOriginalName) {
  Asset asset;
  asset.localFilePath = QStringLiteral("Inbox/generated/fox-001.png");
  asset.originalFilename = QStringLiteral("other.png");
  EXPECT_EQ(asset.filename(), QStringLiteral("fox-001.png"));
}

TEST(Asset, UnknownTypeAndStatusFallBackToPictureAndDraft) {
  Asset asset;
  asset.mediaType = QStringLiteral("hologram");
  asset.statusRaw = QStringLiteral("sealed");
  EXPECT_EQ(asset.type(), MediaType::image);
  EXPECT_EQ(asset.status(), AssetStatus::draft);
}

TEST(GenerationJob, WhoseRequestDoesNotDecodeHasNoRequestAndItsActivityFollowsTheStatus) {
  GenerationJob job;
  job.requestData = QByteArrayLiteral("{\"prompt\":");
  EXPECT_EQ(job.request(), nullptr);
  EXPECT_TRUE(job.isActive());
  job.status = jobStatus::failed;
  EXPECT_FALSE(job.isActive());
}

TEST(GenerationJob, DecodesItsRequestOnceAndAgainWhenTheBytesChange) {
  GenerationRequest request;
  request.prompt = QStringLiteral("a fox");
  GenerationJob job({}, request, Instant{1});
  const auto first = job.request();
  EXPECT_EQ(first, job.request());
  request.prompt = QStringLiteral("a hare");
  job.requestData = encodeRequest(request);
  ASSERT_NE(job.request(), nullptr);
  EXPECT_EQ(job.request()->prompt, QStringLiteral("a hare"));
  EXPECT_EQ(first->prompt, QStringLiteral("a fox"));
}

TEST(Generation, IsACopyByItsFieldAndByTheParametersOfOldRows) {
  Generation generation;
  generation.parametersJSON = QByteArrayLiteral("{\"note\":\"copiedFromAssetID\"}");
  EXPECT_FALSE(generation.isCopy());
  generation.parametersJSON = QByteArrayLiteral("{\"copiedFromAssetID\":\"7\"}");
  EXPECT_TRUE(generation.isCopy());
  generation.parametersJSON.clear();
  generation.copiedFromAssetID = newUuid();
  EXPECT_TRUE(generation.isCopy());
}

TEST(Generation, TakesTheSeedOfItsOutputBeforeThatOfTheRequest) {
  GenerationRequest request;
  request.seed = 5;
  const GenerationJob job({}, request, Instant{1});
  EXPECT_EQ(Generation(newUuid(), job, request, 1, 9, Instant{2}).seed, 9);
  EXPECT_EQ(Generation(newUuid(), job, request, 1, {}, Instant{2}).seed, 5);
}

TEST(Generation, ReadsTheCostRecordOutOfItsParameters) {
  Generation generation;
  EXPECT_EQ(generation.costRecord(), nullptr);
  GenerationCost cost;
  cost.perImageUSD = 0.04;
  cost.credits = 4;
  generation.parametersJSON = jsonText(QJsonObject{{QStringLiteral("cost"), toJson(cost)}});
  ASSERT_NE(generation.costRecord(), nullptr);
  EXPECT_EQ(*generation.costRecord(), cost);
}

// ---- The request as JSON

QJsonObject requestObject() { return toJson(GenerationRequest()).toObject(); }
QByteArray bytesOf(const QJsonObject& object) { return QJsonDocument(object).toJson(); }

TEST(GenerationRequest, ReadsBackWhatItWrote) {
  GenerationRequest request;
  request.provider = ProviderID::credits;
  request.prompt = QStringLiteral("зима 🦊 \u0001");
  request.seed = std::numeric_limits<std::int64_t>::max();
  request.referenceIDs = {newUuid(), newUuid()};
  request.referenceBindings = {{request.referenceIDs[0], QStringLiteral("Maya1"), QStringLiteral("End frame"), {}, {}}};
  request.relationship = RelationshipType::variationOf;
  request.options = TextByKey{{QStringLiteral("resolution"), QStringLiteral("2K")}};
  request.markup = {{0.1, 0.2, 0.3, 0.4, QStringLiteral("a hat")}};
  request.creditRequestID = newUuid();
  request.confineToMarks = false;
  EXPECT_EQ(decodeRequest(encodeRequest(request)), request);
}

TEST(GenerationRequest, WithoutAPromptDoesNotDecodeAndWithoutAVarianceItDoes) {
  QJsonObject object = requestObject();
  EXPECT_NO_THROW(decodeRequest(bytesOf(object)));
  object.remove(QStringLiteral("prompt"));
  EXPECT_THROW(decodeRequest(bytesOf(object)), SorvanError);
}

TEST(GenerationRequest, LeavesAbsentFieldsOut) {
  const QJsonObject object = requestObject();
  EXPECT_FALSE(object.contains(QStringLiteral("variance")));
  EXPECT_FALSE(object.contains(QStringLiteral("seed")));
  EXPECT_TRUE(object.contains(QStringLiteral("referenceIDs")));
}

TEST(GenerationRequest, OfTheRetiredProviderDecodesAndOfAnUnknownOneDoesNot) {
  QJsonObject object = requestObject();
  object[QStringLiteral("provider")] = QStringLiteral("OpenAI");
  EXPECT_EQ(decodeRequest(bytesOf(object)).provider, ProviderID::openAI);
  object[QStringLiteral("provider")] = QStringLiteral("Somebody");
  EXPECT_THROW(decodeRequest(bytesOf(object)), SorvanError);
}

TEST(GenerationRequest, UnknownRelationshipReadsAsAReferenceAndAMissingOneFails) {
  QJsonObject object = requestObject();
  object[QStringLiteral("relationship")] = QStringLiteral("dreamtOf");
  EXPECT_EQ(decodeRequest(bytesOf(object)).relationship, RelationshipType::referenceFor);
  object.remove(QStringLiteral("relationship"));
  EXPECT_THROW(decodeRequest(bytesOf(object)), SorvanError);
}

TEST(RemoteHandle, ThatDoesNotDecodeIsNone) {
  EXPECT_FALSE(decodeHandle(QByteArrayLiteral("{}")));
  const RemoteHandle handle{QStringLiteral("r1"), QUrl(QStringLiteral("https://a/s")),
                            QUrl(QStringLiteral("https://a/r")), QUrl(QStringLiteral("https://a/c"))};
  EXPECT_EQ(decodeHandle(encodeHandle(handle)), handle);
}

TEST(Enumerations, KeepTheirRawTextsAndLabels) {
  EXPECT_EQ(rawValue(ProviderID::credits), QStringLiteral("Sorvan Credits"));
  EXPECT_EQ(fromRawValue<ProviderID>(QStringLiteral("fal.ai")), ProviderID::fal);
  EXPECT_EQ(rawValue(RelationshipType::imageToVideo), QStringLiteral("imageToVideo"));
  EXPECT_EQ(fromRawValue<RelationshipType>(QStringLiteral("dreamtOf")), std::nullopt);
  EXPECT_EQ(label(RelationshipType::variationOf), QStringLiteral("Variation of"));
  EXPECT_EQ(rawValue(AssetStatus::final), QStringLiteral("final"));
}

}  // namespace
}  // namespace sorvan::core
