#include "base/text.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "base/numbers.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;

static const QString family = QStringLiteral("👩‍👩‍👧");  // one cluster of five code points
static const QString acute = QStringLiteral("e\u0301");              // one cluster of two

TEST(Text, CountsCharactersAsPeopleDo) {
  EXPECT_EQ(chars(QString()), 0);
  EXPECT_EQ(chars(QStringLiteral("abc")), 3);
  EXPECT_EQ(chars(family), 1);
  EXPECT_EQ(chars(acute + acute), 2);
  EXPECT_EQ(chars(QStringLiteral("🇩🇪🇫🇷")), 2);
  EXPECT_EQ(chars(QStringLiteral("a\r\nb")), 3);
  EXPECT_EQ(chars(QStringLiteral("שלום")), 4);
}

TEST(Text, CutsOnlyBetweenCharacters) {
  EXPECT_EQ(firstChars(family + QStringLiteral("ab"), 2), family + u'a');
  EXPECT_EQ(firstChars(QStringLiteral("abc"), 0), QString());
  EXPECT_EQ(firstChars(QStringLiteral("abc"), -1), QString());
  EXPECT_EQ(firstChars(QStringLiteral("abc"), 5), QStringLiteral("abc"));
  EXPECT_EQ(firstChars(acute.repeated(3), 2), acute.repeated(2));
}

TEST(Text, CutsWithinBytesAtACharacter) {
  EXPECT_EQ(firstCharsWithinBytes(QStringLiteral("日本語"), 8), QStringLiteral("日本"));
  EXPECT_EQ(firstCharsWithinBytes(QStringLiteral("abc"), 3), QStringLiteral("abc"));
  EXPECT_EQ(firstCharsWithinBytes(family, 5), QString());
}

TEST(Text, APromptOf100000CharactersOfAnyKindIsCounted) {
  EXPECT_EQ(chars(family.repeated(100000)), 100000);
  EXPECT_EQ(chars(firstChars(QStringLiteral("ש").repeated(100000), 80)), 80);
}

TEST(Text, AnyCutIsABeginningOfThatManyCharacters) {
  const bool held = rc::check([](const std::u16string& units) {
    const QString text = QString::fromStdU16String(units);
    const auto count = *rc::gen::inRange<qsizetype>(0, 20);
    const QString cut = firstChars(text, count);
    RC_ASSERT(text.startsWith(cut));
    RC_ASSERT(chars(cut) == std::min(count, chars(text)));
  });
  EXPECT_TRUE(held);
}

TEST(Text, FoldsCaseAndMarksForSearching) {
  EXPECT_EQ(foldForSearch(QStringLiteral("Crème BRÛLÉE")), QStringLiteral("creme brulee"));
  EXPECT_EQ(foldForSearch(acute), QStringLiteral("e"));
  EXPECT_EQ(foldForSearch(QStringLiteral("İstanbul")), QStringLiteral("istanbul"));
  EXPECT_EQ(foldForSearch(QStringLiteral("ＡＢ")), QStringLiteral("ab"));
}

TEST(Text, FoldingTwiceChangesNothing) {
  const bool held = rc::check([](const std::u16string& units) {
    const QString once = foldForSearch(QString::fromStdU16String(units));
    RC_ASSERT(foldForSearch(once) == once);
  });
  EXPECT_TRUE(held);
}

TEST(NaturalOrder, TakesDigitsByTheirValue) {
  EXPECT_LT(naturalCompare(QStringLiteral("2.png"), QStringLiteral("10.png")), 0);
  EXPECT_LT(naturalCompare(QStringLiteral("a9b10"), QStringLiteral("a9b010a")), 0);
  EXPECT_LT(naturalCompare(QStringLiteral("shot 99999999999999999999"), QStringLiteral("shot 100000000000000000000")),
            0);
  EXPECT_LT(naturalCompare(QStringLiteral("a"), QStringLiteral("a1")), 0);
}

TEST(NaturalOrder, IgnoresCaseAndMarksAtFirst) {
  EXPECT_LT(naturalCompare(QStringLiteral("Éa"), QStringLiteral("eb")), 0);
  EXPECT_LT(naturalCompare(QStringLiteral("eB"), QStringLiteral("Ec")), 0);
  // Equal then: by code points.
  EXPECT_LT(naturalCompare(QStringLiteral("B"), QStringLiteral("b")), 0);
  EXPECT_NE(naturalCompare(QStringLiteral("1"), QStringLiteral("01")), 0);
  EXPECT_EQ(naturalCompare(QStringLiteral("x"), QStringLiteral("x")), 0);
}

TEST(NaturalOrder, HoldsInTheCLocaleToo) {
  const QByteArray before = setlocale(LC_ALL, nullptr);
  setlocale(LC_ALL, "C");
  QLocale::setDefault(QLocale::c());
  QStringList names{QStringLiteral("10.png"), QStringLiteral("2.png"), QStringLiteral("1.png")};
  std::sort(names.begin(), names.end(), naturalLess);
  EXPECT_EQ(names, (QStringList{QStringLiteral("1.png"), QStringLiteral("2.png"), QStringLiteral("10.png")}));
  setlocale(LC_ALL, before.constData());
  QLocale::setDefault(QLocale::system());
}

TEST(NaturalOrder, IsAnOrder) {
  const auto text = [] {
    return rc::gen::map(rc::gen::container<std::string>(rc::gen::element('a', 'B', '0', '1', '9', '.')),
                        [](const std::string& bytes) { return QString::fromStdString(bytes); });
  };
  const bool held = rc::check([&] {
    const QString a = *text();
    const QString b = *text();
    const QString c = *text();
    RC_ASSERT(naturalCompare(a, b) == -naturalCompare(b, a));
    RC_ASSERT((naturalCompare(a, b) == 0) == (a == b));
    if (naturalCompare(a, b) <= 0 && naturalCompare(b, c) <= 0) RC_ASSERT(naturalCompare(a, c) <= 0);
  });
  EXPECT_TRUE(held);
}

TEST(Numbers, RoundingUpDoesNotFallForTheHairAboveAWholeNumber) {
  EXPECT_EQ(roundedUp(0.07 * 100), 7);
  EXPECT_EQ(roundedUp(7.001), 8);
  EXPECT_EQ(roundedUp(0), 0);
}

TEST(Numbers, RoundingDownDoesNotFallForTheHairBelow) {
  EXPECT_EQ(roundedDown(1079.9999999999), 1080);
  EXPECT_EQ(roundedDown(1079.9), 1079);
}

TEST(Numbers, HalvesGoAwayFromZero) {
  EXPECT_EQ(rounded(2.5), 3);
  EXPECT_EQ(rounded(-2.5), -3);
  EXPECT_EQ(roundedInteger(1080.5), 1081);
  EXPECT_EQ(roundedInteger(1e300), INT64_MAX);
  EXPECT_EQ(roundedInteger(std::nan("")), 0);
}

}  // namespace sorvan::test
