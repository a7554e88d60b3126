#include "catalogue/openai_pricing.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <array>

#include "catalogue/texts.h"
#include "generation/registration.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

/// What old records carry as the name of their provider.
QString openAIName() { return u"OpenAI"_s; }

struct RecordedPrice {
  const char16_t* model;
  bool square;
  std::array<double, 3> dollars;  ///< low, medium, high
};

constexpr std::array recordedPrices{RecordedPrice{u"gpt-image-1-mini", true, {0.005, 0.011, 0.036}},
                                    RecordedPrice{u"gpt-image-1-mini", false, {0.006, 0.015, 0.052}},
                                    RecordedPrice{u"gpt-image-1", true, {0.011, 0.042, 0.167}},
                                    RecordedPrice{u"gpt-image-1", false, {0.016, 0.063, 0.25}},
                                    RecordedPrice{u"gpt-image-1.5", true, {0.009, 0.034, 0.133}},
                                    RecordedPrice{u"gpt-image-1.5", false, {0.013, 0.05, 0.2}}};

std::optional<double> recordedPrice(const QString& model, const QString& size, const QString& quality) {
  const qsizetype column = QStringList{u"low"_s, u"medium"_s, u"high"_s}.indexOf(quality);
  if (column < 0) return std::nullopt;
  const bool square = size == u"1024x1024"_s;
  for (const RecordedPrice& row : recordedPrices) {
    if (QStringView(row.model) == model && row.square == square)
      return row.dollars.at(static_cast<std::size_t>(column));
  }
  return std::nullopt;
}

std::optional<GenerationCost> estimateFor(const Generation& generation) {
  if (generation.provider != openAIName() || generation.estimatedCost) return std::nullopt;
  const QJsonObject parameters = QJsonDocument::fromJson(generation.parametersJSON).object();
  const QJsonValue size = parameters.value(u"size"_s);
  const QJsonValue quality = parameters.value(u"quality"_s);
  if (!size.isString() || !quality.isString()) return std::nullopt;
  return openAIOutputEstimate(generation.model, size.toString(), quality.toString());
}

}  // namespace

std::optional<GenerationCost> openAIOutputEstimate(const QString& model, const QString& size, const QString& quality) {
  const auto dollars = recordedPrice(model, size, quality);
  if (!dollars) return std::nullopt;
  GenerationCost cost;
  cost.perImageUSD = *dollars;
  cost.basis = u"outputOnly"_s;
  cost.note = texts::outputOnlyNote();
  cost.pricingDate = u"2026-10-06"_s;
  cost.source = texts::openAIGuide();
  return cost;
}

void backfillOutputCostEstimates(LibraryStore& store) {
  const std::vector<GenerationRef> generations = store.generations();
  bool any = false;
  for (const GenerationRef& generation : generations) {
    const auto cost = estimateFor(*generation);
    if (!cost) continue;
    recordCost(store.context().edit(generation), *cost);
    any = true;
  }
  if (!any) return;
  try {
    store.save(LibraryTables::generations);
  } catch (...) {
    store.rollBack();
    throw;
  }
}

}  // namespace sorvan::catalogue
