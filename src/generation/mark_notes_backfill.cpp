#include "generation/mark_notes_backfill.h"

#include <algorithm>

#include "base/json.h"
#include "generation/generation_request.h"
#include "generation/markup.h"

namespace sorvan::generation {
namespace {

/// A note as it stands in a prompt: `Markup::prompt` drops a final full stop.
QString asWritten(const QString& note) {
  const QString text = note.trimmed();
  return text.endsWith(u'.') ? text.chopped(1) : text;
}

bool lacks(const QString& prompt, const MarkupBox& box) {
  const QString note = asWritten(box.note);
  return !note.trimmed().isEmpty() && !prompt.contains(note, Qt::CaseInsensitive);
}

/// Nearly all requests have no marks, and to decode every request of a library only to see that takes seconds.
bool mayHaveMarks(const Generation& generation) {
  return generation.recipeData && generation.recipeData->contains("\"markup\"");
}

void fill(LibraryStore& store, const GenerationRef& generation) {
  if (!mayHaveMarks(*generation)) return;
  const auto recipe = generation->recipe();
  if (!recipe || !hasNotedMarks(*recipe)) return;
  const QString prompt = withMissingNotes(generation->prompt, *recipe->markup);
  const QString recipePrompt = withMissingNotes(recipe->prompt, *recipe->markup);
  if (prompt == generation->prompt && recipePrompt == recipe->prompt) return;
  Generation& changed = store.context().edit(generation);
  changed.prompt = prompt;
  if (recipePrompt == recipe->prompt) return;
  GenerationRequest request = *recipe;
  request.prompt = recipePrompt;
  changed.recipeData = encodeJson(request);
}

}  // namespace

QString withMissingNotes(const QString& prompt, const std::vector<MarkupBox>& boxes) {
  std::vector<MarkupBox> missing;
  std::copy_if(boxes.begin(), boxes.end(), std::back_inserter(missing),
               [&](const MarkupBox& box) { return lacks(prompt, box); });
  return missing.empty() ? prompt : Markup::prompt(prompt, missing);
}

void backfillMarkNotes(LibraryStore& store) {
  for (const GenerationRef& generation : store.generations())
    if (generation->status != QStringLiteral("imported")) fill(store, generation);
}

}  // namespace sorvan::generation
