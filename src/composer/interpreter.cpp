#include "composer/interpreter.h"

#include <QLocale>
#include <boost/describe.hpp>

#include "base/json.h"
#include "base/settings.h"
#include "composer/command_texts.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

const QString pendingKey = u"pendingInterpretations"_s;
constexpr double microcreditsOfCredit = 1e6;
constexpr double dollarsOfCredit = 0.01;

struct PendingInterpretation {
  QUuid id;
  std::optional<QUuid> projectID;
  std::optional<Instant> sentAt;  ///< absent in a note of an earlier form
  std::optional<QString> payer;   ///< absent where it was not known
};
BOOST_DESCRIBE_STRUCT(PendingInterpretation, (), (id, projectID, sentAt, payer))
using Pending = std::vector<PendingInterpretation>;

Pending pendingIn(const Settings& settings) { return settings.get<Pending>(pendingKey, {}); }

void forget(Settings& settings, const QUuid& key) {
  Pending pending = pendingIn(settings);
  if (std::erase_if(pending, [&](const auto& entry) { return entry.id == key; }) == 0) return;
  if (pending.empty()) {
    settings.remove(pendingKey);
  } else {
    settings.set(pendingKey, pending);
  }
}

/// One that stays because the settings cannot be written is settled once more at the next start, which changes nothing;
/// the answer itself must not be lost over it.
void forgetQuietly(Settings& settings, const QUuid& key) {
  try {
    forget(settings, key);
  } catch (const SorvanError&) {
    return;
  }
}

std::optional<QUuid> projectOf(const LibraryStore& store, const QUuid& key) {
  for (const PendingInterpretation& entry : pendingIn(store.settings()))
    if (entry.id == key && entry.projectID && store.project(*entry.projectID)) return entry.projectID;
  return std::nullopt;
}

ExtraCharge chargeOf(const LibraryStore& store, const QUuid& key, const Interpretation& answer) {
  const double credits = static_cast<double>(answer.microcredits) / microcreditsOfCredit;
  ExtraCharge charge;
  charge.id = key;
  charge.date = store.now();
  charge.title = texts::interpretationTitle();
  charge.model = u"interpret"_s;
  charge.provider = rawValue(ProviderID::credits);
  charge.projectID = projectOf(store, key);
  charge.usd = credits * dollarsOfCredit;
  charge.credits = credits;
  charge.basis = u"sorvanCredits"_s;
  charge.note = texts::paidWithCredits();
  return charge;
}

}  // namespace

InterpretationBooks::InterpretationBooks(LibraryStore& store, CommandInterpreter& interpreter)
    : store_(store), interpreter_(interpreter) {}

void InterpretationBooks::aboutToSend(const QUuid& key, const std::optional<QUuid>& project) {
  Pending pending = pendingIn(store_.settings());
  const QString payer = interpreter_.payer();
  pending.push_back({key, project, store_.now(), payer.isEmpty() ? std::nullopt : std::optional(payer)});
  store_.settings().set(pendingKey, pending);
}

void InterpretationBooks::answered(const QUuid& key, const Interpretation& answer) {
  // Without a workspace there is no ledger to record in; the next settling does it.
  if (!store_.hasWorkspace()) return;
  if (answer.microcredits > 0) store_.record(chargeOf(store_, key, answer));
  // A ledger that could not be written keeps the charge in memory only, so the request stays noted.
  if (store_.extraCharges().isPending() || store_.extraCharges().isUnreadable()) return;
  forgetQuietly(store_.settings(), key);
}

void InterpretationBooks::notSent(const QUuid& key) { forgetQuietly(store_.settings(), key); }

void InterpretationBooks::notSeen(const QUuid& key, Instant sentAt) {
  if (store_.now() - sentAt > latestArrival) forgetQuietly(store_.settings(), key);
}

Task<> InterpretationBooks::settle(std::stop_token stop) {
  const Pending pending = pendingIn(store_.settings());
  for (const PendingInterpretation& entry : pending) {
    throwIfStopped(stop);
    try {
      // Nobody else has ever seen it, so what they say means nothing.
      if (entry.payer && *entry.payer != interpreter_.payer()) continue;
      const auto found = co_await interpreter_.existing(entry.id, stop);
      found ? answered(entry.id, *found) : notSeen(entry.id, entry.sentAt.value_or(Instant()));
    } catch (const SorvanError&) {
      continue;  // it stays noted for the next time
    }
  }
}

bool InterpretationBooks::isSettled() const { return pendingIn(store_.settings()).empty(); }

QString creditsText(std::int64_t microcredits) {
  const double credits = static_cast<double>(microcredits) / microcreditsOfCredit;
  const QLocale english(QLocale::English, QLocale::UnitedStates);
  if (microcredits % static_cast<std::int64_t>(microcreditsOfCredit) == 0)
    return english.toString(static_cast<qlonglong>(credits));
  QString text = english.toString(credits, 'f', 2);
  while (text.endsWith(u'0')) text.chop(1);
  if (text.endsWith(u'.')) text.chop(1);
  return text;
}

}  // namespace sorvan::composer
