#include "catalogue/provider_http.h"

#include <gtest/gtest.h>

#include "catalogue/service_hosts.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;
using test::ScriptedTransport;

QString detail(int status, const QByteArray& body) {
  HttpReply reply;
  reply.status = status;
  reply.body = body;
  return refusalDetail(reply);
}

TEST(RefusalDetail, TakesTheFirstThatStands) {
  EXPECT_EQ(detail(400, R"({"error":{"message":"M"},"detail":"D"})"), u"M"_s);
  EXPECT_EQ(detail(400, R"({"detail":"D","error":"E"})"), u"D"_s);
  EXPECT_EQ(detail(400, R"({"error":"E"})"), u"E"_s);
  EXPECT_EQ(detail(404, "{}"), u"Not Found"_s);
  EXPECT_EQ(detail(502, "<html>nginx</html>"), u"Bad Gateway"_s);
}

TEST(RefusalDetail, NamesTheRefusedFields) {
  EXPECT_EQ(detail(422, R"({"detail":[{"loc":["body","prompt"],"msg":"Field required"},
                                       {"loc":["body"],"msg":"Too big"},
                                       {"loc":["body","loras",0,"path"],"msg":"Bad"}]})"),
            u"prompt: Field required. Too big. path: Bad."_s);
}

TEST(RefusalDetail, LeavesOneErrorAsTheServiceWordsIt) {
  EXPECT_EQ(detail(422, R"({"detail":[{"loc":["body","seed"],"msg":"Input should be a valid integer"}]})"),
            u"seed: Input should be a valid integer"_s);
  EXPECT_EQ(detail(422, R"({"detail":[{"loc":["body"],"msg":"Too long!"},{"loc":["body"],"msg":"Too wide."}]})"),
            u"Too long! Too wide."_s);
}

TEST(RefusalDetail, NamesAtMostFiveFields) {
  QByteArray errors;
  for (int index = 0; index < 9; ++index) errors += R"({"loc":["body"],"msg":"m"},)";
  errors.chop(1);
  EXPECT_EQ(detail(422, "{\"detail\":[" + errors + "]}"), u"m. m. m. m. m."_s);
}

TEST(RefusalDetail, CutsAnEndlessText) {
  EXPECT_LE(detail(400, "{\"detail\":\"" + QByteArray(1000000, 'x') + "\"}").size(), 2000);
}

TEST(RefusalMessage, NamesTheKeyAndTheWayOutForAHostOfFal) {
  HttpReply reply;
  reply.status = 403;
  reply.body = R"({"detail":"User is locked."})";
  const QString refused =
      u"fal.ai refused your key for this request (403: User is locked.). Check that the key is still valid, that it "
      u"may use this model, and that your fal.ai balance is not empty. Or switch the payment method to Sorvan Credits."_s;
  EXPECT_EQ(refusalMessage(reply, QUrl(u"https://rest.fal.ai/storage"_s)), refused);
  EXPECT_EQ(refusalMessage(reply, QUrl(u"https://v3.fal.media/files"_s)), u"Provider error 403: User is locked."_s);
  reply.status = 402;
  EXPECT_EQ(refusalMessage(reply, QUrl(u"https://rest.fal.ai/storage"_s)), u"Provider error 402: User is locked."_s);
}

TEST(SendChecked, TreatsARedirectAsARefusal) {
  const auto transport = std::make_shared<ScriptedTransport>();
  transport->on("GET", u"queue.fal.run"_s).answers(302, {}, {{"Location", "https://evil.example/"}});
  const HttpRequest request = keyedRequest("GET", statusAddress(u"a/b"_s, u"R"_s), u"secret"_s);
  try {
    runTask(sendChecked(transport, request, {}));
    FAIL() << "nothing was thrown";
  } catch (const ProviderRefusal& refusal) {
    EXPECT_EQ(refusal.message(), u"Provider error 302: Found"_s);
  }
  EXPECT_EQ(transport->recorded.size(), 1u);
}

TEST(SendChecked, RefusesWhatIsNoHttp) {
  const auto transport = std::make_shared<ScriptedTransport>();
  transport->on("GET", u"queue.fal.run"_s).answers(0);
  const HttpRequest request = keyedRequest("GET", statusAddress(u"a/b"_s, u"R"_s), u"secret"_s);
  try {
    runTask(sendChecked(transport, request, {}));
    FAIL() << "nothing was thrown";
  } catch (const SorvanError& error) {
    EXPECT_EQ(error.message(), u"Invalid server response."_s);
  }
}

TEST(KeyedRequest, IsNeverMadeForAForeignHost) {
  EXPECT_THROW(keyedRequest("GET", QUrl(u"https://evil.example/x"_s), u"secret"_s), SorvanError);
  const HttpRequest request = keyedRequest("GET", statusAddress(u"a/b"_s, u"R"_s), u"id:word"_s);
  ASSERT_EQ(request.headers.size(), 1u);
  EXPECT_EQ(request.headers[0], (HttpHeader{"Authorization", "Key id:word"}));
}

}  // namespace
}  // namespace sorvan::catalogue
