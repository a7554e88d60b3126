// Paying on the sandbox's page, in a real browser where one can be started.
#pragma once

#include <QString>

#include "tour/tourist.h"

namespace tour {

// Lets the pages that the program opens come to a list instead of a browser; the page to pay on under the address at
// which a browser reaches it. Call it before the program is started.
class PagesOpened {
 public:
  explicit PagesOpened(Tourist& person);
  // Waits for the next page, and answers its address.
  QString next();

 private:
  qsizetype seen_ = 0;
  QString list_;
};

// Presses the page's button. Fails the test when the page is not the one to pay on, or does not say that it is paid.
void payOn(const Tourist& person, const QString& page);

// How it was paid, for the last line of the tour; empty when nothing was.
QString howItWasPaid();

}  // namespace tour
