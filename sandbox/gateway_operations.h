// The paid work that the gateway runs: each operation holds credits and rides on a job of the queue.
#pragma once

#include <QFile>
#include <QJsonObject>
#include <QMap>
#include <QString>

#include "credit_book.h"
#include "job_board.h"

namespace sandbox {

struct Operation {
  QString id;
  QString user;
  QString key;   // the idempotency key under which it was begun
  QString kind;  // "image" or "interpret"
  QString model;
  QString job;    // of the queue; empty for an interpretation
  QString ended;  // "complete", "failed" or "uncertain" once it has; empty before
  qint64 reserved = 0;
  qint64 charged = 0;
  QString failure;
  QJsonObject action;  // of an interpretation
};

// Operations live on over restarts: a new object takes up what an old one left. Whatever is told of an operation is
// settled first, so the books say the same.
class GatewayOperations {
 public:
  GatewayOperations(const QString& path, CreditBook& book, JobBoard& jobs);

  // The operation that a key of this user began last, or null.
  const Operation* underKey(const QString& user, const QString& key);
  const Operation* find(const QString& id);
  // Takes up an operation whose credits are held already.
  const Operation& add(Operation operation);
  // Stops one that has not begun; one that has goes on.
  void cancel(const QString& id);

  // Says of everything that still goes on that nobody knows, and back.
  void makeUncertain();
  void resolveUncertain();

  // What "v1/operations" answers.
  QJsonObject told(const Operation& operation) const;
  // Microcredits held for what goes on, and for what nobody knows.
  qint64 reservedOf(const QString& user);
  qint64 underReview(const QString& user);
  QJsonArray all();

 private:
  void settle(Operation& operation);
  void settleAll();
  void end(Operation& operation, const QString& state, qint64 charged, const QString& failure);
  void keep(const Operation& operation);
  QJsonObject resultOf(const Operation& operation) const;

  QFile file_;
  CreditBook& book_;
  JobBoard& jobs_;
  QMap<QString, Operation> operations_;
  QMap<QString, QString> byKey_;  // "user:key" to the latest
};

}  // namespace sandbox
