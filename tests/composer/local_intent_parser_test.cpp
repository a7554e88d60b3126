#include "composer/local_intent_parser.h"

#include <gtest/gtest.h>

#include "composer/command_texts.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;

constexpr auto referenceFor = RelationshipType::referenceFor;

GenerationInstruction prompt(const QString& words, std::optional<std::int64_t> count = {}) {
  return {words, count, false, referenceFor};
}

struct Case {
  QString text;
  SorvanIntent intent;
};

void expectAll(const std::vector<Case>& table) {
  for (const Case& row : table) {
    const SorvanIntent intent = LocalIntentParser::parse(row.text);
    EXPECT_TRUE(intent == row.intent) << row.text.toStdString() << " was read as " << label(intent).toStdString()
                                      << " (" << presentationKey(intent).toStdString() << ")";
  }
}

const SorvanIntent notSupported = Unknown{texts::commandNotSupported()};
const SorvanIntent useTrash = Unknown{texts::useMoveToTrash()};
const SorvanIntent noVideo = Unsupported{texts::noVideoOrAudio()};

TEST(LocalIntentParser, AnEmptyTextIsAskedFor) {
  expectAll({{u""_s, Unknown{texts::describeOrCommand()}}, {u" \n\t "_s, Unknown{texts::describeOrCommand()}}});
}

TEST(LocalIntentParser, AStatusIsSetOrShownByWholeSentencesOnly) {
  expectAll({{u"mark selected as approved"_s, SetAssetStatus{AssetStatus::approved}},
             {u"  Mark THESE as Draft "_s, SetAssetStatus{AssetStatus::draft}},
             {u"final selected"_s, SetAssetStatus{AssetStatus::final}},
             {u"show shortlist images"_s, FilterAssets{AssetStatus::shortlist}},
             {u"show approved media"_s, FilterAssets{AssetStatus::approved}},
             {u"reject selected"_s, SetAssetStatus{AssetStatus::rejected}},
             {u"reject these"_s, SetAssetStatus{AssetStatus::rejected}},
             {u"show approved"_s, notSupported},
             {u"mark selected as approved please"_s, notSupported},
             {u"reject this one"_s, notSupported}});
}

TEST(LocalIntentParser, AProjectIsMadeAndMovedToByTheNameAsTyped) {
  expectAll({{u"create a new project called Autumn Ads"_s, CreateProject{u"Autumn Ads"_s}},
             {u"Add project named été"_s, CreateProject{u"été"_s}},
             {u"make a project called X"_s, CreateProject{u"X"_s}},
             {u"create a new project"_s, notSupported},
             {u"create a project"_s, prompt(u"a project"_s)},
             {u"move selected images to Alpha"_s, MoveAssets{u"Alpha"_s}},
             {u"Move the selected media to Alpha Two"_s, MoveAssets{u"Alpha Two"_s}},
             {u"move these to B"_s, MoveAssets{u"B"_s}},
             {u"move these images to B"_s, MoveAssets{u"B"_s}},
             {u"move the cat to the left"_s, notSupported}});
}

TEST(LocalIntentParser, FavoritesAreAddedAndRemovedByTheirSentences) {
  expectAll({{u"favorite selected"_s, FavoriteAssets{true}},
             {u"favorite these please"_s, FavoriteAssets{true}},
             {u"favorite the selected ones"_s, FavoriteAssets{true}},
             {u"favourite these"_s, FavoriteAssets{true}},
             {u"favorite selection"_s, FavoriteAssets{true}},
             {u"unfavorite these"_s, FavoriteAssets{false}},
             {u"remove favorites"_s, FavoriteAssets{false}},
             {u"remove favorites from selected images"_s, FavoriteAssets{false}},
             {u"favorite cats"_s, notSupported},
             {u"favourite selected"_s, prompt(u"favourite selected"_s)},
             {u"unfavorite"_s, prompt(u"unfavorite"_s)}});
}

