#include "faults.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "fault_names.h"
#include "hosts.h"

namespace sandbox {

namespace {

HttpAnswer scriptedAnswer(const NamedFault& named, const QJsonObject& from) {
  HttpAnswer answer = textAnswer(
      from.value(QStringLiteral("status")).toInt(named.status),
      from.value(QStringLiteral("contentType")).toString(QString::fromLatin1(named.contentType)).toLatin1(), {});
  const QJsonValue body = from.value(QStringLiteral("body"));
  answer.body = body.isObject()   ? compactJson(body.toObject())
                : body.isString() ? body.toString().toUtf8()
                                  : QByteArray(named.body);
  QString location = from.value(QStringLiteral("location")).toString();
  if (location.isEmpty() && answer.status / 100 == 3)
    location = QStringLiteral("https://%1/redirected").arg(hosts::elsewhere);
  if (!location.isEmpty()) answer.headers.append({"Location", location.toUtf8()});
  return answer;
}

std::optional<HoldPoint> holdPointNamed(const QString& name) {
  if (name == QStringLiteral("head")) return HoldPoint::Head;
  if (name == QStringLiteral("before")) return HoldPoint::Before;
  if (name == QStringLiteral("after")) return HoldPoint::After;
  return std::nullopt;
}

bool matches(const Fault& fault, const Call& call) {
  return fault.call == call.kind && (fault.endpoint.isEmpty() || fault.endpoint == call.endpoint);
}

}  // namespace

QString FaultScript::add(const QJsonObject& from) {
  const QString name = from.value(QStringLiteral("kind")).toString();
  const NamedFault* named = faultNamed(name);
  if (!named) return QStringLiteral("No fault is named “%1”.").arg(name);
  const auto call = callNamed(from.value(QStringLiteral("call")).toString());
  if (!call) return QStringLiteral("No call is named “%1”.").arg(from.value(QStringLiteral("call")).toString());
  const auto holdPoint = holdPointNamed(from.value(QStringLiteral("at")).toString(QStringLiteral("after")));
  if (!holdPoint) return QStringLiteral("A call waits at “head”, “before” or “after”.");
  Fault fault;
  fault.name = name;
  fault.kind = named->kind;
  fault.call = *call;
  fault.endpoint = from.value(QStringLiteral("endpoint")).toString();
  fault.skip = from.value(QStringLiteral("skip")).toInt(0);
  fault.times = from.value(QStringLiteral("times")).toInt(1);
  fault.takesEffect = from.value(QStringLiteral("charged")).toBool(named->takesEffect);
  fault.holdPoint = *holdPoint;
  fault.answer = scriptedAnswer(*named, from);
  fault.bytesPerSecond = qMax(1, from.value(QStringLiteral("bytesPerSecond")).toInt(4096));
  faults_.append(fault);
  return {};
}

QString FaultScript::addAll(const QByteArray& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json);
  const QJsonArray array = document.isObject() ? QJsonArray{document.object()} : document.array();
  if (array.isEmpty()) return QStringLiteral("The faults are neither a JSON object nor an array of them.");
  const QList<Fault> before = faults_;
  for (const QJsonValue& value : array) {
    const QString wrong = add(value.toObject());
    if (wrong.isEmpty()) continue;
    faults_ = before;
    return wrong;
  }
  return {};
}

// The fault at this place, unless calls are still to be left alone before it.
std::optional<Fault> FaultScript::use(qsizetype index) {
  Fault& fault = faults_[index];
  if (fault.skip > 0) {
    --fault.skip;
    return std::nullopt;
  }
  const Fault used = fault;
  if (fault.times > 0 && --fault.times == 0) faults_.removeAt(index);
  return used;
}

std::optional<Fault> FaultScript::take(const Call& call) {
  for (qsizetype i = 0; i < faults_.size(); ++i)
    if (!faults_[i].meetsConnection() && matches(faults_[i], call)) return use(i);
  return std::nullopt;
}

std::optional<Fault> FaultScript::takeForConnection(const QString& host) {
  for (qsizetype i = 0; i < faults_.size(); ++i)
    if (faults_[i].meetsConnection() && hostsOf(faults_[i].call).contains(host)) return use(i);
  return std::nullopt;
}

bool FaultScript::refusesConnectionFor(const Call& call) const {
  return std::any_of(faults_.begin(), faults_.end(), [&](const Fault& fault) {
    return fault.meetsConnection() && fault.skip == 0 && fault.call == call.kind;
  });
}

QStringList FaultScript::refusedHosts() const {
  QStringList hosts;
  for (const Fault& fault : faults_)
    if (fault.meetsConnection() && fault.skip == 0) hosts += hostsOf(fault.call);
  return hosts;
}

}  // namespace sandbox
