// Figures after the fact for old records, made when the program still spoke to OpenAI directly.
#pragma once

#include <QString>

#include <optional>

#include "catalogue/room.h"
#include "core/library_store.h"
#include "core/request_values.h"

namespace sorvan::catalogue {

/// What one picture cost at the recorded list prices, input not counted. Nothing for another model or quality.
std::optional<GenerationCost> openAIOutputEstimate(const QString& model, const QString& size, const QString& quality);

/// Gives each generation of OpenAI that has no cost its estimate. Run once a library has loaded; nothing that stands is
/// written over. Throws SorvanError with nothing changed when it cannot be saved. Thread: the main one.
void backfillOutputCostEstimates(LibraryStore& store);

}  // namespace sorvan::catalogue
