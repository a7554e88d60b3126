// The manifest that says which paid results wait in a job's recovery folder.
#include <QDir>

#include "core/workspace_files.h"
#include "fuzz/reading.h"
#include "generation/media_kind.h"
#include "generation/recovery_manifest.h"

namespace sorvan::fuzz {

static bool liesIn(const QString& folder, const QString& path) {
  return QDir::cleanPath(path) == path && path.startsWith(folder + u'/') && !path.mid(folder.size() + 1).contains(u'/');
}

static void follow(const generation::RecoveryItem& item) {
  const core::WorkspaceFiles files(QStringLiteral("/nowhere/workspace"));
  const QString folder = files.recoveryFolder(QUuid(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11));
  require(liesIn(folder, folder + u'/' + item.file), "a retained file lies in the job's folder");
  const QString ext = generation::fittingExtension(item.ext, std::nullopt);
  const auto place = files.uniquePath(QStringLiteral("Inbox/generated"), QStringLiteral("fox"), ext);
  require(liesIn(files.absolute(QStringLiteral("Inbox/generated")), place.absolute()),
          "a retained result lands in the folder of generated media");
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan;
  const fuzz::Input input(data, size);
  const auto items = fuzz::readOrRefused([&] { return generation::decodeManifest(input.rest()); });
  if (!items) return 0;
  for (const auto& item : *items) fuzz::follow(item);
  fuzz::require(generation::decodeManifest(generation::encodeManifest(*items)) == *items,
                "a manifest that was written reads back equal");
  return 0;
}
