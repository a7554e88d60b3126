#include "torture/headless_studio.h"

#include "base/settings.h"
#include "base/sorvan_error.h"
#include "catalogue/catalog_facts.h"
#include "catalogue/fal_catalog.h"
#include "catalogue/fal_provider.h"
#include "catalogue/request_for_model.h"
#include "platform/http_client.h"
#include "platform/service_configuration.h"

namespace sorvan::torture {
namespace {

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

generation::GenerationPorts portsFor(const std::shared_ptr<platform::HttpTransport>& transport,
                                     const std::shared_ptr<base::Settings>& settings,
                                     const std::shared_ptr<base::Clock>& clock, const std::optional<QString>& key) {
  auto catalog = std::make_shared<catalogue::FalCatalog>(settings);
  catalog->add(editModel());
  auto fal = std::make_shared<catalogue::FalProvider>(catalogue::FalServices{transport, catalog, clock, nullptr});
  generation::GenerationPorts ports;
  ports.providerResolver = [fal](core::ProviderID id) -> std::shared_ptr<generation::GenerationProvider> {
    if (id == core::ProviderID::fal) return fal;
    return std::make_shared<generation::RetiredProvider>();
  };
  ports.keyReader = [key](core::ProviderID) { return key; };
  ports.billing = [] { return core::Billing{core::PayWith::ownKey, true}; };
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
  const std::optional<platform::ServiceConfiguration> service = platform::serviceConfigurationFromEnvironment();
  if (!service) throw base::SorvanError(QStringLiteral("SORVAN_SERVICE names no service."));
  transport = std::make_shared<platform::HttpClient>(service);
  auto settings = std::make_shared<base::Settings>();
  auto clock = std::make_shared<HastyClock>();
  store = std::make_unique<core::LibraryStore>(
      core::LibraryStore::Services{settings, clock, std::nullopt, QString()});
  queue = std::make_unique<generation::JobQueue>(*store, portsFor(transport, settings, clock, service->key));
}

HeadlessStudio::~HeadlessStudio() = default;

}  // namespace sorvan::torture
