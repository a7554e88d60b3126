// How the studio is pointed at a service other than the real one: a proxy and an authority to trust, nothing else.
#pragma once

#include <optional>

#include <QByteArray>
#include <QString>

#include "platform/room.h"

namespace sorvan::platform {

// Every address, host name and rule about them stays as it ships.
struct ServiceConfiguration {
  QString proxyHost;
  quint16 proxyPort = 0;
  // PEM certificates that are trusted beside the system's.
  QByteArray authority;
  // A key that the service accepts, for demos.
  std::optional<QString> key;
  // The token of an account that the service has from the start, for demos.
  std::optional<QString> token = {};
  // Whether the system's authorities are trusted too. No file says otherwise; a test that starts a thousand programs
  // does, because reading them takes half of each start.
  bool trustsSystem = true;
};

// Reads {"proxy": "host:port" or "http://host:port", "authority": path of a PEM file or the PEM text itself,
// "key": optional, "token": optional}. A relative path is relative to the file. Throws SorvanError when the file cannot be used: a
// configuration that was asked for must never fall back to the real service.
ServiceConfiguration readServiceConfiguration(const QString& path);

// The configuration that the environment variable SORVAN_SERVICE names; empty when it is unset or empty.
std::optional<ServiceConfiguration> serviceConfigurationFromEnvironment();

}  // namespace sorvan::platform
