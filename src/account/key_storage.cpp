#include "account/key_storage.h"

#include "account/texts.h"
#include "base/sorvan_error.h"

namespace sorvan::account {

Task<std::optional<QString>> KeychainStore::read(ProviderID provider, std::stop_token stop) const {
  const auto store = backend;
  try {
    co_return co_await store->read(rawValue(provider), stop);
  } catch (const KeyStoreError& failure) {
    throw SorvanError(texts::accessFailed(failure.number()));
  }
}

Task<> KeychainStore::save(QString value, ProviderID provider, std::stop_token stop) const {
  const auto store = backend;
  const QString secret = value.trimmed();
  try {
    if (secret.isEmpty()) {
      co_await store->remove(rawValue(provider), stop);
    } else {
      co_await store->write(rawValue(provider), secret, stop);
    }
  } catch (const KeyStoreError& failure) {
    const int number = failure.number();
    throw SorvanError(secret.isEmpty() ? texts::removalFailed(number) : texts::saveFailed(number));
  }
}

struct KeyCache::Entry {
  std::optional<QString> key;
  QString failure;  ///< one sentence; empty when the last read answered
  bool answered = false;
  std::optional<Completion> reading;
};

struct KeyCache::State {
  std::shared_ptr<KeychainStore> keychain;
  std::map<ProviderID, Entry> entries;
};

KeyCache::KeyCache(std::shared_ptr<KeychainStore> keys) : state(std::make_shared<State>()) {
  state->keychain = std::move(keys);
}

std::optional<QString> KeyCache::key(ProviderID provider) const {
  const auto found = state->entries.find(provider);
  if (found == state->entries.end() || !found->second.answered) throw SorvanError(texts::stillReading());
  const Entry& entry = found->second;
  if (!entry.failure.isEmpty()) throw SorvanError(entry.failure);
  return entry.key;
}

bool KeyCache::isAnswered(ProviderID provider) const {
  const auto found = state->entries.find(provider);
  return found != state->entries.end() && found->second.answered;
}

Task<> KeyCache::readInto(std::shared_ptr<State> shared, ProviderID provider, std::stop_token stop) {
  const auto running = shared->entries[provider].reading;
  if (running) {
    co_await *running;
    throwIfStopped(stop);
    co_return;
  }
  const Completion done;
  shared->entries[provider].reading = done;
  std::optional<QString> key;
  QString failure;
  std::exception_ptr stopped;
  try {
    key = co_await shared->keychain->read(provider, stop);
  } catch (const Cancelled&) {
    stopped = std::current_exception();
  } catch (const std::exception& error) {
    failure = describe(error);
  }
  Entry& entry = shared->entries[provider];
  entry.reading = std::nullopt;
  if (!stopped) {
    entry.key = key;
    entry.failure = failure;
    entry.answered = true;
  }
  done.finish();
  if (stopped) std::rethrow_exception(stopped);
}

Task<> KeyCache::refresh(ProviderID provider, std::stop_token stop) { return readInto(state, provider, stop); }

Task<> KeyCache::ready(ProviderID provider, std::stop_token stop) {
  const auto shared = state;
  const Entry& entry = shared->entries[provider];
  if (entry.answered && entry.failure.isEmpty()) co_return;
  co_await readInto(shared, provider, stop);
}

Task<> KeyCache::save(QString value, ProviderID provider, std::stop_token stop) {
  const auto shared = state;
  co_await shared->keychain->save(std::move(value), provider, stop);
  // What a read that began before the save will answer is the old key: it is waited out first.
  const auto running = shared->entries[provider].reading;
  if (running) co_await *running;
  co_await readInto(shared, provider, stop);
}

}  // namespace sorvan::account
