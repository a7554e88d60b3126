#include "shell/catalogue_browser.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QUrlQuery>

#include "desk.h"
#include "service_pages.h"
#include "support/text_printers.h"

namespace sorvan::shell {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using test::cataloguePage;
using test::modelDocument;
using test::Takes;

const QString pages = u"/v1/models?"_s;
const QString documents = u"/api/openapi/queue/openapi.json"_s;
const QString editor = u"fal-ai/nano-banana-2/edit"_s;
const QString editorKey = u"fal.ai:fal-ai/nano-banana-2/edit"_s;
constexpr int editing = 1;

struct CatalogueBrowserTest : testing::Test {
  CatalogueBrowserTest() { desk.key.reset(); }  // prices are another matter

  void type(const QString& words) {
    desk.browser.editWords(words);
    desk.clock->advance(300ms);
    test::runPosted();
  }
  BrowserRow row(const QString& id) const {
    for (const BrowserRow& each : desk.browser.display().rows)
      if (each.id == id) return each;
    return {};
  }
  QStringList names() const {
    QStringList all;
    for (const BrowserRow& each : desk.browser.display().rows) all << each.name;
    return all;
  }
  void publish(const QString& id, Takes takes) { desk.web->on("GET", documents).answers(200, modelDocument(id, takes)); }
  void add(const QString& id) {
    desk.browser.add(id);
    test::runUntil([&] { return row(id).state != BrowserRowState::adding; });
  }
  QUrlQuery asked(qsizetype index) const {
    return QUrlQuery(desk.web->requests(pages).at(static_cast<std::size_t>(index)).url);
  }

