#include "catalogue/credits_operation.h"

#include <QLocale>

#include "catalogue/texts.h"

namespace sorvan::catalogue {

QString creditsDisplay(std::int64_t microcredits) {
  const QLocale locale;
  const double credits = static_cast<double>(microcredits) / static_cast<double>(microcreditsOfCredit);
  QString text = locale.toString(credits, 'f', 2);
  while (text.endsWith(locale.zeroDigit())) text.chop(locale.zeroDigit().size());
  if (text.endsWith(locale.decimalPoint())) text.chop(locale.decimalPoint().size());
  return text == locale.negativeSign() + locale.zeroDigit() ? locale.zeroDigit() : text;
}

QString creditsCounted(std::int64_t microcredits) { return texts::credits(creditsDisplay(microcredits)); }

}  // namespace sorvan::catalogue
