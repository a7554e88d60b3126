#include "account/account_info.h"

#include <algorithm>

#include <QLocale>
#include <QUrl>
#include <QUrlQuery>

#include "account/account_texts.h"
#include "catalogue/credits_operation.h"

namespace sorvan::account {

using namespace Qt::StringLiterals;

bool AccountInfo::hasFeature(const QString& feature) const {
  return std::find(features.begin(), features.end(), feature) != features.end();
}

QString signInCode(const QString& link) {
  constexpr qsizetype longest = 4096;
  const QString text = link.trimmed();
  const QUrl url(text, QUrl::StrictMode);
  const QString code =
      text.size() <= longest ? QUrlQuery(url).queryItemValue(u"code"_s, QUrl::FullyDecoded).trimmed() : QString();
  if (!url.isValid() || url.scheme() != u"sorvan"_s || code.isEmpty()) throw SorvanError(texts::notASignInLink());
  return code;
}

std::optional<QString> arrivalText(std::int64_t microcredits) {
  if (microcredits < microcreditsOfCredit) return std::nullopt;
  const QString whole = QLocale().toString(static_cast<qlonglong>(microcredits / microcreditsOfCredit));
  return microcredits == microcreditsOfCredit ? texts::creditAdded(whole) : texts::creditsAdded(whole);
}

}  // namespace sorvan::account
