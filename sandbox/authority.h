// A certificate authority made at start, and the one certificate that names every host of the sandbox.
#pragma once
#include <QByteArray>
#include <QSslConfiguration>
#include <QStringList>

namespace sandbox {

struct Authority {
  QByteArray certificatePem;     // what a client must trust
  QSslConfiguration serverSide;  // presents the leaf that the authority signed
};

// Makes new keys (P-256) and certificates that hold for 30 days. Throws std::runtime_error when OpenSSL refuses.
Authority makeAuthority(const QStringList& hosts);

}  // namespace sandbox
