// The complete, persisted description of what to generate, and the values that travel with it. Plain values: what they
// mean and how they are checked stands in the room `generation`.
#pragma once

#include <QMap>
#include <QString>
#include <QUrl>
#include <QUuid>
#include <boost/describe.hpp>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/enumerations.h"

namespace sorvan::core {

/// The name and the part of one reference of a request.
struct ReferenceBinding {
  QUuid assetID;
  QString label;                   ///< the name as shown and typed
  std::optional<QString> role;     ///< the kind of reference, such as "Edit source" or "End frame"
  std::optional<QString> group;    ///< the saved group it came from
  std::optional<QString> subject;  ///< what the picture shows, in a few words

  bool operator==(const ReferenceBinding&) const = default;
};
BOOST_DESCRIBE_STRUCT(ReferenceBinding, (), (assetID, label, role, group, subject))

/// One marked area of a picture. All four numbers are fractions of the picture's sides, from its top left corner.
struct MarkupBox {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  QString note;  ///< what should happen in this box

  bool operator==(const MarkupBox&) const = default;
};
BOOST_DESCRIBE_STRUCT(MarkupBox, (), (x, y, width, height, note))

/// One rewrite of the prompt before submission, and what it cost.
struct PromptImprovement {
  QString from;  ///< the text before the rewrite
  std::optional<double> credits;
  std::optional<double> usd;

  bool operator==(const PromptImprovement&) const = default;
};
BOOST_DESCRIBE_STRUCT(PromptImprovement, (), (from, credits, usd))

using TextByKey = QMap<QString, QString>;

/// What to generate. Stored as JSON under these names in job rows and recipes; decoding is strict for `provider`,
/// `model`, `prompt`, `size`, `quality`, `count`, `referenceIDs` and `relationship`.
struct GenerationRequest {
  ProviderID provider = ProviderID::fal;
  QString model = QStringLiteral("fal-ai/flux/schnell");
  QString prompt;                              ///< as sent, with the notes of the marks already written in
  QString size = QStringLiteral("1024x1024");  ///< the size of a known ImageFormat
  QString quality = QStringLiteral("default");
  int count = 1;  ///< outputs wanted, 1 to 4
  std::optional<std::int64_t> seed;
  std::vector<QUuid> referenceIDs;  ///< reference assets, in order
  std::optional<std::vector<ReferenceBinding>> referenceBindings;
  RelationshipType relationship = RelationshipType::referenceFor;
  std::optional<QUuid> creditRequestID;  ///< idempotency key of a credits request, made once when it is enqueued
  std::optional<QUuid> comparisonID;     ///< groups the jobs of one comparison
  std::optional<int> comparisonOrder;
  std::optional<TextByKey> options;        ///< model settings
  std::optional<TextByKey> lengthByModel;  ///< chosen length by model identifier
  std::optional<bool> shapeChosen;         ///< the user picked the ratio by hand
  std::optional<QString> shot;
  std::optional<QUuid> layUnder;     ///< the clip under which a generated sound is to be laid
  std::optional<bool> keepOwnSound;  ///< with `layUnder`: keep the clip's own sound
  std::optional<QString> variance;
  std::optional<QUuid> storyShot;  ///< the storyboard shot that this request fills
  std::optional<std::vector<PromptImprovement>> improvements;
  std::optional<std::vector<MarkupBox>> markup;
  std::optional<bool> confineToMarks;  ///< none and true both confine; false keeps the whole result
  std::optional<bool> plainPrompt;     ///< send the prompt as it is, without the marks' instruction

  bool operator==(const GenerationRequest&) const = default;
};
BOOST_DESCRIBE_STRUCT(GenerationRequest, (),
                      (provider, model, prompt, size, quality, count, seed, referenceIDs, referenceBindings,
                       relationship, creditRequestID, comparisonID, comparisonOrder, options, lengthByModel,
                       shapeChosen, shot, layUnder, keepOwnSound, variance, storyShot, improvements, markup,
                       confineToMarks, plainPrompt))

/// The cost record of one output.
struct GenerationCost {
  double perImageUSD = 0;  ///< US dollars for one output
  QString basis;
  QString note;
  QString pricingDate;
  QString source;
  std::optional<QString> responseUsageJSON;
  std::optional<int> responseImageCount;
  std::optional<double> credits;

  bool operator==(const GenerationCost&) const = default;
};
BOOST_DESCRIBE_STRUCT(GenerationCost, (),
                      (perImageUSD, basis, note, pricingDate, source, responseUsageJSON, responseImageCount, credits))

/// Everything needed to find a remote job again after the program was closed.
struct RemoteHandle {
  QString requestID;
  QUrl statusURL;
  QUrl resultURL;
  QUrl cancelURL;

  bool operator==(const RemoteHandle&) const = default;
};
BOOST_DESCRIBE_STRUCT(RemoteHandle, (), (requestID, statusURL, resultURL, cancelURL))

/// The JSON of a request, as job rows and recipes store it.
QByteArray encodeRequest(const GenerationRequest& request);
/// The request that the bytes hold; throws base::SorvanError when they hold none.
GenerationRequest decodeRequest(const QByteArray& json);
QByteArray encodeHandle(const RemoteHandle& handle);
/// The handle that the bytes hold; nothing when they do not decode.
std::optional<RemoteHandle> decodeHandle(const QByteArray& json);

}  // namespace sorvan::core
