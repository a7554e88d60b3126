#include "generation/recovery_manifest.h"

#include "base/json.h"
#include "generation/texts.h"

namespace sorvan::generation {
namespace {

bool isBareFileName(const QString& name) {
  return !name.isEmpty() && !name.startsWith(u'.') && !name.contains(u'/') && !name.contains(QChar(u'\0'));
}

std::vector<RecoveryItem> decodedItems(const QByteArray& json) {
  try {
    return decodeJson<std::vector<RecoveryItem>>(json, maximumManifestBytes);
  } catch (const SorvanError&) {
    throw SorvanError(texts::invalidManifest());
  }
}

}  // namespace

ForeignRecoveryPath::ForeignRecoveryPath() : SorvanError(texts::invalidManifest()) {}

std::vector<RecoveryItem> decodeManifest(const QByteArray& json) {
  std::vector<RecoveryItem> items = decodedItems(json);
  for (const RecoveryItem& item : items)
    if (!isBareFileName(item.file)) throw ForeignRecoveryPath();
  return items;
}

QByteArray encodeManifest(const std::vector<RecoveryItem>& items) { return encodeJson(items); }

}  // namespace sorvan::generation
