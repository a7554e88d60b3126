#include "generation/markup.h"

#include <gtest/gtest.h>

namespace sorvan::generation {
namespace {

MarkupBox noted(const QString& note) {
  MarkupBox box;
  box.width = box.height = 0.5;
  box.note = note;
  return box;
}

TEST(Markup, NotesJoinThePromptAsSentences) {
  EXPECT_EQ(Markup::prompt(QStringLiteral(" Make it night. "),
                           {noted(QStringLiteral("a lamp. ")), noted(QString()), noted(QStringLiteral("a cat"))}),
            QStringLiteral("Make it night. a lamp. a cat"));
}

TEST(Markup, WithoutAPromptTheNotesStandAlone) {
  EXPECT_EQ(Markup::prompt(QStringLiteral("  "), {noted(QStringLiteral("a lamp")), noted(QStringLiteral("a cat"))}),
            QStringLiteral("a lamp. a cat"));
}

TEST(Markup, ANoteThatALineAlreadyHoldsIsLeftOut) {
  EXPECT_EQ(Markup::prompt(QStringLiteral("Give her a RED HAT"),
                           {noted(QStringLiteral("a red hat")), noted(QStringLiteral("HAT"))}),
            QStringLiteral("Give her a RED HAT"));
}

TEST(Markup, AFinalFullStopIsDroppedOnce) {
  EXPECT_EQ(Markup::prompt(QStringLiteral("Wait..."), {noted(QStringLiteral("x."))}), QStringLiteral("Wait... x"));
}

TEST(Markup, TheInstructionNumbersTheBoxes) {
  EXPECT_EQ(Markup::instruction({noted(QStringLiteral("a lamp")), noted(QStringLiteral(" "))}),
            QStringLiteral("\n\nThe first image has red numbered boxes marking where to make changes:\nBox 1: a lamp\n"
                           "Box 2: apply the instruction here\nChange only what is inside the boxes, and do not show "
                           "the red boxes or numbers in the result."));
  EXPECT_EQ(Markup::instruction({}), QString());
}

}  // namespace
}  // namespace sorvan::generation
