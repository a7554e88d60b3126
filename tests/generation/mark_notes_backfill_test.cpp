#include "generation/mark_notes_backfill.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "base/json.h"
#include "generation/studio.h"

namespace sorvan::generation {
namespace {

using namespace test;

TEST(MissingNotes, AreWrittenIntoThePromptOnce) {
  const std::vector<MarkupBox> boxes{markedBox(QStringLiteral("a lamp.")), markedBox(QStringLiteral(" ")),
                                     markedBox(QStringLiteral("a cat"))};
  const QString once = withMissingNotes(QStringLiteral("Make it night."), boxes);
  EXPECT_EQ(once, QStringLiteral("Make it night. a lamp. a cat"));
  EXPECT_EQ(withMissingNotes(once, boxes), once);
}

TEST(MissingNotes, ThatStandThereInAnotherCaseAreNotMissing) {
  const QString prompt = QStringLiteral("Give her a RED HAT.");
  EXPECT_EQ(withMissingNotes(prompt, {markedBox(QStringLiteral("a red hat."))}), prompt);
}

TEST(MissingNotes, OfAnyPromptAreWrittenOnce) {
  const bool held = rc::check([] {
    const auto text = rc::gen::map(rc::gen::container<std::string>(rc::gen::element('a', 'b', ' ', '.', 'A')),
                                   [](const std::string& letters) { return QString::fromStdString(letters); });
    const auto notes = *rc::gen::container<std::vector<QString>>(text);
    std::vector<MarkupBox> boxes;
    for (const QString& note : notes) boxes.push_back(markedBox(note));
    const QString once = withMissingNotes(*text, boxes);
    RC_ASSERT(withMissingNotes(once, boxes) == once);
  });
  EXPECT_TRUE(held);
}

/// An item that was made before notes were written into prompts.
GenerationRef oldItem(Studio& studio, const QString& status) {
  GenerationRequest request = promptRequest(QStringLiteral("old words"));
  const JobRef job = studio.finished(request);
  request.markup = {markedBox(QStringLiteral("a lamp"))};
  const GenerationRef item = studio.store->generationOf(studio.store->outputs(job->id).at(0)->id);
  Generation& changed = studio.store->context().edit(item);
  changed.recipeData = encodeJson(request);
  changed.status = status;
  studio.store->save(LibraryTables::generations);
  return item;
}

TEST(OldMarkedEdits, GetTheirNotesIntoTheirPromptsWhenTheWorkspaceOpens) {
  Studio studio;
  const GenerationRef item = oldItem(studio, QStringLiteral("complete"));
  backfillMarkNotes(*studio.store);
  EXPECT_EQ(item->prompt, QStringLiteral("old words. a lamp"));
  EXPECT_EQ(item->recipe()->prompt, QStringLiteral("old words. a lamp"));
  studio.store->save(LibraryTables::generations);
  backfillMarkNotes(*studio.store);
  EXPECT_FALSE(studio.store->context().hasChanges());
}

TEST(OldMarkedEdits, ThatWereImportedStayAsTheyAre) {
  Studio studio;
  const GenerationRef item = oldItem(studio, QStringLiteral("imported"));
  backfillMarkNotes(*studio.store);
  EXPECT_EQ(item->prompt, QStringLiteral("old words"));
  EXPECT_FALSE(studio.store->context().hasChanges());
}

}  // namespace
}  // namespace sorvan::generation
