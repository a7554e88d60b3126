#include "core/file_relocation.h"

#include "base/durable_file.h"

namespace sorvan::core {
namespace {

void removeQuietly(const QString& path) {
  try {
    removeDurably(path);
  } catch (const SorvanError&) {
    // A name too many is found by the check of the workspace; a file too few could not be.
  }
}

}  // namespace

FileRelocation::~FileRelocation() {
  for (const Step& step : steps_) removeQuietly(settled_ ? step.from : step.to);
}

void FileRelocation::add(const QString& from, const QString& to) {
  linkOrCopyDurably(files_.absolute(from), files_.absolute(to), DurableMode::Media);
  steps_.push_back({files_.absolute(from), files_.absolute(to)});
}

QString folderOf(const QString& relativePath) {
  return relativePath.left(std::max<qsizetype>(relativePath.lastIndexOf(u'/'), 0));
}

}  // namespace sorvan::core
