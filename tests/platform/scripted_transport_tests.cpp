#include "support/scripted_transport.h"

#include <gtest/gtest.h>

#include "support/run_task.h"
#include "support/temporary_folder.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;
using namespace sorvan::platform;

static HttpRequest request(const QByteArray& verb, const char* url) {
  HttpRequest asked;
  asked.verb = verb;
  asked.url = QUrl(QString::fromLatin1(url));
  return asked;
}

TEST(ScriptedTransport, AnswersStepByStepAndRecords) {
  ScriptedTransport transport;
  transport.on("GET", QStringLiteral("/status")).answersJson(QJsonObject{{QStringLiteral("n"), 1}}).answers(500);
  EXPECT_EQ(runTask(transport.send(request("GET", "https://a/status"), {})).body, "{\"n\":1}");
  EXPECT_EQ(runTask(transport.send(request("GET", "https://a/status"), {})).status, 500);
  EXPECT_THROW(runTask(transport.send(request("GET", "https://a/status"), {})), HttpError);
  EXPECT_EQ(transport.unexpected, QStringList{QStringLiteral("GET https://a/status")});
  EXPECT_EQ(transport.requests(QStringLiteral("status")).size(), 3u);
}

TEST(ScriptedTransport, RepeatsTheLastStepWhenTold) {
  ScriptedTransport transport;
  transport.on("GET", QStringLiteral("a")).answers(201).answers(202).repeating();
  for (const int status : {201, 202, 202, 202})
    EXPECT_EQ(runTask(transport.send(request("GET", "https://a/"), {})).status, status);
}

TEST(ScriptedTransport, PostsEndWithTheFateOfTheirStatusOrTheScripted) {
  ScriptedTransport transport;
  transport.on("POST", QStringLiteral("a")).answers(422).fails(HttpProblem::CannotConnect).ends(PostFate::Unknown);
  EXPECT_EQ(runTask(transport.postOnce(request("POST", "https://a/"), {})).fate, PostFate::NotSent);
  EXPECT_EQ(runTask(transport.postOnce(request("POST", "https://a/"), {})).fate, PostFate::NotSent);
  EXPECT_EQ(runTask(transport.postOnce(request("POST", "https://a/"), {})).fate, PostFate::Unknown);
  EXPECT_EQ(transport.posts(), 3);
}

TEST(ScriptedTransport, HoldsAnAnswerUntilItsGateOpensAndShieldsPosts) {
  ScriptedTransport transport;
  const Completion gate;
  transport.on("POST", QStringLiteral("a")).answers(200).after(gate);
  std::stop_source stop;
  auto task = transport.postOnce(request("POST", "https://a/"), stop.get_token());
  stop.request_stop();
  runPosted();
  EXPECT_FALSE(task.isReady());
  gate.finish();
  EXPECT_EQ(runTask(std::move(task)).fate, PostFate::Answered);
}

TEST(ScriptedTransport, ACallThatWaitsIsCancelled) {
  ScriptedTransport transport;
  transport.on("GET", QStringLiteral("a")).answers(200).after(Completion());
  std::stop_source stop;
  auto task = transport.send(request("GET", "https://a/"), stop.get_token());
  runPosted();
  stop.request_stop();
  EXPECT_THROW(runTask(std::move(task)), Cancelled);
}

TEST(ScriptedTransport, DownloadsWriteTheFileOnlyOnSuccess) {
  const TemporaryFolder folder;
  ScriptedTransport transport;
  transport.on("GET", QStringLiteral("a")).answers(404, "no").answers(200, "media");
  const QString path = folder / QStringLiteral("f");
  EXPECT_EQ(runTask(transport.download(request("GET", "https://a/"), path, {})).body, "no");
  EXPECT_EQ(folder.files(), QStringList());
  EXPECT_EQ(runTask(transport.download(request("GET", "https://a/"), path, {})).body, "");
  EXPECT_EQ(folder.read(QStringLiteral("f")), "media");
}

}  // namespace sorvan::test
