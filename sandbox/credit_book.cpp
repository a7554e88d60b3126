#include "credit_book.h"

#include <algorithm>
#include <stdexcept>

#include <QJsonArray>
#include <QJsonDocument>

#include "http_message.h"

namespace sandbox {

namespace {

const QString issuer = QStringLiteral("issuer");
const QString income = QStringLiteral("income");

constexpr std::array movementNames{"grant", "hold", "capture", "release"};

QString nameOf(Movement kind) { return QLatin1StringView(movementNames[std::size_t(kind)]); }

std::optional<Movement> movementNamed(const QString& name) {
  for (std::size_t index = 0; index < movementNames.size(); ++index)
    if (name == QLatin1StringView(movementNames[index])) return Movement(index);
  return std::nullopt;
}

qint64 sumOf(const QList<Posting>& postings) {
  qint64 sum = 0;
  for (const Posting& posting : postings) sum += posting.microcredits;
  return sum;
}

}  // namespace

CreditBook::CreditBook(const QString& path) : file_(path) {
  if (!file_.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered))
    throw std::runtime_error("The book of credits cannot be opened: " + file_.errorString().toStdString());
  takeUp();
}

void CreditBook::takeUp() {
  QFile reader(file_.fileName());
  if (!reader.open(QIODevice::ReadOnly)) return;
  while (!reader.atEnd()) {
    const QJsonObject line = QJsonDocument::fromJson(reader.readLine()).object();
    const auto kind = movementNamed(line.value(QStringLiteral("kind")).toString());
    if (!kind) throw std::runtime_error("A line of the book of credits does not read.");
    QList<Posting> postings;
    for (const QJsonValue& each : line.value(QStringLiteral("postings")).toArray())
      postings.append({each.toArray().at(0).toString(), each.toArray().at(1).toInteger()});
    apply(*kind, line.value(QStringLiteral("reference")).toString(), postings);
  }
}

void CreditBook::move(Movement kind, const QString& reference, const QList<Posting>& postings) {
  apply(kind, reference, postings);
  QJsonArray written;
  for (const Posting& posting : postings) written.append(QJsonArray{posting.account, posting.microcredits});
  const QByteArray line = compactJson({{QStringLiteral("kind"), nameOf(kind)},
                                       {QStringLiteral("reference"), reference},
                                       {QStringLiteral("postings"), written}}) +
                          '\n';
  if (file_.write(line) != line.size()) throw std::runtime_error("A movement of credits cannot be written.");
}

void CreditBook::apply(Movement kind, const QString& reference, const QList<Posting>& postings) {
  // 1. What is taken is what is given, and nobody gives what is not there.
  if (sumOf(postings) != 0) throw std::runtime_error("A movement of credits does not balance.");
  for (const Posting& posting : postings)
    if (posting.account != issuer && balances_.value(posting.account) + posting.microcredits < 0)
      throw std::runtime_error("An account of credits would be overdrawn: " + posting.account.toStdString());

  // 2. The accounts.
  for (const Posting& posting : postings) balances_[posting.account] += posting.microcredits;

  // 3. What became of what was held.
  ++movements_;
  for (const Posting& posting : postings) {
    const bool isHeld = posting.account.startsWith(QStringLiteral("held/"));
    if (kind == Movement::Hold && isHeld) reserved_ += posting.microcredits;
    if (kind == Movement::Hold && posting.account.endsWith(QStringLiteral("/included")))
      heldOfIncluded_[reference] -= posting.microcredits;
    if (kind == Movement::Capture && !isHeld) charged_ += posting.microcredits;
    if (kind == Movement::Release && !isHeld) returned_ += posting.microcredits;
  }
}

void CreditBook::grant(const QString& user, const QString& name, qint64 microcredits, const QString& why) {
  move(Movement::Grant, why, {{issuer, -microcredits}, {purse(user, name), microcredits}});
}

bool CreditBook::hold(const QString& user, const QString& operation, qint64 microcredits) {
  if (available(user) < microcredits || microcredits <= 0) return false;
  const qint64 fromIncluded = std::min(included(user), microcredits);
  move(Movement::Hold, operation,
       {{purse(user, QStringLiteral("included")), -fromIncluded},
        {purse(user, QStringLiteral("purchased")), fromIncluded - microcredits},
        {QStringLiteral("held/") + operation, microcredits}});
  return true;
}

void CreditBook::settle(const QString& user, const QString& operation, qint64 charged) {
  const QString account = QStringLiteral("held/") + operation;
  const qint64 all = balance(account);
  const qint64 earned = std::clamp<qint64>(charged, 0, all);
  if (earned > 0) move(Movement::Capture, operation, {{account, -earned}, {income, earned}});
  const qint64 rest = all - earned;
  if (rest <= 0) return;
  const qint64 ofPurchased = std::min(rest, all - heldOfIncluded_.value(operation));
  move(Movement::Release, operation,
       {{account, -rest},
        {purse(user, QStringLiteral("purchased")), ofPurchased},
        {purse(user, QStringLiteral("included")), rest - ofPurchased}});
}

QJsonObject CreditBook::summary() const {
  qint64 sum = 0;
  qint64 open = 0;
  QJsonObject accounts;
  for (auto each = balances_.begin(); each != balances_.end(); ++each) {
    sum += each.value();
    if (each.key().startsWith(QStringLiteral("held/"))) open += each.value();
    if (each.value() != 0) accounts.insert(each.key(), each.value());
  }
  return {{QStringLiteral("balanced"), sum == 0 && reserved_ == charged_ + returned_ + open},
          {QStringLiteral("movements"), movements_},
          {QStringLiteral("reserved"), reserved_},
          {QStringLiteral("charged"), charged_},
          {QStringLiteral("returned"), returned_},
          {QStringLiteral("open"), open},
          {QStringLiteral("accounts"), accounts}};
}

}  // namespace sandbox
