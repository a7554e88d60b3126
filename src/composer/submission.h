// From what the composer holds to what the queue is given.
#pragma once

#include <QString>
#include <QUuid>

#include <cstdint>
#include <optional>
#include <vector>

#include "composer/composer_state.h"
#include "composer/intent.h"
#include "core/library_store.h"
#include "generation/job_queue.h"

namespace sorvan::composer {

/// One press of Generate, as it stood when it was pressed.
struct Submission {
  GenerationRequest request;
  std::vector<ComparisonModel> models;  ///< in catalogue order, at least one
  std::optional<QUuid> project;         ///< none is the Inbox
  QString note;                         ///< what to say once it is in the queue

  bool isComparison() const { return models.size() > 1; }
};

/// Reads a seed: whole decimal digits with an optional sign, zero or more and within 64 bits; empty text is no seed.
/// Blanks around it are not read over. Throws SorvanError.
std::optional<std::int64_t> readSeed(const QString& text);

/// The submission of an instruction. `selected` are the items that its "selected images" would be. Throws SorvanError
/// with the first thing that is missing; changes nothing.
Submission makeSubmission(const LibraryStore& store, const ComposerState& state,
                          const GenerationInstruction& instruction, const std::vector<AssetRef>& selected);

/// Into the queue: one request, or one for each model; then the id of their comparison. Throws before anything
/// changed.
std::optional<QUuid> enqueue(JobQueue& queue, const Submission& submission);

}  // namespace sorvan::composer
