#include "core/workspace_json.h"

#include "base/durable_file.h"
#include "base/file_reading.h"

namespace sorvan::core {

QString WorkspaceJSON::previousPath(const QString& path) { return path + QStringLiteral(".previous"); }

void WorkspaceJSON::write(const QByteArray& json, const QString& path, const Decodes& decodes) {
  // 1. The version that is about to be replaced, if it is a good one, is first written as a file of its own.
  const std::optional<QByteArray> current = readIfPresent(path);
  if (current && decodes(*current)) writeDurably(previousPath(path), *current, DurableMode::Sidecar);
  // 2. The new version takes its place whole.
  writeDurably(path, json, DurableMode::Sidecar);
}

}  // namespace sorvan::core
