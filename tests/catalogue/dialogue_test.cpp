#include "catalogue/dialogue.h"

#include <gtest/gtest.h>

#include <QJsonObject>

#include "base/sorvan_error.h"
#include "catalogue/room.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

TEST(Dialogue, GivesEachSpeechItsVoice) {
  const QJsonArray inputs = dialogueInputs(u"Aria: Did you hear that?\nroger: [whispers] Hear what?"_s);
  ASSERT_EQ(inputs.size(), 2);
  EXPECT_EQ(inputs[0].toObject(), (QJsonObject{{u"text"_s, u"Did you hear that?"_s}, {u"voice"_s, u"Aria"_s}}));
  EXPECT_EQ(inputs[1].toObject(), (QJsonObject{{u"text"_s, u"[whispers] Hear what?"_s}, {u"voice"_s, u"Roger"_s}}));
}

TEST(Dialogue, GoesOnWithTheSpeechOnALineWithoutAName) {
  const QJsonArray inputs = dialogueInputs(u"Aria: One.\r\n\r\n  And at 10:30 sharp: two.\n"_s);
  ASSERT_EQ(inputs.size(), 1);
  EXPECT_EQ(inputs[0].toObject().value(u"text"_s).toString(), u"One.\nAnd at 10:30 sharp: two."_s);
}

TEST(Dialogue, RefusesAFirstLineWithoutAName) { EXPECT_THROW(dialogueInputs(u"Hello there"_s), SorvanError); }

TEST(Dialogue, RefusesANameThatIsNoVoice) {
  try {
    dialogueInputs(u"Aria: Hi.\nArai: Oh."_s);
    FAIL() << "nothing was thrown";
  } catch (const SorvanError& error) {
    EXPECT_TRUE(error.message().startsWith(u"“Arai” is not one of"_s)) << error.what();
  }
}

TEST(Dialogue, RefusesAScriptInWhichNobodySaysAnything) {
  EXPECT_THROW(dialogueInputs(QString()), SorvanError);
  EXPECT_THROW(dialogueInputs(u"Aria:\nRoger:  "_s), SorvanError);
}

}  // namespace
}  // namespace sorvan::catalogue
