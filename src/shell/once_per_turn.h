// Many changes of one turn of the event loop, followed once.
#pragma once

#include <QObject>

#include <functional>

#include "shell/room.h"

namespace sorvan::shell {

// Calls back once, when the event loop comes round, however often it was asked before. Asked again from within the call
// it calls once more. Once it is gone nothing is called: a presenter owns it as a member. Main thread.
class OncePerTurn final : public QObject {
  Q_OBJECT

 public:
  explicit OncePerTurn(std::function<void()> call);

  void request();
  // The same was just done by another road: what was asked for so far needs no call.
  void withdraw() { asked_ = false; }

 private:
  void perform();

  std::function<void()> call_;
  bool asked_ = false;
};

}  // namespace sorvan::shell
