#include "job_board.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QPointer>
#include <QTimer>
#include <QUuid>
#include <stdexcept>

#include "catalogue.h"
#include "hosts.h"
#include "randomness.h"
#include "result_shape.h"
#include "validation.h"
#include "wish.h"

namespace sandbox {

namespace {

// Where the made file stands: the same job always gets the same addresses.
QString pathOf(const Job& job, qsizetype index, const QString& extension) {
  const quint64 slug = mixed(hashOf(job.id), quint64(index));
  return QStringLiteral("/files/b/%1/%2.%3")
      .arg(slug & 0xffffffffU, 8, 16, QLatin1Char('0'))
      .arg(QString::number(mixed(slug, 1), 36) + QString::number(mixed(slug, 2), 36), extension);
}

QJsonObject shelved(const Job& job, const MadeFile& file, qsizetype index, const MediaShelf& shelf) {
  const QString path = pathOf(job, index, file.extension);
  shelf.put(path, file.bytes);
  QJsonObject object = file.facts;
  object.insert(QStringLiteral("url"), QStringLiteral("https://%1%2").arg(hosts::media, path));
  object.insert(QStringLiteral("content_type"), QString::fromLatin1(contentTypeOf(file.extension)));
  object.insert(QStringLiteral("file_name"), path.section(QLatin1Char('/'), -1));
  object.insert(QStringLiteral("file_size"), file.bytes.size());
  return object;
}

QJsonObject bodyOf(const Job& job, const Made& made, const MediaShelf& shelf) {
  QJsonObject body = made.beside;
  for (qsizetype i = 0; i < made.files.size(); ++i) {
    const MadeFile& file = made.files[i];
    const QJsonObject object = shelved(job, file, i, shelf);
    if (!file.inArray) {
      body.insert(file.field, object);
      continue;
    }
    QJsonArray array = body.value(file.field).toArray();
    array.append(object);
    body.insert(file.field, array);
  }
  return body;
}

// The input as the endpoint takes it. Throws ModelRefusal when its document forbids it.
QJsonObject inputOf(const Job& job, const json::object* document) {
  if (document)
    if (const QJsonArray problems = problemsOf(*document, job.body); !problems.isEmpty())
      throw ModelRefusal{422, problems};
  const QJsonDocument input = QJsonDocument::fromJson(job.body);
  if (!input.isObject()) throw refusal(QStringLiteral("json_invalid"), {}, QStringLiteral("JSON decode error"));
  return document ? withDefaults(*document, input.object()) : input.object();
}

QJsonObject resultOf(Job& job, const MediaShelf& shelf, int longestSide) {
  const json::object* document = publishedDocument(job.endpoint);
  const QJsonObject input = inputOf(job, document);
  const Product product = productOf(job.endpoint).value_or(Product::Picture);
  const QJsonObject result = bodyOf(job, make({job.endpoint, product, input, job.seed, longestSide}, shelf), shelf);
  job.billableUnits = unitsOf(input, product, priceOf(job.endpoint).value_or(Price()).unit);
  return document ? asPublished(*document, result) : result;
}

// Does the whole work of a job. Runs on the pool.
Job worked(Job job, const MediaShelf& shelf, int longestSide) {
  QElapsedTimer timer;
  timer.start();
  QJsonObject body;
  job.resultStatus = 200;
  try {
    body = resultOf(job, shelf, longestSide);
  } catch (const ModelRefusal& refused) {
    job.resultStatus = refused.status;
    job.billableUnits = 0;
    body = {{QStringLiteral("detail"), refused.details}};
  } catch (const std::exception& failure) {
    job.resultStatus = 500;
    body = {{QStringLiteral("detail"), QString::fromUtf8(failure.what())}};
  }
  job.resultBody = QJsonDocument(body).toJson(QJsonDocument::Compact);
  job.inferenceSeconds = double(timer.elapsed()) / 1000;
  return job;
}

}  // namespace

JobBoard::JobBoard(QString folder, const MediaShelf& shelf, Work work)
    : folder_(std::move(folder)), shelf_(shelf), work_(work) {
  makers_.setMaxThreadCount(2);
  QDir().mkpath(folder_);
  takeUp();
}

JobBoard::~JobBoard() {
  makers_.clear();
  makers_.waitForDone();
}

void JobBoard::takeUp() {
  for (const QFileInfo& file : QDir(folder_).entryInfoList({QStringLiteral("*.json")}, QDir::Files)) {
    QFile reader(file.filePath());
    if (!reader.open(QIODevice::ReadOnly)) continue;
    if (const auto job = jobFrom(reader.readAll())) jobs_.insert(job->id, *job);
  }
  for (Job& job : jobs_) {
    lastNumber_ = qMax(lastNumber_, job.number);
    if (job.state() == JobState::Completed) continue;
    if (job.reached != JobState::Queued) startMaking(job);
    schedule(job);
  }
}

const Job& JobBoard::add(const QString& endpoint, const QByteArray& body) {
  Job job;
  job.id = QUuid::createUuid().toString(QUuid::WithoutBraces);
  job.endpoint = endpoint;
  job.body = body;
  job.number = ++lastNumber_;
  job.seed = seedOf(QJsonDocument::fromJson(body).object()).value_or(qint64(hashOf(job.id) % 1'000'000'000));
  keep(job);
  const Job& kept = *jobs_.insert(job.id, job);
  schedule(kept);
  return kept;
}

const Job* JobBoard::find(const QString& id) const {
  const auto job = jobs_.constFind(id);
  return job == jobs_.constEnd() ? nullptr : &*job;
}

int JobBoard::positionOf(const Job& job) const {
  return int(std::count_if(jobs_.begin(), jobs_.end(), [&job](const Job& other) {
    return other.number < job.number && other.state() == JobState::Queued;
  }));
}

void JobBoard::cancel(const QString& id) {
  Job& job = jobs_[id];
  job.cancelled = true;
  keep(job);
}

void JobBoard::setManual(bool manual) {
  manual_ = manual;
  if (manual_) return;
  for (const Job& job : jobs_)
    if (job.state() != JobState::Completed) schedule(job);
}

void JobBoard::step() {
  for (const QString& id : jobs_.keys()) {
    const JobState reached = jobs_[id].reached;
    if (reached != JobState::Completed) letReach(id, JobState(int(reached) + 1));
  }
}

void JobBoard::schedule(const Job& job) {
  if (manual_) return;
  const auto let = [this, id = job.id](JobState state) {
    return [this, id, state] {
      if (!manual_) letReach(id, state);
    };
  };
  QTimer::singleShot(work_.delayMilliseconds / 3, this, let(JobState::Running));
  QTimer::singleShot(work_.delayMilliseconds, this, let(JobState::Completed));
}

void JobBoard::letReach(const QString& id, JobState state) {
  Job& job = jobs_[id];
  if (job.cancelled || job.reached >= state) return;
  job.reached = state;
  keep(job);
  startMaking(job);
}

void JobBoard::startMaking(Job& job) {
  if (job.making || job.made || job.cancelled) return;
  job.making = true;
  makers_.start([this, job] {
    const Job result = worked(job, shelf_, work_.longestSide);
    QMetaObject::invokeMethod(
        this, [this, result] { finishMaking(result.id, result); }, Qt::QueuedConnection);
  });
}

void JobBoard::finishMaking(const QString& id, const Job& result) {
  Job& job = jobs_[id];
  job.making = false;
  job.made = true;
  job.resultStatus = result.resultStatus;
  job.resultBody = result.resultBody;
  job.billableUnits = result.billableUnits;
  job.inferenceSeconds = result.inferenceSeconds;
  keep(job);
}

void JobBoard::keep(const Job& job) const {
  const QString path = folder_ + QLatin1Char('/') + job.id + QStringLiteral(".json");
  QFile part(path + QStringLiteral(".part"));
  const QByteArray bytes = QJsonDocument(toJson(job)).toJson(QJsonDocument::Compact);
  if (!part.open(QIODevice::WriteOnly | QIODevice::Truncate) || part.write(bytes) != bytes.size())
    throw std::runtime_error("A job cannot be written: " + part.errorString().toStdString());
  part.close();
  if (::rename(QFile::encodeName(part.fileName()).constData(), QFile::encodeName(path).constData()) != 0)
    throw std::runtime_error("A job's file cannot be put in its place.");
}

}  // namespace sandbox
