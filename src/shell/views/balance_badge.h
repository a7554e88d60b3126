// How many credits there are, wherever a window shows it.
#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

#include "shell/account_presenter.h"
#include "shell/views/room.h"

namespace sorvan::views {

// A number that rolls up when it grows and jumps when it falls.
class RollingBalance final : public QObject {
  Q_OBJECT

 public:
  explicit RollingBalance(QObject* parent = nullptr);
  // In microcredits. The first one is shown at once.
  void setTarget(double microcredits);
  double shown() const { return shown_; }

 Q_SIGNALS:
  void changed();

 private:
  void take(double microcredits);

  QVariantAnimation roll_;
  double shown_ = 0;
  bool known_ = false;
};

// “1,240 credits” at the right of the menu strip; a press opens the account.
class BalanceBadge final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit BalanceBadge(QWidget* parent = nullptr);
  void show(const BadgeDisplay& display);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  RollingBalance balance_;
};

}  // namespace sorvan::views
