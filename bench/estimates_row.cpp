// The price beside the button for eight models, which is worked out at each redraw of it.
#include "base/settings.h"
#include "bench/row.h"
#include "catalogue/list_price.h"
#include "catalogue/request_for_model.h"
#include "composer/estimates.h"

namespace sorvan::bench {
namespace {

using namespace Qt::StringLiterals;

constexpr int redraws = 100;
constexpr std::size_t compared = 8;

/// The models of one comparison, clips with lengths among them.
std::vector<catalogue::FalModel> models() {
  std::vector<catalogue::FalModel> made;
  for (std::size_t index = 0; index < compared; ++index) {
    catalogue::FalModel model = catalogue::nanoBanana2();
    model.id = u"bench/model-%1"_s.arg(index);
    if (index % 2 == 1) {
      model.output = core::MediaType::video;
      catalogue::Setting length;
      length.field = u"duration"_s;
      length.values = {u"5"_s, u"10"_s};
      length.defaultValue = u"5"_s;
      model.settings = {length};
    }
    made.push_back(model);
  }
  return made;
}

composer::EstimateInput inputOf(const catalogue::FalCatalog& catalog) {
  composer::EstimateInput input;
  input.request.size = u"1024x1024"_s;
  input.request.prompt = u"a fox in deep snow, "_s.repeated(20);
  for (const composer::SelectableModel& model : composer::pictureModels(catalog))
    if (model.record.id.startsWith(u"bench/"_s)) input.models.push_back(model);
  input.billing = {core::PayWith::ownKey, true};
  return input;
}

composer::KnownPrices pricesOf(const std::shared_ptr<catalogue::FalCatalog>& catalog) {
  composer::KnownPrices prices;
  prices.dollars = [](const core::GenerationRequest& request, const catalogue::FalModel& model) {
    const bool isClip = model.output == core::MediaType::video;
    return catalogue::listEstimate({0.04, isClip ? u"seconds"_s : u"images"_s, {}}, request, model);
  };
  prices.forModel = [catalog](const core::GenerationRequest& request, const generation::ComparisonModel& target) {
    return catalogue::requestForModel(*catalog, request, target);
  };
  return prices;
}

Contestants contestants(const QDir&) {
  const auto catalog = std::make_shared<catalogue::FalCatalog>(std::make_shared<base::Settings>());
  for (const catalogue::FalModel& model : models()) catalog->add(model);
  const composer::EstimateInput input = inputOf(*catalog);
  const composer::KnownPrices prices = pricesOf(catalog);
  if (input.models.size() != compared || !composer::estimatedCost(input, prices))
    throw std::runtime_error("the models have no prices");
  const auto total = std::make_shared<double>(0);
  return {.ours =
              [=] {
                return timed([&] {
                         for (int redraw = 0; redraw < redraws; ++redraw)
                           *total += composer::estimatedCost(input, prices).value_or(0);
                       }) /
                       redraws;
              },
          .peer = {},
          .limit = {}};
}

const RegisterRow row{{.name = u"estimate-8"_s, .make = {}, .measure = contestants}};

}  // namespace
}  // namespace sorvan::bench
