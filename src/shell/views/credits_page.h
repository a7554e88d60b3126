// The credits of an account: the balance in its parts, what has to be known about it, and what is on sale.
#pragma once

#include <QWidget>

#include "shell/account_presenter.h"
#include "shell/views/balance_badge.h"

class QVBoxLayout;

namespace sorvan::views {

class BalanceBar;
class Button;
class Card;
class Label;
class NoticeSlot;
class Paragraph;

// The balance on a card, with a bar of its parts.
class BalanceCard final : public QWidget {
  Q_OBJECT

 public:
  explicit BalanceCard(QWidget* parent = nullptr);
  void show(const BalanceDisplay& balance);

 private:
  void showRows(const std::vector<BalanceRow>& rows);

  RollingBalance rolling_;
  Label* figure_;
  Label* unit_;
  Label* plan_;
  BalanceBar* bar_;
  QVBoxLayout* rows_;
  Paragraph* foot_;
  std::vector<BalanceRow> shown_;
};

// What can be bought, and the purchase that is under way.
class CreditOffers final : public QWidget {
  Q_OBJECT

 public:
  explicit CreditOffers(AccountPresenter& account, QWidget* parent = nullptr);
  void show(const AccountPageDisplay& page);

 private:
  QWidget* purchaseRow();
  QWidget* packCard(const OfferDisplay& offer);
  QWidget* planRow(const OfferDisplay& offer);
  Button* buyButton(const OfferDisplay& offer);
  void showPurchase(const AccountPageDisplay& page);
  void showOffers(const AccountPageDisplay& page);

  AccountPresenter& account_;
  QWidget* purchase_;
  Label* waiting_;
  Button* openAgain_;
  Button* newCheckout_;
  Button* stop_;
  Paragraph* hint_;
  QVBoxLayout* offers_;
  Paragraph* noPacks_;
  Paragraph* note_;
  std::vector<OfferDisplay> shown_;
};

class CreditsPage final : public QWidget {
  Q_OBJECT

 public:
  explicit CreditsPage(AccountPresenter& account, QWidget* parent = nullptr);
  void show(const AccountPageDisplay& page);

 private:
  NoticeSlot* arrived_;
  BalanceCard* balance_;
  Paragraph* unreachable_;
  NoticeSlot* review_;
  NoticeSlot* limit_;
  CreditOffers* offers_;
};

}  // namespace sorvan::views
