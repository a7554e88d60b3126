// Opens a workspace, saves an item and reads it again, in a process without a graphical application. Fails when a library
// of widgets was loaded with it.
#include <cstdio>

#include <QTemporaryDir>

#include "base/clock.h"
#include "base/settings.h"
#include "core/library_store.h"
#include "core/workspace_opening.h"

using namespace sorvan::base;
using namespace sorvan::core;

namespace {

int failed(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  return 1;
}

bool loadsWidgets() {
  QFile maps(QStringLiteral("/proc/self/maps"));
  return !maps.open(QIODevice::ReadOnly) || maps.readAll().contains("libQt6Widgets");
}

std::unique_ptr<LibraryStore> openedStore(const QString& folder) {
  auto store = std::make_unique<LibraryStore>(
      LibraryStore::Services{std::make_shared<Settings>(), std::make_shared<SystemClock>(), {}, {}});
  openWorkspace(*store, folder, Remember::no);
  return store;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const QCoreApplication application(argumentCount, arguments);
  const QTemporaryDir folder;
  {
    const auto store = openedStore(folder.path());
    store->context().insert(
        Asset({}, MediaType::image, QStringLiteral("Inbox/generated/fox-001.png"), {}, {}, store->now()));
    store->save(LibraryTables::all);
  }
  if (openedStore(folder.path())->assets().size() != 1) return failed("the item is not there again");
  if (loadsWidgets()) return failed("the library core has loaded widgets");
  return 0;
}