TEST(LocalIntentParser, ViewsAreOpened) {
  expectAll({{u"compare"_s, CompareAssets{}},
             {u"Compare these"_s, CompareAssets{}},
             {u"compare the selected images"_s, CompareAssets{}},
             {u"compare selected"_s, CompareAssets{}},
             {u"compare cats and dogs"_s, notSupported},
             {u"show the lineage of this"_s, ShowLineage{}},
             {u"view lineage"_s, ShowLineage{}},
             {u"lineage"_s, prompt(u"lineage"_s)},
             {u"show gallery"_s, ShowGallery{}},
             {u"show all images"_s, ShowGallery{}},
             {u"back to gallery"_s, ShowGallery{}}});
}

TEST(LocalIntentParser, FiltersAreFoundByWordsInTheirOrder) {
  expectAll({{u"show flux images"_s, FilterAssets{ModelFilter{u"flux"_s}}},
             {u"filter by OpenAI"_s, FilterAssets{ModelFilter{u"gpt-image"_s}}},
             {u"show gpt favorites"_s, FilterAssets{ModelFilter{u"gpt-image"_s}}},
             {u"show my favourites"_s, FilterAssets{FavoritesFilter{}}},
             {u"filter videos"_s, FilterAssets{MediaType::video}},
             {u"show images"_s, FilterAssets{MediaType::image}},
             {u"find images I generated last week"_s, FilterAssets{GeneratedLastWeek{}}},
             {u"show last week"_s, Unknown{texts::tryLastWeek()}},
             {u"show everything"_s, notSupported}});
}

TEST(LocalIntentParser, ASearchLosesTheWordForMediaAtItsEnd) {
  expectAll({{u"find temple images"_s, SearchAssets{u"temple"_s}},
             {u"Search for my Red Cars  PHOTOS"_s, SearchAssets{u"Red Cars"_s}},
             {u"search all boats"_s, SearchAssets{u"boats"_s}},
             {u"find images"_s, SearchAssets{u"images"_s}},
             {u"find images of cats"_s, SearchAssets{u"images of cats"_s}},
             {u"find"_s, prompt(u"find"_s)},
             {u"finding a way"_s, prompt(u"finding a way"_s)}});
}

TEST(LocalIntentParser, WhatTheComposerDoesNotDoIsRefused) {
  expectAll({{u"generate a video of cats"_s, noVideo},
             {u"animate this"_s, noVideo},
             {u"make some music"_s, noVideo},
             {u"turn it into audio"_s, noVideo},
             {u"turn it into stone"_s, prompt(u"turn it into stone"_s)},
             {u"remove selected photos"_s, useTrash},
             {u"remove all my projects now"_s, useTrash},
             {u"remove images from the library"_s, useTrash},
             {u"remove the project Alpha"_s, useTrash},
             {u"remove the projector"_s, prompt(u"remove the projector"_s)},
             {u"remove the tree"_s, prompt(u"remove the tree"_s)},
             {u"delete everything"_s, notSupported},
             {u"/help"_s, notSupported},
             {u"export these"_s, notSupported}});
}

TEST(LocalIntentParser, AVerbAndItsNumberLeaveThePrompt) {
  expectAll({{u"Make 3 cats"_s, prompt(u"cats"_s, 3)},
             {u"make cats"_s, prompt(u"make cats"_s)},
             {u"draw cats"_s, prompt(u"cats"_s)},
             {u"draw  two Cats"_s, prompt(u"Cats"_s, 2)},
             {u"generate 12 cats"_s, prompt(u"cats"_s, 12)},
             {u"generate nine cats"_s, prompt(u"nine cats"_s)},
             {u"generate 0 cats"_s, prompt(u"0 cats"_s)},
             {u"draw 3"_s, prompt(u"draw 3"_s, 3)},
             {u"create EIGHT owls"_s, prompt(u"owls"_s, 8)},
             {u"create 3d letters"_s, prompt(u"3d letters"_s)},
             {u"draw one-eyed cats"_s, prompt(u"draw one-eyed cats"_s, 1)},
             {u"a red bicycle"_s, prompt(u"a red bicycle"_s)},
             {u"generate 99999999999999999999 cats"_s, prompt(u"cats"_s)}});
}

