// The balance, what it is made of, what is on sale, and the news of a newer build, in every state.
#include <QGridLayout>

#include "account/update_notice.h"
#include "account/usage_stats.h"
#include "shell/alerts_presenter.h"
#include "shell/updates_presenter.h"
#include "shell/views/controls.h"
#include "shell/views/credits_page.h"
#include "shell/views/thumbnail_store.h"
#include "shell/views/update_pill.h"
#include "views/item_sheets.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kCredit = 1'000'000;
constexpr QSize kBalance(400, 190);
constexpr QSize kOffers(400, 280);

BadgeDisplay badge(qint64 credits) { return {true, credits * kCredit, u"Credits"_s}; }

void showBadge(QWidget& widget, qint64 credits) {
  auto& shown = static_cast<BalanceBadge&>(widget);
  shown.show(badge(credits));
  shown.resize(shown.sizeHint());
}

std::vector<ComponentState> badgeStates() {
  const auto then = [](const Bring& bring) {
    return [bring](QWidget& widget) {
      showBadge(widget, 1240);
      bring(widget);
    };
  };
  return {{u"Normal"_s, then([](QWidget&) {})},
          {u"Hover"_s, then(hoverMiddle)},
          {u"Pressed"_s, then([](QWidget& it) { static_cast<QAbstractButton&>(it).setDown(true); })},
          {u"Focus"_s, then(focusByKey)},
          {u"Nothing left"_s, [](QWidget& it) { showBadge(it, 0); }}};
}

BalanceDisplay balance(qint64 included, qint64 bought, qint64 held) {
  BalanceDisplay shown;
  shown.microcredits = (included + bought) * kCredit;
  shown.plan = u"Studio"_s;
  const auto row = [](const QString& name, qint64 credits) {
    return BalanceRow{name, AccountPresenter::balanceText(static_cast<double>(credits * kCredit)), credits * kCredit};
  };
  shown.rows = {row(u"Included"_s, included), row(u"Bought"_s, bought), row(u"Held for running work"_s, held)};
  shown.foot = u"Renews on 3 December"_s;
  return shown;
}

ComponentState holding(const QString& name, const BalanceDisplay& shown) {
  return {name, [shown](QWidget& card) { static_cast<BalanceCard&>(card).show(shown); }};
}

// An account that nobody asks and nobody answers.
class SilentService final : public platform::HttpTransport {
 public:
  base::Task<platform::HttpReply> send(platform::HttpRequest, std::stop_token) override { co_return platform::HttpReply{}; }
  base::Task<platform::PostOutcome> postOnce(platform::HttpRequest, std::stop_token) override {
    co_return platform::PostOutcome{};
  }
  base::Task<platform::HttpReply> download(platform::HttpRequest, QString, std::stop_token) override {
    co_return platform::HttpReply{};
  }
};

// What stands behind the widgets; outlives them.
struct SampleAccount {
  std::shared_ptr<base::Settings> settings = std::make_shared<base::Settings>();
  std::shared_ptr<const base::Clock> clock = std::make_shared<base::SystemClock>();
  std::shared_ptr<account::KeyCache> keys = std::make_shared<account::KeyCache>(
      std::make_shared<account::KeychainStore>(std::make_shared<platform::MemoryKeyBackend>()));
  account::AccountStore store{{std::make_shared<SilentService>(), clock, settings, keys, u"workstation"_s}};
  account::BillingState billing{{settings, clock, {}, {}}};
  account::ProviderSettings provider{keys};
  AccountPresenter presenter{{store, billing, provider, *settings, clock, [](const QUrl&) { return true; }}};
  account::UsageStats usage{{nullptr, clock, settings, u"0.1.0"_s, u"12"_s}};
  account::UpdateNotice notice{{nullptr, settings, 12}};
  shell::AlertsPresenter alerts;
  shell::UpdatesPresenter updates{{usage, notice, alerts, u"0.1.0"_s, [](const QUrl&) {}}};
};

