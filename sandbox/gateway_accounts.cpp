#include "gateway_accounts.h"

#include <cstdio>
#include <stdexcept>

#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QUuid>

namespace sandbox {

namespace {

QString newId() { return QUuid::createUuid().toString(QUuid::Id128); }

QJsonObject written(const User& user) {
  return {{QStringLiteral("id"), user.id},
          {QStringLiteral("email"), user.email},
          {QStringLiteral("features"), QJsonArray::fromStringList(user.features)},
          {QStringLiteral("plan"), user.plan},
          {QStringLiteral("firstPurchase"), user.firstPurchase}};
}

User userFrom(const QJsonObject& line) {
  User user;
  user.id = line.value(QStringLiteral("id")).toString();
  user.email = line.value(QStringLiteral("email")).toString();
  for (const QJsonValue& feature : line.value(QStringLiteral("features")).toArray())
    user.features.append(feature.toString());
  user.plan = line.value(QStringLiteral("plan")).toString();
  user.firstPurchase = line.value(QStringLiteral("firstPurchase")).toInteger();
  return user;
}

QJsonObject written(const Device& device) {
  return {{QStringLiteral("id"), device.id},           {QStringLiteral("user"), device.user},
          {QStringLiteral("name"), device.name},       {QStringLiteral("token"), device.token},
          {QStringLiteral("created"), device.created}, {QStringLiteral("lastSeen"), device.lastSeen}};
}

Device deviceFrom(const QJsonObject& line) {
  return {line.value(QStringLiteral("id")).toString(),         line.value(QStringLiteral("user")).toString(),
          line.value(QStringLiteral("name")).toString(),       line.value(QStringLiteral("token")).toString(),
          line.value(QStringLiteral("created")).toInteger(), line.value(QStringLiteral("lastSeen")).toInteger()};
}

}  // namespace

qint64 nowSeconds() { return QDateTime::currentSecsSinceEpoch(); }

GatewayAccounts::GatewayAccounts(QString path) : path_(std::move(path)) {
  QFile file(path_);
  if (!file.open(QIODevice::ReadOnly)) return;
  const QJsonObject all = QJsonDocument::fromJson(file.readAll()).object();
  for (const QJsonValue& line : all.value(QStringLiteral("users")).toArray()) {
    const User user = userFrom(line.toObject());
    users_.insert(user.id, user);
  }
  for (const QJsonValue& line : all.value(QStringLiteral("devices")).toArray()) {
    const Device device = deviceFrom(line.toObject());
    devices_.insert(device.id, device);
  }
  const QJsonObject links = all.value(QStringLiteral("links")).toObject();
  for (auto link = links.begin(); link != links.end(); ++link) links_.insert(link.key(), link->toString());
  const QJsonObject answers = all.value(QStringLiteral("answers")).toObject();
  for (auto answer = answers.begin(); answer != answers.end(); ++answer) {
    const QJsonObject kept = answer->toObject();
    answers_.insert(answer.key(), jsonAnswer(kept.value(QStringLiteral("status")).toInt(),
                                             kept.value(QStringLiteral("body")).toObject()));
  }
}

void GatewayAccounts::keep() const {
  QJsonArray devices;
  for (const Device& device : devices_) devices.append(written(device));
  QJsonObject links;
  for (auto link = links_.begin(); link != links_.end(); ++link) links.insert(link.key(), link.value());
  QJsonObject answers;
  for (auto answer = answers_.begin(); answer != answers_.end(); ++answer)
    answers.insert(answer.key(), QJsonObject{{QStringLiteral("status"), answer->status},
                                             {QStringLiteral("body"), QJsonDocument::fromJson(answer->body).object()}});
  QFile part(path_ + QStringLiteral(".part"));
  const QByteArray bytes = compactJson({{QStringLiteral("users"), users()},
                                        {QStringLiteral("devices"), devices},
                                        {QStringLiteral("links"), links},
                                        {QStringLiteral("answers"), answers}});
  if (!part.open(QIODevice::WriteOnly | QIODevice::Truncate) || part.write(bytes) != bytes.size())
    throw std::runtime_error("The accounts cannot be written.");
  part.close();
  if (std::rename(QFile::encodeName(part.fileName()).constData(), QFile::encodeName(path_).constData()) != 0)
    throw std::runtime_error("The file of accounts cannot be put in its place.");
}

QJsonArray GatewayAccounts::users() const {
  QJsonArray all;
  for (const User& user : users_) all.append(written(user));
  return all;
}

const User* GatewayAccounts::userOf(const QString& id) const {
  const auto found = users_.constFind(id);
  return found == users_.constEnd() ? nullptr : &*found;
}

const User* GatewayAccounts::userOfEmail(const QString& email) const {
  for (const User& user : users_)
    if (user.email.compare(email, Qt::CaseInsensitive) == 0) return &user;
  return nullptr;
}

const User& GatewayAccounts::add(const QString& email, const QStringList& features) {
  User user;
  user.id = newId();
  user.email = email;
  user.features = features;
  const User& kept = *users_.insert(user.id, user);
  keep();
  return kept;
}

void GatewayAccounts::change(const User& user) {
  users_.insert(user.id, user);
  keep();
}

const Device* GatewayAccounts::deviceOf(const HttpRequest& request) {
  const QByteArray shown = request.header("Authorization");
  if (!shown.startsWith("Bearer ")) return nullptr;
  const QString token = QString::fromLatin1(shown.mid(7));
  for (Device& device : devices_) {
    if (device.token != token) continue;
    device.lastSeen = nowSeconds();
    return &device;
  }
  return nullptr;
}

const Device& GatewayAccounts::addDevice(const QString& user, const QString& name) {
  const Device device{newId(), user, name, newId() + newId(), nowSeconds(), nowSeconds()};
  const Device& kept = *devices_.insert(device.id, device);
  keep();
  return kept;
}

QList<Device> GatewayAccounts::devicesOf(const QString& user) const {
  QList<Device> found;
  for (const Device& device : devices_)
    if (device.user == user) found.append(device);
  return found;
}

bool GatewayAccounts::revoke(const QString& user, const QString& device) {
  const auto found = devices_.find(device);
  if (found == devices_.end() || found->user != user) return false;
  devices_.erase(found);
  keep();
  return true;
}

void GatewayAccounts::revokeAll() {
  devices_.clear();
  keep();
}

QString GatewayAccounts::mail(const QString& email) {
  const QString code = newId();
  links_.insert(code, email);
  keep();
  return code;
}

LinkState GatewayAccounts::linkState(const QString& code) const {
  const auto link = links_.constFind(code);
  if (link == links_.constEnd()) return LinkState::Unknown;
  return link->isEmpty() ? LinkState::Used : LinkState::Good;
}

QString GatewayAccounts::spend(const QString& code) {
  const QString email = links_.value(code);
  links_[code].clear();
  keep();
  return email;
}

std::optional<HttpAnswer> GatewayAccounts::keptAnswer(const QString& key) const {
  const auto found = answers_.constFind(key);
  return found == answers_.constEnd() ? std::nullopt : std::optional(*found);
}

void GatewayAccounts::keepAnswer(const QString& key, const HttpAnswer& answer) {
  answers_.insert(key, answer);
  keep();
}

void GatewayAccounts::forgetAnswer(const QString& key) {
  answers_.remove(key);
  keep();
}

}  // namespace sandbox
