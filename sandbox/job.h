// One job of the queue, and its file.
#pragma once
#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <optional>

namespace sandbox {

enum class JobState { Queued, Running, Completed };

struct Job {
  QString id;
  QString endpoint;
  QByteArray body;
  qint64 number = 0;  // the order of arrival
  qint64 seed = 0;
  JobState reached = JobState::Queued;  // as far as time (or a step) lets it be
  bool making = false;
  bool made = false;  // the result stands
  bool cancelled = false;
  double inferenceSeconds = 0;
  int resultStatus = 0;
  QByteArray resultBody;
  double billableUnits = 0;

  JobState state() const;
};

QString nameOf(JobState state);  // "IN_QUEUE", "IN_PROGRESS", "COMPLETED"

QJsonObject toJson(const Job& job);
std::optional<Job> jobFrom(const QByteArray& json);

}  // namespace sandbox
