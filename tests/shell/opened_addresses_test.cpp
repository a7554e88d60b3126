#include "shell/opened_addresses.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QUrl>

#include "shell/application_id.h"
#include "support/temporary_folder.h"

namespace sorvan::shell {
namespace {
using namespace Qt::StringLiterals;

class OpenedAddresses : public testing::Test {
 protected:
  // A folder that has a library in it, and one that has none.
  OpenedAddresses() {
    folder.write(u"Coast & Sea/.sorvan/library.store"_s, "x");
    folder.write(u"Coast & Sea/Inbox/generated/boat.png"_s, "x");
    folder.write(u"Plain/boat.png"_s, "x");
  }
  QString address(const QString& path) const { return QUrl::fromLocalFile(folder / path).toString(QUrl::FullyEncoded); }

  test::TemporaryFolder folder;
  QString workspace = folder / u"Coast & Sea"_s;
};

TEST_F(OpenedAddresses, TurnAPathIntoAnAddressAndBack) {
  const QString given = addressOfArgument(u"Coast & Sea"_s, folder.path());
  EXPECT_TRUE(given.startsWith(u"file:///"_s)) << given.toStdString();
  EXPECT_EQ(workspaceAmong({given}), workspace);
  EXPECT_EQ(addressOfArgument(workspace, u"/"_s), given);
}

TEST_F(OpenedAddresses, KeepLinksAndAddressesAsTheyAre) {
  EXPECT_EQ(addressOfArgument(u"sorvan://auth?code=1"_s, folder.path()), u"sorvan://auth?code=1"_s);
  EXPECT_EQ(addressOfArgument(u"FILE:///nowhere"_s, folder.path()), u"FILE:///nowhere"_s);
}

TEST_F(OpenedAddresses, IgnoreOptionsAndWhatDoesNotExist) {
  EXPECT_EQ(addressOfArgument(u"--verbose"_s, folder.path()), QString());
  EXPECT_EQ(addressOfArgument(u"missing"_s, folder.path()), QString());
  EXPECT_EQ(addressOfArgument(QString(), folder.path()), QString());
  EXPECT_EQ(firstAddress({u"--verbose"_s, u"missing"_s, u"sorvan://auth"_s}, folder.path()), u"sorvan://auth"_s);
  EXPECT_EQ(firstAddress({u"https://example.org"_s}, folder.path()), QString());
}

TEST_F(OpenedAddresses, AFileOpensTheWorkspaceThatItLiesIn) {
  EXPECT_EQ(workspaceAmong({address(u"Coast & Sea/Inbox/generated/boat.png"_s)}), workspace);
  EXPECT_EQ(workspaceAmong({address(u"Coast & Sea/Inbox"_s)}), workspace);
}

TEST_F(OpenedAddresses, OtherAddressesAreIgnored) {
  EXPECT_EQ(workspaceAmong({}), std::nullopt);
  EXPECT_EQ(workspaceAmong({address(u"Plain"_s)}), std::nullopt);
  EXPECT_EQ(workspaceAmong({address(u"Plain/boat.png"_s)}), std::nullopt);
  EXPECT_EQ(workspaceAmong({address(u"Coast & Sea/missing.png"_s)}), std::nullopt);
  EXPECT_EQ(workspaceAmong({u"https://example.org/"_s, u"file://elsewhere/tmp"_s, u"sorvan://auth"_s, u"%%%"_s}),
            std::nullopt);
  EXPECT_EQ(workspaceAmong({u"https://example.org/"_s, address(u"Coast & Sea"_s)}), workspace);
}

TEST_F(OpenedAddresses, ALinkOfTheProgramsOwnIsFoundAmongOthers) {
  EXPECT_EQ(ownLinkAmong({u"https://example.org/"_s, u"sorvan://auth?code=1"_s}), u"sorvan://auth?code=1"_s);
  EXPECT_EQ(ownLinkAmong({u"SORVAN://elsewhere"_s}), u"SORVAN://elsewhere"_s);
  EXPECT_EQ(ownLinkAmong({u"https://example.org/?sorvan:"_s, address(u"Plain"_s)}), std::nullopt);
}

TEST(DesktopActions, TravelFromOneStartToTheOther) {
  const QString address = firstAddress({u"--action=history"_s}, u"/"_s);
  EXPECT_EQ(actionAmong({address}), ActionId::showHistory);
  EXPECT_EQ(workspaceAmong({address}), std::nullopt);
  EXPECT_EQ(actionAmong({u"action:quit"_s}), std::nullopt);
  EXPECT_EQ(actionAmong({u"sorvan://auth"_s, QString()}), std::nullopt);
}

TEST(DesktopActions, AreKnownByName) {
  EXPECT_EQ(desktopAction(u"history"_s), ActionId::showHistory);
  EXPECT_EQ(desktopAction(u"new-generation"_s), ActionId::focusComposer);
  EXPECT_EQ(desktopAction(u"settings"_s), ActionId::openSettings);
  EXPECT_EQ(desktopAction(u"moveToTrash"_s), std::nullopt);
}

TEST(ApplicationId, GivesThePathOfItsObject) {
  EXPECT_EQ(objectPathOf(applicationID), u"/studio/sorvan/Studio"_s);
}

}  // namespace
}  // namespace sorvan::shell
