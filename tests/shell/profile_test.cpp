#include "shell/profile.h"

#include <gtest/gtest.h>

#include "base/sorvan_error.h"
#include "support/temporary_folder.h"

namespace sorvan::shell {
namespace {

// Any authority will do: nothing is reached with it.
const QByteArray authority =
    "-----BEGIN CERTIFICATE-----\n"
    "MIIBiTCCAS+gAwIBAgIUY9cPaANNXYpEt4uTKTZV1OQSO6UwCgYIKoZIzj0EAwIw\n"
    "GTEXMBUGA1UEAwwOVGVzdCBBdXRob3JpdHkwIBcNMjYxMTIxMTIzOTI5WhgPMjEy\n"
    "NjEwMjgxMjM5MjlaMBkxFzAVBgNVBAMMDlRlc3QgQXV0aG9yaXR5MFkwEwYHKoZI\n"
    "zj0CAQYIKoZIzj0DAQcDQgAEiJnS52fzAjbqafNl1yPtVg87LuTTT6GRdJNpY+UG\n"
    "bXTxFpAw5SXSTMlXrSt5rI9His3RnzUMBqr1N2NOWHx35KNTMFEwHQYDVR0OBBYE\n"
    "FKO6RBgyNxOx3fJ1ObmVx9oHsYw/MB8GA1UdIwQYMBaAFKO6RBgyNxOx3fJ1ObmV\n"
    "x9oHsYw/MA8GA1UdEwEB/wQFMAMBAf8wCgYIKoZIzj0EAwIDSAAwRQIhAPYfeh+R\n"
    "Z11qRFc4ZNW51aYSaQSZNDKlIszX/KbyIJ0KAiBjcg0M2agOdz9E6b6VEla32y7X\n"
    "/EcTzAqxBtyA05G10w==\n"
    "-----END CERTIFICATE-----\n";

// Puts a variable of the environment back when the test ends.
class Variable {
 public:
  Variable(const char* name, const QString& value)
      : name_(name), before_(qgetenv(name)), was_(qEnvironmentVariableIsSet(name)) {
    qputenv(name, value.toUtf8());
  }
  ~Variable() {
    if (was_) {
      qputenv(name_, before_);
    } else {
      qunsetenv(name_);
    }
  }

 private:
  const char* name_;
  QByteArray before_;
  bool was_;
};

struct ProfileTest : testing::Test {
  test::TemporaryFolder folder;
  Variable data{"XDG_DATA_HOME", folder / QStringLiteral("data")};
  Variable workspace{"SORVAN_WORKSPACE", QString()};
  Variable service{"SORVAN_SERVICE", QString()};
};

TEST_F(ProfileTest, AnOrdinaryRunUsesTheUsersOwnPlaces) {
  const Profile profile = profileFromEnvironment();
  EXPECT_EQ(profile.title, QStringLiteral("Sorvan Studio"));
  EXPECT_FALSE(profile.isSandbox());
  EXPECT_TRUE(profile.defaultWorkspace.endsWith(QStringLiteral("/Sorvan")));
  EXPECT_FALSE(profile.forcedWorkspace);
}

TEST_F(ProfileTest, ARunOnTheSimulatorTouchesNothingOfTheUsers) {
  folder.write(QStringLiteral("authority.pem"), authority);
  const QString file = folder.write(QStringLiteral("service.json"),
                                    R"({"proxy":"127.0.0.1:4000","authority":"authority.pem","key":"demo"})");
  const Variable named("SORVAN_SERVICE", file);
  const Profile profile = profileFromEnvironment();
  EXPECT_EQ(profile.title, QStringLiteral("Sorvan Studio (sandbox)"));
  ASSERT_TRUE(profile.isSandbox());
  EXPECT_EQ(profile.service->key, QStringLiteral("demo"));
  const QString own = folder / QStringLiteral("data/sorvan-studio-sandbox");
  EXPECT_EQ(profile.dataFolder, own);
  EXPECT_TRUE(profile.settingsFile.startsWith(own));
  EXPECT_TRUE(profile.defaultWorkspace.startsWith(own));
}

TEST_F(ProfileTest, AConfigurationThatCannotBeReadIsNeverIgnored) {
  const Variable named("SORVAN_SERVICE", folder / QStringLiteral("missing.json"));
  EXPECT_THROW(profileFromEnvironment(), SorvanError);
}

TEST_F(ProfileTest, AWorkspaceIsNamedByTheEnvironment) {
  const Variable named("SORVAN_WORKSPACE", QStringLiteral("/somewhere/else"));
  EXPECT_EQ(profileFromEnvironment().forcedWorkspace, QStringLiteral("/somewhere/else"));
}

}  // namespace
}  // namespace sorvan::shell
