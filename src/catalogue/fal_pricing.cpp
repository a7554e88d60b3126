#include "catalogue/fal_pricing.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "base/json.h"
#include "catalogue/provider_http.h"
#include "catalogue/service_hosts.h"
#include "catalogue/texts.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

using Prices = std::map<QString, ModelPrice>;

constexpr double secondsOfADay = 86400;
constexpr qsizetype mostIDs = 50;
constexpr int mostPages = 20;
/// A result that is paid for waits no longer than this for its price, however many pages it stands on.
constexpr std::chrono::milliseconds longestWait = std::chrono::seconds(60);

QString pricesKey() { return u"falPrices"_s; }

/// What one answer says: the prices in dollars, and the models that are priced in something else.
struct PriceAnswer {
  Prices prices;
  QStringList foreign;
  std::optional<QString> next;
};

void readElement(const QJsonValue& element, const QString& date, PriceAnswer& answer) {
  const QJsonValue id = element[u"endpoint_id"_s];
  const QJsonValue price = element[u"unit_price"_s];
  const QJsonValue unit = element[u"unit"_s];
  const QJsonValue currency = element[u"currency"_s];
  if (!id.isString() || !price.isDouble() || !unit.isString() || price.toDouble() < 0) return;
  const bool inDollars = currency.isUndefined() || currency.isNull() || currency.toString() == u"USD"_s;
  if (inDollars) {
    answer.prices[id.toString()] = {price.toDouble(), unit.toString(), date};
  } else {
    answer.foreign << id.toString();
  }
}

/// Throws SorvanError for anything but an object with a list of prices: another 200 is no answer.
PriceAnswer answerFrom(const QByteArray& body, const QString& date) {
  const QJsonObject object = jsonObject(body);
  if (!object.value(u"prices"_s).isArray()) throw SorvanError(texts::invalidProviderResponse());
  PriceAnswer answer;
  for (const QJsonValue& element : object.value(u"prices"_s).toArray()) readElement(element, date, answer);
  const QString next = object.value(u"next_cursor"_s).toString();
  if (!next.isEmpty() && object.value(u"has_more"_s) != QJsonValue(false)) answer.next = next;
  return answer;
}

struct PriceQuestion {
  QStringList ids;
  QString key;
  Instant asked;
};

/// One page; throws when the time for the question is up.
HttpRequest pageRequest(const PriceQuestion& question, const std::optional<QString>& page, Instant now) {
  const auto passed = std::chrono::milliseconds(static_cast<qint64>((now - question.asked) * 1000));
  if (passed >= longestWait) throw HttpError(HttpProblem::TimedOut, texts::pricesTimedOut());
  HttpRequest request = keyedRequest("GET", pricesAddress(question.ids, page), question.key);
  request.totalLimit = longestWait - std::max(passed, std::chrono::milliseconds(0));
  return request;
}

/// All pages of one batch.
Task<PriceAnswer> askFor(std::shared_ptr<HttpTransport> transport, std::shared_ptr<const Clock> clock,
                         PriceQuestion question, std::stop_token stop) {
  const QString date = isoText(question.asked).left(10);
  PriceAnswer all;
  for (int page = 0; page < mostPages; ++page) {
    HttpRequest request = pageRequest(question, all.next, clock->now());
    const HttpReply reply = co_await sendChecked(transport, std::move(request), stop);
    PriceAnswer more = answerFrom(reply.body, date);
    all.prices.merge(more.prices);
    all.foreign += more.foreign;
    if (!more.next || more.next == all.next) break;
    all.next = more.next;
  }
  co_return all;
}

Prices storedPrices(const Settings& settings) {
  const auto text = settings.get<QString>(pricesKey());
  if (!text) return {};
  try {
    return decodeJson<Prices>(text->toUtf8());
  } catch (const SorvanError&) {
    return {};
  }
}

}  // namespace

struct FalPricing::State {
  Services services;
  mutable std::mutex lock;
  Prices prices;
  std::map<QString, Instant> fetched;

  QStringList staleOf(const QStringList& ids) const;
  void take(const PriceAnswer& answer, const QStringList& asked);
  void store() const;
  static Task<> refresh(std::shared_ptr<State> state, QStringList ids, QString key, std::stop_token stop);
  static Task<bool> refreshBatch(std::shared_ptr<State> state, QStringList ids, QString key, std::stop_token stop);
};

