#include "generation/mentions.h"

#include <gtest/gtest.h>

#include "base/sorvan_error.h"

namespace sorvan::generation {
namespace {

ReferenceBinding named(const QString& label) {
  ReferenceBinding binding;
  binding.assetID = QUuid::createUuid();
  binding.label = label;
  return binding;
}

ReferenceBinding inGroup(const QString& label, const QString& group, const QString& subject = {}) {
  ReferenceBinding binding = named(label);
  binding.group = group;
  if (!subject.isEmpty()) binding.subject = subject;
  return binding;
}

QString refusalOf(const QString& prompt, const std::vector<ReferenceBinding>& references) {
  try {
    ReferenceMentions::resolve(prompt, references);
  } catch (const SorvanError& error) {
    return error.message();
  }
  return QStringLiteral("accepted");
}

const QString unfitName =
    QStringLiteral("Give each reference a unique name starting with a letter (up to 48 letters or numbers).");
const QString unfitGroup =
    QStringLiteral("Reference group names must be unique and different from individual image names.");
const QString legendOfTin = QStringLiteral("\n\nAttached reference images, in upload order:\nImage 1: Tin");

TEST(Mentions, AHandleDropsBlanksAndSignsAndMatchesWithoutRegardToCase) {
  EXPECT_EQ(handleOfLabel(QStringLiteral("Rose Bottle!")), QStringLiteral("RoseBottle"));
  EXPECT_EQ(handleOfLabel(QStringLiteral("!\u0301Rose")), QStringLiteral("Rose"));
  EXPECT_EQ(handleOfLabel(QStringLiteral("ros e!\u0301")), QStringLiteral("ros\u00e9"));
  const QString text =
      ReferenceMentions::resolve(QStringLiteral("a @rosebottle"), {named(QStringLiteral("Rose Bottle"))});
  EXPECT_TRUE(text.startsWith(QStringLiteral("a reference image 1 (Rose Bottle)\n\n")));
}

TEST(Mentions, AnAtSignInAnAddressOrAfterAnotherIsNoMention) {
  const std::vector<ReferenceBinding> tin{named(QStringLiteral("Tin"))};
  EXPECT_EQ(ReferenceMentions::resolve(QStringLiteral("a@b @@x 7@y _@z"), tin),
            QStringLiteral("a@b @@x 7@y _@z") + legendOfTin);
  EXPECT_TRUE(ReferenceMentions::resolve(QStringLiteral("(@tin)"), tin)
                  .startsWith(QStringLiteral("(reference image 1 (Tin))")));
}

TEST(Mentions, NamesThatDifferOnlyInCaseAreRefused) {
  EXPECT_EQ(refusalOf(QString(), {named(QStringLiteral("Tin")), named(QStringLiteral("tIN"))}), unfitName);
}

TEST(Mentions, AComposedAndADecomposedSpellingAreOneName) {
  EXPECT_EQ(refusalOf(QString(), {named(QStringLiteral("Caf\u00e9")), named(QStringLiteral("Cafe\u0301"))}), unfitName);
  const QString text =
      ReferenceMentions::resolve(QStringLiteral("see @cafe\u0301 here"), {named(QStringLiteral("Caf\u00e9"))});
  EXPECT_TRUE(text.startsWith(QStringLiteral("see reference image 1 (Caf\u00e9) here"))) << text.toStdString();
}

TEST(Mentions, ANameMayHave48CharactersAndNot49) {
  EXPECT_EQ(refusalOf(QString(), {named(QString(48, u'a'))}), QStringLiteral("accepted"));
  EXPECT_EQ(refusalOf(QString(), {named(QString(49, u'a'))}), unfitName);
}

TEST(Mentions, ANameThatIsEmptyOrStartsWithADigitIsRefused) {
  EXPECT_EQ(refusalOf(QString(), {named(QStringLiteral("!!"))}), unfitName);
  EXPECT_EQ(refusalOf(QString(), {named(QStringLiteral("7up"))}), unfitName);
  EXPECT_EQ(refusalOf(QString(), {named(QStringLiteral("_x"))}), QStringLiteral("accepted"));
}

TEST(Mentions, NamesWithVowelSignsOfHindiCanBeMentioned) {
  const QString sita = QStringLiteral("सीता");
  const QString text = ReferenceMentions::resolve(QStringLiteral("portrait of @सीता, smiling"), {named(sita)});
  EXPECT_TRUE(text.startsWith(QStringLiteral("portrait of reference image 1 (सीता), smiling"))) << text.toStdString();
}

TEST(Mentions, AGroupMustNotShareTheNameOfAPictureOrBeUnfit) {
  EXPECT_EQ(refusalOf(QString(), {inGroup(QStringLiteral("Maya"), QStringLiteral("maya"))}), unfitGroup);
  EXPECT_EQ(refusalOf(QString(), {inGroup(QStringLiteral("A"), QStringLiteral("two words"))}), unfitGroup);
  EXPECT_EQ(refusalOf(QString(), {inGroup(QStringLiteral("A"), QStringLiteral("1st"))}), unfitGroup);
  EXPECT_EQ(refusalOf(QString(), {inGroup(QStringLiteral("A"), QString(49, u'g'))}), unfitGroup);
  EXPECT_EQ(refusalOf(QString(), {inGroup(QStringLiteral("A"), QStringLiteral("G")),
                                  inGroup(QStringLiteral("B"), QStringLiteral("g"))}),
            unfitGroup);
}

TEST(Mentions, AMentionOfNothingAttachedIsNamedAsTyped) {
  EXPECT_EQ(refusalOf(QStringLiteral("a @TiN can"), {}),
            QStringLiteral("@TiN is not attached. Add that reference or remove its mention before generating."));
  EXPECT_EQ(refusalOf(QStringLiteral("@Tin and @other"), {named(QStringLiteral("Tin"))}),
            QStringLiteral("@other is not attached. Add that reference or remove its mention before generating."));
}

TEST(Mentions, WithoutReferencesThePromptStandsUnchanged) {
  EXPECT_EQ(ReferenceMentions::resolve(QStringLiteral("mail me@example.org 🎈"), {}),
            QStringLiteral("mail me@example.org 🎈"));
}

TEST(Mentions, WithoutMentionsTheLegendIsStillAppended) {
  EXPECT_EQ(ReferenceMentions::resolve(QStringLiteral("a can"), {named(QStringLiteral("Tin"))}),
            QStringLiteral("a can") + legendOfTin);
}

TEST(Mentions, AGroupBecomesItsMembersWithTheirPositions) {
  const QString text = ReferenceMentions::resolve(
      QStringLiteral("@maya walks"),
      {named(QStringLiteral("Tin")),
       inGroup(QStringLiteral("Maya1"), QStringLiteral("Maya"), QStringLiteral("a young woman")),
       inGroup(QStringLiteral("Maya2"), QStringLiteral("Maya"), QStringLiteral("her back"))});
  EXPECT_TRUE(text.startsWith(QStringLiteral(
      "reference group Maya, a young woman, [reference image 2 (Maya1), reference image 3 (Maya2)] walks")))
      << text.toStdString();
}

TEST(Mentions, TheLegendTellsSubjectRoleAndGuidance) {
  ReferenceBinding binding = named(QStringLiteral("Tin"));
  binding.subject = QStringLiteral("a tin can");
  binding.role = QStringLiteral("Product");
  ReferenceBinding frame = named(QStringLiteral("Last"));
  frame.role = QStringLiteral("End frame");
  EXPECT_EQ(ReferenceMentions::resolve(QStringLiteral("@tin"), {binding, frame}),
            QStringLiteral("reference image 1 (Tin: a tin can)\n\nAttached reference images, in upload order:\n"
                           "Image 1: Tin, a tin can; intended use: Product (the same object: keep its shape, colours, "
                           "label and lettering exactly)\nImage 2: Last; intended use: End frame"));
}

TEST(Mentions, WordsPutInAreNeverReadAsMentionsAgain) {
  const QString text = ReferenceMentions::resolve(QStringLiteral("@xTin"),
                                                  {named(QStringLiteral("x @Tin")), named(QStringLiteral("Tin"))});
  EXPECT_TRUE(text.startsWith(QStringLiteral("reference image 1 (x @Tin)\n"))) << text.toStdString();
}

TEST(Mentions, ReplacingTouchesOnlyTheNamedMention) {
  EXPECT_EQ(ReferenceMentions::replace(QStringLiteral("@a @ab (@A) x@a"), QStringLiteral("a"), QStringLiteral("@b")),
            QStringLiteral("@b @ab (@b) x@a"));
}

TEST(Mentions, DroppedNamesComeOnceInOrderAsSpelled) {
  EXPECT_EQ(ReferenceMentions::dropped(QStringLiteral("@Rose @tin @ROSE @Sky"), QStringLiteral("the @TIN")),
            (QStringList{QStringLiteral("Rose"), QStringLiteral("Sky")}));
}

TEST(Mentions, APromptOfAHundredThousandCharactersIsResolved) {
  QString prompt;
  while (prompt.size() < 100000) prompt += QStringLiteral("a @tin 🎈 שלום ");
  const QString text = ReferenceMentions::resolve(prompt, {named(QStringLiteral("Tin"))});
  EXPECT_FALSE(text.contains(u'@'));
  EXPECT_EQ(text.count(QStringLiteral("שלום")), prompt.count(QStringLiteral("שלום")));
}

}  // namespace
}  // namespace sorvan::generation
