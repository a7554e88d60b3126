// The payment provider's side: what is on sale, pages to pay on, and payments in test mode.
#pragma once

#include <QJsonArray>
#include <QMap>
#include <QString>

#include "credit_book.h"
#include "gateway_accounts.h"
#include "http_message.h"

namespace sandbox {

struct Ware {
  QString id;
  QString title;
  qint64 microcredits = 0;
  int priceMinor = 0;  // US cents
  bool isPlan = false;
};

// Packs, then plans.
const QList<Ware>& wares();
const Ware* wareOf(const QString& id);

class CheckoutDesk {
 public:
  CheckoutDesk(CreditBook& book, GatewayAccounts& accounts) : book_(book), accounts_(accounts) {}

  // Opens a page for the user to pay on, and tells its id.
  QString open(const QString& user, const Ware& ware);
  // Whether a page can still be paid on, by its id.
  bool isOpen(const QString& id) const;
  void expireAll();
  QStringList openPages() const;

  // The page itself, and what its button sends: "/checkout/<id>" and "/checkout/<id>/pay".
  HttpAnswer page(const QString& id) const;
  HttpAnswer pay(const QString& id);

 private:
  struct Checkout {
    QString user;
    QString ware;
    bool isPaid = false;
    bool isExpired = false;
  };
  CreditBook& book_;
  GatewayAccounts& accounts_;
  QMap<QString, Checkout> checkouts_;
};

}  // namespace sandbox
