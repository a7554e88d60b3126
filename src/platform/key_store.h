// The protected store for the program's secrets.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>

#include <QString>

#include "base/sorvan_error.h"
#include "base/task.h"
#include "platform/room.h"

namespace sorvan::platform {

// A store that did not do what it was asked; `number` is its own, for the user to tell support.
class KeyStoreError final : public SorvanError {
 public:
  KeyStoreError(int number, const QString& message) : SorvanError(message), errorNumber(number) {}
  int number() const noexcept { return errorNumber; }

 private:
  int errorNumber;
};

// Passwords by account name under the service "app.sorvan.providers". Nothing here ever falls back to a plain file.
// Every call throws KeyStoreError, and Cancelled when a stop is requested.
class KeyBackend {
 public:
  virtual ~KeyBackend() = default;
  // Empty when there is no entry of that account; every other failure throws.
  virtual Task<std::optional<QString>> read(QString account, std::stop_token stop) = 0;
  // Replaces an entry of the same account.
  virtual Task<> write(QString account, QString secret, std::stop_token stop) = 0;
  // An entry that is not there counts as removed.
  virtual Task<> remove(QString account, std::stop_token stop) = 0;
};

// The desktop's Secret Service. A locked store may ask the user; after `patience` the call throws with the number 7.
std::unique_ptr<KeyBackend> secretServiceKeyBackend(std::chrono::milliseconds patience = std::chrono::seconds(120));

// For tests and demos: nothing leaves the process, and failures can be planted.
class MemoryKeyBackend final : public KeyBackend {
 public:
  Task<std::optional<QString>> read(QString account, std::stop_token stop) override;
  Task<> write(QString account, QString secret, std::stop_token stop) override;
  Task<> remove(QString account, std::stop_token stop) override;

  std::map<QString, QString> entries;
  // When set, every call fails with this number.
  std::optional<int> failingNumber;

 private:
  void failIfAsked() const;
};

}  // namespace sorvan::platform
