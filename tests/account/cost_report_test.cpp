#include "account/cost_report.h"

#include <gtest/gtest.h>

#include <QDate>

#include "account/charge_book.h"
#include "base/json.h"
#include "core/library_fixture.h"
#include "support/run_task.h"

namespace sorvan::account {
namespace {

using namespace Qt::StringLiterals;

constexpr double day = 86400;

class CostReportTest : public test::LibraryFixture {
 protected:
  void SetUp() override { open(); }

  struct Output {
    QString prompt = u"a lighthouse"_s;
    QString model = u"fal-ai/flux/dev"_s;
    QString provider = u"fal.ai"_s;
    std::optional<double> usd = 0.04;
    double ageSeconds = 0;
    QString status = {};
  };
  GenerationRef add(const QString& name, const Output& output) {
    const AssetRef asset = addAsset(name, output.ageSeconds);
    Generation generation;
    generation.id = newUuid();
    generation.assetID = asset->id;
    generation.jobID = newUuid();
    generation.provider = output.provider;
    generation.model = output.model;
    generation.prompt = output.prompt;
    if (!output.status.isEmpty()) generation.status = output.status;
    generation.createdAt = clock->now() - output.ageSeconds;
    generation.parametersJSON = "{}";
    if (output.usd) {
      GenerationCost cost;
      cost.perImageUSD = *output.usd;
      cost.basis = u"falUnitPrice"_s;
      generation.parametersJSON = "{\"cost\":" + encodeJson(cost) + "}";
    }
    const GenerationRef ref = store.context().insert(std::move(generation));
    store.save(LibraryTables::none);
    store.registerRecords({{}, {ref}, {}, {}});
    return ref;
  }
  void addAssistant(double usd, double ageSeconds = 0) {
    ExtraCharge extra;
    extra.id = newUuid();
    extra.date = clock->now() - ageSeconds;
    extra.title = u"Improve Prompt"_s;
    extra.detail = u"a lighthouse, at dusk"_s;
    extra.model = u"writer"_s;
    extra.provider = u"Sorvan Credits"_s;
    extra.usd = usd;
    extra.credits = usd * 100;
    extra.basis = u"sorvanCredits"_s;
    store.record(extra);
  }
  QStringList csv() { return costCSV(store, {}).split(u'\n'); }
};

TEST_F(CostReportTest, SumsOutputsByModelTheDearestFirst) {
  add(u"a.png"_s, {});
  add(u"b.png"_s, {.usd = std::nullopt});
  add(u"c.png"_s, {.model = u"dear"_s, .usd = 2});
  add(u"d.png"_s, {.model = u"even"_s, .usd = 2});
  add(u"e.png"_s, {.usd = 9, .status = u"imported"_s});
  addAssistant(0.5);
  const CostReport report = costReport(store, {});
  ASSERT_EQ(report.lines.size(), 3u);
  EXPECT_EQ(report.lines[0].model, u"dear"_s);
  EXPECT_EQ(report.lines[1].model, u"even"_s);
  EXPECT_EQ(report.lines[2].outputs, 2);
  EXPECT_EQ(report.lines[2].unpriced, 1);
  EXPECT_DOUBLE_EQ(report.lines[2].total, 0.04);
  EXPECT_DOUBLE_EQ(report.assistant, 0.5);
  EXPECT_EQ(report.assistantCount, 1);
}

TEST_F(CostReportTest, BreaksDownByModelProjectAndPayer) {
  add(u"a.png"_s, {.usd = 1});
  add(u"b.png"_s, {.provider = u"Sorvan Credits"_s, .usd = 3});
  addAssistant(0.5);
  const CostBreakdown breakdown = costBreakdown(store, {}, [](const QString& model) { return u"The "_s + model; });
  EXPECT_EQ(breakdown.models.at(0), (CostSlice{u"The fal-ai/flux/dev"_s, 4, 2, {.images = 2}}));
  EXPECT_EQ(breakdown.models.at(1), (CostSlice{u"The writer"_s, 0.5, 0, {.requests = 1}}));
  EXPECT_EQ(breakdown.projects, (std::vector<CostSlice>{{u"Inbox"_s, 4.5, 2, {.images = 2, .requests = 1}}}));
  EXPECT_EQ(breakdown.payment.at(0), (CostSlice{u"Sorvan Credits"_s, 3.5, 1, {.images = 1, .requests = 1}}));
  EXPECT_EQ(breakdown.payment.at(1).name, u"My fal.ai key"_s);
  ASSERT_EQ(breakdown.series.size(), 2u);
  EXPECT_EQ(breakdown.series[0].kind, u"Assistant"_s);
  EXPECT_EQ(breakdown.series[1].kind, u"Images"_s);
}

TEST_F(CostReportTest, ShowsAHundredDaysByDayAndASecondMoreByMonth) {
  const auto byMonth = [&](double length) {
    ChargeScope scope;
    scope.interval = DateInterval{clock->now() - length, clock->now()};
    return costBreakdown(store, scope, [](const QString& model) { return model; }).byMonth;
  };
  EXPECT_FALSE(byMonth(100 * day));
  EXPECT_TRUE(byMonth(100 * day + 1));
  add(u"new.png"_s, {});
  add(u"old.png"_s, {.ageSeconds = 101 * day});
  const auto whole = costBreakdown(store, {}, [](const QString& model) { return model; });
  EXPECT_TRUE(whole.byMonth);
  ASSERT_EQ(whole.series.size(), 2u);
  EXPECT_LT(whole.series[0].bucket, whole.series[1].bucket);
  EXPECT_EQ(whole.series[0].bucket.toDateTime().toLocalTime().date().day(), 1);
}

TEST_F(CostReportTest, CountsEachKindOfWorkInASlice) {
  add(u"a.png"_s, {});
  add(u"b.png"_s, {});
  addAssistant(0.5);
  const CostBreakdown breakdown = costBreakdown(store, {}, [](const QString& model) { return model; });
  ASSERT_EQ(breakdown.models.size(), 2u);
  EXPECT_EQ(breakdown.models[0].work, (WorkCounts{0, 0, 0, 1}));
  EXPECT_EQ(breakdown.models[1].work, (WorkCounts{2, 0, 0, 0}));
  EXPECT_EQ(breakdown.models[1].work.outputs(), 2);
}

TEST_F(CostReportTest, GathersTheSameRowsAPieceAtATime) {
  for (int number = 0; number < 5; ++number)
    add(u"%1.png"_s.arg(number), {.usd = 0.01 * number, .ageSeconds = 90.0 * (number % 3)});
  add(u"there.png"_s, {.status = u"imported"_s});
  addAssistant(0.5, 40);
  const ChargeBook book = test::runTask(
      gatherCharges(store, [](const QString& model) { return model.toUpper(); }, std::stop_token()));
  const std::vector<Charge> expected = charges(store, {});
  ASSERT_EQ(book.charges.size(), expected.size());
  for (std::size_t at = 0; at < expected.size(); ++at) EXPECT_EQ(book.charges[at].id, expected[at].id);
  EXPECT_EQ(costCSV(book.charges, book.names), costCSV(store, {}));
  EXPECT_EQ(book.names.model(u"writer"_s), u"WRITER"_s);
  ChargeScope lately;
  lately.interval = DateInterval{clock->now() - 60, clock->now()};
  EXPECT_EQ(chargesWithin(book.charges, lately).size(), charges(store, lately).size());
}

TEST_F(CostReportTest, GathersNothingOfAWorkspaceThatWasClosedMeanwhile) {
  add(u"a.png"_s, {});
  auto gathering = gatherCharges(store, [](const QString& model) { return model; }, std::stop_token());
  store.close();
  EXPECT_THROW(test::runTask(std::move(gathering)), Cancelled);
}

TEST_F(CostReportTest, WritesOneLineForEachCharge) {
  add(u"kite.png"_s, {.prompt = u"a \"red\" kite, high"_s, .usd = 0.04});
  addAssistant(0.5, 60);
  const QStringList lines = csv();
  ASSERT_EQ(lines.size(), 3);
  EXPECT_EQ(lines[0], u"Date,Project,File,Type,Provider,Model,Estimated cost (USD),Basis,Prompt"_s);
  EXPECT_EQ(lines[1], isoText(clock->now()) +
                          u",Inbox,kite.png,image,fal.ai,fal-ai/flux/dev,0.0400,falUnitPrice,\"a \"\"red\"\" kite, high\""_s);
  EXPECT_TRUE(lines[1].startsWith(isoText(clock->now())));
  EXPECT_TRUE(lines[2].contains(u",Inbox,Improve Prompt,assistant,Sorvan Credits,writer,0.5000,sorvanCredits,"_s));
}

TEST_F(CostReportTest, LeavesTheCostOfAnUnpricedOutputEmpty) {
  add(u"kite.png"_s, {.prompt = u"=SUM(A1)"_s, .usd = std::nullopt});
  EXPECT_TRUE(csv().at(1).endsWith(u",fal-ai/flux/dev,,,'=SUM(A1)"_s)) << csv().at(1).toStdString();
}

TEST_F(CostReportTest, NamesItsScopeAndItsFile) {
  CostDashboard dashboard;
  EXPECT_EQ(dashboard.scopeName(store), u"All Projects"_s);
  EXPECT_EQ(dashboard.fileName(store), WorkspaceFiles::safeName(u"All Projects"_s) + u"-costs.csv"_s);
  dashboard.scope = u"inbox"_s;
  EXPECT_EQ(dashboard.scopeName(store), u"Inbox"_s);
  EXPECT_EQ(dashboard.chargeScope(store.now()).projects, ChargedProjects::one);
}

TEST(CsvCellTest, KeepsASpreadsheetFromRunningAPrompt) {
  EXPECT_EQ(csvCell(u"=SUM(A1)"_s), u"'=SUM(A1)"_s);
  EXPECT_EQ(csvCell(u"+1"_s), u"'+1"_s);
  EXPECT_EQ(csvCell(u"-1"_s), u"'-1"_s);
  EXPECT_EQ(csvCell(u"@a"_s), u"'@a"_s);
  EXPECT_EQ(csvCell(u"\ta"_s), u"'\ta"_s);
  EXPECT_EQ(csvCell(u"\ra"_s), u"\"'\ra\""_s);
  EXPECT_EQ(csvCell(u"a=b"_s), u"a=b"_s);
  EXPECT_EQ(csvCell(u"=a,\"b\""_s), u"\"'=a,\"\"b\"\"\""_s);
  EXPECT_EQ(csvCell(u"a\nb"_s), u"\"a\nb\""_s);
  EXPECT_EQ(csvCell(QString()), QString());
}

TEST(CostDashboardTest, MakesItsIntervalsOfPeriods) {
  const Instant now = Instant::fromDateTime(QDateTime(QDate(2026, 3, 15), QTime(12, 0)));
  CostDashboard dashboard;
  EXPECT_EQ(dashboard.interval(now)->start, Instant::fromDateTime(QDate(2026, 3, 1).startOfDay()));
  dashboard.period = u"last"_s;
  EXPECT_EQ(dashboard.interval(now)->start, Instant::fromDateTime(QDate(2026, 2, 1).startOfDay()));
  EXPECT_LT(dashboard.interval(now)->end, Instant::fromDateTime(QDate(2026, 3, 1).startOfDay()));
  dashboard.period = u"quarter"_s;
  EXPECT_EQ(*dashboard.interval(now), (DateInterval{now - 7776000, now + 60}));
  dashboard.period = u"all"_s;
  EXPECT_FALSE(dashboard.interval(now));
}

}  // namespace
}  // namespace sorvan::account
