#include "shell/views/settings_dialog.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>

#include "shell/updates_texts.h"
#include "shell/views/account_page.h"
#include "shell/views/appearance_page.h"
#include "shell/views/focus_ring.h"
#include "shell/views/key_page.h"
#include "shell/views/labels.h"
#include "shell/views/plain_scroll_area.h"
#include "shell/views/sidebar_view.h"
#include "shell/views/texts.h"
#include "shell/views/usage_page.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kListWidth = 196;
constexpr QSize kWindow(820, 700);
constexpr QSize kSmallestWindow(640, 420);
constexpr int kFrame = 28;  // the title that most desktops put over a window

QScrollArea* scrolling(QWidget* contents, const QString& name) {
  QScrollArea* area = plainScrollArea(contents);
  area->setAccessibleName(name);
  return area;
}

}  // namespace

SettingsDialog::SettingsDialog(const Presenters& presenters, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowCloseButtonHint), list_(new QVBoxLayout), pages_(new QStackedWidget) {
  setWindowTitle(texts::settingsTitle());
  setAccessibleName(texts::settingsTitle());
  setAttribute(Qt::WA_DeleteOnClose);
  setMinimumSize(kSmallestWindow);
  // On a small screen the pages scroll.
  resize(kWindow.boundedTo(screen()->availableSize() - QSize(0, kFrame)));
  list_->setContentsMargins(10, 18, 10, 10);
  list_->setSpacing(0);
  auto* title = new Label(texts::settingsTitle(), Type::title);
  title->setContentsMargins(8, 0, 8, 12);
  list_->addWidget(title);
  addPages(presenters);
  list_->addStretch(1);
  auto* side = new QWidget;
  side->setLayout(list_);
  side->setFixedWidth(kListWidth);
  auto* whole = new QHBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->setSpacing(0);
  whole->addWidget(side);
  whole->addWidget(pages_, 1);
  new FocusRing(this);
  showPage(entries_.front().page);
}

// The pages in the order of the list.
void SettingsDialog::addPages(const Presenters& presenters) {
  SettingsPresenter& settings = *presenters.settings;
  if (presenters.account)
    addPage(SettingsPage::account, presenters.account->page().title, u"circle-user-round"_s,
            new AccountPage(*presenters.account));
  addPage(SettingsPage::key, settings.keyPage().title, u"key-round"_s, new KeyPage(settings, presenters.account));
  addPage(SettingsPage::appearance, texts::appearanceTitle(), u"sliders-horizontal"_s, new AppearancePage(settings));
  if (presenters.updates)
    addPage(SettingsPage::usage, shell::texts::usageAndUpdates, u"info"_s, new UsagePage(*presenters.updates));
}

void SettingsDialog::addPage(SettingsPage page, const QString& title, const QString& iconName, QWidget* contents) {
  pages_->addWidget(scrolling(contents, title));
  SidebarRow row;
  row.title = title;
  row.iconName = iconName;
  auto* button = new SidebarRowButton(row, nullptr);
  connect(button, &SidebarRowButton::clicked, this, [this, page] { showPage(page); });
  list_->addWidget(button);
  entries_.push_back({page, button});
}

void SettingsDialog::showPage(SettingsPage page) {
  const auto chosen = std::find_if(entries_.begin(), entries_.end(), [page](const Entry& e) { return e.page == page; });
  if (chosen == entries_.end()) return;
  pages_->setCurrentIndex(static_cast<int>(chosen - entries_.begin()));
  for (const Entry& entry : entries_) {
    SidebarRow row = entry.row->row();
    row.current = entry.page == page;
    entry.row->setRow(row);
  }
}

void SettingsDialog::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colors().surfaceDialog);
  painter.fillRect(QRect(0, 0, kListWidth, height()), colors().surfaceChrome);
  painter.fillRect(QRect(kListWidth - 1, 0, 1, height()), colors().lineSubtle);
}

}  // namespace sorvan::views
