// Where the gateway is: the compiled-in address, or one that the user has set.
#pragma once

#include <QString>
#include <QUrl>

#include "base/settings.h"
#include "catalogue/room.h"

namespace sorvan::catalogue {

/// The settings key of an address that stands in for the compiled-in one.
inline QString gatewaySetting() { return QStringLiteral("creditsURL"); }

/// The address that the text names: https, or http on this machine; with a host and nothing else but a port. Throws
/// SorvanError "Use an HTTPS gateway URL, or HTTP on localhost for development." for anything else.
QUrl gatewayAddress(const QString& text);

/// The compiled-in gateway.
QUrl defaultGateway();

/// The gateway of these settings. Throws as `gatewayAddress`.
QUrl gatewayOf(const Settings& settings);

/// The address of a path below the gateway, such as "v1/me". The path is encoded already.
QUrl gatewayURL(const QUrl& gateway, const QString& path);

}  // namespace sorvan::catalogue
