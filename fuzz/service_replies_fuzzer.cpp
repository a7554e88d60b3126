// What the remote service answers to a submission, a question for the state, and a refused request. The first byte
// chooses which, the second the status.
#include <QRegularExpression>

#include "base/text.h"
#include "catalogue/fal_queue.h"
#include "catalogue/service_hosts.h"
#include "fuzz/reading.h"

namespace sorvan::fuzz {

using namespace Qt::StringLiterals;

static void readAcceptance(const QByteArray& body) {
  const auto handle = readOrRefused([&] { return catalogue::handleFrom(body, u"fal-ai/flux/schnell"_s); });
  if (!handle) return;
  static const QRegularExpression plain(u"\\A[A-Za-z0-9_-]{1,128}\\z"_s);
  require(plain.match(handle->requestID).hasMatch(), "a request id can stand in an address as it is");
  for (const QUrl& url : {handle->statusURL, handle->resultURL, handle->cancelURL})
    require(catalogue::mayReceiveKey(url), "a job's addresses are ones that may receive the key");
  const auto kept = core::decodeHandle(core::encodeHandle(*handle));
  require(kept == *handle, "a handle is found again as it was after a restart");
}

static void readState(const QByteArray& body) {
  readOrRefused([&] { return catalogue::jobStateFrom(body); });
}

static void readRefusal(const QByteArray& body, int status) {
  platform::HttpReply reply;
  reply.status = status;
  reply.body = body;
  const QString detail = catalogue::refusalDetail(reply);
  require(!detail.isEmpty() && base::chars(detail) <= 2000, "a refusal is told, and not at any length");
  for (const QUrl& asked : {catalogue::pricingAddress(), QUrl(u"https://elsewhere.example/"_s)})
    require(!catalogue::refusalMessage(reply, asked).isEmpty(), "a refusal has a sentence");
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan::fuzz;
  Input input(data, size);
  const auto kind = input.byte();
  const int status = 100 + 2 * input.byte();
  switch (kind) {
    case 'a':
      readAcceptance(input.rest());
      break;
    case 's':
      readState(input.rest());
      break;
    case 'r':
      readRefusal(input.rest(), status);
      break;
    default:
      break;
  }
  return 0;
}
