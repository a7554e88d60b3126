#include "account/charges.h"

#include "base/json.h"
#include "core/library_fixture.h"

#include <chrono>
#include <functional>

namespace sorvan::account {
namespace {

using namespace Qt::StringLiterals;

class Charges : public test::LibraryFixture {
 protected:
  void SetUp() override { open(); }

  static QByteArray parameters(const GenerationCost& cost) {
    return QByteArrayLiteral("{\"cost\":") + encodeJson(cost) + QByteArrayLiteral("}");
  }
  static GenerationCost costing(double usd, std::optional<double> credits = {}) {
    GenerationCost cost;
    cost.perImageUSD = usd;
    cost.credits = credits;
    cost.basis = credits ? u"sorvanCredits"_s : u"listedPrice"_s;
    cost.note = u"As listed."_s;
    return cost;
  }
  /// An output with its item, `ageSeconds` old.
  GenerationRef addOutput(const QString& name, std::optional<GenerationCost> cost, double ageSeconds = 0,
                          const std::function<void(Generation&)>& change = {}) {
    const AssetRef asset = addAsset(name, ageSeconds);
    Generation generation;
    generation.id = newUuid();
    generation.assetID = asset->id;
    generation.jobID = newUuid();
    generation.provider = u"fal.ai"_s;
    generation.model = u"fal-ai/flux/dev"_s;
    generation.prompt = u"a lighthouse"_s;
    generation.parametersJSON = cost ? parameters(*cost) : QByteArrayLiteral("{}");
    generation.createdAt = clock->now() - ageSeconds;
    if (change) change(generation);
    const GenerationRef ref = store.context().insert(std::move(generation));
    store.save(LibraryTables::none);
    store.registerRecords({{}, {ref}, {}, {}});
    return ref;
  }
  ExtraCharge addExtra(const QUuid& id, std::optional<double> usd, double ageSeconds = 0) {
    ExtraCharge extra;
    extra.id = id;
    extra.date = clock->now() - ageSeconds;
    extra.title = u"Improve Prompt"_s;
    extra.detail = u"a lighthouse at dusk"_s;
    extra.model = u"writer"_s;
    extra.provider = u"Sorvan Credits"_s;
    extra.usd = usd;
    extra.credits = usd ? std::optional(*usd * 100) : std::nullopt;
    store.record(extra);
    return extra;
  }
  ProjectRef addProject(const QString& name) {
    const ProjectRef project = store.context().insert(Project(name, u"Projects/"_s + name, clock->now()));
    store.save(LibraryTables::projects);
    return project;
  }
};

Charge charge(std::optional<double> cost, std::optional<double> credits = {}) {
  Charge row;
  row.cost = cost;
  row.credits = credits;
  return row;
}

TEST(Charge, SaysWhoPaid) {
  EXPECT_EQ(paidWith(u"Sorvan Credits"_s), u"Sorvan Credits"_s);
  EXPECT_EQ(paidWith(u"fal.ai"_s), u"My fal.ai key"_s);
  EXPECT_EQ(paidWith(u"OpenAI"_s), u"OpenAI key (retired)"_s);
  EXPECT_EQ(paidWith(u"Another"_s), u"Another"_s);
}

TEST(Charge, TellsCreditsExactlyAndTheOwnKeyAsAnEstimate) {
  const Spend both{true};
  EXPECT_EQ(charge({}).costDisplay(both), u"Not recorded"_s);
  EXPECT_EQ(charge(0.12, 12).costDisplay(both), u"12 credits ($0.12)"_s);
  EXPECT_EQ(charge(0.01, 1).costDisplay(both), u"1 credit ($0.01)"_s);
  EXPECT_EQ(charge(0.015, 1.5).costDisplay(both), QStringLiteral("1.50 credits") + both.aside(0.015));
  EXPECT_EQ(charge(0.06).costDisplay(both), u"≈ $0.060"_s);
  EXPECT_EQ(charge(0.4).costDisplay(both), u"≈ $0.40"_s);
}

TEST(Charge, NamesNoDollarsWhereOnlyCreditsPay) {
  const Spend creditsOnly{false};
  EXPECT_EQ(charge({}).costDisplay(creditsOnly), u"Not recorded"_s);
  EXPECT_EQ(charge(0.12, 12).costDisplay(creditsOnly), u"12 credits"_s);
  EXPECT_EQ(charge(0.06).costDisplay(creditsOnly), u"6 credits"_s);
}

TEST_F(Charges, LeaveOutWhatWasNotPaidForHere) {
  const GenerationRef paid = addOutput(u"paid.png"_s, costing(0.1));
  addOutput(u"imported.png"_s, costing(0.2), 0, [](Generation& made) { made.status = u"imported"_s; });
  addOutput(u"copied.png"_s, costing(0.3), 0, [](Generation& made) { made.copiedFromAssetID = newUuid(); });
  const auto billed = billedGenerations(store, {});
  ASSERT_EQ(billed.size(), 1U);
  EXPECT_EQ(billed.front()->id, paid->id);
}

TEST_F(Charges, KeepToTheProjectAndTheInterval) {
  const ProjectRef project = addProject(u"Coast"_s);
  const GenerationRef inside = addOutput(u"inside.png"_s, costing(0.1), 60);
  const GenerationRef inbox = addOutput(u"inbox.png"_s, costing(0.2), 120);
  store.context().edit(store.asset(inside->assetID)).projectID = project->id;
  store.save(LibraryTables::none);
  ChargeScope scope{project->id, ChargedProjects::one, {}};
  ASSERT_EQ(billedGenerations(store, scope).size(), 1U);
  EXPECT_EQ(billedGenerations(store, scope).front()->id, inside->id);
  scope.projectID = {};
  ASSERT_EQ(billedGenerations(store, scope).size(), 1U);
  EXPECT_EQ(billedGenerations(store, scope).front()->id, inbox->id);
  const Instant now = clock->now();
  scope = {{}, ChargedProjects::all, DateInterval{now - 60, now}};
  ASSERT_EQ(billedGenerations(store, scope).size(), 1U);
  EXPECT_EQ(billedGenerations(store, scope).front()->id, inside->id);
}

TEST_F(Charges, JoinOutputsAndTheLedgerNewestFirst) {
  addOutput(u"old.png"_s, costing(0.1, 10), 200);
  addExtra(newUuid(), 0.02, 100);
  addOutput(u"new.png"_s, {}, 0);
  const auto rows = charges(store, {});
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0].filename, u"new.png"_s);
  EXPECT_FALSE(rows[0].cost);
  EXPECT_EQ(rows[1].title, u"Improve Prompt"_s);
  EXPECT_FALSE(rows[1].mediaType);
  EXPECT_EQ(rows[1].cost, 0.02);
  EXPECT_EQ(rows[2].credits, 10);
  EXPECT_EQ(rows[2].mediaType, MediaType::image);
  EXPECT_EQ(rows[2].basis, u"sorvanCredits"_s);
}