TEST(LocalIntentParser, WordsForTheSelectionMakeItTheReference) {
  expectAll({{u"make this image darker"_s,
              GenerationInstruction{u"make this image darker"_s, {}, true, RelationshipType::editedFrom}},
             {u"a variation of the selected image"_s,
              GenerationInstruction{u"a variation of the selected image"_s, {}, true, RelationshipType::variationOf}},
             {u"a colour variation"_s,
              GenerationInstruction{u"a colour variation"_s, {}, false, RelationshipType::variationOf}}});
}

TEST(LocalIntentParser, InGenerationModeNothingIsACommand) {
  for (const QString& text : {u" find cats "_s, u"generate 3 cats"_s, u"compare"_s, u"/x"_s})
    EXPECT_TRUE(LocalIntentParser::parse(text, ComposerMode::generation) == SorvanIntent(prompt(text.trimmed())));
}

TEST(LocalIntentParser, InCommandModeAPromptIsAnsweredWithTheAdviceToSwitch) {
  const SorvanIntent advice = Unknown{texts::enterCommand()};
  EXPECT_TRUE(LocalIntentParser::parse(u"a red bicycle"_s, ComposerMode::command) == advice);
  EXPECT_TRUE(LocalIntentParser::parse(u"favourite selected"_s, ComposerMode::command) == advice);
  EXPECT_TRUE(LocalIntentParser::parse(u"find cats"_s, ComposerMode::command) == SorvanIntent(SearchAssets{u"cats"_s}));
}

TEST(LocalIntentParser, TextsThatGrowInLowerCaseKeepTheirNames) {
  expectAll({{u"create a project called İİİ"_s, CreateProject{u"İİİ"_s}},
             {u"find İstanbul images"_s, SearchAssets{u"İstanbul"_s}},
             {u"draw 2 İ"_s, prompt(u"İ"_s, 2)}});
}

TEST(LocalIntentParser, APastedMegabyteIsReadAsAnyText) {
  const QString much = u"lorem ipsum "_s.repeated(100'000).trimmed();
  expectAll({{u"find "_s + much, SearchAssets{much}},
             {u"draw 2 "_s + much, prompt(much, 2)},
             {u"remove the project "_s + much, useTrash},
             {much, prompt(much)}});
}

TEST(LocalIntentParser, HalfACharacterIsReadAsAPrompt) {
  const QString broken = u"a fox "_s + QChar(0xd83e);
  expectAll({{broken, prompt(broken)}});
}

TEST(Intent, OnlyWhatShowsChangesItsKey) {
  EXPECT_EQ(presentationKey(prompt(u"a"_s)), presentationKey(prompt(u"another"_s)));
  EXPECT_EQ(presentationKey(prompt(u"a"_s, 3)), u"generate:3:false:referenceFor"_s);
  EXPECT_EQ(presentationKey(Unknown{u"x"_s}), u"unknown"_s);
  EXPECT_EQ(presentationKey(Unsupported{u"x"_s}), u"unsupported"_s);
  EXPECT_EQ(presentationKey(SetAssetStatus{AssetStatus::approved}), u"Mark selected as Approved"_s);
}

TEST(Intent, EachHasItsName) {
  EXPECT_EQ(label(prompt(u"a"_s)), u"Generate"_s);
  EXPECT_EQ(label(SearchAssets{u"a"_s}), u"Find media"_s);
  EXPECT_EQ(label(FilterAssets{FavoritesFilter{}}), u"Filter library"_s);
  EXPECT_EQ(label(CompoundAssetFilter{}), u"Filter library"_s);
  EXPECT_EQ(label(MoveAssets{u"a"_s}), u"Move selected media"_s);
  EXPECT_EQ(label(FavoriteAssets{true}), u"Favorite selected media"_s);
  EXPECT_EQ(label(FavoriteAssets{false}), u"Remove favorites"_s);
  EXPECT_EQ(label(CreateProject{u"a"_s}), u"Create project"_s);
  EXPECT_EQ(label(Unknown{u"a"_s}), u"Review command"_s);
  EXPECT_EQ(label(CompareAssets{}), u"Open contact sheet"_s);
  EXPECT_EQ(label(ShowLineage{}), u"Show lineage"_s);
  EXPECT_EQ(label(ShowGallery{}), u"Show gallery"_s);
}

}  // namespace
}  // namespace sorvan::composer
