#include "composer/remote_action.h"

#include <gtest/gtest.h>

#include "base/json.h"
#include "composer/command_texts.h"
#include "support/failure_of.h"
#include "support/text_printers.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;
using test::failureOf;

RemoteAppAction read(const char* json) { return decodeJson<RemoteAppAction>(QByteArray(json)); }
QString refusal(const char* json) {
  return failureOf([&] { read(json).intent(); });
}

TEST(RemoteAction, EachActionBecomesItsIntent) {
  const std::vector<std::pair<const char*, SorvanIntent>> table{
      {R"({"action":"search","query":"cats"})", SearchAssets{u"cats"_s}},
      {R"({"action":"favorite","enabled":false})", FavoriteAssets{false}},
      {R"({"action":"status","status":"final"})", SetAssetStatus{AssetStatus::final}},
      {R"({"action":"compare"})", CompareAssets{}},
      {R"({"action":"lineage"})", ShowLineage{}},
      {R"({"action":"move","project":"Alpha"})", MoveAssets{u"Alpha"_s}},
      {R"({"action":"createProject","project":"Alpha"})", CreateProject{u"Alpha"_s}},
      {R"({"action":"generate","prompt":"a fox","count":4,"useSelection":true})",
       GenerationInstruction{u"a fox"_s, 4, true, RelationshipType::editedFrom}},
      {R"({"action":"unknown","message":"Which one?"})", Unknown{u"Which one?"_s}},
      {R"({"action":"unknown"})", Unknown{texts::pleaseClarify()}}};
  for (const auto& [json, intent] : table) EXPECT_TRUE(read(json).intent() == intent) << json;
}

TEST(RemoteAction, AFilterTakesAllItsConditions) {
  const SorvanIntent intent = read(R"({"action":"filter","query":"sea","model":"flux","status":"draft","media":"video",
      "orientation":"square","favorites":true,"days":30})")
                                  .intent();
  const CompoundAssetFilter expected{u"sea"_s, u"flux"_s, AssetStatus::draft, MediaType::video, u"square"_s, true, 30};
  EXPECT_TRUE(intent == SorvanIntent(expected));
  EXPECT_TRUE(read(R"({"action":"filter"})").intent() == SorvanIntent(CompoundAssetFilter{}));
}

TEST(RemoteAction, WhatIsMissingOrOutOfBoundsIsRefusedWithItsSentence) {
  EXPECT_EQ(refusal(R"({"action":"search"})"), texts::incompleteAction());
  EXPECT_EQ(refusal(R"({"action":"search","query":" \n "})"), texts::incompleteAction());
  EXPECT_EQ(refusal(R"({"action":"favorite"})"), texts::missingFavorite());
  EXPECT_EQ(refusal(R"({"action":"status","status":"Final"})"), texts::unsupportedStatus());
  EXPECT_EQ(refusal(R"({"action":"status"})"), texts::unsupportedStatus());
  EXPECT_EQ(refusal(R"({"action":"generate","prompt":"x","count":5})"), texts::chooseOutputs());
  EXPECT_EQ(refusal(R"({"action":"generate","prompt":"x","count":0})"), texts::chooseOutputs());
  EXPECT_EQ(refusal(R"({"action":"generate"})"), texts::incompleteAction());
  EXPECT_EQ(refusal(R"({"action":"deleteEverything"})"), texts::unsupportedAction());
  EXPECT_EQ(refusal(R"({"action":""})"), texts::unsupportedAction());
}

TEST(RemoteAction, TheFirstBadConditionOfAFilterIsNamed) {
  EXPECT_EQ(refusal(R"({"action":"filter","status":"x","media":"x"})"), texts::unsupportedStatusFilter());
  EXPECT_EQ(refusal(R"({"action":"filter","media":"text","days":0})"), texts::unsupportedMediaFilter());
  EXPECT_EQ(refusal(R"({"action":"filter","orientation":"round","days":0})"), texts::unsupportedOrientation());
  EXPECT_EQ(refusal(R"({"action":"filter","days":0})"), texts::invalidDateRange());
  EXPECT_EQ(refusal(R"({"action":"filter","days":3651})"), texts::invalidDateRange());
  EXPECT_EQ(refusal(R"({"action":"filter","days":3650})"), u"(nothing was thrown)"_s);
}

TEST(RemoteAction, ATextMayHave8000CharactersAndNoMore) {
  RemoteAppAction action;
  action.action = u"search"_s;
  action.query = QString(8000, u'x');
  EXPECT_TRUE(action.intent() == SorvanIntent(SearchAssets{*action.query}));
  action.query = QString(8001, u'x');
  EXPECT_EQ(failureOf([&] { action.intent(); }), texts::incompleteAction());
}

TEST(RemoteAction, TheReviewShowsEveryFieldThatIsThere) {
  EXPECT_EQ(read(R"({"action":"filter","model":"flux","days":7,"favorites":true})").summary(),
            u"filter · flux · favorites · last 7 days"_s);
  EXPECT_EQ(read(R"({"action":"generate","prompt":"a fox","count":2,"useSelection":true})").summary(),
            u"generate · a fox · 2 outputs · using selected images"_s);
  EXPECT_EQ(read(R"({"action":"favorite","enabled":true})").summary(), u"favorite · on"_s);
  EXPECT_EQ(read(R"({"action":"favorite","enabled":false})").summary(), u"favorite · off"_s);
}

TEST(RemoteAction, The61stProjectIsNotSent) {
  QStringList names;
  for (int index = 1; index <= 61; ++index) names << QString::number(index);
  const CommandContext context = commandContext(names, 3, std::nullopt);
  EXPECT_EQ(context.projects.size(), 60U);
  EXPECT_EQ(context.projects.back(), u"60"_s);
  EXPECT_EQ(context.selectionCount, 3);
  EXPECT_EQ(context.currentProject, u"Inbox"_s);
  EXPECT_EQ(encodeJson(commandContext({u"A"_s}, 0, u"A"_s)),
            QByteArray(R"({"currentProject":"A","projects":["A"],"selectionCount":0})"));
}

}  // namespace
}  // namespace sorvan::composer
