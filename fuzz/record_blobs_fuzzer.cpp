// The JSON that rows of the library hold; the first byte chooses which.
#include "catalogue/fal_model_json.h"
#include "core/records.h"
#include "fuzz/stored_value.h"

namespace sorvan::fuzz {

static void readRequest(const QByteArray& json) {
  const auto request = readTwice<core::GenerationRequest>(json);
  core::GenerationJob job;
  job.requestData = json;
  require((job.request() != nullptr) == request.has_value(), "a job tells the request that its row holds");
}

static void readHandle(const QByteArray& json) {
  const auto handle = readTwice<core::RemoteHandle>(json);
  require(core::decodeHandle(json) == handle, "a damaged handle is none, and no error");
}

/// The parameters of a generation, with the cost inside.
static void readParameters(const QByteArray& json) {
  core::Generation generation;
  generation.parametersJSON = json;
  generation.recipeData = json;
  generation.isCopy();
  generation.recipe();
  if (const auto cost = generation.costRecord()) readTwice<core::GenerationCost>(base::encodeJson(*cost));
}

static void readModels(const QByteArray& json) {
  const catalogue::StoredModels stored = catalogue::modelsFromText(json);
  const catalogue::StoredModels again = catalogue::modelsFromText(catalogue::modelsToText(stored.models));
  require(again.complete && again.models == stored.models, "models that were written read back equal");
  for (const catalogue::FalModel& model : stored.models) model.option();
  catalogue::sharedSettings(stored.models);
}

static void readIds(const QByteArray& json) { readTwice<std::vector<QUuid>>(json); }

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan::fuzz;
  Input input(data, size);
  switch (input.byte()) {
    case 'r':
      readRequest(input.rest());
      break;
    case 'h':
      readHandle(input.rest());
      break;
    case 'c':
      readTwice<sorvan::core::GenerationCost>(input.rest());
      break;
    case 'p':
      readParameters(input.rest());
      break;
    case 'm':
      readModels(input.rest());
      break;
    case 'i':
      readIds(input.rest());
      break;
    default:
      break;
  }
  return 0;
}
