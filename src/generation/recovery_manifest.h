// The manifest of a job's recovery folder as bytes: what is written, and what is believed when it is read again.
#pragma once

#include <QByteArray>
#include <QString>

#include <boost/describe.hpp>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/sorvan_error.h"
#include "core/request_values.h"
#include "generation/room.h"

namespace sorvan::generation {

/// One output as the manifest tells it; the names are the keys on disk.
struct RecoveryItem {
  QString file;  ///< a bare file name in the job's folder
  QString ext;
  std::optional<std::int64_t> seed;
  std::optional<GenerationCost> cost;
  std::optional<QString> label;

  bool operator==(const RecoveryItem&) const = default;
};
BOOST_DESCRIBE_STRUCT(RecoveryItem, (), (file, ext, seed, cost, label))

/// More than any honest manifest holds.
inline constexpr qint64 maximumManifestBytes = 16LL << 20;

/// A manifest that points out of its folder: nothing of it is used, and nothing takes its place.
class ForeignRecoveryPath : public SorvanError {
 public:
  ForeignRecoveryPath();
};

/// The items of a manifest, none of which names anything but a bare file name. Throws SorvanError("Invalid recovery
/// manifest.") for bytes that are no manifest, and ForeignRecoveryPath, with the same sentence, when one points
/// elsewhere. Touches no file; any thread.
std::vector<RecoveryItem> decodeManifest(const QByteArray& json);
QByteArray encodeManifest(const std::vector<RecoveryItem>& items);

}  // namespace sorvan::generation
