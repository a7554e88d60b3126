#include "app/composition_root.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTimer>
#include <QUrl>

#include "app/sandbox_models.h"
#include "catalogue/catalog_facts.h"
#include "catalogue/catalogue_client.h"
#include "catalogue/openai_pricing.h"
#include "catalogue/request_for_model.h"
#include "core/projects.h"
#include "core/workspace_opening.h"
#include "generation/mark_notes_backfill.h"
#include "generation/settle_cancelled.h"
#include "platform/http_client.h"
#include "platform/key_store.h"
#include "platform/temporary_files.h"
#include "shell/contact_sheets.h"
#include "shell/expected_price.h"
#include "shell/opened_addresses.h"
#include "shell/views/theme.h"

namespace sorvan::app {

namespace {

/// A window that is started out of sight is never painted.
constexpr std::chrono::milliseconds longestWaitForWindow{250};

std::shared_ptr<FalCatalog> makeCatalog(const std::shared_ptr<Settings>& settings, const Profile& profile) {
  auto catalog = std::make_shared<FalCatalog>(settings);
  if (!profile.isSandbox()) return catalog;
  try {
    catalog->add(sandboxVideoModel());
    catalog->add(sandboxEditModel());
  } catch (const SorvanError&) {
    // Settings that cannot be written are told of at the start; the model is there for this run.
  }
  return catalog;
}

}  // namespace

// On the simulator the key lives in memory, so that the user's own is neither
// read nor touched.
std::shared_ptr<KeyBackend> CompositionRoot::keyBackend(const Profile& profile) {
  if (!profile.isSandbox()) return secretServiceKeyBackend();
  auto backend = std::make_shared<MemoryKeyBackend>();
  if (profile.service->key) backend->entries[rawValue(ProviderID::fal)] = *profile.service->key;
  if (profile.service->token) backend->entries[rawValue(ProviderID::credits)] = *profile.service->token;
  return backend;
}

LibraryStore::Services CompositionRoot::storeServices(const Profile& profile) {
  return {settings_, clock_, profile.forcedWorkspace, profile.defaultWorkspace};
}

GenerationPorts CompositionRoot::generationPorts() {
  GenerationPorts ports;
  ports.providerResolver = [this](ProviderID id) -> std::shared_ptr<GenerationProvider> {
    // Whoever asks for a retired provider is told so by the request.
    if (id == ProviderID::fal) return provider_;
    return std::make_shared<RetiredProvider>();
  };
  ports.keyReader = [this](ProviderID id) { return keys_->key(id); };
  ports.billing = [this] { return payment_.billing(); };
  ports.models = std::make_shared<CatalogFacts>(catalog_);
  ports.forModel = [this](const GenerationRequest& request, const ComparisonModel& model) {
    return requestForModel(*catalog_, request, model);
  };
  ports.feature = [this](const GenerationRequest& request) { return featureOf(*catalog_, request); };
  ports.version = QStringLiteral(SORVAN_VERSION);
  credits_.plugInto(ports);
  return ports;
}

Task<std::optional<QString>> CompositionRoot::falKey(std::stop_token stop) const {
  const auto keys = keys_;
  co_await keys->ready(ProviderID::fal, stop);
  co_return keys->key(ProviderID::fal);
}

// Whoever is to pay is asked only once the key store has answered.
Task<> CompositionRoot::payerIsKnown(std::stop_token stop) const {
  const auto keys = keys_;
  const bool ownKey = payment_.billing().payWith == PayWith::ownKey;
  co_await keys->ready(ownKey ? ProviderID::fal : ProviderID::credits, stop);
}

ActionsPresenter::Ports CompositionRoot::actionPorts() {
  return {store_, presenters(), [this] { windowPresenter_.requestQuit(); },
          [](const QString& file) { QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(file).path())); },
          QStringLiteral(SORVAN_VERSION)};
}

Presenters CompositionRoot::presenters() {
  Presenters all;
  all.state = &state_;
  all.window = &windowPresenter_;
  all.welcome = &welcome_;
  all.sidebar = &sidebar_;
  all.gallery = &gallery_;
  all.filters = &filters_;
  all.jobs = &jobs_;
  all.inspector = &inspector_;
  all.curation = &curation_;
  all.transfer = &transfer_;
  all.comparison = &comparison_;
  all.costs = &costs_;
  all.updates = &updates_;
  all.composer = &composer_;
  all.savedReferences = &savedReferences_;
  all.marking = &marking_;
  all.account = &accountPresenter_;
  all.settings = &settingsPresenter_;
  all.health = &health_;
  all.alerts = &alerts_;
  all.actions = &actions_;
  return all;
}

