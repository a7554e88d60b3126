#include "platform/service_configuration.h"

#include <QDir>
#include <QFileInfo>
#include <QSslCertificate>
#include <QUrl>

#include "base/json.h"
#include "platform/texts.h"

namespace sorvan::platform {

namespace {
struct ConfigurationFile {
  QString proxy;
  QString authority;
  std::optional<QString> key;
  std::optional<QString> token;
  BOOST_DESCRIBE_CLASS(ConfigurationFile, (), (proxy, authority, key, token), (), ())
};
}  // namespace

static SorvanError unusable(const QString& reason) { return SorvanError(texts::badServiceConfiguration(reason)); }

static void readProxy(const QString& text, ServiceConfiguration& configuration) {
  const QUrl url(text.contains(QStringLiteral("://")) ? text : QStringLiteral("http://") + text);
  if (!url.isValid() || url.host().isEmpty() || url.port() <= 0 || url.scheme() != QStringLiteral("http"))
    throw unusable(texts::badProxy());
  configuration.proxyHost = url.host();
  configuration.proxyPort = static_cast<quint16>(url.port());
}

static QByteArray readAuthority(const QString& text, const QDir& folder) {
  const bool inlined = text.contains(QStringLiteral("-----BEGIN CERTIFICATE-----"));
  const QByteArray pem = inlined ? text.toUtf8() : readFile(folder.absoluteFilePath(text), 1 << 20);
  if (QSslCertificate::fromData(pem, QSsl::Pem).isEmpty()) throw unusable(texts::badAuthority());
  return pem;
}

ServiceConfiguration readServiceConfiguration(const QString& path) {
  try {
    const auto file = decodeJson<ConfigurationFile>(readFile(path, 1 << 20));
    ServiceConfiguration configuration;
    readProxy(file.proxy, configuration);
    configuration.authority = readAuthority(file.authority, QFileInfo(path).absoluteDir());
    configuration.key = file.key;
    configuration.token = file.token;
    return configuration;
  } catch (const FileError& failure) {
    throw unusable(failure.message());
  } catch (const JsonError& failure) {
    throw unusable(failure.message());
  }
}

std::optional<ServiceConfiguration> serviceConfigurationFromEnvironment() {
  const QString path = qEnvironmentVariable("SORVAN_SERVICE");
  if (path.isEmpty()) return std::nullopt;
  return readServiceConfiguration(path);
}

}  // namespace sorvan::platform
