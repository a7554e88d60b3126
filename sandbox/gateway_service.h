// The gateway: accounts, credits, paid operations, and the little news of the program itself.
#pragma once

#include <QStringList>

#include "calls.h"
#include "checkout_desk.h"
#include "credit_book.h"
#include "gateway_accounts.h"
#include "gateway_operations.h"
#include "http_message.h"
#include "ledger.h"
#include "media_shelf.h"

namespace sandbox {

// Everything stands in files of the state folder: "credits.jsonl", "accounts.json", "operations.jsonl", and what was
// mailed in "mail.txt".
class GatewayService {
 public:
  struct Parts {
    Ledger& ledger;
    JobBoard& jobs;
    const MediaShelf& shelf;
  };
  GatewayService(const QString& state, Parts parts);

  HttpAnswer answer(const Call& call, const HttpRequest& request);
  // A page of the payment provider, at its host or on loopback.
  HttpAnswer checkoutPage(const HttpRequest& request);

  // The token of the account that is there from the start: with credits, and with the right to use an own key.
  QString readyToken() const { return readyToken_; }
  QString readyEmail() const;

  // For tests: what the books, accounts and operations say.
  QJsonObject state();
  // For tests: {"do": "revoke" | "expire-checkouts" | "make-uncertain" | "resolve-uncertain" | "grant" | "limit",
  // "email"?, "credits"?}. Says what is wrong, or nothing.
  QString steer(const QJsonObject& command);

 private:
  HttpAnswer routed(const HttpRequest& request);
  HttpAnswer signedInAnswer(const HttpRequest& request, const Device& device);
  HttpAnswer operationAnswer(const HttpRequest& request, const Device& device);
  HttpAnswer startSignIn(const HttpRequest& request);
  HttpAnswer exchange(const HttpRequest& request);
  HttpAnswer me(const Device& device);
  HttpAnswer checkout(const HttpRequest& request, const Device& device, bool isPlan);
  HttpAnswer prices(const HttpRequest& request) const;
  HttpAnswer upload(const HttpRequest& request) const;
  HttpAnswer buy(const HttpRequest& request, const Device& device);
  HttpAnswer interpret(const HttpRequest& request, const Device& device);
  std::optional<HttpAnswer> knownOperation(const HttpRequest& request, const Device& device);
  std::optional<HttpAnswer> refusalFor(const User& user, qint64 microcredits);
  qint64 spentToday(const QString& user);
  void makeReadyAccount();

  QString state_;
  Ledger& ledger_;
  JobBoard& jobs_;
  const MediaShelf& shelf_;
  CreditBook book_;
  GatewayAccounts accounts_;
  GatewayOperations operations_;
  CheckoutDesk desk_;
  QString readyToken_;
  qint64 newAccountLimit_ = 2000LL * 1'000'000;  // microcredits in the first day after the first purchase
  QJsonArray reports_;
};

}  // namespace sandbox
