#include "generation/provider.h"
#include "generation/texts.h"

namespace sorvan::generation {

std::vector<ModelOption> RetiredProvider::listModels() const { return {}; }

Task<std::vector<GeneratedOutput>> RetiredProvider::generateImage(ProviderCall, std::stop_token) {
  throw SorvanError(texts::retiredProvider());
  co_return std::vector<GeneratedOutput>();
}

Task<> RetiredProvider::cancelJob(RemoteHandle, QString, std::stop_token) {
  throw SorvanError(texts::retiredProviderCancel());
  co_return;
}

}  // namespace sorvan::generation
