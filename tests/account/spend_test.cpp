#include "account/spend.h"

#include <gtest/gtest.h>

namespace sorvan::account {
namespace {

using namespace Qt::StringLiterals;

const Spend ownKey{true};
const Spend creditsOnly{false};

TEST(Spend, TellsDollarsWhereTheOwnKeyIsAllowed) {
  EXPECT_EQ(ownKey.text(0.05), u"$0.050"_s);
  EXPECT_EQ(ownKey.text(0), u"$0.00"_s);
  EXPECT_EQ(ownKey.text(0.1), u"$0.10"_s);
  EXPECT_EQ(ownKey.text(12.345), QString(u'$') + QString::number(12.345, 'f', 2));
}

TEST(Spend, TellsCreditsOtherwise) {
  EXPECT_EQ(creditsOnly.text(0.05), u"5 credits"_s);
  EXPECT_EQ(creditsOnly.text(0.01), u"1 credit"_s);
  EXPECT_EQ(creditsOnly.text(0), u"0 credits"_s);
  EXPECT_EQ(creditsOnly.text(0.014), u"1.4 credits"_s);
  EXPECT_EQ(creditsOnly.text(12.34), u"1,234 credits"_s);
  EXPECT_EQ(creditsOnly.text(12345.67), u"1,234,567 credits"_s);
}

TEST(Spend, CountsASmallRemainderAsAWholeCredit) {
  EXPECT_EQ(creditsOnly.text(0.07004), u"7 credits"_s);
  EXPECT_EQ(creditsOnly.text(0.07006), u"7.0 credits"_s);
  EXPECT_EQ(creditsOnly.text(-0.00001), u"0 credits"_s);
}

TEST(Spend, PutsTheDollarsBesideACreditFigureOnlyWhereTheyMeanSomething) {
  EXPECT_EQ(ownKey.aside(0.12), u" ($0.12)"_s);
  EXPECT_EQ(ownKey.aside(0.004), u" ($0.00)"_s);
  EXPECT_EQ(creditsOnly.aside(0.12), QString());
}

TEST(Spend, MarksWhatIsEstimated) {
  EXPECT_EQ(Spend::estimate(0.06), u"≈ $0.060"_s);
  EXPECT_EQ(Spend::estimate(0.4), u"≈ $0.40"_s);
  EXPECT_EQ(Spend::estimate(0), u"≈ $0.000"_s);
}

TEST(Spend, WritesCreditsWholeOrWithTwoDigits) {
  EXPECT_EQ(creditsText(1), u"1 credit"_s);
  EXPECT_EQ(creditsText(12), u"12 credits"_s);
  EXPECT_EQ(creditsText(1.5), u"1.50 credits"_s);
  EXPECT_EQ(creditsText(0), u"0 credits"_s);
}

}  // namespace
}  // namespace sorvan::account
