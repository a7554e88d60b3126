// A piece of paid work as the gateway tells it.
#pragma once

#include <QJsonValue>
#include <QString>
#include <QUrl>

#include <boost/describe.hpp>
#include <cstdint>
#include <optional>
#include <vector>

#include "catalogue/room.h"

namespace sorvan::catalogue {

/// The balances and prices of the gateway count in these.
inline constexpr std::int64_t microcreditsOfCredit = 1'000'000;
/// One credit is one US cent.
inline constexpr double dollarsOfCredit = 0.01;

struct CreditsImage {
  QUrl url;
  std::optional<QString> label;
  bool operator==(const CreditsImage&) const = default;
};
BOOST_DESCRIBE_STRUCT(CreditsImage, (), (url, label))

/// What the work came to; which part is there depends on the kind of work.
struct CreditsResult {
  std::optional<QJsonValue> action;  ///< of an interpretation, as it was told
  std::optional<std::vector<CreditsImage>> images;
  std::optional<QString> output;
  std::optional<std::int64_t> seed;
  std::optional<QString> providerRequestID;
  bool operator==(const CreditsResult&) const = default;
};
BOOST_DESCRIBE_STRUCT(CreditsResult, (), (action, images, output, seed, providerRequestID))

struct CreditsOperation {
  QString id;  ///< the gateway's own; not the id of the request that began it
  QString kind;
  QString state;              ///< "complete", "failed" and "uncertain" are final; anything else is still going
  std::int64_t reserved = 0;  ///< microcredits on hold
  std::int64_t charged = 0;   ///< microcredits, finally
  std::optional<CreditsResult> result;
  std::optional<QString> failure;  ///< one sentence for the user

  bool isComplete() const { return state == QStringLiteral("complete"); }
  bool isFailed() const { return state == QStringLiteral("failed"); }
  /// The gateway cannot say whether the work was finished: nothing may be bought in its place.
  bool isUncertain() const { return state == QStringLiteral("uncertain"); }
  bool operator==(const CreditsOperation&) const = default;
};
BOOST_DESCRIBE_STRUCT(CreditsOperation, (), (id, kind, state, reserved, charged, result, failure))

/// An amount as it is read: "1,234.5", with at most two places, in the words of the current locale.
QString creditsDisplay(std::int64_t microcredits);
/// "1 credit", "2.5 credits".
QString creditsCounted(std::int64_t microcredits);

}  // namespace sorvan::catalogue
