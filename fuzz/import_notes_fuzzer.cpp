// The notes of imports that a crash cut off: they say which file becomes an item, and which files go.
#include <QDir>

#include "base/ids.h"
#include "exchange/unfinished_imports.h"
#include "fuzz/stored_value.h"

namespace sorvan::fuzz {

// Of the file in which every note of this target stands.
static const QUuid noteId(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11);

static bool liesBelow(const QString& folder, const QString& path) {
  return QDir::cleanPath(path) == path && path.startsWith(folder + u'/') && !path.contains(QChar::Null) &&
         !path.mid(folder.size() + 1).startsWith(u'.');
}

static void follow(const exchange::ImportNote& note) {
  const core::WorkspaceFiles files(QStringLiteral("/nowhere/workspace"));
  require(note.asset == noteId, "a note speaks of the item that its file is named after");
  require(liesBelow(files.root(), files.absolute(note.path)), "the copy lies in the workspace, and in no hidden folder");
  const QString thumbnail = files.absolute(exchange::importedThumbnailPath(note));
  require(liesBelow(files.root(), thumbnail), "the thumbnail lies in the workspace, and in no hidden folder");
  require(thumbnail.endsWith(QStringLiteral("/thumbnails/") + base::uuidText(noteId) + QStringLiteral(".jpg")),
          "the thumbnail is the item's own");
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan;
  const fuzz::Input input(data, size);
  const auto note = fuzz::readOrRefused([&] { return exchange::decodeImportNote(input.rest(), fuzz::noteId); });
  if (!note) return 0;
  fuzz::follow(*note);
  fuzz::require(fuzz::readTwice<exchange::ImportNote>(input.rest()) == note, "reading is the same each time");
  return 0;
}