  test::Desk desk;
};

TEST_F(CatalogueBrowserTest, TheRecommendationsOfEachCategoryNeedNoService) {
  const BrowserDisplay first = desk.browser.display();
  EXPECT_EQ(first.state, BrowserState::recommended);
  EXPECT_EQ(first.rows.size(), 13u);
  EXPECT_EQ(first.rows.front().badge, u"Top rated"_s);
  desk.browser.chooseCategory(3);
  EXPECT_EQ(desk.browser.display().rows.size(), 11u);
  EXPECT_EQ(desk.browser.display().rows.front().id, u"minimax/h3-max/image-to-video"_s);
  test::runPosted();
  EXPECT_TRUE(desk.web->requests(pages).empty());
  EXPECT_EQ(desk.browser.display().note,
            u"The list and each model's settings come from the model provider's public catalog."_s);
}

TEST_F(CatalogueBrowserTest, TypingAsksOnceItPausesAndOnlyForTheLastWords) {
  desk.web->on("GET", pages).answersJson(cataloguePage({{u"acme/brush"_s, u"Brush"_s}}));
  desk.browser.chooseCategory(editing);
  desk.browser.editWords(u"b"_s);
  desk.clock->advance(200ms);
  test::runPosted();
  desk.browser.editWords(u"br"_s);
  EXPECT_EQ(desk.browser.display().state, BrowserState::searching);
  EXPECT_EQ(desk.browser.display().heading, u"Searching…"_s);
  EXPECT_FALSE(desk.browser.display().rows.empty()) << "what was there stays until the answer";
  desk.clock->advance(200ms);
  test::runPosted();
  EXPECT_TRUE(desk.web->requests(pages).empty());
  desk.clock->advance(100ms);
  test::runPosted();
  ASSERT_EQ(desk.web->requests(pages).size(), 1u);
  EXPECT_EQ(asked(0).queryItemValue(u"q"_s), u"br"_s);
  EXPECT_EQ(asked(0).queryItemValue(u"category"_s), u"image-to-image"_s);
  EXPECT_EQ(desk.browser.display().state, BrowserState::results);
  EXPECT_EQ(names(), QStringList{u"Brush"_s});
}

TEST_F(CatalogueBrowserTest, AnAnswerToOlderWordsIsNotShown) {
  base::Completion slow;
  desk.web->on("GET", u"q=old"_s).answersJson(cataloguePage({{u"acme/old"_s, u"Old"_s}})).after(slow);
  desk.web->on("GET", u"q=new"_s).answersJson(cataloguePage({{u"acme/new"_s, u"New"_s}}));
  type(u"old"_s);
  type(u"new"_s);
  slow.finish();
  test::runPosted();
  EXPECT_EQ(names(), QStringList{u"New"_s});
}

TEST_F(CatalogueBrowserTest, ErasedWordsBringTheRecommendationsBackAtOnce) {
  desk.web->on("GET", pages).answersJson(cataloguePage({{u"acme/brush"_s, u"Brush"_s}})).repeating();
  type(u"brush"_s);
  ASSERT_EQ(names(), QStringList{u"Brush"_s});
  desk.browser.editWords(u"  "_s);
  EXPECT_EQ(desk.browser.display().state, BrowserState::recommended);
  EXPECT_EQ(desk.browser.display().rows.size(), 13u);
}

TEST_F(CatalogueBrowserTest, PagesFollowUntilTheEndWithoutRepeatingARow) {
  desk.web->on("GET", pages).answersJson(cataloguePage({{u"a/3"_s, u"Three"_s}}));
  desk.web->on("GET", u"cursor=Mg"_s)
      .answersJson(cataloguePage({{u"a/1"_s, u"One"_s}, {u"a/2"_s, u"Two"_s}}, u"Mw=="_s));
  desk.web->on("GET", u"cursor=Mw"_s).answersJson(cataloguePage({{u"a/3"_s, u"Three"_s}}));
  desk.web->on("GET", u"q=brush"_s).answersJson(cataloguePage({{u"a/1"_s, u"One"_s}}, u"Mg=="_s));
  type(u"brush"_s);
  EXPECT_TRUE(desk.browser.display().hasMore);
  EXPECT_EQ(desk.browser.display().heading, u"1 model and more"_s);
  desk.browser.loadMore();
  EXPECT_TRUE(desk.browser.display().loadingMore);
  desk.browser.loadMore();
  test::runPosted();
  EXPECT_EQ(names(), (QStringList{u"One"_s, u"Two"_s}));
  desk.browser.loadMore();
  test::runPosted();
  EXPECT_EQ(names(), (QStringList{u"One"_s, u"Two"_s, u"Three"_s}));
  EXPECT_FALSE(desk.browser.display().hasMore);
  desk.browser.loadMore();
  test::runPosted();
  EXPECT_EQ(desk.web->requests(pages).size(), 3u);
  EXPECT_EQ(desk.browser.display().heading, u"3 models"_s);
}

TEST_F(CatalogueBrowserTest, PagesWithoutAUsableRowArePassedOver) {
  desk.web->on("GET", u"cursor=Mw"_s).answersJson(cataloguePage({{u"a/1"_s, u"One"_s}}));
  desk.web->on("GET", u"cursor=Mg"_s).answersJson(cataloguePage({}, u"Mw=="_s));
  desk.web->on("GET", u"q=brush"_s).answersJson(cataloguePage({}, u"Mg=="_s));
  type(u"brush"_s);
  test::runPosted();
  EXPECT_EQ(names(), QStringList{u"One"_s});
}

TEST_F(CatalogueBrowserTest, AListThatLeadsBackToItselfEnds) {
  desk.web->on("GET", u"cursor=Mw"_s).answersJson(cataloguePage({}, u"Mg=="_s)).repeating();
  desk.web->on("GET", u"cursor=Mg"_s).answersJson(cataloguePage({}, u"Mw=="_s)).repeating();
  desk.web->on("GET", u"q=brush"_s).answersJson(cataloguePage({{u"a/1"_s, u"One"_s}}, u"Mg=="_s));
  type(u"brush"_s);
  desk.browser.loadMore();
  test::runPosted();
  EXPECT_FALSE(desk.browser.display().loadingMore);
  EXPECT_FALSE(desk.browser.display().hasMore);
  EXPECT_LE(desk.web->requests(pages).size(), 4u);
}

TEST_F(CatalogueBrowserTest, APageThatDoesNotComeLeavesTheRowsAndIsAskedForAgain) {
  desk.web->on("GET", u"cursor=Mg"_s)
      .fails(platform::HttpProblem::Interrupted, u"The line broke."_s)
      .answersJson(cataloguePage({{u"a/2"_s, u"Two"_s}}));
  desk.web->on("GET", u"q=brush"_s).answersJson(cataloguePage({{u"a/1"_s, u"One"_s}}, u"Mg=="_s));
  type(u"brush"_s);
  desk.browser.loadMore();
  test::runPosted();
  EXPECT_EQ(names(), QStringList{u"One"_s});
  EXPECT_EQ(desk.browser.display().moreProblem, u"The line broke."_s);
  EXPECT_FALSE(desk.browser.display().loadingMore);
  desk.browser.loadMore();
  test::runPosted();
  EXPECT_EQ(names(), (QStringList{u"One"_s, u"Two"_s}));
  EXPECT_EQ(desk.browser.display().moreProblem, QString());
}

TEST_F(CatalogueBrowserTest, WithoutAServiceTheSearchFailsWithItsReasonAndTheRecommendationsStay) {
  desk.web->on("GET", pages)
      .fails(platform::HttpProblem::CannotConnect, u"Host api.fal.ai not found"_s)
      .answersJson(cataloguePage({{u"a/1"_s, u"One"_s}}));
  type(u"brush"_s);
  const BrowserDisplay failed = desk.browser.display();
  EXPECT_EQ(failed.state, BrowserState::failed);
  EXPECT_EQ(failed.title, u"The catalog could not be read"_s);
  EXPECT_EQ(failed.text, u"Host api.fal.ai not found"_s);
  EXPECT_TRUE(failed.rows.empty());
  desk.browser.searchAgain();
  test::runPosted();
  EXPECT_EQ(names(), QStringList{u"One"_s});
  type({});
  EXPECT_EQ(desk.browser.display().rows.size(), 13u);
}

TEST_F(CatalogueBrowserTest, WordsThatNothingMatchesAreNamed) {
  desk.web->on("GET", pages).answersJson(cataloguePage({}));
  type(u" zzz "_s);
  EXPECT_EQ(desk.browser.display().title, u"No model found"_s);
  EXPECT_EQ(desk.browser.display().text, u"Nothing in this category matches “zzz”. Try another category."_s);
}

TEST_F(CatalogueBrowserTest, TheWholeCategoryIsShownWithoutWords) {
  desk.web->on("GET", pages).answersJson(cataloguePage({{u"a/1"_s, u"One"_s}}));
  EXPECT_FALSE(desk.browser.display().allTitle.isEmpty());
  desk.browser.showAll();
  test::runPosted();
  EXPECT_FALSE(asked(0).hasQueryItem(u"q"_s));
  EXPECT_EQ(names(), QStringList{u"One"_s});
  EXPECT_TRUE(desk.browser.display().allTitle.isEmpty());
}

TEST_F(CatalogueBrowserTest, ALicenceForResearchOnlyIsSaid) {
  desk.web->on("GET", pages)
      .answersJson(cataloguePage({{u"a/1"_s, u"One"_s, u"research"_s}, {u"a/2"_s, u"Two"_s}}));
  type(u"brush"_s);
  EXPECT_EQ(row(u"a/1"_s).licence, u"Research use only"_s);
  EXPECT_EQ(row(u"a/2"_s).licence, QString());
}

TEST_F(CatalogueBrowserTest, AnAddedModelIsOfferedByTheComposerAtOnceAndAfterTheNextStart) {
  publish(editor, Takes::image);
  desk.browser.chooseCategory(editing);
  EXPECT_EQ(row(editor).state, BrowserRowState::offered);
  desk.browser.add(editor);
  EXPECT_EQ(row(editor).state, BrowserRowState::adding);
  EXPECT_EQ(row(editor).stateText, u"Reading this model's settings…"_s);
  test::runUntil([&] { return row(editor).state == BrowserRowState::added; });
  EXPECT_EQ(row(editor).stateText, u"Added"_s);
  EXPECT_EQ(row(editor).key, editorKey);
  desk.composer.chooseOnlyModel(editorKey);
  EXPECT_EQ(desk.composer.display().modelLabel, u"Nano Banana 2 Edit"_s);
  EXPECT_TRUE(catalogue::FalCatalog(desk.settings).model(editor));
}

TEST_F(CatalogueBrowserTest, ModelsThatComeWithTheProgramAreMarkedAndStay) {
  const BrowserRow builtIn = row(u"fal-ai/nano-banana-2"_s);
  EXPECT_EQ(builtIn.state, BrowserRowState::builtIn);
  EXPECT_EQ(builtIn.stateText, u"Built in"_s);
  desk.browser.remove(builtIn.id);
  EXPECT_TRUE(desk.alerts.toasts().empty());
  EXPECT_EQ(row(builtIn.id).state, BrowserRowState::builtIn);
}

TEST_F(CatalogueBrowserTest, ARefusedModelSaysWhyUnderItsRowAndNothingIsStored) {
  publish(editor, Takes::mask);
  desk.browser.chooseCategory(editing);
  add(editor);
  EXPECT_EQ(row(editor).state, BrowserRowState::offered);
  EXPECT_EQ(row(editor).problem, u"Nano Banana 2 Edit needs inputs Sorvan cannot supply yet: mask_url."_s);
  EXPECT_TRUE(desk.catalog->added().empty());
  publish(editor, Takes::image);
  desk.browser.add(editor);
  EXPECT_EQ(row(editor).problem, QString()) << "a second try begins without the first one's reason";
  test::runUntil([&] { return row(editor).state == BrowserRowState::added; });
}

TEST_F(CatalogueBrowserTest, AddingThatIsStoppedAddsNothing) {
  base::Completion slow;
  desk.web->on("GET", documents).answers(200, modelDocument(editor, Takes::image)).after(slow);
  desk.browser.chooseCategory(editing);
  desk.browser.add(editor);
  test::runPosted();
  desk.browser.cancelAdding(editor);
  EXPECT_EQ(row(editor).state, BrowserRowState::offered);
  slow.finish();
  test::runPosted();
  EXPECT_TRUE(desk.catalog->added().empty());
  EXPECT_EQ(row(editor).problem, QString());
}

TEST_F(CatalogueBrowserTest, TwoModelsAreAddedSideBySide) {
  const QString other = u"bytedance/seedream/v5/pro/edit"_s;
  desk.web->on("GET", u"nano-banana-2"_s).answers(200, modelDocument(editor, Takes::image));
  desk.web->on("GET", u"seedream"_s).answers(200, modelDocument(other, Takes::image));
  desk.browser.chooseCategory(editing);
  desk.browser.add(editor);
  desk.browser.add(other);
  test::runUntil([&] { return desk.catalog->added().size() == 2; });
  EXPECT_EQ(row(other).state, BrowserRowState::added);
}

TEST_F(CatalogueBrowserTest, ARemovedModelLeavesTheComposerAndUndoBringsItBackAsItWas) {
  const QString other = u"bytedance/seedream/v5/pro/edit"_s;
  desk.web->on("GET", u"nano-banana-2"_s).answers(200, modelDocument(editor, Takes::image));
  desk.web->on("GET", u"seedream"_s).answers(200, modelDocument(other, Takes::image));
  desk.browser.chooseCategory(editing);
  add(editor);
  add(other);
  desk.composer.chooseOnlyModel(editorKey);
  const std::vector<FalModel> before = desk.catalog->added();
  desk.browser.remove(editor);
  EXPECT_EQ(row(editor).state, BrowserRowState::offered);
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{ComposerState::defaultModel});
  ASSERT_EQ(desk.alerts.toasts().size(), 1u);
  EXPECT_EQ(desk.alerts.toasts()[0].text, u"Nano Banana 2 Edit was removed."_s);
  EXPECT_EQ(desk.alerts.toasts()[0].actionTitle, u"Undo"_s);
  desk.alerts.performToastAction(desk.alerts.toasts()[0].id);
  EXPECT_EQ(desk.catalog->added(), before);
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{editorKey});
  EXPECT_EQ(catalogue::FalCatalog(desk.settings).added(), before);
}

