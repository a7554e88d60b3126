// A whole studio without windows: a workspace in a temporary folder, a scripted provider, a clock that stands still.
#pragma once

#include <QObject>

#include <memory>
#include <vector>

#include "base/settings.h"
#include "catalogue/catalog_facts.h"
#include "catalogue/fal_catalog.h"
#include "composer/composer_state.h"
#include "core/library_store.h"
#include "generation/job_queue.h"
#include "shell/alerts_presenter.h"
#include "shell/catalogue_browser.h"
#include "shell/comparison_presenter.h"
#include "shell/curation_presenter.h"
#include "shell/filter_presenter.h"
#include "shell/gallery_presenter.h"
#include "shell/generation_composer.h"
#include "shell/inspector_presenter.h"
#include "shell/job_displays.h"
#include "shell/jobs_presenter.h"
#include "shell/library_references.h"
#include "shell/marking_presenter.h"
#include "shell/model_prices.h"
#include "shell/payment_desk.h"
#include "shell/presenters.h"
#include "shell/transfer_presenter.h"
#include "shell/window_desk.h"
#include "shell/workspace_state.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"
#include "support/temporary_folder.h"

namespace sorvan::test {

// Answers each run with one small picture, or with the failure that was planted, once the gate is open.
class ScriptedProvider final : public generation::GenerationProvider {
 public:
  explicit ScriptedProvider(std::shared_ptr<catalogue::FalCatalog> models) : catalog(std::move(models)) {}
  std::vector<generation::ModelOption> listModels() const override { return catalog->options(); }
  base::Task<std::vector<generation::GeneratedOutput>> generateImage(generation::ProviderCall call,
                                                                     std::stop_token stop) override;
  base::Task<> cancelJob(core::RemoteHandle handle, QString key, std::stop_token stop) override;

  // While set, runs wait until it is finished.
  std::optional<base::Completion> gate;
  // What each output is said to have cost.
  std::optional<core::GenerationCost> cost;
  // While set, runs end with this.
  std::exception_ptr failure;
  // Whether a failing run fails after its paid POST left: the submission marker stays.
  bool failAfterPost = false;
  std::vector<core::GenerationRequest> requests;

 private:
  std::shared_ptr<catalogue::FalCatalog> catalog;
};

struct Desk {
  Desk();
  ~Desk();

  // Lets everything posted run, and runs jobs to their end.
  void settle();
  // Types and presses Generate; then lets the press be handled, while jobs wait at the gate.
  void generate(const QString& prompt);
  // One prompt to so many models at once, which lets the press be handled as `generate` does; the comparison's id.
  QUuid compare(int models);
  core::JobRef newestJob() const;
  // Those that the desk has; whoever builds a window on them adds the rest.
  shell::Presenters presenters();

  TemporaryFolder folder;
  std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
  std::shared_ptr<base::Settings> settings = std::make_shared<base::Settings>();
  std::shared_ptr<catalogue::FalCatalog> catalog = std::make_shared<catalogue::FalCatalog>(settings);
  std::shared_ptr<ScriptedProvider> provider = std::make_shared<ScriptedProvider>(catalog);
  std::optional<QString> key = QStringLiteral("test-key");
  std::optional<base::Completion> keyGate;
  core::LibraryStore store;
  generation::JobQueue queue;
  shell::WorkspaceState state;
  shell::AlertsPresenter alerts;
  shell::JobDisplays displays;
  composer::ComposerState composing;
  std::shared_ptr<ScriptedTransport> web = std::make_shared<ScriptedTransport>();
  std::shared_ptr<catalogue::FalPricing> pricing =
      std::make_shared<catalogue::FalPricing>(catalogue::FalPricing::Services{web, catalog, clock, settings});
  shell::ModelPrices prices;
  shell::CatalogueBrowser browser;
  shell::LibraryReferences references;
  shell::PaymentDesk ownKey;
  shell::WindowDesk desk;
  shell::GenerationComposer composer;
  shell::MarkingPresenter marking;
  shell::GalleryPresenter gallery;
  shell::FilterPresenter filters{gallery, state};
  QString copied;
  shell::JobsPresenter jobs;
  shell::InspectorPresenter inspector;
  QStringList used;  // the features that were counted
  shell::CurationPresenter curation;
  std::unique_ptr<QMimeData> clipboard;
  shell::TransferPresenter transfer{
      {store, state, gallery, alerts, [this](std::unique_ptr<QMimeData> data) { clipboard = std::move(data); }}};
  shell::ComparisonPresenter comparison;

 private:
  core::LibraryStore::Services services();
  generation::GenerationPorts ports();
  base::Task<> awaitKey(std::stop_token stop);
  base::Task<std::optional<QString>> readKey(std::stop_token stop);
};

}  // namespace sorvan::test
