#include "shell/once_per_turn.h"

#include <utility>

namespace sorvan::shell {

OncePerTurn::OncePerTurn(std::function<void()> call) : call_(std::move(call)) {}

void OncePerTurn::request() {
  if (std::exchange(asked_, true)) return;
  QMetaObject::invokeMethod(this, &OncePerTurn::perform, Qt::QueuedConnection);
}

void OncePerTurn::perform() {
  if (!std::exchange(asked_, false)) return;
  const auto call = call_;  // the call may end its owner and this with it
  call();
}

}  // namespace sorvan::shell
