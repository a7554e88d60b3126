// Looking models up while 100 jobs are validated elsewhere, against the same with nothing else to do.
#include <thread>

#include "bench/row.h"
#include "catalogue/fal_catalog.h"
#include "catalogue/request_body.h"
#include "generation/generation_request.h"

namespace sorvan::bench {
namespace {

using namespace Qt::StringLiterals;
using catalogue::FalCatalog;

constexpr int addedModels = 60;
constexpr int jobs = 100;
constexpr int lookupsOfABatch = 1000;
constexpr int batches = 1000;

QString addedID(int index) { return u"acme/model-%1"_s.arg(index); }

std::shared_ptr<FalCatalog> filledCatalog() {
  auto catalog = std::make_shared<FalCatalog>(std::make_shared<base::Settings>());
  for (int index = 0; index < addedModels; ++index) {
    catalogue::FalModel model = catalogue::nanoBanana2();
    model.id = addedID(index);
    catalog->add(model);
  }
  return catalog;
}

core::GenerationRequest job(int index) {
  core::GenerationRequest request;
  request.provider = core::ProviderID::fal;
  request.model = addedID(index % addedModels);
  request.prompt = u"a red fox in the snow, %1"_s.arg(index);
  request.size = u"1024x1024"_s;
  request.count = 1 + index % 4;
  return request;
}

/// What a provider does with a new job before anything leaves.
void validate(const FalCatalog& catalog, const core::GenerationRequest& request) {
  generation::validate(request, catalog.options());
  catalogue::BodyParts parts;
  parts.prompt = generation::submittedPrompt(request);
  parts.size = request.size;
  parts.count = request.count;
  if (catalogue::requestBody(*catalog.find(request.model), parts).isEmpty())
    throw std::runtime_error("a body is empty");
}

void validateAll(const FalCatalog& catalog) {
  for (int index = 0; index < jobs; ++index) validate(catalog, job(index));
}

double lookUp(const FalCatalog& catalog, const std::vector<QString>& ids) {
  return timed([&] {
    for (int index = 0; index < lookupsOfABatch; ++index) {
      if (!catalog.find(ids[static_cast<std::size_t>(index % addedModels)]))
        throw std::runtime_error("a model is gone");
    }
  });
}

/// The median of many short batches: what lookups wait for shows in each, what another process takes from the
/// processor only in a few.
double lookAllUp(const FalCatalog& catalog) {
  std::vector<QString> ids;
  for (int index = 0; index < addedModels; ++index) ids.push_back(addedID(index));
  std::vector<double> seconds;
  for (int batch = 0; batch < batches; ++batch) seconds.push_back(lookUp(catalog, ids));
  std::nth_element(seconds.begin(), seconds.begin() + batches / 2, seconds.end());
  return seconds[batches / 2] * batches;
}

double lookUpBusily(const FalCatalog& catalog) {
  validateAll(catalog);
  std::atomic<bool> goOn = true;
  std::atomic<int> rounds = 0;
  std::thread busy([&] {
    while (goOn) {
      validateAll(catalog);
      ++rounds;
    }
  });
  const double seconds = lookAllUp(catalog);
  goOn = false;
  busy.join();
  if (rounds == 0) throw std::runtime_error("nothing was validated meanwhile");
  return seconds;
}

Contestants busyAndIdle(const QDir&) {
  const auto catalog = filledCatalog();
  return {.ours = [=] { return lookUpBusily(*catalog); }, .peer = [=] { return lookAllUp(*catalog); }, .limit = {}};
}

const RegisterRow row{{.name = u"lookup-busy"_s, .make = {}, .measure = busyAndIdle, .rounds = 15}};

}  // namespace
}  // namespace sorvan::bench
