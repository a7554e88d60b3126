#include "app/interpreter_desk.h"

namespace sorvan::app {

namespace {

QString payerOf(const account::AccountStore& account) {
  const std::optional<QString> name = account.accountName();
  if (!name) return {};
  return account.client(account::AccountStore::Needs::token).gateway().toString() + QChar::Space + *name;
}

}  // namespace

InterpreterDesk::InterpreterDesk(core::LibraryStore& store, CreditsDesk& credits)
    : credits_(credits),
      interpreter_([&credits] { return credits.account().client(account::AccountStore::Needs::token); },
                   [&credits] { return payerOf(credits.account()); }),
      books_(store, interpreter_) {}

void InterpreterDesk::settle() {
  if (books_.isSettled()) return;
  tasks_.spawnLater([this] { return settleSignedIn(tasks_.token()); });
}

Task<> InterpreterDesk::settleSignedIn(std::stop_token stop) {
  co_await credits_.account().whenIdle();
  throwIfStopped(stop);
  co_await books_.settle(stop);
}

}  // namespace sorvan::app
