#include "shell/views/credits_page.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>

#include "shell/account_page_texts.h"
#include "shell/views/accessible_role.h"
#include "shell/views/card.h"
#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/painting.h"
#include "shell/views/texts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kBarHeight = 8;
constexpr int kBarGap = 2;
constexpr int kPacksInARow = 3;

// The parts of the balance in the colours of the charts: plan, top-ups, and what is held.
QColor chartColor(size_t part) {
  const std::vector<QColor>& chart = colors().chart;
  return chart[std::min(part, chart.size() - 1)];
}

Label* heading(const QString& text) {
  auto* label = new Label(text);
  label->setWeight(Weight::semibold);
  return label;
}

class Swatch final : public QWidget {
 public:
  explicit Swatch(size_t part) : part_(part) { setFixedSize(9, 9); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paintPanel(painter, rect(), 3, chartColor(part_));
  }

 private:
  size_t part_;
};

QWidget* balanceRow(const BalanceRow& part, size_t number) {
  auto* widget = new QWidget;
  widget->setAccessibleName(part.name + u", "_s + part.amount);
  giveRole(*widget, QAccessible::ListItem);
  auto* row = new QHBoxLayout(widget);
  row->setContentsMargins(0, 3, 0, 3);
  row->setSpacing(8);
  row->addWidget(new Swatch(number), 0, Qt::AlignVCenter);
  row->addWidget(new Label(part.name, Type::small), 1);
  row->addWidget(new Label(part.amount, Type::mono));
  return widget;
}

}  // namespace

// The shares of the balance side by side. What it says stands in the rows below it.
class BalanceBar final : public QWidget {
 public:
  BalanceBar() { setFixedHeight(kBarHeight); }
  void setRows(const std::vector<BalanceRow>& rows) {
    rows_ = rows;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    double sum = 0;
    for (const BalanceRow& row : rows_) sum += static_cast<double>(std::max<std::int64_t>(0, row.microcredits));
    const double radius = height() / 2.0;
    if (sum <= 0) return paintPanel(painter, rect(), radius, colors().controlTrack);
    QPainterPath shape;
    shape.addRoundedRect(rect(), radius, radius);
    painter.setClipPath(shape);
    double left = 0;
    for (size_t part = 0; part < rows_.size(); ++part) {
      const double share = static_cast<double>(std::max<std::int64_t>(0, rows_[part].microcredits)) / sum;
      if (share <= 0) continue;
      const double right = left + share * width();
      const double gap = right >= width() - 0.5 ? 0 : kBarGap;
      painter.fillRect(QRectF(left, 0, std::max(1.0, right - left - gap), height()), chartColor(part));
      left = right;
    }
  }

 private:
  std::vector<BalanceRow> rows_;
};

// ---- BalanceCard

BalanceCard::BalanceCard(QWidget* parent)
    : QWidget(parent),
      figure_(new Label({}, Type::display)),
      unit_(new Label(shell::texts::credits(), Type::body, &Colors::textSecondary)),
      plan_(new Label({}, Type::small, &Colors::textTertiary)),
      bar_(new BalanceBar),
      rows_(new QVBoxLayout),
      foot_(new Paragraph({}, Type::small, &Colors::textTertiary)) {
  auto* outside = new QVBoxLayout(this);
  outside->setContentsMargins(0, 0, 0, 0);
  auto* card = new Card;
  outside->addWidget(card);
  auto* column = new QVBoxLayout(card);
  column->setContentsMargins(18, 16, 18, 16);
  column->setSpacing(0);
  auto* head = new QHBoxLayout;
  head->setSpacing(8);
  head->addWidget(figure_, 0, Qt::AlignBottom);
  unit_->setContentsMargins(0, 0, 0, 6);
  head->addWidget(unit_, 0, Qt::AlignBottom);
  head->addStretch(1);
  plan_->setContentsMargins(0, 0, 0, 6);
  head->addWidget(plan_, 0, Qt::AlignBottom);
  column->addLayout(head);
  column->addSpacing(10);
  column->addWidget(bar_);
  column->addSpacing(8);
  rows_->setSpacing(0);
  column->addLayout(rows_);
  column->addSpacing(8);
  column->addWidget(foot_);
  connect(&rolling_, &RollingBalance::changed, this,
          [this] { figure_->setText(AccountPresenter::balanceText(rolling_.shown())); });
  figure_->setText(AccountPresenter::balanceText(0));
}

