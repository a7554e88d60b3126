// The application's settings: one JSON object in a file of its own, or in memory.
#pragma once

#include <optional>
#include <set>

#include <QJsonObject>
#include <QObject>
#include <QString>

#include "base/json.h"

namespace sorvan::base {

// Keys are any text, "/" and ":" included. Thread: the one that made it.
//
// On disk: each change is written at once, durably and with mode 0600, under a lock file that two processes share; what
// another process has written meanwhile is merged in first, key by key. A file that is not a JSON object is renamed to
// "<file>.unreadable-<uuid>" before the first write, never overwritten; one that cannot be read at all stops writing.
class Settings : public QObject {
  Q_OBJECT

 public:
  // In memory only.
  explicit Settings(QObject* parent = nullptr);
  // Reads the file; an absent file is an empty one. Never throws: see `problem`.
  explicit Settings(QString path, QObject* parent = nullptr);

  // "$XDG_CONFIG_HOME/sorvan-studio/settings.json".
  static QString defaultPath();

  // Empty when the key is absent or holds something of another type.
  template <class T>
  std::optional<T> get(const QString& key) const {
    if (!values.contains(key)) return std::nullopt;
    try {
      return fromJson<T>(values.value(key));
    } catch (const JsonError&) {
      return std::nullopt;
    }
  }
  template <class T>
  T get(const QString& key, T otherwise) const {
    return get<T>(key).value_or(std::move(otherwise));
  }
  bool contains(const QString& key) const { return values.contains(key); }
  QStringList keys() const { return values.keys(); }

  // Memory changes and `changed` is emitted before the write; throws SorvanError when the write fails, and the next
  // successful write brings the value along.
  template <class T>
  void set(const QString& key, const T& value) {
    setValue(key, toJson(value));
  }
  void remove(const QString& key);

  // Takes in what another process has written.
  void reload();
  // Why the file could not be read, one sentence; empty when all is well.
  const QString& problem() const { return readProblem; }

 Q_SIGNALS:
  void changed(const QString& key);

 private:
  void setValue(const QString& key, const QJsonValue& value);
  void write();
  QJsonObject readForMerging();
  void adopt(const QJsonObject& merged);

  QString path;
  QJsonObject values;
  // Keys that were set or removed here and are not on disk yet.
  std::set<QString> unwritten;
  QString readProblem;
};

}  // namespace sorvan::base
