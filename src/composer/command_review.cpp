#include "composer/command_review.h"

#include "base/sorvan_error.h"
#include "composer/command_texts.h"

namespace sorvan::composer {

CommandReview::CommandReview(Ports ports, QObject* parent) : QObject(parent), ports_(std::move(ports)) {}

void CommandReview::interpret() {
  if (interpreting_) return;
  interpreting_ = true;
  Q_EMIT changed();
  tasks_.spawn(run(ports_.situation(), tasks_.token()));
}

Task<> CommandReview::run(Situation situation, std::stop_token stop) {
  // Every way out ends the interpretation.
  try {
    co_await ask(std::move(situation), stop);
  } catch (const Cancelled&) {
    // The window closes; the books know the request.
  } catch (const std::exception& failure) {
    ports_.report(describe(failure), true);
  }
  interpreting_ = false;
  Q_EMIT changed();
}

Task<> CommandReview::ask(Situation situation, std::stop_token stop) {
  const quint64 revision = revision_;
  // 1. Earlier requests whose answers were lost are accounted for first.
  co_await ports_.books.settle(stop);
  throwIfStopped(stop);
  // 2. What changed meanwhile would be thrown away when paid for, so it is not sent.
  if (revision != revision_) throw SorvanError(texts::contextChanged());
  // 3. One request under a key of its own, noted before it leaves.
  const QUuid key = ports_.newKey();
  ports_.books.aboutToSend(key, situation.project);
  const Interpretation answer = co_await answerTo(situation, key, stop);
  // 4. It is paid for, whatever it says and whoever still wants it.
  ports_.books.answered(key, answer);
  take(situation, revision, answer);
}

Task<Interpretation> CommandReview::answerTo(Situation situation, QUuid key, std::stop_token stop) {
  try {
    co_return co_await ports_.interpreter.interpret(situation.draft.trimmed(), situation.context, key, stop);
  } catch (const InterpretationNotSent&) {
    ports_.books.notSent(key);
    throw;
  }
}

void CommandReview::take(const Situation& situation, quint64 revision, const Interpretation& answer) {
  const Situation present = ports_.situation();
  if (present.draft != situation.draft || revision != revision_ || present.project != situation.project)
    throw SorvanError(texts::contextChanged());
  if (!answer.action) throw SorvanError(texts::noAction());
  SorvanIntent intent = answer.action->intent();
  if (std::holds_alternative<GenerationInstruction>(intent)) throw SorvanError(texts::describesGeneration());
  action_ = answer.action;
  intent_ = std::move(intent);
  selection_ = situation.selection;
  ports_.report(texts::interpreted(creditsText(answer.microcredits)), false);
}

void CommandReview::draftEdited() { contextChanged(); }

void CommandReview::contextChanged() {
  ++revision_;
  clear();
}

void CommandReview::selectionChanged() { ++revision_; }

void CommandReview::clear() {
  if (!intent_) return;
  action_.reset();
  intent_.reset();
  selection_.clear();
  Q_EMIT changed();
}

Task<> CommandReview::drain() { return tasks_.drain(); }

}  // namespace sorvan::composer
