// The snapshot of one asset that filters and sorts read.
#pragma once

#include <QString>
#include <QUuid>
#include <optional>

#include "base/instant.h"
#include "core/records.h"

namespace sorvan::core {

struct AssetRow {
  QUuid id;
  std::optional<QUuid> projectID;
  bool trashed = false;
  bool favorite = false;
  QString status;     ///< raw value of AssetStatus as stored
  QString mediaType;  ///< raw value of the type as it counts, so never an unknown one
  int rating = 0;     ///< 0 when there is none
  int width = 0;      ///< pixels
  int height = 0;     ///< pixels
  Instant createdAt;
  Instant recentDate;                  ///< when it came in: an imported file may be much older
  std::optional<Instant> generatedAt;  ///< none for imported items
  std::optional<QString> provider;
  std::optional<QString> model;
  std::optional<double> credits;  ///< what this output cost; a credit is one US cent
  QString name;                   ///< file name

  bool operator==(const AssetRow&) const = default;
};

/// The row of an asset; `generation` may be null.
AssetRow makeAssetRow(const Asset& asset, const Generation* generation);

}  // namespace sorvan::core
