#include "account_samples.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "shell/account_presenter.h"
#include "shell/settings_presenter.h"
#include "shell/views/menu_strip.h"
#include "shell/views/settings_dialog.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kCredit = 1'000'000;

double daysFromNow(double days) {
  return static_cast<double>(QDateTime::currentSecsSinceEpoch()) + days * 24 * 3600;
}

QJsonObject sampleDevice(const QString& id, const QString& name, double seenDaysAgo, bool current) {
  return {{u"id"_s, id},
          {u"name"_s, name},
          {u"created"_s, 0},
          {u"last_seen"_s, daysFromNow(-seenDaysAgo)},
          {u"current"_s, current}};
}

QJsonObject sampleAccount() {
  const QJsonObject credits{{u"included"_s, 800 * kCredit},  {u"purchased"_s, 440 * kCredit},
                            {u"reserved"_s, 36 * kCredit},   {u"review"_s, 12 * kCredit},
                            {u"available"_s, 1240 * kCredit}};
  const QJsonObject studio{{u"id"_s, u"plan-studio"_s},
                           {u"plan"_s, u"studio"_s},
                           {u"title"_s, u"Studio"_s},
                           {u"currency"_s, u"USD"_s},
                           {u"microcredits"_s, 1000 * kCredit},
                           {u"price_minor"_s, 900}};
  return {{u"email"_s, u"mira@northlight.studio"_s},
          {u"plan"_s, u"studio"_s},
          {u"plan_status"_s, u"active"_s},
          {u"period_end"_s, daysFromNow(12)},
          {u"renews"_s, true},
          {u"features"_s, QJsonArray{u"byok"_s}},
          {u"credits"_s, credits},
          {u"plans"_s, QJsonArray{studio}},
          {u"devices"_s, QJsonArray{sampleDevice(u"1"_s, u"workstation"_s, 0, true),
                                    sampleDevice(u"2"_s, u"studio-laptop"_s, 2.2, false)}},
          {u"spend_limit"_s, QJsonObject{{u"microcredits"_s, 1000 * kCredit},
                                         {u"spent"_s, 212 * kCredit},
                                         {u"until"_s, daysFromNow(0.4)}}}};
}

QJsonObject samplePacks() {
  QJsonArray packs;
  for (const int credits : {500, 2000, 5000})
    packs.append(QJsonObject{{u"id"_s, QString::number(credits)},
                             {u"title"_s, u"%1 credits"_s.arg(credits)},
                             {u"microcredits"_s, credits * kCredit},
                             {u"price_minor"_s, credits},
                             {u"currency"_s, u"USD"_s}});
  return {{u"packs"_s, packs}, {u"test_mode"_s, false}};
}

// Answers as the service would, at once.
class SampleGateway final : public platform::HttpTransport {
 public:
  base::Task<platform::HttpReply> send(platform::HttpRequest request, std::stop_token) override {
    co_return answer(request.url.path());
  }
  base::Task<platform::PostOutcome> postOnce(platform::HttpRequest request, std::stop_token) override {
    platform::PostOutcome outcome;
    outcome.fate = platform::PostFate::Answered;
    outcome.reply = answer(request.url.path());
    co_return outcome;
  }
  base::Task<platform::HttpReply> download(platform::HttpRequest, QString, std::stop_token) override {
    co_return platform::HttpReply{};
  }

 private:
  static platform::HttpReply answer(const QString& path) {
    QJsonObject body{{u"sent"_s, true}};
    if (path.endsWith(u"/me"_s)) body = sampleAccount();
    if (path.endsWith(u"/credit-packs"_s)) body = samplePacks();
    if (path.endsWith(u"/exchange"_s)) body = {{u"token"_s, u"sample"_s}};
    platform::HttpReply reply;
    reply.status = 200;
    reply.body = QJsonDocument(body).toJson();
    return reply;
  }
};

struct SampleAccount {
  std::shared_ptr<base::Settings> settings = std::make_shared<base::Settings>();
  std::shared_ptr<const base::Clock> clock = std::make_shared<base::SystemClock>();
  std::shared_ptr<account::KeyCache> keys = std::make_shared<account::KeyCache>(
      std::make_shared<account::KeychainStore>(std::make_shared<platform::MemoryKeyBackend>()));
  account::AccountStore store{{std::make_shared<SampleGateway>(), clock, settings, keys, u"workstation"_s}};
  account::BillingState billing{{settings, clock, {}, {}}};
  account::ProviderSettings provider{keys};
  AccountPresenter account{{store, billing, provider, *settings, clock, [](const QUrl&) { return true; }}};
  SettingsPresenter settingsPresenter{provider, *settings};

  Presenters presenters() {
    Presenters all;
    all.account = &account;
    all.settings = &settingsPresenter;
    return all;
  }
};

}  // namespace

void saveAccount(const std::function<void(QWidget&, const QString&)>& save) {
  SampleAccount sample;
  SettingsDialog window(sample.presenters());
  window.setAttribute(Qt::WA_DeleteOnClose, false);
  window.showPage(SettingsPage::account);
  save(window, u"settings-account-signed-out"_s);
  sample.account.sendLink(u"mira@northlight.studio"_s);
  save(window, u"settings-account-link-sent"_s);
  sample.account.signIn(u"sorvan://auth?code=1"_s);
  save(window, u"settings-account"_s);
  window.showPage(SettingsPage::key);
  sample.provider.save(u"sample"_s);
  save(window, u"settings-key"_s);
  window.showPage(SettingsPage::appearance);
  save(window, u"settings-appearance"_s);
  MenuStrip strip;
  strip.resize(1440, strip.height());
  strip.setBalance(sample.account.badge());
  strip.setActivity(u"1 generating"_s);
  save(strip, u"menu-strip"_s);
}

}  // namespace sorvan::views
