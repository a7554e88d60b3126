#include "checkout_desk.h"

#include <QUuid>

namespace sandbox {

namespace {

constexpr qint64 credit = 1'000'000;

QByteArray priceText(int minor) {
  return "$" + QByteArray::number(minor / 100) + "." + QByteArray::number(minor % 100).rightJustified(2, '0');
}

HttpAnswer pageOf(int status, const QByteArray& title, const QByteArray& body) {
  return textAnswer(status, "text/html; charset=utf-8",
                    "<!doctype html><html lang=\"en\"><head><meta charset=\"utf-8\"><title>" + title +
                        "</title><style>body{font:16px sans-serif;max-width:26rem;margin:4rem auto;padding:0 1rem}"
                        "button{font:inherit;padding:.6rem 1.2rem}small{color:#666}</style></head><body><h1>" +
                        title + "</h1>" + body + "</body></html>");
}

}  // namespace

const QList<Ware>& wares() {
  static const QList<Ware> all{
      {QStringLiteral("p500"), QStringLiteral("500 credits"), 500 * credit, 500},
      {QStringLiteral("p2000"), QStringLiteral("2,000 credits"), 2000 * credit, 2000},
      {QStringLiteral("p5000"), QStringLiteral("5,000 credits"), 5000 * credit, 4900},
      {QStringLiteral("studio"), QStringLiteral("Studio"), 1000 * credit, 900, true},
      {QStringLiteral("house"), QStringLiteral("House"), 4000 * credit, 2900, true}};
  return all;
}

const Ware* wareOf(const QString& id) {
  for (const Ware& ware : wares())
    if (ware.id == id) return &ware;
  return nullptr;
}

QString CheckoutDesk::open(const QString& user, const Ware& ware) {
  const QString id = QUuid::createUuid().toString(QUuid::Id128);
  checkouts_.insert(id, {user, ware.id});
  return id;
}

bool CheckoutDesk::isOpen(const QString& id) const {
  const Checkout found = checkouts_.value(id);
  return checkouts_.contains(id) && !found.isPaid && !found.isExpired;
}

void CheckoutDesk::expireAll() {
  for (Checkout& checkout : checkouts_)
    if (!checkout.isPaid) checkout.isExpired = true;
}

QStringList CheckoutDesk::openPages() const {
  QStringList open;
  for (const QString& id : checkouts_.keys())
    if (isOpen(id)) open.append(id);
  return open;
}

HttpAnswer CheckoutDesk::page(const QString& id) const {
  if (!checkouts_.contains(id)) return pageOf(404, "No such page", "<p>There is nothing to pay here.</p>");
  const Checkout& checkout = *checkouts_.find(id);
  if (checkout.isPaid) return pageOf(200, "Paid", "<p id=\"paid\">Thank you. You can close this page.</p>");
  if (checkout.isExpired) return pageOf(410, "Expired", "<p>This page has expired. Open a new one in Sorvan.</p>");
  const Ware& ware = *wareOf(checkout.ware);
  return pageOf(200, ware.title.toHtmlEscaped().toUtf8(),
                "<p>" + priceText(ware.priceMinor) +
                    "</p><form method=\"post\" action=\"/checkout/" + id.toLatin1() +
                    "/pay\"><button id=\"pay\" type=\"submit\">Pay</button></form><p><small>Test mode: no real "
                    "payment.</small></p>");
}

HttpAnswer CheckoutDesk::pay(const QString& id) {
  const auto checkout = checkouts_.find(id);
  if (checkout == checkouts_.end() || checkout->isExpired || checkout->isPaid) return page(id);
  const Ware& ware = *wareOf(checkout->ware);
  checkout->isPaid = true;
  book_.grant(checkout->user, ware.isPlan ? QStringLiteral("included") : QStringLiteral("purchased"),
              ware.microcredits, QStringLiteral("checkout ") + id);
  User user = *accounts_.userOf(checkout->user);
  if (user.firstPurchase == 0) user.firstPurchase = nowSeconds();
  if (ware.isPlan) user.plan = ware.id;
  accounts_.change(user);
  return page(id);
}

}  // namespace sandbox
