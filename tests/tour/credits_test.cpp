// How somebody without a key of their own gets to work: signs in by a mailed link, buys credits in a browser, sees what a
// picture costs and spends them.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

#include "tour/checkout.h"
#include "tour/looks.h"
#include "tour/steps.h"

namespace tour {
namespace {

constexpr qint64 credit = 1'000'000;
const QString email = u"ada@example.org"_qs;
const QString workspace = u"/Pictures/Northlight"_qs;
const Wanted pictureItem{u"A-lighthouse-on-a-cliff-in"_qs, u"list item"_qs, true};
const Wanted sendLink{u"Email Me a Sign-In Link"_qs, u"push button"_qs};

void openAccount(Tourist& person) {
  person.key(u"ctrl+comma"_qs);
  person.click({u"Account"_qs, {}});
}

// The demo's profile starts signed in; a newcomer is not.
void signOut(Tourist& person) {
  person.click({u"Sign Out"_qs, u"push button"_qs});
  person.waitFor(sendLink);
}

void signInByLink(Tourist& person) {
  person.click({u"Email address"_qs, u"text"_qs});
  person.type(email);
  person.click(sendLink);
  QString link;
  ASSERT_TRUE(within(20, [&] { return !(link = person.sandbox().mailedLink(email)).isEmpty(); })) << "nothing was mailed";
  person.waitFor({u"Check ada@example.org and open the link"_qs, {}, true});
  person.picture(u"link-sent"_qs);
  // The desktop hands the link to a second start of the program, and that to the first.
  EXPECT_EQ(person.startAgain({link}), 0);
  person.waitFor({u"Signed in as ada@example.org"_qs, {}, true});
}

void buyCredits(Tourist& person, PagesOpened& pages) {
  pictureInBothLooks(person, u"packs"_qs);
  person.click({u"Buy 500 credits"_qs, u"push button"_qs, true});
  payOn(person, pages.next());
  person.waitFor({u"500 credits added"_qs, {}, true}, 30);
  person.picture(u"bought"_qs);
}

// What the button beside it is said to cost, in credits; nothing while no price is shown.
std::optional<qint64> shownPrice(const Tourist& person) {
  static const QRegularExpression price(u"^(?:up to )?(\\d+) credits?$"_qs);
  for (const Control& control : person.accessibility().controls()) {
    const auto found = price.match(control.name);
    if (found.hasMatch() && found.captured(1) != u"500"_qs) return found.captured(1).toLongLong();
  }
  return std::nullopt;
}

QJsonObject userNamed(const QJsonObject& gateway) {
  for (const QJsonValue& user : gateway.value(u"users"_qs).toArray())
    if (user[u"email"_qs].toString() == email) return user.toObject();
  return {};
}

TEST(Tour, SignsInByAMailedLinkBuysCreditsAndSpendsThem) {
  Tourist person(QSize(1440, 900), u"credits-"_qs);
  PagesOpened pages(person);
  person.open(chooseFolder);
  chooseWorkspace(person, person.desktop().home() + workspace);
  openAccount(person);
  signOut(person);
  signInByLink(person);
  buyCredits(person, pages);
  person.key(u"Escape"_qs);
  person.waitUntilGone({u"Sign Out"_qs, u"push button"_qs});

  writePrompt(person, u"A lighthouse on a cliff in evening light"_qs);
  std::optional<qint64> price;
  EXPECT_TRUE(within(20, [&] { return (price = shownPrice(person)).has_value(); })) << "no price is shown";
  person.picture(u"priced"_qs);
  person.click(generate);
  person.waitForCount(pictureItem, 1, 60);
  person.picture(u"generated"_qs);
  person.close();

  const QJsonObject gateway = person.sandbox().gateway();
  const QJsonArray operations = gateway.value(u"operations"_qs).toArray();
  ASSERT_EQ(operations.size(), 1);
  EXPECT_EQ(operations[0][u"state"_qs].toString(), u"complete"_qs);
  EXPECT_EQ(operations[0][u"charged"_qs].toInteger(), price.value_or(0) * credit) << "what was shown is what was charged";
  EXPECT_TRUE(gateway.value(u"books"_qs)[u"balanced"_qs].toBool());
  EXPECT_TRUE(userNamed(gateway).value(u"features"_qs).toArray().isEmpty()) << "it has no right to an own key";
  EXPECT_EQ(person.sandbox().callCount(u"submit"_qs), 0) << "nothing went around the gateway";
}

}  // namespace
}  // namespace tour