CompositionRoot::CompositionRoot(const Profile& profile, QObject* parent)
    : QObject(parent),
      settings_(std::make_shared<Settings>(profile.settingsFile)),
      clock_(std::make_shared<SystemClock>()),
      transport_(std::make_shared<HttpClient>(profile.service)),
      keys_(std::make_shared<KeyCache>(std::make_shared<KeychainStore>(keyBackend(profile)))),
      providerSettings_(keys_),
      catalog_(makeCatalog(settings_, profile)),
      pricing_(std::make_shared<FalPricing>(FalPricing::Services{transport_, catalog_, clock_, settings_})),
      provider_(std::make_shared<FalProvider>(FalServices{transport_, catalog_, clock_, pricing_})),
      credits_({transport_, clock_, settings_, keys_, catalog_}),
      payment_(credits_.account(), credits_.billing(), providerSettings_),
      store_(storeServices(profile)),
      queue_(store_, generationPorts()),
      maintenance_(store_),
      unfinishedImports_(store_),
      messages_(store_, alerts_, state_),
      displays_(store_, queue_),
      composing_(selectableModels(*catalog_), clock_),
      interpreter_(store_, credits_),
      prices_(pricing_, [this](std::stop_token stop) { return falKey(stop); }, &payment_),
      browser_({CatalogClient(transport_), catalog_, clock_, composing_, alerts_, prices_}),
      references_({store_, composing_, state_,
                   [this](const QString& search, std::size_t most) {
                     return newestPictures(store_, gallery_.index(), search, most);
                   }}),
      savedReferences_({store_, composing_, state_, alerts_, references_,
                        [this](const QString& search, std::size_t most) {
                          return newestPictures(store_, gallery_.index(), search, most);
                        }}),
      desk_({store_, queue_, state_, [this](const QUuid& cell) { return gallery_.indexOf(cell); },
             [this](const QString& name) { return core::createProject(store_, name)->id; }}),
      composer_({store_, queue_, state_, composing_,
                 [this](std::stop_token stop) { return payerIsKnown(stop); }, prices_,
                 alerts_, [](const QString& text) { QGuiApplication::clipboard()->setText(text); }, desk_,
                 payment_, &browser_, &references_, interpreter_.interpreting()}),
      marking_(store_, composing_, state_),
      windowPresenter_(store_, state_, alerts_, profile.title),
      welcome_(store_, profile.defaultWorkspace),
      sidebar_(store_, state_),
      gallery_(store_, state_, displays_),
      filters_(gallery_, state_),
      jobs_({store_, queue_, state_, alerts_, displays_,
             [](const QString& text) { QGuiApplication::clipboard()->setText(text); }}),
      newsStand_(QDBusConnection::sessionBus()),
      news_({store_, queue_, state_, windowPresenter_, jobs_, displays_, newsStand_}),
      inspector_(store_, state_, displays_),
      curation_({store_, state_, gallery_, alerts_,
                 [this](const QString& event) { credits_.usage().note(event, 1); }}),
      transfer_({store_, state_, gallery_, alerts_,
                 [](std::unique_ptr<QMimeData> data) { QGuiApplication::clipboard()->setMimeData(data.release()); }}),
      comparison_({store_, state_, gallery_, displays_, jobs_, alerts_,
                   [this](const GenerationRequest& request) {
                     const auto model = catalog_->model(request.model);
                     return model ? shell::expectedPrice(request, *model, prices_, payment_) : QString();
                   }}),
      costs_({store_, state_, alerts_, payment_,
              [catalog = catalog_](const QString& model) { return catalog->displayName(model); },
              [](const QString& file) { QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(file).path())); }}),
      updates_({credits_.usage(), credits_.updates(), alerts_, QStringLiteral(SORVAN_VERSION),
                [](const QUrl& address) { QDesktopServices::openUrl(address); }}),
      accountPresenter_({credits_.account(), credits_.billing(), providerSettings_, *settings_, clock_,
                         [](const QUrl& page) { return QDesktopServices::openUrl(page); }}),
      settingsPresenter_(providerSettings_, *settings_),
      health_(store_),
      actions_(actionPorts()) {
  store_.openingBackfills.emplace_back(backfillOutputCostEstimates);
  store_.openingBackfills.push_back(backfillMarkNotes);
  store_.openingBackfills.emplace_back(shell::backfillContactSheets);
  // What became of requests that were cancelled in an earlier session. The charge notes are read by then.
  store_.afterOpen.emplace_back([this](LibraryStore&) { startSettling(queue_); });
  store_.afterOpen.emplace_back([this](LibraryStore&) { interpreter_.settle(); });
  connect(&queue_, &JobQueue::creditsChanged, &credits_.account(), &account::AccountStore::creditsChanged);
  connect(&payment_, &shell::AccountPaymentDesk::buyCreditsRequested, &accountPresenter_,
          &shell::AccountPresenter::showAccount);
  connect(&payment_, &shell::AccountPaymentDesk::failed, &alerts_, &AlertsPresenter::showError);
  connect(&windowPresenter_, &WindowPresenter::quitAgreed, this, &CompositionRoot::shutDown);
  connect(&settingsPresenter_, &SettingsPresenter::appearanceChanged, this,
          [this] { views::Theme::instance().setAppearance(settingsPresenter_.appearance()); });
  // A key that was just saved can ask what the chosen models cost.
  connect(&providerSettings_, &account::ProviderSettings::changed, &composer_, [this] {
    if (providerSettings_.saved()) composer_.refreshPrices();
  });
  connect(&settingsPresenter_, &SettingsPresenter::failed, &alerts_, &AlertsPresenter::showError);
}

