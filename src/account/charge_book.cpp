#include "account/charge_book.h"

#include <algorithm>
#include <coroutine>

#include <QCoreApplication>
#include <QTimer>

#include "core/library_store.h"

namespace sorvan::account {

namespace {

/// One batch takes the main thread about a millisecond.
constexpr std::size_t batchRows = 1000;

/// Resumes after the events of the user, of the screen and of timers: what is posted meanwhile would run before them.
struct NextTurn {
  bool await_ready() const { return false; }
  void await_suspend(std::coroutine_handle<> waiting) const {
    QTimer::singleShot(0, QCoreApplication::instance(), [waiting] { waiting.resume(); });
  }
  void await_resume() const {}
};

void nameModel(ChargeBook& book, const QString& model, const NameOfModel& nameOfModel) {
  if (!book.names.models.contains(model)) book.names.models.insert(model, nameOfModel(model));
}

void add(ChargeBook& book, Charge row, const NameOfModel& nameOfModel) {
  nameModel(book, row.model, nameOfModel);
  book.charges.push_back(std::move(row));
}

}  // namespace

Task<ChargeBook> gatherCharges(const LibraryStore& store, NameOfModel nameOfModel, std::stop_token stop) {
  const std::uint64_t opening = store.opening();
  const std::vector<GenerationRef> generations = store.generations();
  ChargeBook book;
  book.charges.reserve(generations.size());
  for (std::size_t begin = 0; begin < generations.size(); begin += batchRows) {
    const std::size_t end = std::min(begin + batchRows, generations.size());
    for (std::size_t at = begin; at < end; ++at) {
      const Generation& generation = *generations[at];
      if (isBilled(generation)) add(book, chargeOf(generation, store.asset(generation.assetID)), nameOfModel);
    }
    co_await NextTurn{};
    throwIfStopped(stop);
    if (store.opening() != opening) throw Cancelled();
  }
  for (Charge& row : ledgerCharges(store, {})) add(book, std::move(row), nameOfModel);
  book.names.projects = projectNames(store).projects;
  auto sorted = [book = std::move(book)]() mutable {
    sortNewestFirst(book.charges);
    return std::move(book);
  };
  co_return co_await onPool(std::move(sorted), stop);
}

}  // namespace sorvan::account
