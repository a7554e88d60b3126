#include "control.h"

#include <QCoreApplication>
#include <QJsonDocument>

namespace sandbox {

namespace {

HttpAnswer done(const QJsonObject& object = {}) { return jsonAnswer(200, object); }
HttpAnswer wrong(const QString& text) { return jsonAnswer(400, {{QStringLiteral("error"), text}}); }

}  // namespace

QString controlHelp() {
  return QStringLiteral(
      "  GET  /state      counts of POSTs, calls, purchases and pending faults; held calls\n"
      "  GET  /ledger     the ledger file\n"
      "  GET  /calls      every call in order, with what it was answered\n"
      "  GET  /wait?call=NAME&count=N[&held=1]   answers once N such calls arrived (or are held; 0: none is)\n"
      "  POST /faults     a fault or an array of them: "
      "{\"call\",\"kind\",\"endpoint\"?,\"skip\"?,\"times\"?,\"charged\"?,…}\n"
      "  DELETE /faults   forgets the faults that are left\n"
      "  POST /release    {\"call\"?}: lets held and stalled calls go on\n"
      "  POST /pace       {\"manual\": true}: jobs move only by steps\n"
      "  POST /step       every job moves on by one state\n"
      "  POST /run        {\"run\"}: names the trial that later purchases belong to\n"
      "  GET  /gateway    its books, users, operations and open checkouts\n"
      "  POST /gateway    {\"do\": revoke, expire-checkouts, make-uncertain, resolve-uncertain, grant, limit}\n"
      "  GET  /checkout/ID, POST /checkout/ID/pay   a page to pay on, for a browser\n"
      "  POST /shutdown   ends the sandbox\n");
}

Control::Control(Controls controls, QObject* parent) : QTcpServer(parent), controls_(controls) {
  connect(&controls_.desk, &FrontDesk::changed, this, &Control::lookAtWaiters, Qt::QueuedConnection);
}

void Control::incomingConnection(qintptr descriptor) {
  auto* socket = new QTcpSocket(this);
  socket->setSocketDescriptor(descriptor);
  new HttpConnection(socket, QStringLiteral("control"), *this, this);
}

void Control::requestArrived(HttpConnection& connection, const HttpRequest& request) {
  if (request.path == QStringLiteral("/wait")) return wait(connection, request);
  deliver(connection, carryOut(request), Shape::Plain);
}

HttpAnswer Control::carryOut(const HttpRequest& request) {
  const QString what = QString::fromLatin1(request.method) + QLatin1Char(' ') + request.path;
  const QJsonObject body = QJsonDocument::fromJson(request.body).object();
  if (what == QStringLiteral("GET /state")) return state();
  if (what == QStringLiteral("GET /ledger")) return textAnswer(200, "application/jsonl", controls_.ledger.text());
  if (what == QStringLiteral("GET /calls"))
    return textAnswer(200, "application/json", QJsonDocument(controls_.book.calls()).toJson());
  if (what == QStringLiteral("POST /faults")) return addFaults(request.body);
  if (what == QStringLiteral("DELETE /faults")) return controls_.faults.clear(), done();
  if (what == QStringLiteral("POST /release")) return release(body);
  if (what == QStringLiteral("POST /pace"))
    return controls_.jobs.setManual(body.value(QStringLiteral("manual")).toBool()), done();
  if (what == QStringLiteral("POST /step")) return controls_.jobs.step(), done();
  if (what == QStringLiteral("GET /gateway")) return done(controls_.gateway.state());
  if (what == QStringLiteral("POST /gateway")) {
    const QString problem = controls_.gateway.steer(body);
    return problem.isEmpty() ? done() : wrong(problem);
  }
  if (request.path.startsWith(QStringLiteral("/checkout/"))) return controls_.gateway.checkoutPage(request);
  if (what == QStringLiteral("POST /run"))
    return controls_.ledger.setRun(body.value(QStringLiteral("run")).toString()), done();
  if (what == QStringLiteral("POST /shutdown")) {
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    return done();
  }
  return jsonAnswer(404, {{QStringLiteral("error"), QStringLiteral("The control address knows no such thing.")}});
}

HttpAnswer Control::state() const {
  QJsonObject calls;
  for (int kind = int(CallKind::Submit); kind <= int(CallKind::Other); ++kind)
    calls.insert(nameOf(CallKind(kind)), controls_.book.count(CallKind(kind)));
  return done({{QStringLiteral("posts"), controls_.book.posts()},
               {QStringLiteral("calls"), calls},
               {QStringLiteral("purchases"), controls_.ledger.count()},
               {QStringLiteral("run"), controls_.ledger.run()},
               {QStringLiteral("faults"), controls_.faults.pending()},
               {QStringLiteral("held"), controls_.desk.held()}});
}

HttpAnswer Control::addFaults(const QByteArray& json) {
  const QString problem = controls_.faults.addAll(json);
  if (!problem.isEmpty()) return wrong(problem);
  controls_.proxy.closeIdle(controls_.faults.refusedHosts());
  return done();
}

HttpAnswer Control::release(const QJsonObject& body) {
  const QString name = body.value(QStringLiteral("call")).toString();
  const auto call = callNamed(name);
  if (!name.isEmpty() && !call) return wrong(QStringLiteral("No call is named “%1”.").arg(name));
  return done({{QStringLiteral("released"), controls_.desk.release(call)}});
}

void Control::wait(HttpConnection& connection, const HttpRequest& request) {
  const auto call = callNamed(request.query.queryItemValue(QStringLiteral("call")));
  if (!call) return deliver(connection, wrong(QStringLiteral("Wait for which call?")), Shape::Plain);
  const QString count = request.query.queryItemValue(QStringLiteral("count"));
  const Waiter waiter{*call, request.query.queryItemValue(QStringLiteral("held")) == QStringLiteral("1"),
                      count.isEmpty() ? 1 : count.toInt()};
  if (!answerIfReached(connection, waiter)) waiters_.insert(&connection, waiter);
}

bool Control::answerIfReached(HttpConnection& connection, const Waiter& waiter) {
  const int now = waiter.held ? controls_.desk.heldCount(waiter.call) : controls_.book.count(waiter.call);
  const bool noneHeld = waiter.held && waiter.count == 0;
  if (noneHeld ? now > 0 : now < waiter.count) return false;
  deliver(connection, done({{QStringLiteral("count"), now}}), Shape::Plain);
  return true;
}

void Control::lookAtWaiters() {
  for (HttpConnection* connection : waiters_.keys()) {
    const Waiter waiter = waiters_.take(connection);
    if (!answerIfReached(*connection, waiter)) waiters_.insert(connection, waiter);
  }
}

void Control::connectionLost(HttpConnection& connection) { waiters_.remove(&connection); }

}  // namespace sandbox
