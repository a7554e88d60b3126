// The credits, kept by double entry: every movement takes from some accounts what it gives to others.
#pragma once

#include <QFile>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

namespace sandbox {

struct Posting {
  QString account;
  qint64 microcredits = 0;  // what is given; negative for what is taken
};

enum class Movement {
  Grant,    // credits come to a user
  Hold,     // set aside for an operation
  Capture,  // what was held is earned
  Release,  // what was held goes back
};

// Accounts are named "issuer", "income", "user/<id>/included", "user/<id>/purchased" and "held/<operation>". Only the
// issuer's may be below zero. One line of JSON a movement in an append-only file; a new book takes up what an old one left.
class CreditBook {
 public:
  // Throws std::runtime_error when the file cannot be used or its lines do not balance.
  explicit CreditBook(const QString& path);

  void grant(const QString& user, const QString& purse, qint64 microcredits, const QString& why);
  // Sets credits aside, included ones first. False, and nothing moved, when there are not enough.
  bool hold(const QString& user, const QString& operation, qint64 microcredits);
  // Earns so much of what is held; the rest goes back to where it came from, purchased credits first.
  void settle(const QString& user, const QString& operation, qint64 charged);

  qint64 included(const QString& user) const { return balance(purse(user, QStringLiteral("included"))); }
  qint64 purchased(const QString& user) const { return balance(purse(user, QStringLiteral("purchased"))); }
  qint64 available(const QString& user) const { return included(user) + purchased(user); }
  qint64 held(const QString& operation) const { return balance(QStringLiteral("held/") + operation); }
  qint64 balance(const QString& account) const { return balances_.value(account); }

  // {"balanced","movements","reserved","charged","returned","open","accounts":{…}}, all amounts in microcredits:
  // "reserved" is all that was ever held, "open" what still is.
  QJsonObject summary() const;

 private:
  static QString purse(const QString& user, const QString& name) {
    return QStringLiteral("user/%1/%2").arg(user, name);
  }
  void move(Movement kind, const QString& reference, const QList<Posting>& postings);
  void apply(Movement kind, const QString& reference, const QList<Posting>& postings);
  void takeUp();

  QFile file_;
  QMap<QString, qint64> balances_;
  QMap<QString, qint64> heldOfIncluded_;  // by operation
  qint64 movements_ = 0;
  qint64 reserved_ = 0;
  qint64 charged_ = 0;
  qint64 returned_ = 0;
};

}  // namespace sandbox
