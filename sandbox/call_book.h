// What arrived: every POST counted by endpoint and attempt, and every call of any kind in order.
#pragma once
#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>

#include "calls.h"

namespace sandbox {

// What a request showed as its key. The key itself is never kept.
enum class ShownKey { None, Good, Wrong };

// Counts of POSTs survive a restart (a line of "posts.jsonl" each); the list of calls is of this process only.
class CallBook {
 public:
  // Reads the counts that stand in the file and appends to it. Throws std::runtime_error when it cannot be opened.
  explicit CallBook(const QString& postsPath);

  // Notes a call at its head and gives it a number, counted from 1.
  int arrived(const Call& call, const HttpRequest& head, ShownKey key);
  // Notes its answer as it went out: the status, or what was done instead ("drop", "hold", …).
  void answered(int number, const QString& what);

  // Counts one POST. The attempt is the idempotency key where there is one, else the SHA-256 of the body; a POST whose
  // body was not read is counted under the attempt "unread".
  void posted(const Call& call, const HttpRequest& request, bool bodyRead);

  int count(CallKind kind) const { return counts_.value(kind); }
  // {"total":n,"endpoints":{endpoint:{"total":n,"attempts":{attempt:n}}}}
  QJsonObject posts() const;
  const QJsonArray& calls() const { return calls_; }

 private:
  void countPost(const QString& endpoint, const QString& attempt);

  QFile file_;
  QMap<QString, QMap<QString, int>> posts_;
  QMap<CallKind, int> counts_;
  QJsonArray calls_;
};

}  // namespace sandbox
