#include "cost_samples.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QTemporaryDir>

#include "account/update_notice.h"
#include "account/usage_stats.h"
#include "base/ids.h"
#include "base/settings.h"
#include "core/library_store.h"
#include "core/workspace_opening.h"
#include "shell/alerts_presenter.h"
#include "shell/costs_presenter.h"
#include "shell/payment_desk.h"
#include "shell/updates_presenter.h"
#include "shell/views/cost_chart.h"
#include "shell/views/cost_report_page.h"
#include "shell/views/update_pill.h"
#include "shell/views/usage_page.h"
#include "shell/workspace_state.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

// The content of a window of 1440 and of 1024 pixels.
constexpr QSize kWide(1208, 814);
constexpr QSize kNarrow(972, 594);
constexpr QSize kSettings(624, 700);

// It is noon of the 21st of November.
class SampleClock final : public Clock {
 public:
  Instant now() const override { return Instant::fromDateTime(QDateTime(QDate(2026, 11, 21), QTime(12, 0))); }
  Task<> sleep(std::chrono::milliseconds, std::stop_token) const override { co_return; }
};

struct Sample {
  QString title;
  QString model;
  QString type;  // empty: an assistant's work
  QString provider;
  double usd;
};

const Sample kSamples[] = {
    {u"Hero shot of the @Tin coffee tin on a slate counter by a rain-streaked window"_s, u"GPT Image 2.5 Sunburst"_s,
     u"image"_s, u"Sorvan Credits"_s, 0.12},
    {u"Slow push-in over the water toward the lighthouse"_s, u"Wan 3.0"_s, u"video"_s, u"Sorvan Credits"_s, 0.45},
    {u"Harbour wall from the water, low sun"_s, u"Nano Banana 2 Edit"_s, u"image"_s, u"fal.ai"_s, 0.06},
    {u"Improve Prompt with AI"_s, u"google/gemini-3.8-flash"_s, {}, u"Sorvan Credits"_s, 0.01},
    {u"Low foghorn, two blasts, distant"_s, u"Eleven v4 Turbo"_s, u"audio"_s, u"Sorvan Credits"_s, 0.09},
    {u"Album cover, glossy spheres on sand"_s, u"FLUX.1 Schnell"_s, u"image"_s, u"fal.ai"_s, 0.04}};

struct SampleReport {
  QTemporaryDir folder;
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::shared_ptr<SampleClock> clock = std::make_shared<SampleClock>();
  core::LibraryStore store{{settings, clock, std::nullopt, folder.filePath(u"Default"_s)}};
  shell::WorkspaceState state;
  shell::AlertsPresenter alerts;
  shell::PaymentDesk payment;
  shell::CostsPresenter costs{{store, state, alerts, payment, [](const QString& model) { return model; }}};
  CostReportPage page{costs};

  SampleReport() {
    core::openWorkspace(store, folder.filePath(u"Northlight"_s), core::Remember::no);
    state.setMode({shell::ModeKind::costs});
    settle();
  }
  void settle() {
    while (costs.isWorking()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  void spend() {
    for (int day = 0; day < 21; ++day)
      for (int number = 0; number < (day * 7 + 3) % 6; ++number) add(kSamples[(day + number) % 6], day, number);
    settle();
  }
  void add(const Sample& sample, int day, int number) {
    core::ExtraCharge charge;
    charge.id = base::newUuid();
    charge.date = clock->now() - (20 - day) * 86400.0 - number * 1260.0;
    charge.title = sample.title;
    charge.model = sample.model;
    charge.provider = sample.provider;
    if (!sample.type.isEmpty()) charge.mediaType = sample.type;
    if (number != 4) charge.usd = sample.usd * (1 + (day + number) % 3);
    if (sample.provider == u"Sorvan Credits"_s && charge.usd) charge.credits = *charge.usd * 100;
    store.record(charge);
  }
};

// The page of the settings, with counts and a newer build.
struct SampleUsage {
  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::shared_ptr<SampleClock> clock = std::make_shared<SampleClock>();
  account::UsageStats usage{{nullptr, clock, settings, u"0.1.0"_s, u"12"_s}};
  account::UpdateNotice notice{{nullptr, settings, 12}};
  shell::AlertsPresenter alerts;
  shell::UpdatesPresenter updates{{usage, notice, alerts, u"0.1.0"_s, [](const QUrl&) {}}};
  UsagePage page{updates};
  UpdatePill pill{updates};

  void fill() {
    updates.setSharing(true);
    usage.note(u"job.text-to-image"_s, 41);
    usage.note(u"job.image-to-video"_s, 7);
    notice.consider({u"0.2"_s, 13, u"https://sorvan.example/get"_s, std::nullopt});
  }
};

void pointAt(CostChartView& chart, int column) {
  const QPointF place = chart.columnRect(column).center();
  QMouseEvent move(QEvent::MouseMove, place, chart.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&chart, &move);
}

}  // namespace

void saveCosts(const std::function<void(QWidget&, const QString&)>& save) {
  SampleReport report;
  report.page.resize(kWide);
  save(report.page, u"costs-nothing"_s);
  report.spend();
  save(report.page, u"costs"_s);
  pointAt(*report.page.chart(), 14);
  save(report.page, u"costs-column"_s);
  report.page.resize(kNarrow);
  save(report.page, u"costs-narrow"_s);
  report.costs.setPeriod(3);
  report.settle();
  report.costs.setShowing(shell::CostBreakdownKind::payment);
  report.page.resize(kWide);
  save(report.page, u"costs-all-time"_s);
  SampleUsage sample;
  sample.page.resize(kSettings);
  save(sample.page, u"usage-off"_s);
  sample.fill();
  save(sample.page, u"usage-on"_s);
  save(sample.pill, u"update"_s);
}

}  // namespace sorvan::views
