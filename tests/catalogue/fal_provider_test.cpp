#include "catalogue/fal_provider.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

#include "catalogue/provider_http.h"
#include "catalogue/recorded_run.h"
#include "catalogue/sample_media.h"
#include "support/fake_clock.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::RecordedRun;
using test::runTask;
using test::ScriptedTransport;

const QByteArray acceptance = R"({"request_id":"R-1"})";

class FixedPrice final : public PriceSource {
 public:
  Task<std::optional<ListedPrice>> listedPrice(GenerationRequest, QString, std::stop_token) override {
    co_await yieldToLoop();
    if (fails) throw SorvanError(u"no price"_s);
    co_return price;
  }
  std::optional<ListedPrice> price = ListedPrice{0.08, 0.04, u"image"_s};
  bool fails = false;
};

class FalProviderTest : public testing::Test {
 protected:
  FalProviderTest() { clock->passSleeps(); }

  static GenerationRequest picture() {
    GenerationRequest request;
    request.model = u"fal-ai/flux/schnell"_s;
    request.prompt = u"a cat"_s;
    return request;
  }

  ProviderCall callFor(GenerationRequest request) {
    ProviderCall call;
    call.request = std::move(request);
    call.key = u"secret"_s;
    call.run = run;
    return call;
  }

  ProviderCall resumed(GenerationRequest request) {
    ProviderCall call = callFor(std::move(request));
    call.resume = RemoteHandle{u"R-9"_s, QUrl(u"https://queue.fal.run/fal-ai/flux/requests/R-9/status"_s),
                               QUrl(u"https://queue.fal.run/fal-ai/flux/requests/R-9"_s),
                               QUrl(u"https://queue.fal.run/fal-ai/flux/requests/R-9/cancel"_s)};
    return call;
  }

  FalProvider provider() { return FalProvider({transport, catalog, clock, prices}); }

  std::vector<GeneratedOutput> generate(const ProviderCall& call) {
    return runTask(provider().generateImage(call, stop.get_token()));
  }

  template <class Failure = SorvanError>
  QString failure(const ProviderCall& call) {
    try {
      generate(call);
    } catch (const Failure& failed) {
      return failed.message();
    }
    return u"accepted"_s;
  }

  /// The road of a request whose result is this object.
  void answerWith(const QByteArray& result) {
    transport->on("POST", u"queue.fal.run"_s).answers(200, acceptance);
    transport->on("GET", u"/requests/R"_s).answers(200, result);
    transport->on("GET", u"/status"_s).answers(200, R"({"status":"COMPLETED"})");
  }

  void serve(const QString& part, const QByteArray& bytes) { transport->on("GET", part).answers(200, bytes); }

  std::shared_ptr<ScriptedTransport> transport = std::make_shared<ScriptedTransport>();
  std::shared_ptr<FalCatalog> catalog = std::make_shared<FalCatalog>(std::make_shared<Settings>());
  std::shared_ptr<test::FakeClock> clock = std::make_shared<test::FakeClock>();
  std::shared_ptr<FixedPrice> prices;
  std::shared_ptr<RecordedRun> run = std::make_shared<RecordedRun>();
  std::stop_source stop;
};

