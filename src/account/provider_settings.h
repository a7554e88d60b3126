// The state of the page with the user's fal.ai key.
#pragma once

#include <memory>

#include <QObject>
#include <QString>

#include "account/key_storage.h"
#include "base/task_scope.h"

namespace sorvan::account {

/// Thread: the main one. The saved key itself is never shown: the field starts empty.
class ProviderSettings : public QObject {
  Q_OBJECT

 public:
  explicit ProviderSettings(std::shared_ptr<KeyCache> keys, QObject* parent = nullptr);

  /// Reads the key; `changed` says when the store has answered.
  void load();
  /// Saves the text, or removes the key when it is blank; `changed` says when that is done or has failed.
  void save(const QString& text);
  /// Resumes when nothing is under way any more.
  Task<> whenIdle() { return tasks.whenIdle(); }

  bool saved() const { return keySaved; }
  /// What the last action came to; empty at first.
  const QString& message() const { return lastMessage; }
  /// Whether `message` tells of a failure.
  bool messageIsError() const { return lastFailed; }
  /// Whether the store has not answered yet.
  bool busy() const { return running > 0; }
  ProviderID provider() const { return ProviderID::fal; }
  /// The tab that the settings open with: "account" at first.
  const QString& tab() const { return currentTab; }
  void setTab(const QString& tab);

  QString statusLine() const;
  QString fieldPrompt() const;
  static QString explanation();

 Q_SIGNALS:
  void changed();

 private:
  static Task<> loaded(QPointer<ProviderSettings> self, std::shared_ptr<KeyCache> keys, std::stop_token stop);
  static Task<> stored(QPointer<ProviderSettings> self, std::shared_ptr<KeyCache> keys, QString text);
  void begin();
  void end();
  void takeKey();
  void say(const QString& message, bool failed);

  std::shared_ptr<KeyCache> keys;
  TaskScope tasks;
  QString lastMessage;
  QString currentTab;
  bool lastFailed = false;
  bool keySaved = false;
  int running = 0;
};

}  // namespace sorvan::account
