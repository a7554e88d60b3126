#include "roundtrip/provider_bench.h"

#include "platform/http_client.h"
#include "support/run_task.h"

namespace sorvan::test {

namespace {

/// A clip model as its published document describes it.
catalogue::FalModel clipFromText() {
  catalogue::FalModel model;
  model.id = QStringLiteral("fal-ai/veo3.1");
  model.name = QStringLiteral("Veo 3.1");
  model.category = QStringLiteral("text-to-video");
  model.output = core::MediaType::video;
  model.hasSeed = true;
  model.sizing =
      catalogue::SizeByAspect{QStringLiteral("aspect_ratio"), {QStringLiteral("16:9"), QStringLiteral("9:16")}};
  catalogue::Setting length;
  length.field = QStringLiteral("duration");
  length.values = {QStringLiteral("4s"), QStringLiteral("6s"), QStringLiteral("8s")};
  model.settings = {length};
  return model;
}

catalogue::FalModel pictureEdit() {
  catalogue::FalModel model = catalogue::nanoBanana2();
  model.id = QStringLiteral("fal-ai/nano-banana-2/edit");
  model.name = QStringLiteral("Nano Banana 2 Edit");
  model.category = QStringLiteral("image-to-image");
  model.imageInput = catalogue::ListInput{QStringLiteral("image_urls"), true};
  return model;
}

}  // namespace

base::Task<> LiveRun::update(generation::ProviderUpdate update) {
  messages << update.message;
  if (update.handle) {
    handle = update.handle;
    marked = false;
  }
  co_await base::yieldToLoop();
}

base::Task<> LiveRun::aboutToSubmit() {
  marked = true;
  co_await base::yieldToLoop();
}

base::Task<> LiveRun::notSubmitted() {
  marked = false;
  co_await base::yieldToLoop();
}

RoundTrip::RoundTrip() : catalog(std::make_shared<catalogue::FalCatalog>(std::make_shared<base::Settings>())) {
  catalog->add(clipFromText());
  catalog->add(pictureEdit());
  const auto service = platform::readServiceConfiguration(sandbox.configurationPath());
  transport = std::make_shared<platform::HttpClient>(service);
}

generation::ProviderCall RoundTrip::callFor(const QString& model, const QString& prompt) {
  generation::ProviderCall call;
  call.request.model = model;
  call.request.prompt = prompt;
  call.request.seed = 7;
  call.key = sandbox.key();
  call.run = run;
  return call;
}

generation::ProviderCall RoundTrip::withReference(generation::ProviderCall call, const QString& file) const {
  call.request.referenceIDs.push_back(QUuid::createUuid());
  call.references.push_back({file});
  return call;
}

std::vector<generation::GeneratedOutput> RoundTrip::generate(const generation::ProviderCall& call) {
  catalogue::FalProvider provider({transport, catalog, clock, nullptr});
  return runTask(provider.generateImage(call, {}), std::chrono::seconds(90));
}

}  // namespace sorvan::test
