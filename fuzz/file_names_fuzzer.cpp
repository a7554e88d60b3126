// Names of files made of texts from outside: the first line is a stem, the second an extension.
#include <QDir>

#include "base/text.h"
#include "core/workspace_files.h"
#include "fuzz/reading.h"

namespace sorvan::fuzz {

using namespace Qt::StringLiterals;

static void checkName(const QString& text) {
  const QString name = core::WorkspaceFiles::safeName(text);
  require(!name.isEmpty() && base::chars(name) <= 80 && name.toUtf8().size() <= 200, "a name has room on any disk");
  for (const QChar unit : name)
    require(unit != u'/' && unit != u'.' && unit != u'\\' && unit.unicode() >= 0x20, "a name is one step of a path");
  require(QString::fromUtf8(name.toUtf8()) == name, "a name survives its encoding");
  require(core::WorkspaceFiles::safeName(name) == name, "a safe name stays as it is");
}

static void checkPath(const QString& stem, const QString& ext) {
  const core::WorkspaceFiles files(u"/nowhere/workspace"_s);
  const auto place = files.uniquePath(u"Inbox/imported"_s, stem, ext);
  const QString path = place.absolute();
  const QString inbox = u"/nowhere/workspace/Inbox/imported/"_s;
  require(path.startsWith(inbox) && QDir::cleanPath(path) == path, "a file stays in its folder");
  const QString name = path.mid(inbox.size());
  require(!name.contains(u'/') && !name.contains(QChar(u'\0')), "a file's name is one step of a path");
  require(name.toUtf8().size() <= 255, "a file's name is one that a disk takes");
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan::fuzz;
  const QStringList lines = Input(data, size).lines();
  checkName(lines.first());
  checkName(lines.join(u'\n'));
  checkPath(lines.first(), lines.value(1));
  return 0;
}
