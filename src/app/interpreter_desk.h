// The interpreter of commands that credits pay for, with its books.
#pragma once

#include "app/credits_desk.h"
#include "app/room.h"
#include "composer/gateway_interpreter.h"
#include "core/library_store.h"
#include "shell/generation_composer.h"

namespace sorvan::app {

/// Main thread. The store and the account outlive it; await `drain` before it goes.
class InterpreterDesk {
 public:
  InterpreterDesk(core::LibraryStore& store, CreditsDesk& credits);

  shell::GenerationComposer::Interpreting interpreting() { return {interpreter_, books_}; }
  /// Accounts for interpretations whose answers were lost, once it is known who is signed in. Call it when a workspace
  /// has been opened.
  void settle();
  Task<> drain() { return tasks_.drain(); }

 private:
  Task<> settleSignedIn(std::stop_token stop);

  CreditsDesk& credits_;
  composer::GatewayInterpreter interpreter_;
  composer::InterpretationBooks books_;
  TaskScope tasks_;
};

}  // namespace sorvan::app