TEST_F(FalProviderTest, MakesAPictureFromSubmitToDownload) {
  const QByteArray png = test::samplePng();
  transport->on("POST", u"queue.fal.run/fal-ai/flux/schnell"_s).answers(200, acceptance);
  transport->on("GET", u"/fal-ai/flux/requests/R-1"_s)
      .answers(200, R"({"images":[{"url":"https://v3.fal.media/files/a","content_type":"image/png"}],"seed":42})");
  transport->on("GET", u"/status"_s)
      .answers(202, R"({"status":"IN_QUEUE"})")
      .answers(202, R"({"status":"IN_PROGRESS"})")
      .answers(202, R"({"status":"IN_QUEUE"})")
      .answers(200, R"({"status":"COMPLETED"})");
  serve(u"fal.media"_s, png);

  const auto outputs = generate(callFor(picture()));

  ASSERT_EQ(outputs.size(), 1u);
  EXPECT_EQ(outputs[0].ext, u"png"_s);
  EXPECT_EQ(outputs[0].seed, 42);
  EXPECT_EQ(outputs[0].file, run->partFile(0));
  EXPECT_TRUE(outputs[0].data.isEmpty());
  EXPECT_EQ(run->folder.read(u"0.part"_s), png);
  EXPECT_FALSE(outputs[0].cost);
  EXPECT_EQ(run->events, (QStringList{u"about to submit"_s, u"Waiting for fal.ai"_s, u"Queued at fal.ai"_s,
                                      u"Generating…"_s, u"Queued at fal.ai"_s}));
  EXPECT_EQ(run->handle()->requestID, u"R-1"_s);
  EXPECT_EQ(clock->slept(), (std::vector<std::chrono::milliseconds>(3, std::chrono::seconds(2))));
  EXPECT_EQ(transport->posts(), 1);
  EXPECT_TRUE(transport->unexpected.isEmpty());
}

TEST_F(FalProviderTest, SendsTheKeyToTheServiceOnly) {
  answerWith(R"({"images":[{"url":"https://v3.fal.media/files/a.png"}]})");
  serve(u"fal.media"_s, test::samplePng());
  generate(callFor(picture()));
  for (const auto& call : transport->recorded) {
    const bool carriesKey = !call.request.headers.empty() && call.request.headers[0].first == "Authorization";
    EXPECT_EQ(carriesKey, call.request.url.host() == u"queue.fal.run"_s) << call.request.url.toString().toStdString();
  }
}

TEST_F(FalProviderTest, StoresTheHandleBeforeItAsksForTheState) {
  answerWith(R"({"images":[]})");
  run->cancelAt = u"Waiting for fal.ai"_s;
  EXPECT_THROW(generate(callFor(picture())), Cancelled);
  ASSERT_TRUE(run->handle());
  EXPECT_TRUE(transport->requests(u"/status"_s).empty());
}

TEST_F(FalProviderTest, ReportsTheHandleAlsoWhenTheJobWasCancelledDuringTheSubmission) {
  const Completion gate;
  transport->on("POST", u"queue.fal.run"_s).answers(200, acceptance).after(gate);
  const auto call = callFor(picture());
  const auto task = provider().generateImage(call, stop.get_token());
  test::runUntil([&] { return transport->posts() == 1; });
  stop.request_stop();
  gate.finish();
  test::runUntil([&] { return task.isReady(); });
  ASSERT_TRUE(run->handle());
  EXPECT_EQ(run->handle()->requestID, u"R-1"_s);
  EXPECT_TRUE(transport->requests(u"/status"_s).empty());
}

TEST_F(FalProviderTest, NeverSubmitsWhatItResumes) {
  transport->on("GET", u"/requests/R-9"_s).answers(200, R"({"images":[{"url":"https://v3.fal.media/a.png"}]})");
  transport->on("GET", u"/status"_s).answers(200, R"({"status":"COMPLETED"})");
  serve(u"fal.media"_s, test::samplePng());
  EXPECT_EQ(generate(resumed(picture())).size(), 1u);
  EXPECT_EQ(transport->posts(), 0);
  EXPECT_EQ(run->events.constFirst(), u"Waiting for fal.ai"_s);
  EXPECT_EQ(run->handle()->requestID, u"R-9"_s);
}

TEST_F(FalProviderTest, FetchesTheResultOfAModelThatWasRemoved) {
  transport->on("GET", u"/requests/R-9"_s).answers(200, R"({"images":[{"url":"https://v3.fal.media/a.png"}]})");
  transport->on("GET", u"/status"_s).answers(200, R"({"status":"COMPLETED"})");
  serve(u"fal.media"_s, test::samplePng());
  GenerationRequest request = picture();
  request.model = u"acme/removed"_s;
  request.count = 99;
  const auto outputs = generate(resumed(request));
  ASSERT_EQ(outputs.size(), 1u);
  EXPECT_FALSE(outputs[0].cost);
}

TEST_F(FalProviderTest, KeepsTheKeyFromAForeignHostOfAStoredHandle) {
  ProviderCall call = resumed(picture());
  call.resume->statusURL = QUrl(u"https://evil.example/status"_s);
  EXPECT_EQ(failure(call), u"Unexpected provider job URL."_s);
  EXPECT_TRUE(transport->recorded.empty());
}

TEST_F(FalProviderTest, RefusesBeforeAnythingIsSent) {
  GenerationRequest unknown = picture();
  unknown.model = u"acme/unknown"_s;
  EXPECT_EQ(failure(callFor(unknown)), u"Choose a supported model."_s);
  GenerationRequest many = picture();
  many.count = 5;
  EXPECT_EQ(failure(callFor(many)), u"Choose between 1 and 4 outputs."_s);
  ProviderCall keyless = callFor(picture());
  keyless.key = std::nullopt;
  EXPECT_TRUE(failure(keyless).startsWith(u"Add your fal.ai key under Settings"_s));
  EXPECT_TRUE(transport->recorded.empty());
  EXPECT_TRUE(run->events.isEmpty());
}

TEST_F(FalProviderTest, UploadsReferencesAndSendsTheirAddresses) {
  FalModel clip;
  clip.id = u"acme/clip"_s;
  clip.name = u"Clip"_s;
  clip.output = MediaType::video;
  clip.imageInput = ListInput{u"image_urls"_s, true};
  clip.endImageField = u"end_image_url"_s;
  catalog->add(clip);
  int uploads = 0;
  auto& initiate = transport->on("POST", u"rest.fal.ai/storage/upload/initiate"_s);
  for (int index = 0; index < 3; ++index) {
    initiate.answersBy([&uploads](const HttpRequest&) {
      const QString name = QString::number(++uploads);
      HttpReply reply;
      reply.status = 200;
      reply.body = QJsonDocument(QJsonObject{{u"upload_url"_s, u"https://up.example/"_s + name},
                                             {u"file_url"_s, u"https://v3.fal.media/in"_s + name}})
                       .toJson();
      return reply;
    });
  }
  transport->on("PUT", u"up.example"_s).answers(200).repeating();
  transport->on("POST", u"queue.fal.run"_s).answers(422, R"({"detail":"stop here"})");

  GenerationRequest request = picture();
  request.model = clip.id;
  ProviderCall call = callFor(request);
  std::vector<ReferenceBinding> bindings;
  for (int index = 0; index < 3; ++index) {
    const QUuid id = QUuid::createUuid();
    call.request.referenceIDs.push_back(id);
    ReferenceBinding binding;
    binding.assetID = id;
    binding.label = u"Ref"_s + QString::number(index);
    if (index == 1) binding.role = u"End frame"_s;
    bindings.push_back(binding);
    call.references.push_back(
        {run->folder.write(QString::number(index) + u".png"_s, test::samplePng({10 + index, 8}))});
  }
  call.request.referenceBindings = bindings;
  EXPECT_EQ(failure(call), u"Provider error 422: stop here"_s);

  EXPECT_EQ(run->events.mid(0, 3), (QStringList{u"Uploading reference 1 of 3"_s, u"Uploading reference 2 of 3"_s,
                                                u"Uploading reference 3 of 3"_s}));
  const auto submissions = transport->requests(u"queue.fal.run"_s);
  ASSERT_EQ(submissions.size(), 1u);
  const QJsonObject body = QJsonDocument::fromJson(submissions[0].body).object();
  EXPECT_EQ(body.value(u"image_urls"_s).toArray(),
            (QJsonArray{u"https://v3.fal.media/in1"_s, u"https://v3.fal.media/in3"_s}));
  EXPECT_EQ(body.value(u"end_image_url"_s).toString(), u"https://v3.fal.media/in2"_s);
  for (const HttpRequest& put : transport->requests(u"up.example"_s)) {
    EXPECT_EQ(put.headers, (std::vector<HttpHeader>{{"Content-Type", "image/png"}}));
    EXPECT_TRUE(put.body.startsWith("\x89PNG"));
  }
}

TEST_F(FalProviderTest, LosesNothingWhenAnUploadFails) {
  FalModel edit;
  edit.id = u"acme/edit"_s;
  edit.name = u"Edit"_s;
  edit.imageInput = SingleInput{u"image_url"_s, true};
  catalog->add(edit);
  GenerationRequest request = picture();
  request.model = edit.id;
  request.referenceIDs = {QUuid::createUuid()};
  ProviderCall call = callFor(request);
  call.references = {{run->folder.write(u"a.png"_s, test::samplePng())}};
  auto& initiate = transport->on("POST", u"rest.fal.ai"_s);
  initiate.answers(200, "garbage");
  EXPECT_EQ(failure(call), u"Invalid provider response."_s);
  initiate.answers(200, R"({"upload_url":"http://up.example/1","file_url":"https://v3.fal.media/1"})");
  EXPECT_EQ(failure(call), u"fal.ai did not accept the reference upload."_s);
  initiate.answers(403, R"({"detail":"User is locked."})");
  EXPECT_TRUE(failure(call).startsWith(u"fal.ai refused your key for this request (403: User is locked.)."_s));
  EXPECT_EQ(transport->posts(), 0);
  EXPECT_EQ(run->count(u"about to submit"_s), 0);
}

TEST_F(FalProviderTest, StopsWaitingAfterSixHundredRounds) {
  transport->on("GET", u"/status"_s).answers(202, R"({"status":"IN_PROGRESS"})").repeating();
  EXPECT_EQ(failure(resumed(picture())),
            u"The request is taking longer than expected. Retry will reconnect to the existing fal.ai job."_s);
  EXPECT_EQ(transport->requests(u"/status"_s).size(), 600u);
  EXPECT_EQ(clock->slept().size(), 600u);
}

TEST_F(FalProviderTest, EndsPromptlyWhenItIsStoppedWhilePolling) {
  clock->passSleeps(false);
  transport->on("GET", u"/status"_s).answers(202, R"({"status":"IN_PROGRESS"})").repeating();
  const auto call = resumed(picture());
  const auto task = provider().generateImage(call, stop.get_token());
  test::runUntil([&] { return clock->sleepers() == 1; });
  stop.request_stop();
  test::runUntil([&] { return task.isReady(); });
  EXPECT_EQ(transport->requests(u"/status"_s).size(), 1u);
}

TEST_F(FalProviderTest, NotesTheListPriceBeforeItDownloads) {
  prices = std::make_shared<FixedPrice>();
  answerWith(R"({"images":[{"url":"https://v3.fal.media/a.png"},{"url":"https://v3.fal.media/b.png"}]})");
  transport->on("GET", u"fal.media"_s).answers(200, test::samplePng()).repeating();
  const auto outputs = generate(callFor(picture()));
  ASSERT_EQ(outputs.size(), 2u);
  ASSERT_TRUE(outputs[1].cost);
  EXPECT_DOUBLE_EQ(outputs[1].cost->perImageUSD, 0.04);
  EXPECT_EQ(outputs[1].cost->basis, u"falUnitPrice"_s);
  EXPECT_EQ(outputs[1].cost->note,
            u"Estimated from fal.ai's listed price of $0.04 per image. Your account's actual charge may differ."_s);
  EXPECT_EQ(outputs[1].cost->pricingDate.size(), 10);
  EXPECT_EQ(outputs[1].cost->source, u"https://api.fal.ai/v1/models/pricing"_s);
  ASSERT_TRUE(run->updates.back().charge);
  EXPECT_EQ(run->updates.back().message, u"Provider completed · downloading result"_s);
}

TEST_F(FalProviderTest, KeepsWhatTheServiceSaysItBilled) {
  prices = std::make_shared<FixedPrice>();
  transport->on("POST", u"queue.fal.run"_s).answers(200, acceptance);
  transport->on("GET", u"/requests/R"_s)
      .answers(200, R"({"images":[{"url":"https://v3.fal.media/a.png"}]})", {{"x-fal-billable-units", "3.008"}});
  transport->on("GET", u"/status"_s).answers(200, R"({"status":"COMPLETED"})");
  serve(u"fal.media"_s, test::samplePng());
  const auto outputs = generate(callFor(picture()));
  ASSERT_TRUE(outputs.at(0).cost);
  EXPECT_EQ(outputs[0].cost->responseUsageJSON, u"{\"billable_units\":3.008}"_s);
}

TEST_F(FalProviderTest, TakesAPriceThatFailsAsNone) {
  prices = std::make_shared<FixedPrice>();
  prices->fails = true;
  answerWith(R"({"images":[{"url":"https://v3.fal.media/a.png"}]})");
  serve(u"fal.media"_s, test::samplePng());
  const auto outputs = generate(callFor(picture()));
  ASSERT_EQ(outputs.size(), 1u);
  EXPECT_FALSE(outputs[0].cost);
}

TEST_F(FalProviderTest, LetsTheBytesDecideTheKindOfAnOutput) {
  answerWith(R"({"images":[{"url":"https://v3.fal.media/a.webp","content_type":"image/webp"}]})");
  serve(u"fal.media"_s, test::sampleJpeg());
  EXPECT_EQ(generate(callFor(picture()))[0].ext, u"jpg"_s);
}

class FailedDownload : public FalProviderTest {
 protected:
  void expectRefused(const QByteArray& result) {
    answerWith(result);
    EXPECT_EQ(failure(callFor(picture())),
              u"The completed result could not be downloaded. Retry reconnects to the saved provider request."_s);
    EXPECT_TRUE(run->handle());
    EXPECT_TRUE(run->folder.files().isEmpty());
  }
  const QByteArray onePicture = R"({"images":[{"url":"https://v3.fal.media/a.png","content_type":"image/png"}]})";
};

TEST_F(FailedDownload, KeepsTheHandleWhenTheResultIsGone) {
  transport->on("GET", u"fal.media"_s).answers(404, "gone");
  expectRefused(onePicture);
}

TEST_F(FailedDownload, KeepsTheHandleWhenTheResultIsCutShort) {
  const QByteArray png = test::samplePng({300, 200});
  serve(u"fal.media"_s, png.left(png.size() / 2));
  expectRefused(onePicture);
}

TEST_F(FailedDownload, KeepsTheHandleWhenTheAnnouncedLengthDidNotCome) {
  transport->on("GET", u"fal.media"_s).fails(HttpProblem::Truncated);
  expectRefused(onePicture);
}

TEST_F(FailedDownload, KeepsTheHandleWhenTheResultIsNotTheMediaItClaims) {
  serve(u"fal.media"_s, "<html>We are sorry</html>");
  expectRefused(onePicture);
}

TEST_F(FailedDownload, KeepsTheHandleWhenTheResultIsEmpty) {
  serve(u"fal.media"_s, {});
  expectRefused(onePicture);
}

TEST_F(FailedDownload, KeepsTheHandleWhenASoundIsShorterThanItsResultSays) {
  serve(u"fal.media"_s, test::sampleWav().left(1500));
  expectRefused(R"({"audio":{"url":"https://v3.fal.media/a.wav","content_type":"audio/wav","file_size":900000}})");
}

TEST_F(FalProviderTest, PassesANetworkErrorUpAsItIs) {
  answerWith(R"({"images":[{"url":"https://v3.fal.media/a.png"}]})");
  transport->on("GET", u"fal.media"_s).fails(HttpProblem::CannotConnect, u"Host v3.fal.media not found"_s);
  EXPECT_EQ(failure<HttpError>(callFor(picture())), u"Host v3.fal.media not found"_s);
}

TEST_F(FalProviderTest, ReplacesWhatAnEarlierAttemptLeftBehind) {
  run->folder.write(u"0.part"_s, "half of a picture");
  answerWith(R"({"images":[{"url":"https://v3.fal.media/a.png"}]})");
  serve(u"fal.media"_s, test::samplePng());
  generate(callFor(picture()));
  EXPECT_EQ(run->folder.read(u"0.part"_s), test::samplePng());
}

TEST_F(FalProviderTest, RefusesAnOutputThatIsNotHttps) {
  answerWith(R"({"images":[{"url":"http://v3.fal.media/a.png"}]})");
  EXPECT_EQ(failure(callFor(picture())), u"Invalid output URL."_s);
}

TEST_F(FalProviderTest, NamesThePartsOfASplitSound) {
  answerWith(R"({"vocals":{"url":"https://v3.fal.media/v.wav"},"drums":{"url":"https://v3.fal.media/d.wav"}})");
  transport->on("GET", u"fal.media"_s).answers(200, test::sampleWav()).repeating();
  GenerationRequest request = picture();
  request.model = u"fal-ai/demucs"_s;
  const auto outputs = generate(resumed(request));
  ASSERT_EQ(outputs.size(), 2u);
  EXPECT_EQ(outputs[0].label, u"drums"_s);
  EXPECT_EQ(outputs[1].label, u"vocals"_s);
  EXPECT_EQ(outputs[1].ext, u"wav"_s);
}

TEST_F(FalProviderTest, KeepsAFileThatIsNoMediaForTheUser) {
  answerWith(R"({"images":[{"url":"https://v3.fal.media/a.glb","content_type":"model/gltf-binary"}]})");
  serve(u"fal.media"_s, "glTF" + QByteArray(60, '\2'));
  const auto outputs = generate(callFor(picture()));
  ASSERT_EQ(outputs.size(), 1u);
  EXPECT_EQ(outputs[0].ext, u"glb"_s);
}

TEST_F(FalProviderTest, IgnoresASeedThatIsNoWholeNumberOfSixtyThreeBits) {
  for (const char* seed : {"1.5", "18446744073709551615", "\"7\"", "null"}) {
    answerWith(R"({"images":[{"url":"https://v3.fal.media/a.png"}],"seed":)" + QByteArray(seed) + "}");
    serve(u"fal.media"_s, test::samplePng());
    EXPECT_FALSE(generate(callFor(picture()))[0].seed) << seed;
  }
}

TEST_F(FalProviderTest, CarriesAPromptOfAHundredThousandCharactersOfAnyScript) {
  answerWith(R"({"images":[{"url":"https://v3.fal.media/a.png"}]})");
  serve(u"fal.media"_s, test::samplePng());
  GenerationRequest request = picture();
  request.prompt = QString(99000, u'a') + u"👩‍👩‍👧 שלום مرحبا"_s + QString(980, u'b');
  generate(callFor(request));
  const QJsonObject body = QJsonDocument::fromJson(transport->requests(u"queue.fal.run"_s)[0].body).object();
  EXPECT_EQ(body.value(u"prompt"_s).toString(), request.prompt);
}

TEST_F(FalProviderTest, TellsAJobThatFailedAtTheServiceApart) {
  transport->on("GET", u"/requests/R-9"_s).answers(422, R"({"detail":[{"loc":["body","prompt"],"msg":"Flagged"}]})");
  transport->on("GET", u"/status"_s).answers(200, R"({"status":"COMPLETED"})");
  EXPECT_EQ(failure<RemoteJobFailed>(resumed(picture())), u"Provider error 422: prompt: Flagged"_s);
}

TEST_F(FalProviderTest, SaysWhenTheServiceAnswersGarbage) {
  answerWith("<html>");
  EXPECT_EQ(failure(callFor(picture())), u"Invalid provider response."_s);
}

TEST_F(FalProviderTest, GoesOnWhenTheProviderItselfIsGone) {
  transport->on("GET", u"/requests/R-9"_s).answers(200, R"({"images":[{"url":"https://v3.fal.media/a.png"}]})");
  transport->on("GET", u"/status"_s).answers(200, R"({"status":"COMPLETED"})");
  serve(u"fal.media"_s, test::samplePng());
  auto passing = std::make_unique<FalProvider>(FalServices{transport, catalog, clock, nullptr});
  auto task = passing->generateImage(resumed(picture()), {});
  passing.reset();
  EXPECT_EQ(runTask(std::move(task)).size(), 1u);
}

TEST_F(FalProviderTest, AsksTheServiceToCancel) {
  auto& route = transport->on("PUT", u"/requests/R-9/cancel"_s).answers(200, R"({"status":"OK"})");
  runTask(provider().cancelJob(*resumed(picture()).resume, u"secret"_s, {}));
  EXPECT_EQ(route.calls(), 1);
}

}  // namespace
}  // namespace sorvan::catalogue
