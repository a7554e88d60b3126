// The program's two secrets: the user's fal.ai key and the gateway's token. They stand in the protected store and
// nowhere else; an empty value means removal.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <stop_token>

#include <QString>

#include "account/room.h"
#include "base/completion.h"
#include "base/task.h"
#include "core/enumerations.h"
#include "platform/key_store.h"

namespace sorvan::account {

/// Thread: the main one. The store may ask the user to unlock it.
class KeychainStore {
 public:
  explicit KeychainStore(std::shared_ptr<KeyBackend> store) : backend(std::move(store)) {}

  /// Nothing when there is no entry. Throws SorvanError "Keychain access failed ({number})."
  Task<std::optional<QString>> read(ProviderID provider, std::stop_token stop) const;
  /// Trims the ends; an empty rest removes the entry, and a missing one counts as removed. Throws SorvanError "Keychain
  /// save failed ({number})." or "Keychain removal failed ({number})."
  Task<> save(QString value, ProviderID provider, std::stop_token stop) const;

 private:
  std::shared_ptr<KeyBackend> backend;
};

/// Copies of the secrets in memory, so that a key is at hand at once although the store answers late. Share it: a read
/// under way keeps what it needs alive.
///
/// Thread: the main one.
class KeyCache {
 public:
  explicit KeyCache(std::shared_ptr<KeychainStore> keys);

  /// The copy. Throws SorvanError what the last read failed with, or that the first answer is still to come.
  std::optional<QString> key(ProviderID provider) const;
  bool isAnswered(ProviderID provider) const;

  /// Reads again; one that is asked for while another runs shares its answer. Never throws but Cancelled: a failure is
  /// kept for `key`.
  Task<> refresh(ProviderID provider, std::stop_token stop);
  /// Resumes when `key` has an answer: waits for the first read, and reads once more when the last one failed.
  Task<> ready(ProviderID provider, std::stop_token stop);
  /// Saves, then reads back. Throws what `KeychainStore::save` throws; the copy is unchanged then.
  Task<> save(QString value, ProviderID provider, std::stop_token stop);

 private:
  struct Entry;
  struct State;
  static Task<> readInto(std::shared_ptr<State> shared, ProviderID provider, std::stop_token stop);
  std::shared_ptr<State> state;
};

}  // namespace sorvan::account
