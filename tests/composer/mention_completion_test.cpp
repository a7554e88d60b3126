#include "composer/mention_completion.h"

#include <gtest/gtest.h>

#include "base/ids.h"
#include "composer/reference_texts.h"
#include "support/text_printers.h"

namespace sorvan::composer {
namespace {

using namespace Qt::StringLiterals;

/// What is being typed at "|".
std::optional<TypedMention> typedIn(QString text) {
  const qsizetype cursor = text.indexOf(u'|');
  return typedMention(text.remove(cursor, 1), cursor);
}
QString nameIn(const QString& text) {
  const auto mention = typedIn(text);
  return mention ? u"<%1>"_s.arg(mention->name) : u"none"_s;
}

TEST(TypedMention, BeginsAfterTheStartOrWhatIsNoPartOfAName) {
  EXPECT_EQ(nameIn(u"@|"_s), u"<>"_s);
  EXPECT_EQ(nameIn(u"by @Ti|n"_s), u"<Ti>"_s);
  EXPECT_EQ(nameIn(u"(@_x|"_s), u"<_x>"_s);
  EXPECT_EQ(nameIn(u"line\n@a1|"_s), u"<a1>"_s);
  EXPECT_EQ(nameIn(u"|@a"_s), u"none"_s);
  EXPECT_EQ(nameIn(u"@a |"_s), u"none"_s);
  EXPECT_EQ(nameIn(u"a|"_s), u"none"_s);
}

TEST(TypedMention, AnAddressOrASecondAtIsNone) {
  EXPECT_EQ(nameIn(u"me@stud|"_s), u"none"_s);
  EXPECT_EQ(nameIn(u"me@|"_s), u"none"_s);
  EXPECT_EQ(nameIn(u"@@x|"_s), u"none"_s);
  EXPECT_EQ(nameIn(u"7@x|"_s), u"none"_s);
  EXPECT_EQ(nameIn(u"_@x|"_s), u"none"_s);
  EXPECT_EQ(nameIn(u"@7|"_s), u"none"_s);
}

TEST(TypedMention, ScriptsWithoutCaseAndMarksAreNames) {
  EXPECT_EQ(nameIn(u"@सीता|"_s), u"<सीता>"_s);
  EXPECT_EQ(nameIn(u"写真 @東京|"_s), u"<東京>"_s);
  EXPECT_EQ(nameIn(u"写真@東京|"_s), u"none"_s);
}

TEST(TypedMention, AnEmojiEndsOneAndMayStandBeforeOne) {
  EXPECT_EQ(nameIn(u"🦊@fox|"_s), u"<fox>"_s);
  EXPECT_EQ(nameIn(u"@fox🦊|"_s), u"none"_s);
  EXPECT_EQ(nameIn(u"@🦊|"_s), u"none"_s);
}

TEST(TypedMention, FarBackInALongPromptNothingIsLookedFor) {
  const QString name(5000, u'a');
  EXPECT_EQ(typedMention(u'@' + name, name.size() + 1), std::nullopt);
  const QString prompt = QString(8000, u'x') + u" @Tin"_s;
  EXPECT_EQ(typedMention(prompt, prompt.size()), (TypedMention{8001, 8005, u"Tin"_s}));
  for (int length = 1015; length < 1030; ++length) {
    const QString foxes = u"🦊"_s.repeated(600) + QString(length % 2, u' ') + u"@"_s + QString(length, u'a');
    const auto found = typedMention(foxes, foxes.size());
    if (found) EXPECT_EQ(found->name.size(), length);
  }
  EXPECT_EQ(typedMention(u"@a"_s, 9), std::nullopt);
  EXPECT_EQ(typedMention(u"@a"_s, -1), std::nullopt);
}

TEST(MentionCompletion, TheTypedRangeBecomesTheMention) {
  EXPECT_EQ(completed(u"by @ro here"_s, {3, 6, u"ro"_s}, u"RoseBottle"_s),
            (CompletedText{u"by @RoseBottle here"_s, 14}));
  EXPECT_EQ(completed(u"@"_s, {0, 1, {}}, u"Tin"_s), (CompletedText{u"@Tin"_s, 4}));
}

// ---- The list

const QUuid savedTin = newUuid();
const QUuid savedSea = newUuid();

std::vector<ReferenceBinding> attachedMaya() {
  return {{newUuid(), u"Reference1"_s, {}, {}, {}},
          {newUuid(), u"Maya1"_s, u"Character"_s, u"Maya"_s, {}},
          {newUuid(), u"Maya2"_s, u"Character"_s, u"Maya"_s, {}}};
}
std::vector<SavedReferenceSuggestion> savedTwo() {
  return {{savedTin, u"Tin"_s, u"Product"_s, 1, u"Sea"_s, {}}, {savedSea, u"Mist"_s, u"Generic"_s, 2, {}, {}}};
}

TEST(MentionList, OffersWhatIsAttachedThenTheProjectsThenTheGlobalOnes) {
  const MentionList list = mentionList(attachedMaya(), savedTwo(), {});
  ASSERT_EQ(list.sections.size(), 3U);
  EXPECT_EQ(list.sections[0].heading, QString());
  QStringList titles;
  for (const MentionRow& row : list.sections[0].rows) titles << row.title;
  EXPECT_EQ(titles, (QStringList{u"@Reference1"_s, u"@Maya · Character · 2 images"_s, u"@Maya1 · Character"_s,
                                 u"@Maya2 · Character"_s}));
  EXPECT_EQ(list.sections[1],
            (MentionSection{u"Project References"_s, {{u"Tin"_s, u"@Tin · Product · 1 image"_s, savedTin}}}));
  EXPECT_EQ(list.sections[2], (MentionSection{u"Global references"_s, {{u"Mist"_s, u"@Mist · 2 images"_s, savedSea}}}));
  EXPECT_EQ(list.hint, QString());
}

TEST(MentionList, KeepsWhatBeginsAsTyped) {
  const MentionList list = mentionList(attachedMaya(), savedTwo(), u"m"_s);
  QStringList handles;
  for (const MentionSection& section : list.sections)
    for (const MentionRow& row : section.rows) handles << row.handle;
  EXPECT_EQ(handles, (QStringList{u"Maya"_s, u"Maya1"_s, u"Maya2"_s, u"Mist"_s}));
  EXPECT_TRUE(mentionList(attachedMaya(), savedTwo(), u"zz"_s).sections.empty());
}

TEST(MentionList, WithNothingToOfferSaysHowToGetThere) {
  const MentionList list = mentionList({}, {}, {});
  EXPECT_TRUE(list.sections.empty());
  EXPECT_EQ(list.hint, texts::noReferences());
}

}  // namespace
}  // namespace sorvan::composer
