// The whole window as the program builds it, over a real library in a temporary folder, with a scripted provider.
#pragma once

#include <memory>

#include "account/account_store.h"
#include "account/billing_state.h"
#include "account/provider_settings.h"
#include "account/update_notice.h"
#include "account/usage_stats.h"
#include "platform/key_store.h"
#include "shell/account_presenter.h"
#include "shell/actions_presenter.h"
#include "shell/costs_presenter.h"
#include "shell/desk.h"
#include "shell/health_presenter.h"
#include "shell/library_saved_references.h"
#include "shell/settings_presenter.h"
#include "shell/updates_presenter.h"
#include "shell/sidebar_presenter.h"
#include "shell/views/composer_dock.h"
#include "shell/views/library_view.h"
#include "shell/views/main_window.h"
#include "shell/views/media_wall.h"
#include "shell/views/prompt_edit.h"
#include "shell/welcome_presenter.h"
#include "shell/window_presenter.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"
#include "views/dressed.h"

namespace sorvan::views {

class WholeWindow : public Dressed {
 protected:
  WholeWindow() {
    window = std::make_unique<MainWindow>(presenters());
    show(*window, {1440, 900});
  }
  ~WholeWindow() override {
    window.reset();
    test::runTask(accountStore.drain());
  }

  Presenters presenters() {
    Presenters all = desk.presenters();
    all.window = &windowPresenter;
    all.welcome = &welcome;
    all.sidebar = &sidebar;
    all.savedReferences = &saved;
    all.costs = &costs;
    all.updates = &updates;
    all.account = &account;
    all.settings = &settings;
    all.health = &health;
    all.actions = actions.get();
    return all;
  }
  MediaWall& wall() { return window->library().wall(); }
  PromptEdit* prompt() { return named<PromptEdit>(*window, QStringLiteral("Prompt")); }
  void type(const QString& text) {
    window->library().dock().focusPrompt();
    QTest::keyClicks(prompt(), text);
    QTest::keyClick(prompt(), Qt::Key_Return);
    test::runPosted();
  }
  template <class Kind>
  Kind* shown() {
    for (Kind* widget : window->findChildren<Kind*>()) {
      if (widget->isVisible()) return widget;
    }
    return nullptr;
  }

  test::Desk desk;
  std::shared_ptr<account::KeyCache> keys = std::make_shared<account::KeyCache>(
      std::make_shared<account::KeychainStore>(std::make_shared<platform::MemoryKeyBackend>()));
  account::ProviderSettings providerSettings{keys};
  // Nobody is signed in, and no page of the service answers until a test says so.
  std::shared_ptr<test::ScriptedTransport> gateway = std::make_shared<test::ScriptedTransport>();
  account::AccountStore accountStore{{gateway, desk.clock, desk.settings, keys, QStringLiteral("studio-box")}};
  account::BillingState billing{{desk.settings, desk.clock, {}, {}}};
  std::vector<QUrl> openedPages;
  AccountPresenter account{{accountStore, billing, providerSettings, *desk.settings, desk.clock, [this](const QUrl& page) {
                              openedPages.push_back(page);
                              return true;
                            }}};
  WindowPresenter windowPresenter{desk.store, desk.state, desk.alerts, QStringLiteral("Sorvan Studio")};
  WelcomePresenter welcome{desk.store, desk.folder / QStringLiteral("Default")};
  SidebarPresenter sidebar{desk.store, desk.state};
  HealthPresenter health{desk.store};
  account::UsageStats usage{{desk.web, desk.clock, desk.settings, QStringLiteral("1"), QStringLiteral("1")}};
  account::UpdateNotice notice{{desk.web, desk.settings, 1}};
  UpdatesPresenter updates{{usage, notice, desk.alerts, QStringLiteral("1"), [](const QUrl&) {}}};
  CostsPresenter costs{{desk.store, desk.state, desk.alerts, desk.ownKey,
                        [this](const QString& model) { return desk.catalog->displayName(model); }}};
  LibrarySavedReferences saved{{desk.store, desk.composing, desk.state, desk.alerts, desk.references,
                                [this](const QString& search, std::size_t most) {
                                  return shell::newestPictures(desk.store, desk.gallery.index(), search, most);
                                }}};
  SettingsPresenter settings{providerSettings, *desk.settings};
  std::unique_ptr<ActionsPresenter> actions = std::make_unique<ActionsPresenter>(ActionsPresenter::Ports{
      desk.store, presenters(), [this] { windowPresenter.requestQuit(); }, [](const QString&) {}, QStringLiteral("0")});
  std::unique_ptr<MainWindow> window;
};

}  // namespace sorvan::views
