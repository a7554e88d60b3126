// One mark in a large library: from the heart to the last presenter that shows it.
#include <QCoreApplication>
#include <memory>

#include "base/clock.h"
#include "base/settings.h"
#include "bench/library_data.h"
#include "bench/row.h"
#include "bench/stalls.h"
#include "catalogue/catalog_facts.h"
#include "catalogue/fal_catalog.h"
#include "core/library_store.h"
#include "core/small_edits.h"
#include "core/workspace_opening.h"
#include "generation/job_queue.h"
#include "shell/alerts_presenter.h"
#include "shell/gallery_presenter.h"
#include "shell/inspector_presenter.h"
#include "shell/job_displays.h"
#include "shell/jobs_presenter.h"
#include "shell/sidebar_presenter.h"
#include "shell/workspace_state.h"

namespace sorvan::bench {
namespace {

using namespace sorvan::base;
using namespace sorvan::core;
using namespace sorvan::shell;

constexpr int manyItems = 100'000;
constexpr int manySelected = 10'000;
constexpr unsigned seed = 7;

QString libraryFolder(const QDir& data) { return data.filePath(QStringLiteral("library")); }

generation::GenerationPorts portsOf(const std::shared_ptr<catalogue::FalCatalog>& catalog) {
  generation::GenerationPorts ports;
  ports.models = std::make_shared<catalogue::CatalogFacts>(catalog);
  ports.billing = [] { return Billing{PayWith::ownKey, true}; };
  return ports;
}

/// What follows the library in a window, as a window asks it.
struct Followers {
  Followers() {
    QObject::connect(&inspector, &InspectorPresenter::changed, [this] { static_cast<void>(inspector.display()); });
    QObject::connect(&sidebar, &SidebarPresenter::changed, [this] { static_cast<void>(sidebar.display()); });
  }
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::shared_ptr<catalogue::FalCatalog> catalog = std::make_shared<catalogue::FalCatalog>(settings);
  LibraryStore store{{settings, std::make_shared<SystemClock>(), {}, {}}};
  generation::JobQueue queue{store, portsOf(catalog)};
  WorkspaceState state;
  AlertsPresenter alerts;
  JobDisplays displays{store, queue};
  GalleryPresenter gallery{store, state, displays};
  JobsPresenter jobs{{store, queue, state, alerts, displays, [](const QString&) {}}};
  InspectorPresenter inspector{store, state, displays};
  SidebarPresenter sidebar{store, state};
};

Contestants marking(const QDir& data, int selected) {
  const auto window = std::make_shared<Followers>();
  openWorkspace(window->store, libraryFolder(data), Remember::no);
  while (!window->gallery.index().searchIsComplete()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  QSet<QUuid> cells;
  const int first = window->gallery.jobCount();
  for (int index = first; index < first + selected; ++index) cells.insert(window->gallery.idAt(index));
  window->state.select(cells);
  QCoreApplication::processEvents();
  const auto round = std::make_shared<std::size_t>(0);
  return {.ours =
              [=] {
                const AssetRef item = window->store.assets()[++*round % 1000];
                toggleFavorite(window->store, item);
                // The save waits for the disk, whose answers scatter; what follows it holds the window.
                return std::optional(timed([] { QCoreApplication::sendPostedEvents(); }));
              },
          .peer = {},
          .limit = [] { return std::optional(frame); }};
}

void makeMany(const QDir& data) { makeLibrary(libraryFolder(data), libraryOf(manyItems), seed); }

const RegisterRow markRow{{.name = QStringLiteral("mark-100k"),
                           .make = makeMany,
                           .measure = [](const QDir& data) { return marking(data, 0); }}};
const RegisterRow markSelectedRow{{.name = QStringLiteral("mark-100k-selected"),
                                   .make = makeMany,
                                   .measure = [](const QDir& data) { return marking(data, manySelected); }}};

}  // namespace
}  // namespace sorvan::bench
