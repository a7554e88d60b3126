#include "gateway_operations.h"

#include <stdexcept>

#include <QJsonArray>
#include <QJsonDocument>

#include "gateway_prices.h"
#include "http_message.h"

namespace sandbox {

namespace {

const QString complete = QStringLiteral("complete");
const QString failed = QStringLiteral("failed");
const QString uncertain = QStringLiteral("uncertain");

QJsonObject written(const Operation& operation) {
  return {{QStringLiteral("id"), operation.id},           {QStringLiteral("user"), operation.user},
          {QStringLiteral("key"), operation.key},         {QStringLiteral("kind"), operation.kind},
          {QStringLiteral("model"), operation.model},     {QStringLiteral("job"), operation.job},
          {QStringLiteral("ended"), operation.ended},     {QStringLiteral("reserved"), operation.reserved},
          {QStringLiteral("charged"), operation.charged}, {QStringLiteral("failure"), operation.failure},
          {QStringLiteral("action"), operation.action}};
}

Operation operationFrom(const QJsonObject& line) {
  const auto text = [&line](const char* name) { return line.value(QLatin1StringView(name)).toString(); };
  Operation operation;
  operation.id = text("id");
  operation.user = text("user");
  operation.key = text("key");
  operation.kind = text("kind");
  operation.model = text("model");
  operation.job = text("job");
  operation.ended = text("ended");
  operation.reserved = line.value(QStringLiteral("reserved")).toInteger();
  operation.charged = line.value(QStringLiteral("charged")).toInteger();
  operation.failure = text("failure");
  operation.action = line.value(QStringLiteral("action")).toObject();
  return operation;
}

QString place(const QString& user, const QString& key) { return user + QLatin1Char(':') + key; }

QJsonObject media(const QJsonObject& file, const QString& label = {}) {
  QJsonObject told{{QStringLiteral("url"), file.value(QStringLiteral("url"))}};
  if (!label.isEmpty()) told.insert(QStringLiteral("label"), label);
  return told;
}

// The files of a model's result: of the usual places, else every part under its own name.
QJsonArray filesOf(const QJsonObject& result) {
  QJsonArray files;
  for (const QJsonValue& file : result.value(QStringLiteral("images")).toArray()) files.append(media(file.toObject()));
  for (const char16_t* key : {u"image", u"video", u"audio", u"audio_file"}) {
    const QJsonObject file = result.value(QString::fromUtf16(key)).toObject();
    if (files.isEmpty() && file.contains(QStringLiteral("url"))) files.append(media(file));
  }
  if (!files.isEmpty()) return files;
  for (auto part = result.begin(); part != result.end(); ++part)
    if (part->toObject().contains(QStringLiteral("url"))) files.append(media(part->toObject(), part.key()));
  return files;
}

QString reasonOf(const Job& job) {
  const QJsonValue detail = QJsonDocument::fromJson(job.resultBody).object().value(QStringLiteral("detail"));
  const QString message =
      detail.isString() ? detail.toString() : detail[0][QStringLiteral("msg")].toString();
  return message.isEmpty() ? QStringLiteral("The model could not make this.") : message;
}

}  // namespace

GatewayOperations::GatewayOperations(const QString& path, CreditBook& book, JobBoard& jobs)
    : file_(path), book_(book), jobs_(jobs) {
  if (!file_.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered))
    throw std::runtime_error("The operations cannot be opened: " + file_.errorString().toStdString());
  QFile reader(path);
  if (!reader.open(QIODevice::ReadOnly)) return;
  while (!reader.atEnd()) {
    const Operation operation = operationFrom(QJsonDocument::fromJson(reader.readLine()).object());
    operations_.insert(operation.id, operation);
    byKey_.insert(place(operation.user, operation.key), operation.id);
  }
}

void GatewayOperations::keep(const Operation& operation) {
  const QByteArray line = compactJson(written(operation)) + '\n';
  if (file_.write(line) != line.size()) throw std::runtime_error("An operation cannot be written.");
}

const Operation& GatewayOperations::add(Operation operation) {
  const Operation& kept = *operations_.insert(operation.id, operation);
  byKey_.insert(place(operation.user, operation.key), operation.id);
  keep(kept);
  return kept;
}

void GatewayOperations::end(Operation& operation, const QString& state, qint64 charged, const QString& failure) {
  book_.settle(operation.user, operation.id, charged);
  operation.ended = state;
  operation.charged = charged;
  operation.failure = failure;
  keep(operation);
}

