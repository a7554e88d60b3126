// Libraries of every earlier form, opened with the steps that fill old rows as the program registers them.
#include "catalogue/openai_pricing.h"
#include "core/old_workspace.h"
#include "generation/mark_notes_backfill.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

class AnOldLibrary : public test::OldWorkspaceFixture, public testing::WithParamInterface<int> {
 protected:
  AnOldLibrary() {
    store.openingBackfills.emplace_back(backfillOutputCostEstimates);
    store.openingBackfills.emplace_back(generation::backfillMarkNotes);
    makeOld(GetParam());
    runScript(
        u"UPDATE Generation SET parametersJSON = '{\"size\":\"1024x1024\",\"quality\":\"medium\"}' "
        "WHERE provider = 'OpenAI'"_s);
  }
  GenerationRef generationOf(const char* asset) const {
    return store.generationOf(uuidFromText(QLatin1StringView(asset)));
  }
  GenerationRef marked() const { return generationOf("00000002-0000-4000-8000-000000000001"); }
  GenerationRef retired() const { return generationOf("00000002-0000-4000-8000-000000000003"); }
};
INSTANTIATE_TEST_SUITE_P(Schemas, AnOldLibrary, testing::Range(1, 8));

TEST_P(AnOldLibrary, GetsTheNotesOfItsMarksIntoPromptAndRecipeOnceAndKeepsTheirJobs) {
  open();
  EXPECT_EQ(store.error(), std::nullopt);
  ASSERT_TRUE(marked() && marked()->recipe());
  const QString prompt = marked()->prompt;
  EXPECT_EQ(prompt, u"make it dusk. a red lantern"_s);
  EXPECT_EQ(marked()->recipe()->prompt, prompt);
  ASSERT_TRUE(store.job(marked()->jobID)->request());
  EXPECT_EQ(store.job(marked()->jobID)->request()->prompt, u"make it dusk"_s) << "what was sent stays what was sent";
  reopen();
  EXPECT_EQ(marked()->prompt, prompt);
  EXPECT_FALSE(store.context().hasChanges());
}

TEST_P(AnOldLibrary, KeepsTheRowsOfTheProviderThatIsGoneAndEstimatesWhatTheyCost) {
  open();
  ASSERT_TRUE(retired() && retired()->recipe());
  EXPECT_EQ(retired()->provider, u"OpenAI"_s);
  EXPECT_EQ(retired()->recipe()->provider, ProviderID::openAI);
  EXPECT_EQ(retired()->recipe()->model, u"gpt-image-1"_s);
  EXPECT_EQ(retired()->estimatedCost, 0.042);
  EXPECT_EQ(marked()->estimatedCost, 0.08) << "a cost that is known is not written over";
  reopen();
  EXPECT_EQ(retired()->estimatedCost, 0.042) << "it was saved";
}

}  // namespace
}  // namespace sorvan::catalogue
