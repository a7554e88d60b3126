#include "job.h"

#include <QJsonDocument>

namespace sandbox {

JobState Job::state() const {
  if (cancelled) return JobState::Completed;
  if (reached == JobState::Completed && !made) return JobState::Running;
  return reached;
}

QString nameOf(JobState state) {
  switch (state) {
    case JobState::Queued:
      return QStringLiteral("IN_QUEUE");
    case JobState::Running:
      return QStringLiteral("IN_PROGRESS");
    case JobState::Completed:
      return QStringLiteral("COMPLETED");
  }
  return {};
}

QJsonObject toJson(const Job& job) {
  return {{QStringLiteral("id"), job.id},
          {QStringLiteral("endpoint"), job.endpoint},
          {QStringLiteral("body"), QString::fromLatin1(job.body.toBase64())},
          {QStringLiteral("number"), job.number},
          {QStringLiteral("seed"), job.seed},
          {QStringLiteral("reached"), int(job.reached)},
          {QStringLiteral("made"), job.made},
          {QStringLiteral("cancelled"), job.cancelled},
          {QStringLiteral("inferenceSeconds"), job.inferenceSeconds},
          {QStringLiteral("resultStatus"), job.resultStatus},
          {QStringLiteral("resultBody"), QString::fromLatin1(job.resultBody.toBase64())},
          {QStringLiteral("billableUnits"), job.billableUnits}};
}

std::optional<Job> jobFrom(const QByteArray& json) {
  const QJsonObject from = QJsonDocument::fromJson(json).object();
  Job job;
  job.id = from.value(QStringLiteral("id")).toString();
  if (job.id.isEmpty()) return std::nullopt;
  job.endpoint = from.value(QStringLiteral("endpoint")).toString();
  job.body = QByteArray::fromBase64(from.value(QStringLiteral("body")).toString().toLatin1());
  job.number = from.value(QStringLiteral("number")).toInteger();
  job.seed = from.value(QStringLiteral("seed")).toInteger();
  job.reached = JobState(qBound(0, from.value(QStringLiteral("reached")).toInt(), 2));
  job.made = from.value(QStringLiteral("made")).toBool();
  job.cancelled = from.value(QStringLiteral("cancelled")).toBool();
  job.inferenceSeconds = from.value(QStringLiteral("inferenceSeconds")).toDouble();
  job.resultStatus = from.value(QStringLiteral("resultStatus")).toInt();
  job.resultBody = QByteArray::fromBase64(from.value(QStringLiteral("resultBody")).toString().toLatin1());
  job.billableUnits = from.value(QStringLiteral("billableUnits")).toDouble();
  return job;
}

}  // namespace sandbox
