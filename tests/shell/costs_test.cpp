#include <gtest/gtest.h>

#include <QFile>

#include "base/ids.h"
#include "base/json.h"
#include "core/projects.h"
#include "core/small_edits.h"
#include "desk.h"
#include "shell/costs_presenter.h"

namespace sorvan::shell {
namespace {
using namespace Qt::Literals::StringLiterals;
using test::Desk;

// Who pays, as a test wants it.
struct Payer final : PaymentDesk {
  core::Billing now{core::PayWith::ownKey, true};
  core::Billing billing() const override { return now; }
};

struct CostsTest : testing::Test {
  Desk desk;
  Payer payer;
  CostsPresenter costs{{desk.store, desk.state, desk.alerts, payer, [](const QString& model) { return u"The "_s + model; }}};

  void make(const QString& prompt, double usd, std::optional<double> credits = {}) {
    core::GenerationCost cost;
    cost.perImageUSD = usd;
    cost.credits = credits;
    cost.basis = u"listedPrice"_s;
    desk.provider->cost = cost;
    desk.generate(prompt);
    desk.settle();
    desk.clock->advance(std::chrono::seconds(1));
  }
  void assist(const QString& title, double usd) {
    core::ExtraCharge charge;
    charge.id = base::newUuid();
    charge.date = desk.clock->now();
    charge.title = title;
    charge.model = u"writer"_s;
    charge.provider = u"Sorvan Credits"_s;
    charge.usd = usd;
    charge.credits = usd * 100;
    desk.store.record(charge);
  }
  void open() {
    desk.state.setMode({ModeKind::costs});
    finish();
  }
  void finish() {
    test::runUntil([this] { return !costs.isWorking(); });
  }
  void passDays(int days) { desk.clock->advance(std::chrono::hours(24 * days)); }
};

TEST_F(CostsTest, AddUpWhatWasSpentThisMonthWhenThePageOpens) {
  make(u"a lighthouse"_s, 0.25);
  make(u"a harbour"_s, 0.5);
  assist(u"Improve Prompt with AI"_s, 0.05);
  EXPECT_EQ(costs.page(), nullptr) << "nothing is worked out while nobody looks";
  open();
  ASSERT_EQ(costs.pageState(), CostPageState::report);
  const CostPage& page = *costs.page();
  EXPECT_EQ(page.tiles[0].value, u"$0.80"_s);
  EXPECT_EQ(page.tiles[1].value, u"2"_s);
  EXPECT_EQ(page.tiles[1].detail, u"2 images"_s);
  EXPECT_EQ(page.tiles[2].value, u"$0.050"_s);
  EXPECT_EQ(page.tiles[2].detail, u"1 rewrite"_s);
  EXPECT_EQ(page.tiles[3].value, u"0"_s);
  EXPECT_EQ(page.chart.title, u"By day"_s);
  EXPECT_GE(page.chart.columns.size(), 28u);
  EXPECT_EQ(page.bars[0].front().name.left(4), u"The "_s);
  EXPECT_EQ(page.bars[2].front().totalText, u"≈ $0.75"_s) << "a key of one's own is estimated";
  ASSERT_EQ(costs.rowCount(), 3);
  EXPECT_EQ(costs.row(2).charge, u"a lighthouse"_s);
  EXPECT_EQ(costs.row(2).paidWith, u"My fal.ai key"_s);
  EXPECT_TRUE(costs.row(2).date.startsWith(u"Today "_s));
}

TEST_F(CostsTest, FollowTheLibraryWhileThePageIsInFront) {
  make(u"a lighthouse"_s, 0.25);
  open();
  EXPECT_EQ(costs.rowCount(), 1);
  assist(u"Analyze"_s, 0.5);
  finish();
  EXPECT_EQ(costs.rowCount(), 2);
}

TEST_F(CostsTest, TheNewestPeriodWins) {
  make(u"a lighthouse"_s, 0.25);
  passDays(40);
  make(u"a harbour"_s, 0.5);
  open();
  EXPECT_EQ(costs.rowCount(), 1);
  costs.setPeriod(3);
  costs.setPeriod(0);
  costs.setPeriod(3);
  finish();
  EXPECT_EQ(costs.period(), 3);
  EXPECT_FALSE(costs.row(1).date.contains(u':')) << "the time of an older charge is no news";
  EXPECT_EQ(costs.rowCount(), 2);
  EXPECT_EQ(costs.page()->tiles[0].detail.left(6), u"Since "_s);
}

TEST_F(CostsTest, KeepToOneProjectOrTheInbox) {
  make(u"a lighthouse"_s, 0.25);
  make(u"a harbour"_s, 0.5);
  const core::ProjectRef project = core::createProject(desk.store, u"Coast"_s);
  core::move(desk.store, {desk.store.assets().front()}, project->id);
  open();
  costs.setScope(base::uuidText(project->id));
  finish();
  EXPECT_EQ(costs.scopeTitle(), u"Coast"_s);
  ASSERT_EQ(costs.rowCount(), 1);
  EXPECT_EQ(costs.row(0).charge, u"a harbour"_s);
  EXPECT_EQ(costs.exportName(), u"Coast-costs.csv"_s);
  costs.setScope(u"inbox"_s);
  finish();
  EXPECT_EQ(costs.rowCount(), 1);
  EXPECT_EQ(costs.row(0).charge, u"a lighthouse"_s);
  const std::vector<CostScope> scopes = costs.scopes();
  ASSERT_EQ(scopes.size(), 3u);
  EXPECT_EQ(scopes[2].title, u"Coast"_s);
}

TEST_F(CostsTest, AnEmptyPeriodOffersAllTimeWhereThatHelps) {
  open();
  EXPECT_EQ(costs.pageState(), CostPageState::empty);
  EXPECT_FALSE(costs.offersAllTime()) << "nothing was ever spent";
  EXPECT_FALSE(costs.canExport());
  make(u"a lighthouse"_s, 0.25);
  passDays(80);
  open();
  EXPECT_EQ(costs.pageState(), CostPageState::empty);
  EXPECT_TRUE(costs.offersAllTime());
  costs.showAllTime();
  finish();
  EXPECT_EQ(costs.rowCount(), 1);
}

TEST_F(CostsTest, SomebodyWithCreditsOnlyReadsOfNoDollars) {
  payer.now = {core::PayWith::credits, false};
  make(u"a lighthouse"_s, 0.25, 25);
  open();
  EXPECT_EQ(costs.explanation(), u"The credits your generations and AI assistance have used."_s);
  EXPECT_EQ(costs.tableNote(),
            u"The exact number of credits each one took. A generation that failed took none."_s);
  const CostPage& page = *costs.page();
  QStringList words{page.chart.summary, costs.row(0).cost};
  for (const CostTile& tile : page.tiles) words << tile.value << tile.detail;
  for (const CostGridLine& line : page.chart.lines) words << line.text;
  for (const CostColumn& column : page.chart.columns) words << QStringList(column.texts.begin(), column.texts.end()) << column.totalText;
  for (const auto& bars : page.bars)
    for (const CostBar& bar : bars) words << bar.totalText;
  EXPECT_FALSE(words.join(u' ').contains(u'$'));
  EXPECT_EQ(page.tiles[0].value, u"25 credits"_s);
}

TEST_F(CostsTest, TheFileHoldsWhatThePageShows) {
  make(u"=SUM(A1)"_s, 0.25);
  make(u"a \"red\", wet quay"_s, 0.5);
  open();
  const QString file = desk.folder / u"costs.csv"_s;
  costs.exportTo(file);
  EXPECT_FALSE(costs.canExport());
  test::runUntil([&] { return costs.canExport(); });
  QFile written(file);
  ASSERT_TRUE(written.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(written.readAll());
  EXPECT_EQ(text, account::costCSV(desk.store, {}));
  EXPECT_TRUE(text.endsWith(u",'=SUM(A1)"_s));
  EXPECT_TRUE(text.contains(u",\"a \"\"red\"\", wet quay\"\n"_s));
  ASSERT_FALSE(desk.alerts.toasts().empty());
  EXPECT_EQ(desk.alerts.toasts().back().text, u"Exported 2 rows"_s);
}

TEST_F(CostsTest, AFileThatCannotBeWrittenIsTold) {
  make(u"a lighthouse"_s, 0.25);
  open();
  costs.exportTo(desk.folder / u"nowhere/costs.csv"_s);
  test::runUntil([&] { return costs.canExport(); });
  ASSERT_TRUE(desk.alerts.current().has_value());
  EXPECT_FALSE(desk.alerts.current()->text.isEmpty() && desk.alerts.current()->title.isEmpty());
}

TEST_F(CostsTest, ARowOpensItsItemAndBackReturns) {
  make(u"a lighthouse"_s, 0.25);
  assist(u"Analyze"_s, 0.05);
  open();
  ASSERT_EQ(costs.rowCount(), 2);
  const int item = costs.row(0).opens ? 0 : 1;
  EXPECT_FALSE(costs.row(1 - item).opens);
  costs.openRow(1 - item);
  EXPECT_EQ(desk.state.mode().kind, ModeKind::costs);
  costs.openRow(item);
  EXPECT_EQ(desk.state.mode().kind, ModeKind::asset);
  EXPECT_EQ(desk.state.mode().subject, desk.store.assets().front()->id);
  desk.state.goBack();
  EXPECT_EQ(desk.state.mode().kind, ModeKind::costs);
}

TEST_F(CostsTest, AnotherWorkspaceStartsAnew) {
  make(u"a lighthouse"_s, 0.25);
  open();
  desk.store.close();
  EXPECT_EQ(costs.page(), nullptr);
  EXPECT_EQ(costs.pageState(), CostPageState::reading);
  finish();
  EXPECT_EQ(costs.page(), nullptr);
}

// ---- The chart

struct CostChartTest : testing::Test {
  account::ChargeBook book;
  CostQuestion question{{}, Instant::fromDateTime(QDateTime(QDate(2026, 11, 21), QTime(12, 0))), {}};

  void spend(const QDate& day, double usd, std::optional<core::MediaType> type = core::MediaType::image) {
    account::Charge charge;
    charge.id = base::newUuid();
    charge.date = Instant::fromDateTime(QDateTime(day, QTime(9, 30)));
    charge.cost = usd;
    charge.mediaType = type;
    book.charges.insert(book.charges.begin(), charge);
    account::sortNewestFirst(book.charges);
  }
  CostChart chart() { return costPage(book, question).chart; }
};

TEST_F(CostChartTest, PilesUpTheKindsOfADay) {
  spend({2026, 11, 15}, 0.56);
  spend({2026, 11, 15}, 0.76, core::MediaType::video);
  spend({2026, 11, 15}, 0.06, std::nullopt);
  spend({2026, 11, 11}, 2.15, core::MediaType::audio);
  const CostChart shown = chart();
  ASSERT_EQ(shown.columns.size(), 30u);
  ASSERT_EQ(shown.kinds.size(), 4u);
  EXPECT_EQ(shown.kinds[1].name, u"Video"_s);
  EXPECT_EQ(shown.kinds[3].color, 2) << "the assistant's colour is its own";
  const CostColumn& day = shown.columns[14];
  EXPECT_EQ(day.title, u"15 November"_s);
  EXPECT_EQ(day.label, u"15"_s);
  EXPECT_DOUBLE_EQ(day.values[0], 0.56);
  EXPECT_EQ(day.texts[3], u"$0.060"_s);
  EXPECT_NEAR(day.total, 1.38, 1e-9);
  EXPECT_TRUE(shown.columns[15].label.isEmpty());
  ASSERT_EQ(shown.lines.size(), 4u);
  EXPECT_EQ(shown.lines[3].text, u"$3"_s);
  EXPECT_EQ(shown.summary, u"Total $3.53, 1–21 November. Most: 11 November, $2.15."_s);
}

TEST_F(CostChartTest, TheMonthBeforeEndsWithItsLastDay) {
  question.about.period = u"last"_s;
  spend({2026, 10, 31}, 1);
  const CostPage page = costPage(book, question);
  EXPECT_EQ(page.chart.columns.size(), 31u);
  EXPECT_DOUBLE_EQ(page.chart.columns.back().total, 1);
  EXPECT_EQ(page.tiles[0].detail, u"1–31 October"_s);
}

TEST_F(CostChartTest, ShowsALongTimeByMonth) {
  question.about.period = u"all"_s;
  spend({2026, 1, 3}, 1);
  spend({2026, 11, 15}, 4);
  const CostChart shown = chart();
  EXPECT_EQ(shown.title, u"By month"_s);
  ASSERT_EQ(shown.columns.size(), 11u);
  EXPECT_EQ(shown.columns[0].title, u"January 2026"_s);
  EXPECT_EQ(shown.columns[0].label, u"Jan 2026"_s);
  EXPECT_EQ(shown.columns[10].label, u"Nov"_s);
  EXPECT_DOUBLE_EQ(shown.columns[10].total, 4);
}

TEST_F(CostChartTest, AFewDaysAreAllNamed) {
  question.about.period = u"all"_s;
  spend({2026, 11, 18}, 1);
  const CostChart shown = chart();
  ASSERT_EQ(shown.columns.size(), 4u);
  EXPECT_EQ(shown.columns[0].label, u"18 Nov"_s);
  EXPECT_EQ(shown.columns[3].label, u"21 Nov"_s);
}

TEST_F(CostChartTest, ADateFromAnotherAgeMakesNoEndlessChart) {
  question.about.period = u"all"_s;
  spend({1601, 1, 1}, 1);
  spend({2026, 11, 15}, 4);
  spend({9000, 11, 15}, 2);
  const CostChart shown = chart();
  EXPECT_LE(shown.columns.size(), 240u);
  EXPECT_DOUBLE_EQ(shown.columns.front().total, 1);
  EXPECT_EQ(shown.columns.front().title.left(6), u"Until "_s);
  EXPECT_DOUBLE_EQ(shown.columns.back().total, 6);
}

TEST_F(CostChartTest, WithoutAPriceThereIsStillAScale) {
  spend({2026, 11, 15}, 0);
  const CostChart shown = chart();
  EXPECT_GT(shown.lines.back().value, 0);
  EXPECT_EQ(shown.columns[14].totalText, u"$0.00"_s);
}

}  // namespace
}  // namespace sorvan::shell
