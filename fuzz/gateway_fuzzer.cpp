// What the gateway tells: operations, refusals, accounts, prices, pages to pay on, news; and links that are pasted. The
// first byte chooses which.
#include <QJsonDocument>

#include "account/account_info.h"
#include "account/credit_price.h"
#include "account/update_notice.h"
#include "base/json.h"
#include "catalogue/credits_client.h"
#include "catalogue/credits_media.h"
#include "catalogue/gateway_address.h"
#include "catalogue/service_hosts.h"
#include "fuzz/reading.h"

namespace sorvan::fuzz {

using namespace Qt::StringLiterals;

static void readOperation(const QByteArray& body) {
  const auto operation = readOrRefused([&] { return base::decodeJson<catalogue::CreditsOperation>(body); });
  require(!catalogue::gatewayRefusalMessage(body).isEmpty(), "a refusal has a sentence");
  if (!operation) return;
  require(int(operation->isComplete()) + int(operation->isFailed()) + int(operation->isUncertain()) <= 1,
          "an operation ends in one way");
  require(!catalogue::creditsDisplay(operation->charged).isEmpty(), "an amount has a text");
  if (!operation->result || !operation->result->images) return;
  for (const catalogue::CreditsImage& image : *operation->result->images) {
    const QString ext = catalogue::fileExtension(image.url, body, core::MediaType::audio);
    require(!ext.isEmpty() && !ext.contains(u'/') && !ext.contains(u'.'), "an extension is one plain word");
    if (catalogue::isMediaAddress(image.url))
      require(image.url.scheme() == u"https"_s && image.url.userInfo().isEmpty(), "media come from their own host");
  }
}

static void readAccount(const QByteArray& body) {
  const auto told = readOrRefused([&] { return base::decodeJson<account::AccountInfo>(body); });
  readOrRefused([&] { return base::decodeJson<account::CreditPacks>(body); });
  if (!told) return;
  account::arrivalText(told->credits.purchased);
  // Only numbers that are none at all cannot be written.
  const auto written = readOrRefused([&] { return base::encodeJson(*told); });
  if (written) require(base::decodeJson<account::AccountInfo>(*written) == *told, "an account is kept as it was told");
}

static void readPrice(const QByteArray& body) {
  const auto price = account::priceFrom(QJsonDocument::fromJson(body).object());
  if (!price) return;
  require(price->credits >= 0, "no price gives money");
  require(!account::priceLabel(*price).isEmpty(), "a price has a text");
  for (const core::MediaType type : {core::MediaType::image, core::MediaType::video, core::MediaType::audio}) {
    catalogue::FalModel model;
    model.output = type;
    core::GenerationRequest request;
    request.prompt = u"a kite"_s;
    request.count = 4;
    request.options = core::TextByKey{{u"duration"_s, u"8"_s}, {u"quality"_s, u"high"_s}};
    request.referenceIDs = {QUuid(), QUuid()};
    const auto credits = account::estimatedCredits(*price, request, model);
    require(!credits || *credits >= 1, "nothing is promised for nothing");
  }
}

static void readLink(const QString& text) {
  const auto code = readOrRefused([&] { return account::signInCode(text); });
  if (code) require(!code->isEmpty() && text.trimmed().startsWith(u"sorvan:"_s, Qt::CaseInsensitive), "a link is ours");
}

static void readAddress(const QString& text) {
  const auto gateway = readOrRefused([&] { return catalogue::gatewayAddress(text); });
  if (gateway) {
    const bool isLocal = QStringList{u"localhost"_s, u"127.0.0.1"_s, u"::1"_s}.contains(gateway->host());
    require(gateway->scheme() == u"https"_s || isLocal, "the token leaves the machine only encrypted");
    require(gateway->userInfo().isEmpty() && gateway->query().isEmpty(), "a gateway is a host and no more");
    const QUrl joined = catalogue::gatewayURL(*gateway, u"v1/me"_s);
    require(joined.host() == gateway->host() && joined.path() == u"/v1/me"_s, "a path stays at its gateway");
  }
  const QUrl page = catalogue::httpsAddress(text);
  if (!catalogue::isCheckoutAddress(page)) return;
  // An absolute name ends with a point and is the same host.
  const QStringList hosts{u"checkout.sorvan.app"_s, u"checkout.sorvan.app."_s};
  require(page.scheme() == u"https"_s && hosts.contains(page.host()), "a page to pay on is the provider's");
}

static void readRelease(const QByteArray& body) {
  const auto release = readOrRefused([&] { return base::decodeJson<account::AppRelease>(body); });
  if (release && !release->download().isEmpty())
    require(release->download().scheme() == u"https"_s, "a build is downloaded encrypted");
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan::fuzz;
  Input input(data, size);
  switch (input.byte()) {
    case 'o':
      readOperation(input.rest());
      break;
    case 'm':
      readAccount(input.rest());
      break;
    case 'p':
      readPrice(input.rest());
      break;
    case 'l':
      readLink(input.text());
      break;
    case 'a':
      readAddress(input.text());
      break;
    case 'u':
      readRelease(input.rest());
      break;
    default:
      break;
  }
  return 0;
}
