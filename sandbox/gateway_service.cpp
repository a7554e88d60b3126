#include "gateway_service.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLocale>
#include <QUuid>

#include "endpoints.h"
#include "gateway_prices.h"
#include "hosts.h"
#include "interpretation.h"

namespace sandbox {

namespace {

constexpr qint64 credit = 1'000'000;
constexpr qint64 daySeconds = 86400;

HttpAnswer refusal(int status, const QString& error) { return jsonAnswer(status, {{QStringLiteral("error"), error}}); }

QJsonObject bodyOf(const HttpRequest& request) { return QJsonDocument::fromJson(request.body).object(); }

QString keyOf(const HttpRequest& request) { return QString::fromUtf8(request.header("Idempotency-Key")).left(200); }

QString newId() { return QUuid::createUuid().toString(QUuid::WithoutBraces); }

QString amountText(qint64 microcredits) {
  return QLocale(QLocale::English).toString(double(microcredits) / double(credit), 'g', 12);
}

QJsonObject packTold(const Ware& ware) {
  return {{QStringLiteral("id"), ware.id},
          {QStringLiteral("title"), ware.title},
          {QStringLiteral("microcredits"), ware.microcredits},
          {QStringLiteral("price_minor"), ware.priceMinor},
          {QStringLiteral("currency"), QStringLiteral("USD")}};
}

QJsonObject planTold(const Ware& ware) {
  QJsonObject told = packTold(ware);
  told.insert(QStringLiteral("plan"), ware.id);
  return told;
}

QJsonObject deviceTold(const Device& device, const QString& current) {
  return {{QStringLiteral("id"), device.id},
          {QStringLiteral("name"), device.name},
          {QStringLiteral("created"), device.created},
          {QStringLiteral("last_seen"), device.lastSeen},
          {QStringLiteral("current"), device.id == current}};
}

void appendLine(const QString& path, const QString& line) {
  QFile file(path);
  if (file.open(QIODevice::Append)) file.write(line.toUtf8() + '\n');
}

}  // namespace

GatewayService::GatewayService(const QString& state, Parts parts)
    : state_(state),
      ledger_(parts.ledger),
      jobs_(parts.jobs),
      shelf_(parts.shelf),
      book_(state + QStringLiteral("/credits.jsonl")),
      accounts_(state + QStringLiteral("/accounts.json")),
      operations_(state + QStringLiteral("/operations.jsonl"), book_, jobs_),
      desk_(book_, accounts_) {
  makeReadyAccount();
}

QString GatewayService::readyEmail() const { return QStringLiteral("studio@sandbox.example"); }

void GatewayService::makeReadyAccount() {
  const User* ready = accounts_.userOfEmail(readyEmail());
  if (!ready) {
    ready = &accounts_.add(readyEmail(), {QStringLiteral("byok")});
    book_.grant(ready->id, QStringLiteral("purchased"), 2000 * credit, QStringLiteral("welcome"));
  }
  const QList<Device> devices = accounts_.devicesOf(ready->id);
  readyToken_ = devices.isEmpty() ? accounts_.addDevice(ready->id, QStringLiteral("Sandbox")).token
                                  : devices.first().token;
}

HttpAnswer GatewayService::answer(const Call& call, const HttpRequest& request) {
  if (call.kind == CallKind::CheckoutPage) return checkoutPage(request);
  return routed(request);
}

HttpAnswer GatewayService::routed(const HttpRequest& request) {
  const QString what = QString::fromLatin1(request.method) + QLatin1Char(' ') + request.path;
  if (what == QStringLiteral("POST /v1/auth/start")) return startSignIn(request);
  if (what == QStringLiteral("POST /v1/auth/exchange")) return exchange(request);
  if (what == QStringLiteral("GET /v1/credit-packs")) {
    QJsonArray packs;
    for (const Ware& ware : wares())
      if (!ware.isPlan) packs.append(packTold(ware));
    return jsonAnswer(200, {{QStringLiteral("packs"), packs}, {QStringLiteral("test_mode"), true}});
  }
  if (what == QStringLiteral("POST /v1/prices")) return prices(request);
  if (what == QStringLiteral("GET /v1/app"))
    return jsonAnswer(200, {{QStringLiteral("version"), QStringLiteral("0.1.0")},
                            {QStringLiteral("build"), 1},
                            {QStringLiteral("url"), QStringLiteral("https://sorvan.app/download")}});
  if (what == QStringLiteral("POST /v1/t/app")) {
    reports_.append(bodyOf(request));
    HttpAnswer taken;
    taken.status = 204;
    return taken;
  }
  const Device* device = accounts_.deviceOf(request);
  if (!device)
    return refusal(401, QStringLiteral("Your sign-in has ended. Sign in again under Settings → Account."));
  return signedInAnswer(request, *device);
}

HttpAnswer GatewayService::signedInAnswer(const HttpRequest& request, const Device& device) {
  const QString what = QString::fromLatin1(request.method) + QLatin1Char(' ') + request.path;
  if (what == QStringLiteral("GET /v1/me")) return me(device);
  if (what == QStringLiteral("POST /v1/checkout")) return checkout(request, device, false);
  if (what == QStringLiteral("POST /v1/subscribe")) return checkout(request, device, true);
  if (what == QStringLiteral("POST /v1/uploads")) return upload(request);
  if (what == QStringLiteral("POST /v1/images")) return buy(request, device);
  if (what == QStringLiteral("POST /v1/interpret")) return interpret(request, device);
  if (what == QStringLiteral("POST /v1/auth/sign-out")) {
    const Device leaving = device;
    accounts_.revoke(leaving.user, leaving.id);
    return jsonAnswer(200, {{QStringLiteral("signed_out"), true}});
  }
  if (request.path.startsWith(QStringLiteral("/v1/devices/"))) {
    const QString id = request.path.section(QLatin1Char('/'), 3, 3);
    const bool isRevoked = accounts_.revoke(device.user, id);
    return isRevoked ? jsonAnswer(200, {{QStringLiteral("revoked"), true}})
                     : refusal(404, QStringLiteral("There is no such device."));
  }
  return operationAnswer(request, device);
}

HttpAnswer GatewayService::operationAnswer(const HttpRequest& request, const Device& device) {
  const QString kind = request.path.section(QLatin1Char('/'), 2, 2);
  const QString id = request.path.section(QLatin1Char('/'), 3, 3);
  const Operation* operation = nullptr;
  if (kind == QStringLiteral("requests")) operation = operations_.underKey(device.user, id);
  if (kind == QStringLiteral("operations")) operation = operations_.find(id);
  if (!operation || operation->user != device.user)
    return refusal(404, QStringLiteral("The gateway knows no such request."));
  if (request.method == "POST" && request.path.endsWith(QStringLiteral("/cancel"))) operations_.cancel(operation->id);
  return jsonAnswer(200, operations_.told(*operations_.find(operation->id)));
}

HttpAnswer GatewayService::startSignIn(const HttpRequest& request) {
  const QString email = bodyOf(request).value(QStringLiteral("email")).toString().trimmed();
  if (!email.contains(QLatin1Char('@')) || email.contains(QLatin1Char(' ')) || email.size() > 254)
    return refusal(422, QStringLiteral("Enter a valid email address."));
  const QString link = QStringLiteral("sorvan://auth?code=") + accounts_.mail(email);
  appendLine(state_ + QStringLiteral("/mail.txt"), email + QLatin1Char(' ') + link);
  std::printf("Sign-in link for %s: %s\n", qPrintable(email), qPrintable(link));
  std::fflush(stdout);
  return jsonAnswer(200, {{QStringLiteral("sent"), true}});
}

HttpAnswer GatewayService::exchange(const HttpRequest& request) {
  const QString place = QStringLiteral("exchange:") + keyOf(request);
  if (const auto kept = accounts_.keptAnswer(place)) return *kept;
  const QString code = bodyOf(request).value(QStringLiteral("code")).toString();
  const LinkState state = accounts_.linkState(code);
  if (state == LinkState::Used)
    return refusal(410, QStringLiteral("This sign-in link was used already. Ask for a new one."));
  if (state == LinkState::Unknown)
    return refusal(404, QStringLiteral("This sign-in link is not valid. Ask for a new one."));
  const QString email = accounts_.spend(code);
  const User* user = accounts_.userOfEmail(email);
  const QString id = user ? user->id : accounts_.add(email, {}).id;
  const QString name = bodyOf(request).value(QStringLiteral("device")).toString().left(80);
  const HttpAnswer answer = jsonAnswer(200, {{QStringLiteral("token"), accounts_.addDevice(id, name).token}});
  if (!keyOf(request).isEmpty()) accounts_.keepAnswer(place, answer);
  return answer;
}

qint64 GatewayService::spentToday(const QString& user) {
  qint64 spent = 0;
  for (const QJsonValue& each : operations_.all())
    if (each[QStringLiteral("user")].toString() == user) spent += each[QStringLiteral("charged")].toInteger();
  return spent;
}

HttpAnswer GatewayService::me(const Device& device) {
  const User user = *accounts_.userOf(device.user);
  const qint64 reserved = operations_.reservedOf(user.id);
  QJsonObject credits{{QStringLiteral("included"), book_.included(user.id)},
                      {QStringLiteral("purchased"), book_.purchased(user.id)},
                      {QStringLiteral("reserved"), reserved},
                      {QStringLiteral("available"), book_.available(user.id)}};
  const qint64 review = operations_.underReview(user.id);
  if (review > 0) credits.insert(QStringLiteral("review"), review);
  QJsonArray devices;
  for (const Device& each : accounts_.devicesOf(user.id)) devices.append(deviceTold(each, device.id));
  QJsonArray plans;
  for (const Ware& ware : wares())
    if (ware.isPlan) plans.append(planTold(ware));
  QJsonObject told{{QStringLiteral("email"), user.email},
                   {QStringLiteral("plan"), user.plan},
                   {QStringLiteral("plan_status"), QStringLiteral("active")},
                   {QStringLiteral("renews"), user.plan != QStringLiteral("free")},
                   {QStringLiteral("features"), QJsonArray::fromStringList(user.features)},
                   {QStringLiteral("credits"), credits},
                   {QStringLiteral("plans"), plans},
                   {QStringLiteral("devices"), devices}};
  if (user.firstPurchase > 0 && nowSeconds() < user.firstPurchase + daySeconds)
    told.insert(QStringLiteral("spend_limit"),
                QJsonObject{{QStringLiteral("microcredits"), newAccountLimit_},
                            {QStringLiteral("spent"), spentToday(user.id)},
                            {QStringLiteral("until"), user.firstPurchase + daySeconds}});
  return jsonAnswer(200, told);
}

HttpAnswer GatewayService::checkout(const HttpRequest& request, const Device& device, bool isPlan) {
  const QString field = isPlan ? QStringLiteral("plan_id") : QStringLiteral("pack_id");
  const Ware* ware = wareOf(bodyOf(request).value(field).toString());
  if (!ware || ware->isPlan != isPlan) return refusal(404, QStringLiteral("This is not on sale."));
  // The same key brings the same page, until it was paid or has expired.
  const QString place = QStringLiteral("checkout:%1:%2").arg(device.user, keyOf(request));
  if (const auto kept = accounts_.keptAnswer(place)) {
    const QString url = QJsonDocument::fromJson(kept->body).object().value(QStringLiteral("checkout_url")).toString();
    if (desk_.isOpen(url.section(QLatin1Char('/'), -1))) return *kept;
    return refusal(410, QStringLiteral("This checkout has expired."));
  }
  const QString id = desk_.open(device.user, *ware);
  const HttpAnswer answer = jsonAnswer(
      200, {{QStringLiteral("checkout_url"), QStringLiteral("https://%1/checkout/%2").arg(hosts::checkout, id)}});
  if (!keyOf(request).isEmpty()) accounts_.keepAnswer(place, answer);
  return answer;
}

HttpAnswer GatewayService::checkoutPage(const HttpRequest& request) {
  const QString id = request.path.section(QLatin1Char('/'), 2, 2);
  if (request.method == "POST" && request.path.endsWith(QStringLiteral("/pay"))) return desk_.pay(id);
  return desk_.page(id);
}

HttpAnswer GatewayService::prices(const HttpRequest& request) const {
  constexpr qsizetype most = 500;
  const QJsonArray models = bodyOf(request).value(QStringLiteral("models")).toArray();
  if (models.size() > most) return refusal(422, QStringLiteral("Too many models at once."));
  QJsonObject listed;
  for (const QJsonValue& model : models)
    if (const auto row = listedPrice(model.toString())) listed.insert(model.toString(), *row);
  return jsonAnswer(200, {{QStringLiteral("prices"), listed}});
}

HttpAnswer GatewayService::upload(const HttpRequest& request) const {
  static const QMap<QByteArray, QString> kinds{
      {"image/png", QStringLiteral("png")},  {"image/jpeg", QStringLiteral("jpg")}, {"image/webp", QStringLiteral("webp")},
      {"audio/wav", QStringLiteral("wav")},  {"audio/mpeg", QStringLiteral("mp3")}, {"video/mp4", QStringLiteral("mp4")},
      {"audio/mp4", QStringLiteral("m4a")},  {"audio/flac", QStringLiteral("flac")}, {"audio/ogg", QStringLiteral("ogg")},
      {"audio/x-wav", QStringLiteral("wav")}, {"video/quicktime", QStringLiteral("mov")}};
  const QByteArray type = request.header("Content-Type");
  if (request.body.isEmpty() || (!type.startsWith("image/") && !type.startsWith("audio/") && !type.startsWith("video/")))
    return refusal(415, QStringLiteral("This kind of file cannot be uploaded."));
  const QString path = QStringLiteral("/files/g/%1.%2")
                           .arg(QUuid::createUuid().toString(QUuid::Id128), kinds.value(type, QStringLiteral("bin")));
  shelf_.put(path, request.body);
  return jsonAnswer(200, {{QStringLiteral("url"), QStringLiteral("https://%1%2").arg(hosts::uploads, path)}});
}

std::optional<HttpAnswer> GatewayService::knownOperation(const HttpRequest& request, const Device& device) {
  const QString key = keyOf(request);
  if (key.isEmpty()) return refusal(400, QStringLiteral("A request that costs credits needs an idempotency key."));
  const Operation* known = operations_.underKey(device.user, key);
  // What goes on or is complete answers as it is, whatever the body says; only what failed begins anew.
  if (!known || known->ended == QStringLiteral("failed")) return std::nullopt;
  return jsonAnswer(200, operations_.told(*known));
}

std::optional<HttpAnswer> GatewayService::refusalFor(const User& user, qint64 microcredits) {
  if (book_.available(user.id) < microcredits)
    return refusal(402, QStringLiteral("Insufficient Sorvan Credits. This needs %1 credits and you have %2.")
                            .arg(amountText(microcredits), amountText(book_.available(user.id))));
  const bool isNew = user.firstPurchase > 0 && nowSeconds() < user.firstPurchase + daySeconds;
  if (isNew && spentToday(user.id) + operations_.reservedOf(user.id) + microcredits > newAccountLimit_)
    return refusal(403, QStringLiteral("A new account can spend up to %1 credits in its first day.")
                            .arg(amountText(newAccountLimit_)));
  return std::nullopt;
}

HttpAnswer GatewayService::buy(const HttpRequest& request, const Device& device) {
  // 1. A key that is known buys nothing again.
  if (const auto known = knownOperation(request, device)) return *known;

  // 2. What is sold, and whether there is enough for it.
  const QJsonObject body = bodyOf(request);
  const QString model = body.value(QStringLiteral("model")).toString();
  const QJsonObject input = body.value(QStringLiteral("input")).toObject();
  if (!listedPrice(model)) return refusal(422, QStringLiteral("Credits cannot pay for this model yet."));
  const qint64 price = reserveFor(model, input);
  const User user = *accounts_.userOf(device.user);
  if (const auto refused = refusalFor(user, price)) return *refused;

  // 3. The job, the purchase and the hold, each on the disk, then the operation.
  const QByteArray bytes = QJsonDocument(input).toJson(QJsonDocument::Compact);
  const Job& job = jobs_.add(model, bytes);
  Operation operation;
  operation.id = QStringLiteral("op-") + newId();
  operation.user = user.id;
  operation.key = keyOf(request);
  operation.kind = QStringLiteral("image");
  operation.model = model;
  operation.job = job.id;
  operation.reserved = price;
  ledger_.add({job.id, operation.key, model, double(price) / double(credit) / 100, bytes});
  if (!book_.hold(user.id, operation.id, price)) throw std::runtime_error("Credits that were there are gone.");
  return jsonAnswer(200, operations_.told(operations_.add(operation)));
}

HttpAnswer GatewayService::interpret(const HttpRequest& request, const Device& device) {
  if (const auto known = knownOperation(request, device)) return *known;
  const QString text = bodyOf(request).value(QStringLiteral("text")).toString();
  if (text.trimmed().isEmpty()) return refusal(422, QStringLiteral("There is nothing to interpret."));
  const User user = *accounts_.userOf(device.user);
  if (const auto refused = refusalFor(user, interpretationPrice)) return *refused;
  Operation operation;
  operation.id = QStringLiteral("op-") + newId();
  operation.user = user.id;
  operation.key = keyOf(request);
  operation.kind = QStringLiteral("interpret");
  operation.reserved = interpretationPrice;
  operation.action = interpretation(text, bodyOf(request).value(QStringLiteral("context")).toObject());
  book_.hold(user.id, operation.id, interpretationPrice);
  const QString id = operations_.add(operation).id;
  return jsonAnswer(200, operations_.told(*operations_.find(id)));
}

QJsonObject GatewayService::state() {
  const QJsonArray operations = operations_.all();
  return {{QStringLiteral("books"), book_.summary()},
          {QStringLiteral("users"), accounts_.users()},
          {QStringLiteral("operations"), operations},
          {QStringLiteral("checkouts"), QJsonArray::fromStringList(desk_.openPages())},
          {QStringLiteral("reports"), reports_}};
}

QString GatewayService::steer(const QJsonObject& command) {
  const QString what = command.value(QStringLiteral("do")).toString();
  if (what == QStringLiteral("revoke")) return accounts_.revokeAll(), QString();
  if (what == QStringLiteral("expire-checkouts")) return desk_.expireAll(), QString();
  if (what == QStringLiteral("make-uncertain")) return operations_.makeUncertain(), QString();
  if (what == QStringLiteral("resolve-uncertain")) return operations_.resolveUncertain(), QString();
  const auto microcredits = qint64(command.value(QStringLiteral("credits")).toDouble() * double(credit));
  if (what == QStringLiteral("limit")) return newAccountLimit_ = microcredits, QString();
  if (what == QStringLiteral("grant")) {
    const User* user = accounts_.userOfEmail(command.value(QStringLiteral("email")).toString(readyEmail()));
    if (!user || microcredits <= 0) return QStringLiteral("Grant how many credits, and to whom?");
    book_.grant(user->id, QStringLiteral("purchased"), microcredits, QStringLiteral("steered"));
    return {};
  }
  return QStringLiteral("The gateway cannot be steered so.");
}

}  // namespace sandbox