TEST_F(Charges, NeverCountALandedResultTwice) {
  const GenerationRef output = addOutput(u"landed.png"_s, costing(0.1));
  addExtra(output->jobID, 0.1);
  addExtra(output->id, 0.1);
  EXPECT_EQ(charges(store, {}).size(), 1U);
  MonthSpend month;
  EXPECT_DOUBLE_EQ(month.total(store), 0.1);
}

TEST_F(Charges, RepairTheNoteOfASingleCredit) {
  GenerationCost cost = costing(0.01, 1);
  cost.note = u"Paid with 1 Sorvan Credits."_s;
  addOutput(u"one.png"_s, cost);
  EXPECT_EQ(charges(store, {}).front().note, u"Paid with 1 Sorvan Credit."_s);
}

TEST_F(Charges, AddUpTheCalendarMonthAndTheLedger) {
  MonthSpend month;
  EXPECT_EQ(month.total(store), 0);
  addOutput(u"one.png"_s, costing(0.25));
  EXPECT_DOUBLE_EQ(month.total(store), 0.25);
  addExtra(newUuid(), 0.5);
  addExtra(newUuid(), {});
  EXPECT_DOUBLE_EQ(month.total(store), 0.75);
  addOutput(u"longAgo.png"_s, costing(4), 40 * 86400);
  EXPECT_DOUBLE_EQ(month.total(store), 0.75);
}

TEST_F(Charges, StartANewMonthAtNothing) {
  addOutput(u"one.png"_s, costing(0.25));
  MonthSpend month;
  EXPECT_DOUBLE_EQ(month.total(store), 0.25);
  const DateInterval before = calendarMonth(clock->now());
  clock->advance(std::chrono::seconds(1 + static_cast<long>(before.end - clock->now())));
  EXPECT_NE(calendarMonth(clock->now()), before);
  EXPECT_EQ(month.total(store), 0);
}

TEST(CalendarMonth, EndsJustBeforeTheNextOne) {
  const QDateTime first(QDate(2026, 2, 1), QTime(0, 0));
  const QDateTime last(QDate(2026, 2, 28), QTime(23, 59, 59, 999));
  const DateInterval month = calendarMonth(Instant::fromDateTime(last));
  EXPECT_EQ(month.start, Instant::fromDateTime(first));
  EXPECT_TRUE(month.contains(Instant::fromDateTime(last)));
  EXPECT_FALSE(month.contains(Instant::fromDateTime(first.addMonths(1))));
}

}  // namespace
}  // namespace sorvan::account