void BalanceCard::show(const BalanceDisplay& balance) {
  rolling_.setTarget(static_cast<double>(balance.microcredits));
  figure_->setAccessibleName(AccountPresenter::creditsText(static_cast<double>(balance.microcredits)));
  plan_->setText(balance.plan);
  bar_->setRows(balance.rows);
  foot_->setParagraph(balance.foot);
  if (balance.rows != shown_) showRows(balance.rows);
}

void BalanceCard::showRows(const std::vector<BalanceRow>& rows) {
  shown_ = rows;
  clearLayout(*rows_);
  for (size_t number = 0; number < rows.size(); ++number) rows_->addWidget(balanceRow(rows[number], number));
}

// ---- CreditOffers

CreditOffers::CreditOffers(AccountPresenter& account, QWidget* parent)
    : QWidget(parent),
      account_(account),
      purchase_(purchaseRow()),
      offers_(new QVBoxLayout),
      noPacks_(new Paragraph({}, Type::small, &Colors::textSecondary)),
      note_(new Paragraph({}, Type::small, &Colors::textTertiary)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 16, 0, 0);
  column->setSpacing(8);
  column->addWidget(heading(shell::texts::buyCreditsTitle()));
  column->addWidget(purchase_);
  column->addWidget(noPacks_);
  offers_->setSpacing(8);
  column->addLayout(offers_);
  column->addWidget(note_);
}

QWidget* CreditOffers::purchaseRow() {
  waiting_ = new Label({}, Type::small, &Colors::textSecondary);
  openAgain_ = new Button({});
  openAgain_->setControlSize(ControlSize::compact);
  newCheckout_ = new Button({}, ButtonVariant::quiet);
  newCheckout_->setControlSize(ControlSize::compact);
  stop_ = new Button({}, ButtonVariant::quiet);
  stop_->setControlSize(ControlSize::compact);
  hint_ = new Paragraph({}, Type::small, &Colors::textTertiary);
  connect(openAgain_, &Button::clicked, &account_, &AccountPresenter::openCheckoutAgain);
  connect(newCheckout_, &Button::clicked, &account_, &AccountPresenter::startNewCheckout);
  connect(stop_, &Button::clicked, &account_, &AccountPresenter::stopWaiting);
  auto* card = new Card;
  auto* column = new QVBoxLayout(card);
  column->setContentsMargins(12, 8, 12, 8);
  column->setSpacing(4);
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  row->addWidget(new Spinner(14));
  row->addWidget(waiting_, 1);
  row->addWidget(openAgain_);
  row->addWidget(newCheckout_);
  column->addLayout(row);
  auto* below = new QHBoxLayout;
  below->setSpacing(8);
  below->addWidget(hint_, 1);
  below->addWidget(stop_, 0, Qt::AlignRight);
  column->addLayout(below);
  return card;
}

void CreditOffers::show(const AccountPageDisplay& page) {
  showPurchase(page);
  noPacks_->setParagraph(page.noPacks);
  noPacks_->setVisible(!page.noPacks.isEmpty());
  note_->setParagraph(page.offersNote);
  std::vector<OfferDisplay> offers = page.packs;
  offers.insert(offers.end(), page.plans.begin(), page.plans.end());
  if (offers == shown_) return;
  shown_ = std::move(offers);
  rebuildKeepingFocus(*this, [this, &page] { showOffers(page); });
}

void CreditOffers::showPurchase(const AccountPageDisplay& page) {
  const PurchaseDisplay& purchase = page.purchase;
  purchase_->setVisible(!purchase.waiting.isEmpty());
  waiting_->setText(purchase.waiting);
  openAgain_->setText(purchase.openAgain);
  openAgain_->setVisible(!purchase.openAgain.isEmpty());
  newCheckout_->setText(purchase.newCheckout);
  newCheckout_->setVisible(!purchase.newCheckout.isEmpty());
  stop_->setText(purchase.stop);
  stop_->setToolTip(purchase.stopHelp);
  stop_->setAccessibleDescription(purchase.stopHelp);
  hint_->setParagraph(purchase.newCheckoutHint);
  hint_->setVisible(!purchase.newCheckoutHint.isEmpty());
}