AccountPageDisplay offers() {
  AccountPageDisplay page;
  page.signedIn = true;
  page.packs = {{OfferKind::pack, u"500"_s, u"500 credits"_s, u"500"_s, {}, u"$5"_s, u"Buy"_s, u"Buy 500 credits for $5"_s},
                {OfferKind::pack, u"2000"_s, u"2,000 credits"_s, u"2,000"_s, {}, u"$20"_s, u"Buy"_s,
                 u"Buy 2,000 credits for $20"_s}};
  page.offersNote = u"Paid on a page of the payment service."_s;
  return page;
}

ComponentState selling(const QString& name, const AccountPageDisplay& page, const Bring& then = {}) {
  return {name, [page, then](QWidget& widget) {
            static_cast<CreditOffers&>(widget).show(page);
            if (then) then(widget);
          }};
}

Button& buyButton(QWidget& widget) {
  for (Button* button : widget.findChildren<Button*>())
    if (button->text() == u"Buy"_s) return *button;
  qFatal("nothing is on sale");
}

std::vector<ComponentState> offerStates() {
  AccountPageDisplay waiting = offers();
  waiting.purchase.waiting = u"Waiting for the payment…"_s;
  waiting.purchase.openAgain = u"Open Again"_s;
  waiting.purchase.newCheckout = u"New Checkout"_s;
  waiting.purchase.newCheckoutHint = u"The page may have expired."_s;
  waiting.purchase.stop = u"Stop Waiting"_s;
  waiting.purchase.stopHelp = u"The purchase itself goes on."_s;
  AccountPageDisplay none = offers();
  none.packs.clear();
  none.noPacks = u"Credits cannot be bought at the moment."_s;
  return {selling(u"On sale"_s, offers()),
          selling(u"Hover on Buy"_s, offers(), [](QWidget& it) { hoverMiddle(buyButton(it)); }),
          selling(u"Focus on Buy"_s, offers(), [](QWidget& it) { focusByKey(buyButton(it)); }),
          selling(u"Disabled while something is under way"_s, offers(), [](QWidget& it) { it.setEnabled(false); }),
          selling(u"A payment is awaited"_s, waiting),
          selling(u"Nothing on sale"_s, none)};
}

Button& pillButton(QWidget& pill, qsizetype number) { return *pill.findChildren<Button*>().at(number); }

std::vector<ComponentState> pillStates() {
  return {{u"Normal"_s},
          {u"Hover on Download"_s, [](QWidget& pill) { hoverMiddle(pillButton(pill, 0)); }},
          {u"Focus on Download"_s, [](QWidget& pill) { focusByKey(pillButton(pill, 0)); }},
          {u"Hover on Later"_s, [](QWidget& pill) { hoverMiddle(pillButton(pill, 1)); }},
          {u"Focus on Later"_s, [](QWidget& pill) { focusByKey(pillButton(pill, 1)); }}};
}

}  // namespace

std::unique_ptr<QWidget> accountSheet(const QString&) {
  auto sheet = emptySheet(u"account-parts"_s, u"Account and updates"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* sample = new SampleAccount;
  QObject::connect(sheet.get(), &QObject::destroyed, [sample] { delete sample; });
  sample->notice.consider({u"0.2"_s, 13, u"https://sorvan.example/get"_s, std::nullopt});
  auto* box = new QGridLayout;
  const std::pair<QString, QWidget*> parts[] = {
      {u"Balance in the menu strip"_s, stage.states(u"Balance badge"_s, [] { return new BalanceBadge; }, {120, 24}, badgeStates(), 6)},
      {u"Balance on its page"_s,
       stage.states(u"Balance card"_s, [] { return new BalanceCard; }, kBalance,
                    {holding(u"Of several kinds"_s, balance(800, 440, 36)), holding(u"Low"_s, balance(0, 12, 0)),
                     holding(u"Nothing left"_s, balance(0, 0, 0))},
                    3)},
      {u"Credits on sale"_s,
       stage.states(u"Offers"_s, [sample] { return new CreditOffers(sample->presenter); }, kOffers, offerStates(), 3)},
      {u"A newer build"_s, stage.states(u"Update pill"_s, [sample] { return new UpdatePill(sample->updates); }, {}, pillStates(), 3)}};
  int line = 0;
  for (const auto& [title, part] : parts) box->addWidget(column({caption(title), part}), line++, 0, Qt::AlignLeft);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
