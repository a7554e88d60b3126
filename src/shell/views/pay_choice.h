// One of the two ways to pay, as it is offered.
#pragma once

#include "core/billing.h"
#include "shell/pay_with_display.h"
#include "shell/views/room.h"

class QRadioButton;
class QVBoxLayout;

namespace sorvan::views {

class Paragraph;

// The widgets belong to the column's parent. Both ways stand side by side in one column, so that the arrow keys go from
// one to the other.
struct PayChoice {
  core::PayWith payer = core::PayWith::credits;
  QRadioButton* button = nullptr;
  Paragraph* help = nullptr;

  void show(const PayChoicesDisplay& display) const;
};

PayChoice addPayChoice(QVBoxLayout& column, core::PayWith payer);

}  // namespace sorvan::views
