// The only place that knows every room: it builds the studio from its parts and
// takes it apart in the right order.
#pragma once

#include <QObject>
#include <memory>
#include <optional>

#include "account/key_storage.h"
#include "account/provider_settings.h"
#include "app/credits_desk.h"
#include "app/interpreter_desk.h"
#include "app/room.h"
#include "base/settings.h"
#include "base/task_scope.h"
#include "catalogue/fal_catalog.h"
#include "catalogue/fal_pricing.h"
#include "catalogue/fal_provider.h"
#include "composer/composer_state.h"
#include "core/library_store.h"
#include "core/thumbnail_maintenance.h"
#include "exchange/unfinished_imports.h"
#include "generation/job_queue.h"
#include "shell/account_payment_desk.h"
#include "shell/account_presenter.h"
#include "shell/actions_presenter.h"
#include "shell/alerts_presenter.h"
#include "shell/catalogue_browser.h"
#include "shell/comparison_presenter.h"
#include "shell/costs_presenter.h"
#include "shell/curation_presenter.h"
#include "shell/filter_presenter.h"
#include "shell/gallery_presenter.h"
#include "shell/generation_composer.h"
#include "shell/health_presenter.h"
#include "shell/inspector_presenter.h"
#include "shell/job_displays.h"
#include "shell/jobs_presenter.h"
#include "shell/library_references.h"
#include "shell/library_saved_references.h"
#include "shell/marking_presenter.h"
#include "shell/model_prices.h"
#include "shell/profile.h"
#include "shell/settings_presenter.h"
#include "shell/sidebar_presenter.h"
#include "shell/transfer_presenter.h"
#include "shell/updates_presenter.h"
#include "shell/start_order.h"
#include "shell/store_messages.h"
#include "shell/views/desktop_news.h"
#include "shell/views/main_window.h"
#include "shell/welcome_presenter.h"
#include "shell/window_desk.h"
#include "shell/window_presenter.h"
#include "shell/work_news.h"
#include "shell/workspace_state.h"

namespace sorvan::app {

/// One running studio. Main thread. The members stand in the order of their
/// needs: each uses only those before it, so they also go in the right order.
class CompositionRoot : public QObject {
  Q_OBJECT

 public:
  explicit CompositionRoot(const Profile& profile, QObject* parent = nullptr);
  ~CompositionRoot() override;

  /// Shows the window and, once it stands, opens the last workspace in it, with `problem` over it when there is one.
  void start(const std::optional<QString>& problem);
  /// Comes to the front and opens what was handed over: see `open`.
  void bringForward(const QStringList& addresses);
  /// Opens the workspace that the first fitting address lies in; before the start, in place of the last one. An
  /// address may stand for an action instead, or be a link to sign in with. Others are ignored.
  void open(const QStringList& addresses);
  /// Does what the desktop's launcher offers under this name, and comes to the front.
  void performDesktopAction(const QString& name);

  /// Ends the program without asking: keeps the unfinished prompt, gives a paid
  /// submission in flight up to ten seconds for its answer, waits for nothing
  /// else, and leaves the event loop. A second call does nothing.
  void shutDown();
  /// Writes the unfinished prompt down, for a session that may end without
  /// another word.
  void keepUnfinishedWork();

 private:
  static std::shared_ptr<KeyBackend> keyBackend(const Profile& profile);
  core::LibraryStore::Services storeServices(const Profile& profile);
  generation::GenerationPorts generationPorts();
  shell::ActionsPresenter::Ports actionPorts();
  shell::Presenters presenters();
  void openLibrary(const std::optional<QString>& problem);
  shell::StartOrder startOrder(const std::optional<QString>& problem);
  void openWindow();
  Task<> payerIsKnown(std::stop_token stop) const;
  Task<std::optional<QString>> falKey(std::stop_token stop) const;
  Task<> finish();

  std::shared_ptr<Settings> settings_;
  std::shared_ptr<const Clock> clock_;
  std::shared_ptr<HttpTransport> transport_;
  std::shared_ptr<account::KeyCache> keys_;
  account::ProviderSettings providerSettings_;
  std::shared_ptr<catalogue::FalCatalog> catalog_;
  std::shared_ptr<catalogue::FalPricing> pricing_;
  std::shared_ptr<catalogue::FalProvider> provider_;
  CreditsDesk credits_;
  shell::AccountPaymentDesk payment_;
  core::LibraryStore store_;
  generation::JobQueue queue_;
  core::ThumbnailMaintenance maintenance_;
  exchange::UnfinishedImports unfinishedImports_;

  shell::WorkspaceState state_;
  shell::AlertsPresenter alerts_;
  shell::StoreMessages messages_;
  shell::JobDisplays displays_;
  composer::ComposerState composing_;
  InterpreterDesk interpreter_;
  shell::ModelPrices prices_;
  shell::CatalogueBrowser browser_;
  shell::LibraryReferences references_;
  shell::LibrarySavedReferences savedReferences_;
  shell::WindowDesk desk_;
  shell::GenerationComposer composer_;
  shell::MarkingPresenter marking_;
  shell::WindowPresenter windowPresenter_;
  shell::WelcomePresenter welcome_;
  shell::SidebarPresenter sidebar_;
  shell::GalleryPresenter gallery_;
  shell::FilterPresenter filters_;
  shell::JobsPresenter jobs_;
  views::DesktopNewsStand newsStand_;
  shell::WorkNews news_;
  shell::InspectorPresenter inspector_;
  shell::CurationPresenter curation_;
  shell::TransferPresenter transfer_;
  shell::ComparisonPresenter comparison_;
  shell::CostsPresenter costs_;
  shell::UpdatesPresenter updates_;
  shell::AccountPresenter accountPresenter_;
  shell::SettingsPresenter settingsPresenter_;
  shell::HealthPresenter health_;
  shell::ActionsPresenter actions_;
  TaskScope tasks_;
  std::unique_ptr<views::MainWindow> window_;
  std::optional<QString> requested_;  // the workspace that is to be opened at the start
  std::optional<QString> firstLink_;  // with which somebody signs in
  std::optional<ActionId> firstAction_;  // what is to be done when it is open
  bool started_ = false;
  bool ending_ = false;
};

}  // namespace sorvan::app