CompositionRoot::~CompositionRoot() = default;

void CompositionRoot::start(const std::optional<QString>& problem) {
  startOrder(problem).run([this](const QString& failure) { alerts_.showError(failure); });
}

shell::StartOrder CompositionRoot::startOrder(const std::optional<QString>& problem) {
  shell::StartOrder order;
  // The key store may take its time, so it is asked first. What a crash left of files for sending goes meanwhile.
  order.add(QStringLiteral("keys"), [this] { providerSettings_.load(); });
  order.add(QStringLiteral("temporary files"), [this] { sweepTemporaryFiles(clock_->now().toDateTime()); });
  order.add(QStringLiteral("account"), [this] { credits_.start(); });
  // The window, in the look that was chosen. A large library takes a moment to read, so the window comes first.
  order.add(QStringLiteral("window"), [this] { openWindow(); });
  // The library as it was left, once the window stands; a window that nobody sees is not waited for.
  order.add(QStringLiteral("library"), [this, problem] {
    const auto open = [this, problem] { openLibrary(problem); };
    connect(window_.get(), &views::MainWindow::firstPainted, this, open, Qt::SingleShotConnection);
    QTimer::singleShot(longestWaitForWindow, this, open);
  });
  // Models that an older version read are read again.
  order.add(QStringLiteral("models"), [this] { browser_.rereadModels(settings_); });
  return order;
}

void CompositionRoot::openWindow() {
  welcome_.setOpening(core::hasWorkspaceToRestore(store_));
  views::Theme::instance().setAppearance(settingsPresenter_.appearance());
  window_ = std::make_unique<views::MainWindow>(presenters());
  window_->show();
}

void CompositionRoot::openLibrary(const std::optional<QString>& problem) {
  if (started_ || ending_) return;
  started_ = true;
  // 1. What the start was given to open, else the library as it was left. A failure shows over the first page.
  if (requested_) welcome_.openFolder(*requested_);
  if (!store_.hasWorkspace()) restoreLastWorkspace(store_);
  welcome_.setOpening(false);
  // 2. What is wrong with the user's own places, over whatever is shown.
  if (problem) alerts_.showError(*problem);
  if (!settings_->problem().isEmpty()) alerts_.showError(settings_->problem());
  if (firstAction_) actions_.trigger(*firstAction_);
  if (firstLink_) accountPresenter_.openLink(*firstLink_);
  // 3. A newcomer who chooses a folder from now on can type at once.
  connect(&welcome_, &WelcomePresenter::shownChanged, this, [this] {
    if (!welcome_.isShown()) QMetaObject::invokeMethod(&composer_, &GenerationComposer::focus, Qt::QueuedConnection);
  });
}

void CompositionRoot::bringForward(const QStringList& addresses) {
  Q_EMIT windowPresenter_.raiseRequested();
  open(addresses);
}

void CompositionRoot::open(const QStringList& addresses) {
  if (ending_) return;
  const std::optional<QString> workspace = shell::workspaceAmong(addresses);
  const std::optional<ActionId> action = shell::actionAmong(addresses);
  const std::optional<QString> link = shell::ownLinkAmong(addresses);
  if (!started_) {
    requested_ = workspace ? workspace : requested_;
    firstAction_ = action ? action : firstAction_;
    firstLink_ = link ? link : firstLink_;
    return;
  }
  if (workspace) welcome_.openFolder(*workspace);
  if (action) actions_.trigger(*action);
  if (link) accountPresenter_.openLink(*link);
}

void CompositionRoot::performDesktopAction(const QString& name) {
  bringForward({shell::actionAddress(name)});
}

void CompositionRoot::keepUnfinishedWork() { composer_.keepNow(); }

void CompositionRoot::shutDown() {
  if (ending_) return;
  ending_ = true;
  keepUnfinishedWork();
  if (window_) window_->hide();
  tasks_.spawn(finish());
}

Task<> CompositionRoot::finish() {
  // The queue is told first, so that it sends nothing more that costs money while the others come to their end.
  co_await queue_.drain();
  co_await references_.drain();
  co_await costs_.drain();
  co_await updates_.drain();
  co_await unfinishedImports_.drain();
  co_await composing_.drain();
  co_await maintenance_.drain();
  co_await gallery_.index().drain();
  co_await payment_.drain();
  // The interpreter waits for the account to be read, so the account is stopped first.
  co_await credits_.drain();
  co_await interpreter_.drain();
  QCoreApplication::exit(0);
}

}  // namespace sorvan::app