QStringList FalPricing::State::staleOf(const QStringList& ids) const {
  const double now = services.clock->now().seconds;
  const std::scoped_lock held(lock);
  QStringList stale;
  for (const QString& id : ids) {
    const auto asked = fetched.find(id);
    const bool isFresh = asked != fetched.end() && now - asked->second.seconds <= secondsOfADay;
    if (!isFresh && !stale.contains(id)) stale << id;
  }
  return stale;
}

void FalPricing::State::take(const PriceAnswer& answer, const QStringList& asked) {
  const Instant now = services.clock->now();
  const std::scoped_lock held(lock);
  for (const auto& [id, price] : answer.prices) prices[id] = price;
  // A price in dollars that stands from before is not one any more.
  for (const QString& id : answer.foreign) prices.erase(id);
  for (const QString& id : asked) fetched[id] = now;
}

void FalPricing::State::store() const {
  QByteArray text;
  {
    const std::scoped_lock held(lock);
    text = encodeJson(prices);
  }
  services.settings->set(pricesKey(), QString::fromUtf8(text));
}

/// Whether the service answered. A batch that it refuses because of one model says nothing of the others.
Task<bool> FalPricing::State::refreshBatch(std::shared_ptr<State> state, QStringList ids, QString key,
                                           std::stop_token stop) {
  const auto clock = state->services.clock;
  const PriceQuestion question{ids, key, clock->now()};
  bool isUnknown = false;
  try {
    state->take(co_await askFor(state->services.transport, clock, question, stop), ids);
    co_return true;
  } catch (const ProviderRefusal& refusal) {
    isUnknown = refusal.status() == 404;
  } catch (const std::exception&) {
    co_return false;
  }
  bool any = false;
  if (!isUnknown || ids.size() < 2) co_return any;
  for (const QString& id : ids) any = co_await refreshBatch(state, QStringList{id}, key, stop) || any;
  co_return any;
}

Task<> FalPricing::State::refresh(std::shared_ptr<State> state, QStringList ids, QString key, std::stop_token stop) {
  const QStringList stale = state->staleOf(ids);
  bool any = false;
  for (qsizetype first = 0; first < stale.size(); first += mostIDs) {
    any = co_await refreshBatch(state, stale.mid(first, mostIDs), key, stop) || any;
  }
  if (!any) co_return;
  try {
    state->store();
  } catch (const std::exception&) {
    // The prices hold for this run; the next answer stores them.
  }
}

FalPricing::FalPricing(Services with) : state(std::make_shared<State>()) {
  state->prices = storedPrices(*with.settings);
  state->services = std::move(with);
}

Task<> FalPricing::refresh(QStringList ids, QString key, std::stop_token stop) {
  return State::refresh(state, std::move(ids), std::move(key), stop);
}

std::optional<ModelPrice> FalPricing::price(const QString& id) const {
  const std::scoped_lock held(state->lock);
  const auto found = state->prices.find(id);
  if (found == state->prices.end()) return std::nullopt;
  return found->second;
}

std::optional<double> FalPricing::estimate(const GenerationRequest& request, const FalModel& model) const {
  const auto known = price(model.id);
  if (!known) return std::nullopt;
  return listEstimate(*known, request, model);
}

Task<std::optional<ListedPrice>> FalPricing::listedPrice(GenerationRequest request, QString key, std::stop_token stop) {
  const auto kept = state;
  const auto model = kept->services.catalog->find(request.model);
  if (!model) co_return std::nullopt;
  co_await State::refresh(kept, QStringList{model->id}, std::move(key), stop);
  std::optional<ModelPrice> known;
  {
    const std::scoped_lock held(kept->lock);
    const auto found = kept->prices.find(model->id);
    if (found != kept->prices.end()) known = found->second;
  }
  const auto total = known ? listEstimate(*known, request, *model) : std::nullopt;
  if (!total) co_return std::nullopt;
  co_return ListedPrice{*total, known->unitPrice, known->unit};
}

}  // namespace sorvan::catalogue
