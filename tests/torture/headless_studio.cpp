#include "torture/headless_studio.h"

#include "base/settings.h"
#include "base/sorvan_error.h"
#include "catalogue/catalog_facts.h"
#include "catalogue/fal_catalog.h"
#include "catalogue/fal_pricing.h"
#include "catalogue/fal_provider.h"
#include "catalogue/openai_pricing.h"
#include "catalogue/request_for_model.h"
#include "generation/mark_notes_backfill.h"
#include "generation/settle_cancelled.h"
#include "platform/http_client.h"
#include "platform/service_configuration.h"

namespace sorvan::torture {
namespace {

// The network with little patience, so that a connection that says nothing more does not set the pace of a trial either.
class HastyTransport final : public platform::HttpTransport {
 public:
  explicit HastyTransport(std::shared_ptr<platform::HttpTransport> behind) : transport(std::move(behind)) {}

  base::Task<platform::HttpReply> send(platform::HttpRequest request, std::stop_token stop) override {
    return transport->send(hasty(std::move(request)), std::move(stop));
  }
  base::Task<platform::PostOutcome> postOnce(platform::HttpRequest request, std::stop_token stop) override {
    return transport->postOnce(hasty(std::move(request)), std::move(stop));
  }
  base::Task<platform::HttpReply> download(platform::HttpRequest request, QString path, std::stop_token stop) override {
    return transport->download(hasty(std::move(request)), std::move(path), std::move(stop));
  }

 private:
  static platform::HttpRequest hasty(platform::HttpRequest request) {
    request.idleTimeout = std::min<std::chrono::milliseconds>(request.idleTimeout, std::chrono::seconds(8));
    return request;
  }

  std::shared_ptr<platform::HttpTransport> transport;
};

// A model that edits the pictures it is given, so that trials have something to upload.
catalogue::FalModel editModel() {
  catalogue::FalModel model;
  model.id = QStringLiteral("fal-ai/nano-banana-2/edit");
  model.name = QStringLiteral("Nano Banana 2 Edit");
  model.category = QStringLiteral("image-to-image");
  model.output = core::MediaType::image;
  model.maxCount = 4;
  model.sizing = catalogue::SizeByAspect{QStringLiteral("aspect_ratio"), {QStringLiteral("auto"), QStringLiteral("1:1")}};
  model.hasSeed = true;
  model.pngOutput = true;
  model.imageInput = catalogue::ListInput{QStringLiteral("image_urls"), true};
  return model;
}

// A model that makes clips, which the catalogue has only once somebody looked for one.
catalogue::FalModel clipModel() {
  catalogue::FalModel model;
  model.id = QStringLiteral("bytedance/seedance-2.5/text-to-video");
  model.name = QStringLiteral("Seedance 2.5");
  model.category = QStringLiteral("text-to-video");
  model.output = core::MediaType::video;
  model.hasSeed = true;
  return model;
}

std::shared_ptr<catalogue::FalCatalog> catalogFor(const std::shared_ptr<base::Settings>& settings) {
  auto catalog = std::make_shared<catalogue::FalCatalog>(settings);
  catalog->add(editModel());
  catalog->add(clipModel());
  return catalog;
}

generation::GenerationPorts portsFor(const catalogue::FalServices& services, const std::optional<QString>& key) {
  auto fal = std::make_shared<catalogue::FalProvider>(services);
  const auto catalog = services.catalog;
  generation::GenerationPorts ports;
  ports.providerResolver = [fal](core::ProviderID id) -> std::shared_ptr<generation::GenerationProvider> {
    if (id == core::ProviderID::fal) return fal;
    return std::make_shared<generation::RetiredProvider>();
  };
  ports.keyReader = [key](core::ProviderID) { return key; };
  ports.models = std::make_shared<catalogue::CatalogFacts>(catalog);
  ports.forModel = [catalog](const core::GenerationRequest& request, const generation::ComparisonModel& target) {
    return catalogue::requestForModel(*catalog, request, target);
  };
  return ports;
}

}  // namespace

base::Task<> HastyClock::sleep(std::chrono::milliseconds duration, std::stop_token stop) const {
  return base::SystemClock().sleep(std::min(duration, std::chrono::milliseconds(20)), std::move(stop));
}

HeadlessStudio::HeadlessStudio() {
  std::optional<platform::ServiceConfiguration> service = platform::serviceConfigurationFromEnvironment();
  if (!service) throw base::SorvanError(QStringLiteral("SORVAN_SERVICE names no service."));
  service->trustsSystem = false;
  transport = std::make_shared<HastyTransport>(std::make_shared<platform::HttpClient>(service));
  auto settings = std::make_shared<base::Settings>();
  auto clock = std::make_shared<HastyClock>();
  store = std::make_unique<core::LibraryStore>(
      core::LibraryStore::Services{settings, clock, std::nullopt, QString()});
  maintenance = std::make_unique<core::ThumbnailMaintenance>(*store);
  imports = std::make_unique<exchange::UnfinishedImports>(*store);
  const auto catalog = catalogFor(settings);
  auto prices = std::make_shared<catalogue::FalPricing>(
      catalogue::FalPricing::Services{transport, catalog, clock, settings});
  generation::GenerationPorts ports = portsFor({transport, catalog, clock, prices}, service->key);
  gateway.plugInto(ports, transport, clock, catalog, service->token.value_or(QString()));
  queue = std::make_unique<generation::JobQueue>(*store, std::move(ports));
  store->openingBackfills.emplace_back(catalogue::backfillOutputCostEstimates);
  store->openingBackfills.emplace_back(generation::backfillMarkNotes);
  store->afterOpen.emplace_back([this](core::LibraryStore&) { generation::startSettling(*queue); });
}

HeadlessStudio::~HeadlessStudio() = default;

}  // namespace sorvan::torture