void GatewayOperations::settle(Operation& operation) {
  if (!operation.ended.isEmpty()) return;
  if (operation.job.isEmpty()) return end(operation, complete, operation.reserved, {});
  const Job* job = jobs_.find(operation.job);
  if (!job) return end(operation, failed, 0, QStringLiteral("The work was lost. No credits were charged."));
  if (job->cancelled) return end(operation, failed, 0, QStringLiteral("Cancelled. No credits were charged."));
  if (job->state() != JobState::Completed) return;
  const bool isMade = job->resultStatus >= 200 && job->resultStatus < 300;
  if (!isMade) return end(operation, failed, 0, reasonOf(*job));
  end(operation, complete, chargeFor(operation.model, operation.reserved), {});
}

void GatewayOperations::settleAll() {
  for (Operation& operation : operations_) settle(operation);
}

const Operation* GatewayOperations::underKey(const QString& user, const QString& key) {
  const auto known = byKey_.constFind(place(user, key));
  return known == byKey_.constEnd() ? nullptr : find(*known);
}

const Operation* GatewayOperations::find(const QString& id) {
  const auto found = operations_.find(id);
  if (found == operations_.end()) return nullptr;
  settle(*found);
  return &*found;
}

void GatewayOperations::cancel(const QString& id) {
  Operation& operation = operations_[id];
  settle(operation);
  if (!operation.ended.isEmpty()) return;
  const Job* job = jobs_.find(operation.job);
  if (!job || job->state() != JobState::Queued) return;
  jobs_.cancel(job->id);
  settle(operation);
}

void GatewayOperations::makeUncertain() {
  settleAll();
  for (Operation& operation : operations_) {
    if (!operation.ended.isEmpty()) continue;
    operation.ended = uncertain;
    keep(operation);
  }
}

void GatewayOperations::resolveUncertain() {
  for (Operation& operation : operations_) {
    if (operation.ended != uncertain) continue;
    operation.ended.clear();
    settle(operation);
    keep(operation);
  }
}

QJsonObject GatewayOperations::resultOf(const Operation& operation) const {
  if (!operation.action.isEmpty()) return {{QStringLiteral("action"), operation.action}};
  const Job* job = jobs_.find(operation.job);
  if (!job) return {};
  const QJsonObject made = QJsonDocument::fromJson(job->resultBody).object();
  QJsonObject result{{QStringLiteral("images"), filesOf(made)}, {QStringLiteral("providerRequestID"), job->id}};
  if (made.value(QStringLiteral("seed")).isDouble())
    result.insert(QStringLiteral("seed"), made.value(QStringLiteral("seed")));
  if (made.value(QStringLiteral("output")).isString())
    result.insert(QStringLiteral("output"), made.value(QStringLiteral("output")));
  return result;
}

QJsonObject GatewayOperations::told(const Operation& operation) const {
  QString state = operation.ended;
  if (state.isEmpty()) {
    const Job* job = jobs_.find(operation.job);
    state = job && job->state() != JobState::Queued ? QStringLiteral("running") : QStringLiteral("queued");
  }
  QJsonObject body{{QStringLiteral("id"), operation.id},
                   {QStringLiteral("kind"), operation.kind},
                   {QStringLiteral("state"), state},
                   {QStringLiteral("reserved"), operation.ended.isEmpty() ? operation.reserved : 0},
                   {QStringLiteral("charged"), operation.charged}};
  if (operation.ended == complete) body.insert(QStringLiteral("result"), resultOf(operation));
  if (!operation.failure.isEmpty()) body.insert(QStringLiteral("failure"), operation.failure);
  return body;
}

qint64 GatewayOperations::reservedOf(const QString& user) {
  settleAll();
  qint64 sum = 0;
  for (const Operation& operation : operations_)
    if (operation.user == user && operation.ended.isEmpty()) sum += book_.held(operation.id);
  return sum;
}

qint64 GatewayOperations::underReview(const QString& user) {
  qint64 sum = 0;
  for (const Operation& operation : operations_)
    if (operation.user == user && operation.ended == uncertain) sum += book_.held(operation.id);
  return sum;
}

QJsonArray GatewayOperations::all() {
  settleAll();
  QJsonArray list;
  for (const Operation& operation : operations_) {
    QJsonObject each = told(operation);
    each.remove(QStringLiteral("result"));
    each.insert(QStringLiteral("key"), operation.key);
    each.insert(QStringLiteral("user"), operation.user);
    each.insert(QStringLiteral("job"), operation.job);
    each.insert(QStringLiteral("held"), book_.held(operation.id));
    list.append(each);
  }
  return list;
}

}  // namespace sandbox