TEST_F(CatalogueBrowserTest, UndoKeepsWhatWasChosenMeanwhile) {
  publish(editor, Takes::image);
  desk.browser.chooseCategory(editing);
  add(editor);
  desk.composer.chooseOnlyModel(editorKey);
  desk.browser.remove(editor);
  const QString schnell = u"fal.ai:fal-ai/flux/schnell"_s;
  desk.composer.chooseOnlyModel(schnell);
  desk.alerts.performToastAction(desk.alerts.toasts()[0].id);
  EXPECT_EQ(desk.composing.selectedModels(), (QSet<QString>{schnell, editorKey}));
}

TEST_F(CatalogueBrowserTest, AJobOfARemovedModelRunsToItsEnd) {
  publish(editor, Takes::words);
  desk.browser.chooseCategory(editing);
  add(editor);
  desk.key = u"secret"_s;
  desk.composer.chooseOnlyModel(editorKey);
  desk.provider->gate.emplace();
  desk.generate(u"a red boat"_s);
  ASSERT_EQ(desk.newestJob()->request()->model, editor);
  desk.browser.remove(editor);
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.newestJob()->status, core::jobStatus::complete);
  EXPECT_EQ(desk.store.assets().size(), 1u);
}

TEST_F(CatalogueBrowserTest, ModelsOfAnOlderReaderAreReadAgainAndTheComposerHasTheNewOnes) {
  publish(editor, Takes::image);
  desk.browser.chooseCategory(editing);
  add(editor);
  FalModel old = *desk.catalog->model(editor);
  old.maxInputs.reset();
  old.imageInput = catalogue::NoInput();
  desk.catalog->add(old);
  desk.composing.setModels(composer::selectableModels(*desk.catalog));
  desk.composer.chooseOnlyModel(editorKey);
  EXPECT_FALSE(desk.composing.chosenModels().front().comparison.model.supportsReferences);
  publish(editor, Takes::image);
  desk.browser.rereadModels(desk.settings);
  test::runUntil([&] { return desk.composing.chosenModels().front().comparison.model.supportsReferences; });
  EXPECT_EQ(desk.settings->get<int>(u"falReaderVersion"_s, 0), catalogue::falReaderVersion);
}

