#include "platform/service_configuration.h"

#include <gtest/gtest.h>

#include "base/json.h"
#include "support/failure_of.h"
#include "support/temporary_folder.h"
#include "support/test_certificates.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;
using namespace sorvan::platform;

static QString failureFor(const QByteArray& file) {
  const TemporaryFolder folder;
  folder.write(QStringLiteral("authority.pem"), testAuthority);
  folder.write(QStringLiteral("empty.pem"), "");
  const QString path = folder.write(QStringLiteral("service.json"), file);
  return failureOf([&] { readServiceConfiguration(path); });
}

TEST(ServiceConfiguration, ReadsProxyAuthorityAndKey) {
  const TemporaryFolder folder;
  folder.write(QStringLiteral("ca/authority.pem"), testAuthority);
  const QString path = folder.write(QStringLiteral("service.json"),
                                    R"({"proxy":"127.0.0.1:4711","authority":"ca/authority.pem","key":"demo","x":1})");
  const ServiceConfiguration read = readServiceConfiguration(path);
  EXPECT_EQ(read.proxyHost, QStringLiteral("127.0.0.1"));
  EXPECT_EQ(read.proxyPort, 4711);
  EXPECT_EQ(read.authority, testAuthority);
  EXPECT_EQ(read.key, QStringLiteral("demo"));
}

TEST(ServiceConfiguration, AcceptsAnAddressAndAnInlineAuthority) {
  const TemporaryFolder folder;
  const QByteArray json = jsonText(QJsonObject{{QStringLiteral("proxy"), QStringLiteral("http://localhost:81")},
                                               {QStringLiteral("authority"), QString::fromLatin1(testAuthority)}});
  const ServiceConfiguration read = readServiceConfiguration(folder.write(QStringLiteral("s.json"), json));
  EXPECT_EQ(read.proxyPort, 81);
  EXPECT_EQ(read.key, std::nullopt);
}

TEST(ServiceConfiguration, OneThatCannotBeUsedIsAnErrorAndNeverTheRealService) {
  const QString proxy =
      QStringLiteral("The service configuration cannot be used: its proxy is not written as host:port.");
  EXPECT_EQ(failureFor(R"({"proxy":"127.0.0.1","authority":"authority.pem"})"), proxy);
  EXPECT_EQ(failureFor(R"({"proxy":"","authority":"authority.pem"})"), proxy);
  EXPECT_EQ(failureFor(R"({"proxy":"socks5://a:1","authority":"authority.pem"})"), proxy);
  EXPECT_EQ(failureFor(R"({"proxy":"a:1","authority":"empty.pem"})"),
            QStringLiteral("The service configuration cannot be used: its authority holds no certificate."));
  EXPECT_EQ(failureFor(R"({"proxy":"a:1","authority":"absent.pem"})"),
            QStringLiteral("The service configuration cannot be used: absent.pem could not be read: "
                           "No such file or directory"));
  EXPECT_EQ(failureFor(R"({"authority":"authority.pem"})"),
            QStringLiteral("The service configuration cannot be used: “proxy” is missing."));
  EXPECT_TRUE(failureFor("no json").startsWith(QStringLiteral("The service configuration cannot be used: ")));
}

TEST(ServiceConfiguration, TheEnvironmentNamesTheFile) {
  qunsetenv("SORVAN_SERVICE");
  EXPECT_FALSE(serviceConfigurationFromEnvironment());
  qputenv("SORVAN_SERVICE", "/nonexistent/service.json");
  EXPECT_THROW(serviceConfigurationFromEnvironment(), SorvanError);
  qunsetenv("SORVAN_SERVICE");
}

}  // namespace sorvan::test
