// What work has cost: the report and its breakdown over a large library, the month's total after one change, and the
// prices of the models in a list. And the page of costs over the same library: how long until it stands, and how long the
// main thread was away meanwhile.
#include <QEventLoop>

#include "account/billing_state.h"
#include "account/cost_report.h"
#include "base/clock.h"
#include "base/json.h"
#include "base/settings.h"
#include "bench/library_data.h"
#include "bench/row.h"
#include "bench/stalls.h"
#include "catalogue/fal_catalog.h"
#include "core/library_store.h"
#include "core/small_edits.h"
#include "core/workspace_opening.h"
#include "platform/sqlite.h"
#include "shell/alerts_presenter.h"
#include "shell/costs_presenter.h"
#include "shell/payment_desk.h"
#include "shell/workspace_state.h"

namespace sorvan::bench {
namespace {

using namespace Qt::StringLiterals;
using namespace sorvan::base;
using namespace sorvan::core;

constexpr int items = 100'000;
constexpr unsigned seed = 11;

QString libraryFolder(const QDir& data) { return data.filePath(u"library"_s); }

/// Gives each generation a cost as the studio writes it.
void makeLibraryWithCosts(const QDir& data) {
  makeLibrary(libraryFolder(data), libraryOf(items), seed);
  platform::Database database(libraryFolder(data) + u"/.sorvan/library.store"_s, platform::DatabaseOpening::ReadWrite);
  database.execute(
      u"UPDATE Generation SET parametersJSON = json_set(CAST(parametersJSON AS TEXT), '$.cost', json_object("
      u"'perImageUSD', 0.01 + (rowid % 40) * 0.005, 'basis', 'falUnitPrice', 'note', 'Estimated from the listed price.', "
      u"'pricingDate', '2026-01-01', 'source', 'https://api.fal.ai/v1/models/pricing'))"_s);
}

std::shared_ptr<LibraryStore> openStore(const QString& folder) {
  auto store = std::make_shared<LibraryStore>(
      LibraryStore::Services{std::make_shared<Settings>(), std::make_shared<SystemClock>(), {}, {}});
  openWorkspace(*store, folder, Remember::no);
  return store;
}

double groupedByDatabase(const QString& folder) {
  platform::Database database(folder + u"/.sorvan/library.store"_s, platform::DatabaseOpening::ReadOnly);
  return timed([&] {
    double sum = 0;
    database
        .statement("SELECT provider, model, COUNT(*), "
                   "TOTAL(json_extract(CAST(parametersJSON AS TEXT), '$.cost.perImageUSD')) "
                   "FROM Generation WHERE status != 'imported' GROUP BY provider, model")
        .forEach([&sum](const platform::Row& row) { sum += row.real(3); });
    if (sum <= 0) throw std::runtime_error("the library has no costs");
  });
}

Contestants costs(const QDir& data) {
  const QString folder = libraryFolder(data);
  const auto store = openStore(folder);
  const auto breakdown = [store] {
    return timed([&] {
      const auto found = account::costBreakdown(*store, {}, [](const QString& model) { return model; });
      if (found.report.lines.empty()) throw std::runtime_error("the library has no costs");
    });
  };
  return {.ours = breakdown, .peer = [folder] { return groupedByDatabase(folder); }, .limit = {}};
}

Contestants monthTotal(const QDir& data) {
  const auto store = openStore(libraryFolder(data));
  const auto month = std::make_shared<account::MonthSpend>();
  const auto stars = std::make_shared<int>(1);
  return {.ours =
              [=] {
                *stars = *stars % 5 + 1;
                setRating(*store, *store->assets().begin(), *stars);
                return timed([&] { month->total(*store); });
              },
          .peer = {},
          .limit = {}};
}

enum class Measured { wholeTime, longestStall };

/// The page opens, reads the library and shows all time.
Contestants costPage(const QDir& data, Measured measured) {
  const auto store = openStore(libraryFolder(data));
  const auto open = [store, measured] {
    shell::WorkspaceState state;
    shell::AlertsPresenter alerts;
    shell::PaymentDesk payment;
    shell::CostsPresenter costs({*store, state, alerts, payment, [](const QString& model) { return model; }});
    costs.showAllTime();
    QEventLoop loop;
    const Stalls stalls;
    QObject::connect(&costs, &shell::CostsPresenter::changed, &loop, [&] {
      if (!costs.isWorking()) loop.quit();
    });
    const double seconds = timed([&] {
      state.setMode({shell::ModeKind::costs});
      loop.exec();
    });
    if (costs.rowCount() == 0) throw std::runtime_error("the page shows no costs");
    return std::optional(measured == Measured::wholeTime ? seconds : stalls.longest());
  };
  return {.ours = open, .peer = {}, .limit = [measured]() -> std::optional<double> {
            if (measured == Measured::longestStall) return frame;
            return std::nullopt;
          }};
}

/// A row of each kind of price, over and over.
QJsonObject pricesOf(const QStringList& models) {
  const QJsonObject flat{{u"credits"_s, 4}};
  const QJsonObject bySecond{{u"credits"_s, 9}, {u"per"_s, u"second"_s}};
  const QJsonObject byOption{
      {u"credits"_s, 20},
      {u"options"_s, QJsonObject{{u"field"_s, u"resolution"_s},
                                 {u"rates"_s, QJsonObject{{u"1k"_s, 8}, {u"2k"_s, 12}, {u"4k"_s, 16}}}}},
      {u"extras"_s, QJsonArray{QJsonObject{{u"field"_s, u"sound"_s}, {u"rate"_s, 2}, {u"on_by_default"_s, true}}}}};
  const QJsonObject byArea{{u"credits"_s, 3}, {u"per"_s, u"megapixel"_s}, {u"per_image"_s, QJsonObject{{u"rate"_s, 1}}}};
  const std::array kinds{flat, bySecond, byOption, byArea};
  QJsonObject prices;
  for (qsizetype index = 0; index < models.size(); ++index)
    prices.insert(models[index], kinds[static_cast<std::size_t>(index) % kinds.size()]);
  return prices;
}

Contestants estimates(const QDir&) {
  constexpr int compared = 50;
  constexpr int redraws = 100;
  std::vector<catalogue::FalModel> models;
  QStringList ids;
  for (int index = 0; index < compared; ++index) {
    catalogue::FalModel model = catalogue::nanoBanana2();
    model.id = u"bench/model-%1"_s.arg(index);
    if (index % 4 == 1) model.output = MediaType::video;
    models.push_back(model);
    ids << model.id;
  }
  std::vector<account::CreditPrice> prices;
  const QJsonObject listed = pricesOf(ids);
  for (const QString& id : ids) prices.push_back(account::priceFrom(listed.value(id)).value());
  GenerationRequest request;
  request.prompt = u"a fox in deep snow, "_s.repeated(20);
  request.options = TextByKey{{u"duration"_s, u"5"_s}, {u"resolution"_s, u"2k"_s}};
  return {.ours =
              [=] {
                std::int64_t sum = 0;
                const double seconds = timed([&] {
                  for (int redraw = 0; redraw < redraws; ++redraw)
                    for (std::size_t index = 0; index < models.size(); ++index)
                      sum += account::estimatedCredits(prices[index], request, models[index]).value_or(0);
                });
                if (sum <= 0) throw std::runtime_error("the models have no prices");
                return std::optional(seconds / redraws);
              },
          .peer = {},
          .limit = {}};
}

const RegisterRow costsRow{{.name = u"costs-100k"_s, .make = makeLibraryWithCosts, .measure = costs}};
const RegisterRow costPageRow{{.name = u"cost-page-100k"_s,
                               .make = makeLibraryWithCosts,
                               .measure = [](const QDir& data) { return costPage(data, Measured::wholeTime); }}};
const RegisterRow costStallRow{{.name = u"cost-page-100k-stall"_s,
                                .make = makeLibraryWithCosts,
                                .measure = [](const QDir& data) { return costPage(data, Measured::longestStall); }}};
const RegisterRow monthRow{{.name = u"month-total"_s, .make = makeLibraryWithCosts, .measure = monthTotal}};
const RegisterRow estimatesRow{{.name = u"estimates-50"_s, .make = {}, .measure = estimates}};

}  // namespace
}  // namespace sorvan::bench
