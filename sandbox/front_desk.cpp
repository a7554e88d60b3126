#include "front_desk.h"

#include "disguise.h"
#include "key_check.h"

namespace sandbox {

namespace {

Shape shapeOf(const std::optional<Fault>& fault) {
  if (!fault) return Shape::Plain;
  switch (fault->kind) {
    case FaultKind::CutStatusLine:
      return Shape::CutStatusLine;
    case FaultKind::CutWithLength:
      return Shape::CutWithLength;
    case FaultKind::CutWithoutLength:
      return Shape::CutWithoutLength;
    case FaultKind::Slow:
      return Shape::Slow;
    case FaultKind::Stall:
      return Shape::Stall;
    case FaultKind::Twice:
      return Shape::Twice;
    default:
      return Shape::Plain;
  }
}

bool isFault(const std::optional<Fault>& fault, FaultKind kind) { return fault && fault->kind == kind; }

bool holdsAt(const std::optional<Fault>& fault, HoldPoint point) {
  return isFault(fault, FaultKind::Hold) && fault->holdPoint == point;
}

}  // namespace

FrontDesk::FrontDesk(CallBook& book, FaultScript& faults, const KeyCheck& keys, Service service)
    : book_(book), faults_(faults), keys_(keys), service_(std::move(service)) {}

Admission FrontDesk::admit(const QString& host) {
  const auto fault = faults_.takeForConnection(host);
  if (!fault) return Admission::Open;
  switch (fault->kind) {
    case FaultKind::Refuse:
      return Admission::Refuse;
    case FaultKind::Close:
      return Admission::Close;
    case FaultKind::BreakTls:
      return Admission::BreakTls;
    default:
      return Admission::Untrusted;
  }
}

HttpHandler::Verdict FrontDesk::headArrived(HttpConnection& connection, const HttpRequest& head) {
  // 1. A call that is to meet its fault before it has a connection must come through a new one.
  Exchange exchange{.call = identify(head), .request = head};
  if (faults_.refusesConnectionFor(exchange.call)) {
    connection.drop();
    return Verdict::StopReading;
  }

  // 2. Note it, and take the fault that waits for it.
  exchange.number = book_.arrived(exchange.call, head, keys_.shown(head));
  exchange.fault = faults_.take(exchange.call);
  Exchange& kept = *exchanges_.insert(&connection, exchange);
  Q_EMIT changed();

  // 3. Some faults never let the body be read.
  if (isFault(kept.fault, FaultKind::CloseBeforeReading)) {
    notePost(kept, false);
    book_.answered(kept.number, kept.fault->name);
    connection.drop();
    return Verdict::StopReading;
  }
  if (holdsAt(kept.fault, HoldPoint::Head)) {
    hold(kept, Stage::HeldAtHead);
    return Verdict::StopReading;
  }
  return Verdict::ReadBody;
}

void FrontDesk::requestArrived(HttpConnection& connection, const HttpRequest& request) {
  Exchange& exchange = exchanges_[&connection];
  exchange.request = request;
  notePost(exchange, true);
  if (holdsAt(exchange.fault, HoldPoint::Before)) return hold(exchange, Stage::HeldBefore);
  carryOut(connection, exchange);
}

void FrontDesk::carryOut(HttpConnection& connection, Exchange& exchange) {
  if (isFault(exchange.fault, FaultKind::Late)) return putOff(connection, exchange);
  if (!exchange.fault || exchange.fault->takesEffect) exchange.answer = service_(exchange.call, exchange.request);
  if (holdsAt(exchange.fault, HoldPoint::After)) return hold(exchange, Stage::HeldAfter);
  if (exchange.fault) exchange.answer = disguise(*exchange.fault, exchange.answer);
  send(connection, exchange);
}

void FrontDesk::putOff(HttpConnection& connection, const Exchange& exchange) {
  late_.append({exchange.call, exchange.request});
  book_.answered(exchange.number, exchange.fault->name);
  connection.drop();
}

void FrontDesk::carryOutLate() {
  for (const auto& [call, request] : std::exchange(late_, {})) service_(call, request);
}

void FrontDesk::send(HttpConnection& connection, Exchange& exchange) {
  const auto fault = exchange.fault;
  if (exchange.call.kind == CallKind::LookUp) carryOutLate();
  book_.answered(exchange.number, fault ? fault->name : QString::number(exchange.answer.status));
  if (isFault(fault, FaultKind::Drop)) return connection.drop();
  const HttpAnswer answer = exchange.answer;
  exchange.stage = isFault(fault, FaultKind::Stall) ? Stage::Stalled : Stage::Answered;
  deliver(connection, answer, shapeOf(fault), fault ? fault->bytesPerSecond : 0);
  Q_EMIT changed();
}

void FrontDesk::hold(Exchange& exchange, Stage stage) {
  exchange.stage = stage;
  book_.answered(exchange.number, QStringLiteral("hold"));
  Q_EMIT changed();
}

void FrontDesk::notePost(Exchange& exchange, bool bodyRead) {
  if (exchange.posted || exchange.request.method != "POST") return;
  exchange.posted = true;
  book_.posted(exchange.call, exchange.request, bodyRead);
}

void FrontDesk::connectionLost(HttpConnection& connection) {
  auto exchange = exchanges_.find(&connection);
  if (exchange == exchanges_.end()) return;
  notePost(*exchange, false);
  exchanges_.erase(exchange);
  Q_EMIT changed();
}

bool FrontDesk::waits(const Exchange& exchange) {
  return exchange.stage != Stage::Reading && exchange.stage != Stage::Answered;
}

int FrontDesk::release(std::optional<CallKind> kind) {
  QList<HttpConnection*> waiting;
  for (auto each = exchanges_.begin(); each != exchanges_.end(); ++each)
    if (waits(*each) && (!kind || each->call.kind == *kind)) waiting.append(each.key());
  for (HttpConnection* connection : waiting) releaseOne(*connection, exchanges_[connection]);
  return int(waiting.size());
}

void FrontDesk::releaseOne(HttpConnection& connection, Exchange& exchange) {
  const Stage stage = std::exchange(exchange.stage, Stage::Reading);
  exchange.fault.reset();
  switch (stage) {
    case Stage::HeldAtHead:
      return connection.resumeReading();
    case Stage::HeldBefore:
      return carryOut(connection, exchange);
    case Stage::HeldAfter:
      return send(connection, exchange);
    case Stage::Stalled:
      exchange.stage = Stage::Answered;
      return finishStalled(connection, exchange.answer);
    case Stage::Reading:
    case Stage::Answered:
      return;
  }
}

int FrontDesk::heldCount(CallKind kind) const {
  return int(std::count_if(exchanges_.begin(), exchanges_.end(),
                           [kind](const Exchange& exchange) { return waits(exchange) && exchange.call.kind == kind; }));
}

QJsonArray FrontDesk::held() const {
  QJsonArray all;
  for (const Exchange& exchange : exchanges_)
    if (waits(exchange)) all.append(nameOf(exchange.call.kind));
  return all;
}

}  // namespace sandbox
