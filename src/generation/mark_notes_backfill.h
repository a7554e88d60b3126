// Prompts of old marked edits that do not hold the words of their marks yet.
#pragma once

#include "core/library_store.h"
#include "generation/room.h"

namespace sorvan::generation {

/// The prompt with the notes that it lacks; the prompt itself when it lacks none. Doing it twice changes nothing more.
QString withMissingNotes(const QString& prompt, const std::vector<MarkupBox>& boxes);

/// Writes the notes of marks into the prompts of generated items and of their requests, as a new request has them.
/// Imported items and the prompt as it was first typed stay. Saves nothing: a step of opening a workspace, which saves
/// all of its steps together. Main thread.
void backfillMarkNotes(LibraryStore& store);

}  // namespace sorvan::generation