void CreditOffers::showOffers(const AccountPageDisplay& page) {
  clearLayout(*offers_);
  auto* grid = new QGridLayout;
  grid->setSpacing(8);
  for (int column = 0; column < kPacksInARow; ++column) grid->setColumnStretch(column, 1);
  int place = 0;
  for (const OfferDisplay& pack : page.packs) {
    grid->addWidget(packCard(pack), place / kPacksInARow, place % kPacksInARow);
    ++place;
  }
  offers_->addLayout(grid);
  if (page.plans.empty()) return;
  offers_->addSpacing(6);
  offers_->addWidget(heading(shell::texts::plansTitle()));
  for (const OfferDisplay& plan : page.plans) {
    offers_->addWidget(planRow(plan));
    offers_->addWidget(new Hairline);
  }
}

Button* CreditOffers::buyButton(const OfferDisplay& offer) {
  auto* button = new Button(offer.button);
  button->setControlSize(ControlSize::compact);
  button->setAccessibleName(offer.buttonName);
  connect(button, &Button::clicked, &account_,
          [&account = account_, kind = offer.kind, id = offer.id] { account.buy(kind, id); });
  return button;
}

QWidget* CreditOffers::packCard(const OfferDisplay& offer) {
  auto* card = new Card(&Colors::controlFill, &Colors::controlBorder);
  auto* column = new QVBoxLayout(card);
  column->setContentsMargins(14, 12, 14, 12);
  column->setSpacing(8);
  auto* first = new QHBoxLayout;
  first->setSpacing(6);
  first->addWidget(new Label(offer.amount, Type::title));
  first->addWidget(new Label(shell::texts::credits(), Type::small, &Colors::textSecondary));
  first->addStretch(1);
  column->addLayout(first);
  auto* second = new QHBoxLayout;
  second->addWidget(new Label(offer.price, Type::body, &Colors::textSecondary), 1);
  second->addWidget(buyButton(offer));
  column->addLayout(second);
  return card;
}

QWidget* CreditOffers::planRow(const OfferDisplay& offer) {
  auto* widget = new QWidget;
  auto* row = new QHBoxLayout(widget);
  row->setContentsMargins(0, 4, 0, 4);
  row->setSpacing(12);
  auto* name = new Label(offer.title);
  name->setWeight(Weight::medium);
  row->addWidget(name);
  row->addWidget(new Label(offer.note, Type::small, &Colors::textTertiary), 1);
  row->addWidget(new Label(offer.price, Type::body, &Colors::textSecondary));
  if (!offer.button.isEmpty()) row->addWidget(buyButton(offer));
  return widget;
}

// ---- CreditsPage

CreditsPage::CreditsPage(AccountPresenter& account, QWidget* parent)
    : QWidget(parent),
      arrived_(new NoticeSlot),
      balance_(new BalanceCard),
      unreachable_(new Paragraph({}, Type::small, &Colors::textSecondary)),
      review_(new NoticeSlot),
      limit_(new NoticeSlot),
      offers_(new CreditOffers(account)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 16, 0, 0);
  column->setSpacing(0);
  for (QWidget* part : std::initializer_list<QWidget*>{balance_, unreachable_, arrived_, review_, limit_, offers_})
    column->addWidget(part);
  connect(arrived_, &NoticeSlot::pressed, &account, &AccountPresenter::forgetArrival);
  connect(review_, &NoticeSlot::pressed, &account, &AccountPresenter::writeToSupport);
}

void CreditsPage::show(const AccountPageDisplay& page) {
  balance_->setVisible(page.balance.has_value());
  if (page.balance) balance_->show(*page.balance);
  unreachable_->setParagraph(page.unreachable);
  unreachable_->setVisible(!page.unreachable.isEmpty());
  arrived_->show(AlertTone::success, page.purchase.arrived, texts::dismiss());
  review_->show(AlertTone::warning, page.reviewBefore + page.supportAddress + page.reviewAfter, page.supportAddress);
  limit_->show(AlertTone::information, page.spendLimit);
  offers_->show(page);
}

}  // namespace sorvan::views