TEST_F(CatalogueBrowserTest, RowsShowTheListPriceAndItsDay) {
  desk.key = u"secret"_s;
  desk.web->on("GET", u"/v1/models/pricing"_s)
      .answersJson(test::priceList({{editor, 0.039}, {u"bytedance/seedream/v5/pro/edit"_s, 0.06, u"1000 tokens"_s}}))
      .repeating();
  desk.browser.chooseCategory(editing);
  EXPECT_EQ(row(editor).price, QString()) << "nothing is said before the service has answered";
  test::runUntil([&] { return !row(editor).price.isEmpty(); });
  EXPECT_EQ(row(editor).price, u"$0.039 / image"_s);
  EXPECT_EQ(row(editor).priceDate, u"as of 9 May 2026"_s);
  EXPECT_EQ(row(u"bytedance/seedream/v5/pro/edit"_s).price, u"$0.06 / 1000 tokens"_s);
  EXPECT_EQ(row(u"fal-ai/birefnet/v2"_s).price, u"Price unavailable"_s);
}

TEST_F(CatalogueBrowserTest, ABrowserThatGoesWhileItIsAnsweredTouchesNothingAnyMore) {
  base::Completion slow;
  desk.web->on("GET", pages).answersJson(cataloguePage({{u"a/1"_s, u"One"_s}})).after(slow);
  desk.web->on("GET", documents).answers(200, modelDocument(editor, Takes::image)).after(slow);
  {
    CatalogueBrowser brief({catalogue::CatalogClient(desk.web), desk.catalog, desk.clock, desk.composing, desk.alerts,
                            desk.prices});
    brief.chooseCategory(editing);
    brief.add(editor);
    brief.showAll();
    test::runPosted();
  }
  slow.finish();
  test::runPosted();
  EXPECT_TRUE(desk.catalog->added().empty());
}

}  // namespace
}  // namespace sorvan::shell
