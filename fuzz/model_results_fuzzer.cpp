// The result of a finished request: where its media lie, and as what they will be stored.
#include <QDir>

#include "catalogue/outputs.h"
#include "catalogue/provider_http.h"
#include "catalogue/service_hosts.h"
#include "core/workspace_files.h"
#include "fuzz/reading.h"
#include "generation/media_kind.h"

namespace sorvan::fuzz {

using namespace Qt::StringLiterals;

static bool isPlainExtension(const QString& ext) {
  return !ext.isEmpty() && ext.size() <= 16 &&
         std::all_of(ext.begin(), ext.end(), [](QChar unit) { return unit.isLetterOrNumber(); });
}

static void follow(const catalogue::OutputAddress& address) {
  require(catalogue::isPlainHttps(address.url), "media come over https");
  require(isPlainExtension(address.ext), "an extension can end a file's name");
  require(!address.announcedBytes || *address.announcedBytes > 0, "an announced size is one");
  const core::WorkspaceFiles files(u"/nowhere/workspace"_s);
  const auto place = files.uniquePath(u"Inbox/generated"_s, address.label.value_or(QString()), address.ext);
  const QString name = place.relative().section(u'/', 2);
  require(QDir::cleanPath(place.relative()) == place.relative() && place.relative().startsWith(u"Inbox/generated/"_s),
          "a result lands in the folder of generated media");
  require(!name.contains(u'/') && name.endsWith(u'.' + address.ext.toLower()), "a file ends with its extension");
  require(name.toUtf8().size() <= 255, "a file's name is one that a disk takes");
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan;
  fuzz::Input input(data, size);
  const auto parts = input.byte() == 'p' ? catalogue::NamedParts::yes : catalogue::NamedParts::no;
  const auto addresses =
      fuzz::readOrRefused([&] { return catalogue::outputAddresses(catalogue::jsonObject(input.rest()), parts); });
  if (!addresses) return 0;
  fuzz::require(!addresses->empty() && addresses->size() <= 64, "a result holds some outputs, and not any number");
  for (const auto& address : *addresses) fuzz::follow(address);
  return 0;
}
