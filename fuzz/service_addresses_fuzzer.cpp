// Addresses from outside: which of them the user's key may be sent to, and those built from a model's id.
#include <QRegularExpression>

#include "catalogue/provider_http.h"
#include "catalogue/service_hosts.h"
#include "fuzz/reading.h"

namespace sorvan::fuzz {

using namespace Qt::StringLiterals;

/// The rule told once more, on the bytes that go out and without asking the address for its parts.
static bool isOnTheList(const QUrl& url) {
  static const QRegularExpression allowed(
      u"\\Ahttps://(queue\\.fal\\.run|rest\\.fal\\.ai|api\\.fal\\.ai)\\.?(:443|:)?([/?#]|\\z)"_s);
  return allowed.match(QString::fromUtf8(url.toEncoded())).hasMatch();
}

static void follow(const QUrl& url) {
  const bool takesKey = catalogue::mayReceiveKey(url);
  require(!takesKey || isOnTheList(url), "the key goes to a host on the list, and to no other");
  require(!takesKey || catalogue::isHostOfFal(url), "who may receive the key may also refuse it");
  require(catalogue::mayReceiveKey(QUrl(QString::fromUtf8(url.toEncoded()))) == takesKey,
          "an address that is written and read again is judged the same");
  const auto request = readOrRefused([&] { return catalogue::keyedRequest("GET", url, u"planted-key"_s); });
  require(request.has_value() == takesKey, "no request with the key is made for any other address");
}

static void followBuilt(const QString& endpoint) {
  const QString id = u"0af3"_s;
  for (const QUrl& url : {catalogue::submitAddress(endpoint), catalogue::resultAddress(endpoint, id),
                          catalogue::statusAddress(endpoint, id), catalogue::cancelAddress(endpoint, id)}) {
    follow(url);
    require(!url.isValid() || url.host() == u"queue.fal.run"_s,
            "whatever a model is called, its address is the queue's");
  }
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan;
  const QString text = fuzz::Input(data, size).text();
  const QUrl strict = catalogue::httpsAddress(text);
  fuzz::require(strict.isEmpty() || catalogue::isPlainHttps(strict), "an https address is one");
  fuzz::follow(strict);
  fuzz::follow(QUrl(text));
  fuzz::followBuilt(text);
  return 0;
}
