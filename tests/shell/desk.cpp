#include "desk.h"

#include <QBuffer>
#include <QImage>

#include "catalogue/request_for_model.h"
#include "core/projects.h"
#include "core/workspace_opening.h"
#include "generation/enqueue.h"

namespace sorvan::test {

namespace {

QByteArray smallPicture(int seed) {
  QImage image(48, 27, QImage::Format_RGB32);
  image.fill(QColor::fromHsv(seed * 37 % 360, 200, 200));
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return bytes;
}

}  // namespace

base::Task<std::vector<generation::GeneratedOutput>> ScriptedProvider::generateImage(generation::ProviderCall call,
                                                                                     std::stop_token stop) {
  requests.push_back(call.request);
  if (gate) co_await *gate;
  base::throwIfStopped(stop);
  if (failure) {
    if (failAfterPost) co_await call.run->aboutToSubmit();
    std::rethrow_exception(failure);
  }
  generation::GeneratedOutput output;
  output.data = smallPicture(static_cast<int>(requests.size()));
  output.ext = QStringLiteral("png");
  output.cost = cost;
  std::vector<generation::GeneratedOutput> outputs;
  outputs.push_back(std::move(output));
  co_return outputs;
}

base::Task<> ScriptedProvider::cancelJob(core::RemoteHandle, QString, std::stop_token) { co_return; }

core::LibraryStore::Services Desk::services() {
  return {settings, clock, std::nullopt, folder / QStringLiteral("Default")};
}

generation::GenerationPorts Desk::ports() {
  generation::GenerationPorts ports;
  ports.providerResolver = [this](core::ProviderID) { return provider; };
  ports.keyReader = [this](core::ProviderID) { return key; };
  ports.billing = [] { return core::Billing{core::PayWith::ownKey, true}; };
  ports.models = std::make_shared<catalogue::CatalogFacts>(catalog);
  ports.forModel = [this](const core::GenerationRequest& request, const generation::ComparisonModel& model) {
    return catalogue::requestForModel(*catalog, request, model);
  };
  return ports;
}

base::Task<> Desk::awaitKey(std::stop_token stop) {
  if (keyGate) co_await *keyGate;
  base::throwIfStopped(stop);
}

base::Task<std::optional<QString>> Desk::readKey(std::stop_token stop) {
  base::throwIfStopped(stop);
  // A copy: what a coroutine returns is moved from, a member too.
  co_return std::optional<QString>(key);
}

Desk::Desk()
    : store(services()),
      queue(store, ports()),
      displays(store, queue),
      composing(composer::selectableModels(*catalog), clock),
      prices(pricing, [this](std::stop_token stop) { return readKey(stop); }),
      browser({catalogue::CatalogClient(web), catalog, clock, composing, alerts, prices}),
      references({store, composing, state,
                  [this](const QString& search, std::size_t most) {
                    return shell::newestPictures(store, gallery.index(), search, most);
                  }}),
      desk({store, queue, state, [this](const QUuid& cell) { return gallery.indexOf(cell); },
            [this](const QString& name) { return core::createProject(store, name)->id; }}),
      composer({store, queue, state, composing, [this](std::stop_token stop) { return awaitKey(stop); }, prices,
                alerts, [this](const QString& text) { copied = text; }, desk, ownKey, &browser, &references}),
      marking(store, composing, state),
      gallery(store, state, displays),
      jobs({store, queue, state, alerts, displays, [this](const QString& text) { copied = text; }}),
      inspector(store, state, displays),
      curation({store, state, gallery, alerts, [this](const QString& event) { used << event; }}),
      comparison({store, state, gallery, displays, jobs, alerts}) {
  core::openWorkspace(store, folder / QStringLiteral("Workspace"), core::Remember::no);
  runPosted();
}

Desk::~Desk() {
  runTask(references.drain());
  runTask(queue.drain());
}

void Desk::settle() {
  runUntil([this] { return queue.runningCount() == 0 && store.activeJobs().empty(); });
  runPosted();
}

void Desk::generate(const QString& prompt) {
  composer.editDraft(prompt);
  composer.submit();
  runPosted();
}

QUuid Desk::compare(int models) {
  std::vector<core::GenerationRequest> requests;
  const QUuid batch = base::newUuid();
  for (int order = 0; order < models; ++order) {
    core::GenerationRequest request;
    request.model = QStringLiteral("fal-ai/flux/schnell");
    request.prompt = QStringLiteral("a boat at dusk");
    request.comparisonID = batch;
    request.comparisonOrder = order;
    requests.push_back(request);
  }
  generation::enqueueRequests(queue, requests, std::nullopt);
  runPosted();
  return batch;
}

shell::Presenters Desk::presenters() {
  shell::Presenters all;
  all.state = &state;
  all.gallery = &gallery;
  all.filters = &filters;
  all.jobs = &jobs;
  all.inspector = &inspector;
  all.curation = &curation;
  all.transfer = &transfer;
  all.comparison = &comparison;
  all.composer = &composer;
  all.marking = &marking;
  all.alerts = &alerts;
  return all;
}

core::JobRef Desk::newestJob() const { return store.jobs().empty() ? nullptr : store.jobs().front(); }

}  // namespace sorvan::test
