#include "shell/views/usage_page.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "account/account_texts.h"
#include "shell/updates_presenter.h"
#include "shell/updates_texts.h"
#include "shell/views/controls.h"
#include "shell/views/labels.h"
#include "shell/views/settings_column.h"

namespace sorvan::views {

namespace {
constexpr int kReportHeight = 190;
}

UsagePage::UsagePage(UpdatesPresenter& updates, QWidget* parent) : QWidget(parent), updates_(updates) {
  QVBoxLayout* column = settingsColumn(*this, shell::texts::usageAndUpdates);
  column->addSpacing(18);
  column->addWidget(makeUpdates());
  column->addSpacing(18);
  column->addWidget(new Hairline);
  column->addSpacing(18);
  column->addWidget(makeUsage());
  column->addStretch(1);
  connect(&updates_, &UpdatesPresenter::changed, this, &UsagePage::refresh);
  refresh();
}

QWidget* UsagePage::makeUpdates() {
  auto* part = new QWidget;
  auto* column = new QVBoxLayout(part);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(8);
  auto* title = new Label(shell::texts::updatesTitle, Type::body);
  title->setWeight(Weight::semibold);
  version_ = new Label({}, Type::body, &Colors::textSecondary);
  check_ = new Button(shell::texts::updatesCheck);
  state_ = new Paragraph({}, Type::small, &Colors::textSecondary);
  download_ = new Button(account::texts::download(), ButtonVariant::primary);
  auto* row = new QHBoxLayout;
  row->addWidget(version_, 1);
  row->addWidget(download_);
  row->addWidget(check_);
  column->addWidget(title);
  column->addLayout(row);
  column->addWidget(state_);
  connect(check_, &Button::clicked, &updates_, &UpdatesPresenter::check);
  connect(download_, &Button::clicked, &updates_, &UpdatesPresenter::download);
  return part;
}

QWidget* UsagePage::makeUsage() {
  auto* part = new QWidget;
  auto* column = new QVBoxLayout(part);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(8);
  auto* title = new Label(shell::texts::usageTitle, Type::body);
  title->setWeight(Weight::semibold);
  sharing_ = new Switch(shell::texts::usageShare);
  heading_ = new Label({}, Type::caption, &Colors::textTertiary);
  report_ = new QPlainTextEdit;
  report_->setAccessibleName(shell::texts::usageNextReport);
  report_->setReadOnly(true);
  report_->setTabChangesFocus(true);
  report_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  report_->setFont(fontFor(Type::mono));
  report_->setFixedHeight(kReportHeight);
  auto* row = new QHBoxLayout;
  row->addWidget(new Label(shell::texts::usageShare), 1);
  row->addWidget(sharing_);
  column->addWidget(title);
  column->addLayout(row);
  column->addWidget(new Paragraph(shell::texts::usageExplanation, Type::small, &Colors::textTertiary));
  column->addSpacing(6);
  column->addWidget(heading_);
  column->addWidget(report_);
  connect(sharing_, &Switch::clicked, &updates_, &UpdatesPresenter::setSharing);
  return part;
}

// The counts may have grown while the page was away.
void UsagePage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  refresh();
}

void UsagePage::refresh() {
  const UpdatesDisplay updates = updates_.updates();
  version_->setText(updates.version);
  check_->setEnabled(updates.canCheck && !updates.checking);
  state_->setParagraph(updates.state);
  state_->setVisible(!updates.state.isEmpty());
  download_->setVisible(!updates.banner.isEmpty());
  const UsageDisplay usage = updates_.usage();
  sharing_->setChecked(usage.sharing);
  heading_->setText(usage.heading);
  report_->setVisible(!usage.report.isEmpty());
  if (report_->toPlainText() != usage.report) report_->setPlainText(usage.report);
}

}  // namespace sorvan::views
