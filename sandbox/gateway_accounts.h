// Who has an account at the gateway: addresses, mailed links, tokens of devices, and answers that are kept.
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QString>

#include <optional>

#include "http_message.h"

namespace sandbox {

struct User {
  QString id;
  QString email;
  QStringList features;
  QString plan = QStringLiteral("free");
  qint64 firstPurchase = 0;  // seconds since 1970; 0 for none
};

struct Device {
  QString id;
  QString user;
  QString name;
  QString token;
  qint64 created = 0;
  qint64 lastSeen = 0;
};

// Whether a code that was mailed can still sign somebody in.
enum class LinkState { Unknown, Good, Used };

// One JSON file, rewritten whole at each change.
class GatewayAccounts {
 public:
  // Throws std::runtime_error when the file cannot be read or written.
  explicit GatewayAccounts(QString path);

  const User* userOf(const QString& id) const;
  const User* userOfEmail(const QString& email) const;
  const User& add(const QString& email, const QStringList& features);
  void change(const User& user);

  // The device whose token a request shows, or null; it was seen now.
  const Device* deviceOf(const HttpRequest& request);
  const Device& addDevice(const QString& user, const QString& name);
  QList<Device> devicesOf(const QString& user) const;
  // False when the user has no such device.
  bool revoke(const QString& user, const QString& device);
  void revokeAll();

  // A new code for this address.
  QString mail(const QString& email);
  LinkState linkState(const QString& code) const;
  // The address of a good code, which is spent by that.
  QString spend(const QString& code);

  // An answer that is given again whenever its key comes back.
  std::optional<HttpAnswer> keptAnswer(const QString& key) const;
  void keepAnswer(const QString& key, const HttpAnswer& answer);
  void forgetAnswer(const QString& key);

  QJsonArray users() const;

 private:
  void keep() const;

  QString path_;
  QMap<QString, User> users_;
  QMap<QString, Device> devices_;   // by id
  QMap<QString, QString> links_;    // code to address; an empty one is spent
  QMap<QString, HttpAnswer> answers_;
};

qint64 nowSeconds();

}  // namespace sandbox
