#include "catalogue/credits_provider.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

#include "base/ids.h"
#include "catalogue/credits_media.h"
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

const QString otherAccount =
    u"This request was made with another account. Sign in with that account to fetch its result."_s;

class CreditsProviderTest : public testing::Test {
 protected:
  CreditsProviderTest() {
    clock->passSleeps();
    request.provider = ProviderID::credits;
    request.model = u"fal-ai/flux/schnell"_s;
    request.prompt = u"a cat"_s;
    request.creditRequestID = uuidFromText(u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s);
  }

  CreditsImageProvider provider() {
    CreditsServices services;
    services.transport = transport;
    services.catalog = catalog;
    services.clock = clock;
    services.client = [this](const QString& given) {
      CreditsClient::Access access;
      access.transport = transport;
      access.clock = clock;
      access.gateway = QUrl(gateway);
      access.token = given;
      return CreditsClient(access);
    };
    services.account = [this] { return account; };
    services.isPricedPerSecond = [this](const QString&) { return perSecond; };
    services.creditsChanged = [this] { ++changes; };
    return CreditsImageProvider(services);
  }

  ProviderCall call() {
    ProviderCall made;
    made.request = request;
    made.references = references;
    made.key = token;
    made.knownRequestID = known;
    made.run = run;
    return made;
  }

  std::vector<GeneratedOutput> generate() { return runTask(provider().generateImage(call(), stop.get_token())); }

  template <class Failure = SorvanError>
  QString failure() {
    try {
      generate();
    } catch (const Failure& failed) {
      return failed.message();
    }
    return u"accepted"_s;
  }

  static QByteArray operation(const QString& state, const QJsonArray& images = {}, qint64 charged = 0) {
    QJsonObject told{{u"id"_s, u"op-1"_s}, {u"kind"_s, u"image"_s}, {u"state"_s, state}, {u"reserved"_s, 0},
                     {u"charged"_s, charged}};
    if (!images.isEmpty()) told.insert(u"result"_s, QJsonObject{{u"images"_s, images}, {u"seed"_s, 42}});
    return QJsonDocument(told).toJson(QJsonDocument::Compact);
  }
  static QJsonArray images(int count) {
    QJsonArray all;
    for (int index = 0; index < count; ++index)
      all.append(QJsonObject{{u"url"_s, u"https://v3.fal.media/%1.png"_s.arg(index)}});
    return all;
  }

  void neverSeen() { transport->on("GET", u"v1/requests/6F9619FF"_s).answers(404, R"({"error":"unknown"})"); }
  void seenAs(const QByteArray& told) { transport->on("GET", u"v1/requests/6F9619FF"_s).answers(200, told); }
  void completesWith(int count, qint64 charged = 4'000'000) {
    transport->on("GET", u"v1/operations/op-1"_s)
        .answers(200, operation(u"running"_s))
        .answers(200, operation(u"complete"_s, images(count), charged));
    transport->on("GET", u"fal.media"_s).answers(200, test::samplePng()).repeating();
  }
  void accepts() { transport->on("POST", u"v1/images"_s).answers(200, operation(u"queued"_s)); }
  int posts() const { return transport->posts(u"v1/images"_s); }

  FalModel clipModel() {
    FalModel clip;
    clip.id = u"acme/clip"_s;
    clip.name = u"Clip"_s;
    clip.output = MediaType::video;
    Setting length;
    length.field = u"duration"_s;
    length.values = {u"auto"_s, u"4"_s, u"6"_s, u"10"_s};
    clip.settings = std::vector<Setting>{length};
    catalog->add(clip);
    request.model = clip.id;
    return clip;
  }

  std::shared_ptr<ScriptedTransport> transport = std::make_shared<ScriptedTransport>();
  std::shared_ptr<FalCatalog> catalog = std::make_shared<FalCatalog>(std::make_shared<Settings>());
  std::shared_ptr<test::FakeClock> clock = std::make_shared<test::FakeClock>();
  std::shared_ptr<RecordedRun> run = std::make_shared<RecordedRun>();
  GenerationRequest request;
  std::vector<ReferenceInput> references;
  std::optional<QString> token = u"token"_s;
  std::optional<QString> known;
  std::optional<QString> account = u"ada@example.org"_s;
  QString gateway = u"https://gateway.example"_s;
  bool perSecond = false;
  int changes = 0;
  std::stop_source stop;
};

TEST_F(CreditsProviderTest, BuysOnceAndFetchesWhatWasMade) {
  neverSeen();
  accepts();
  completesWith(2);
  const auto outputs = generate();
  ASSERT_EQ(outputs.size(), 2u);
  EXPECT_EQ(outputs[1].ext, u"png"_s);
  EXPECT_EQ(outputs[0].seed, 42);
  EXPECT_EQ(run->folder.read(u"0.part"_s), test::samplePng());
  ASSERT_TRUE(outputs[0].cost && outputs[0].cost->credits);
  EXPECT_DOUBLE_EQ(*outputs[0].cost->credits, 2);
  EXPECT_DOUBLE_EQ(outputs[0].cost->perImageUSD, 0.02);
  EXPECT_EQ(outputs[0].cost->note, u"Paid with 4 Sorvan Credits."_s);
  EXPECT_EQ(outputs[0].cost->basis, u"sorvanCredits"_s);
  EXPECT_EQ(outputs[0].cost->source, u"Sorvan Credits"_s);
  EXPECT_EQ(run->events,
            (QStringList{u"about to submit"_s, u"Queued with Sorvan Credits"_s, u"Paid · downloading result"_s}));
  EXPECT_EQ(run->updates[0].requestID, u"op-1"_s);
  EXPECT_TRUE(run->updates[1].charge);
  EXPECT_EQ(posts(), 1);
  EXPECT_EQ(changes, 2);
  EXPECT_TRUE(transport->unexpected.isEmpty());
}

TEST_F(CreditsProviderTest, SendsTheSavedIdAsTheKeyAndTheFeatureBesideIt) {
  neverSeen();
  accepts();
  completesWith(1);
  generate();
  const auto bought = transport->requests(u"v1/images"_s);
  ASSERT_EQ(bought.size(), 1u);
  QHash<QByteArray, QByteArray> headers;
  for (const auto& [name, value] : bought[0].headers) headers.insert(name, value);
  EXPECT_EQ(headers.value("Idempotency-Key"), "6F9619FF-8B86-D011-B42D-00C04FC964FF");
  EXPECT_EQ(headers.value("X-Sorvan-Feature"), "text-to-image");
  EXPECT_EQ(headers.value("Authorization"), "Bearer token");
}

TEST_F(CreditsProviderTest, NotesOnTheDiskThroughWhomARequestGoesBeforeItLeaves) {
  neverSeen();
  bool notedBefore = false;
  transport->on("POST", u"v1/images"_s).answersBy([&](const HttpRequest&) {
    notedBefore = run->trace == GatewayTrace{u"https://gateway.example"_s, u"ada@example.org"_s,
                                             u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s};
    HttpReply reply;
    reply.status = 200;
    reply.body = operation(u"queued"_s);
    return reply;
  });
  completesWith(1);
  generate();
  EXPECT_TRUE(notedBefore);
  EXPECT_TRUE(run->trace);
}

TEST_F(CreditsProviderTest, ComesBackToAnOperationWithoutPriceUploadOrPurchase) {
  references = {{run->folder.write(u"gone.png"_s, "no picture")}};
  request.referenceIDs = {QUuid::createUuid()};
  for (const auto& state : {u"queued"_s, u"running"_s, u"complete"_s}) {
    seenAs(operation(state, images(1), 4'000'000));
    if (state != u"complete"_s)
      transport->on("GET", u"v1/operations/op-1"_s).answers(200, operation(u"complete"_s, images(1), 4'000'000));
    transport->on("GET", u"fal.media"_s).answers(200, test::samplePng());
    EXPECT_EQ(generate().size(), 1u) << state.toStdString();
  }
  EXPECT_EQ(posts(), 0);
  EXPECT_TRUE(transport->requests(u"v1/uploads"_s).empty());
  EXPECT_TRUE(transport->requests(u"v1/prices"_s).empty());
  EXPECT_EQ(run->count(u"about to submit"_s), 0);
  EXPECT_TRUE(transport->unexpected.isEmpty());
}

TEST_F(CreditsProviderTest, FetchesTheResultOfAModelThatWasRemovedSince) {
  request.model = u"acme/gone"_s;
  seenAs(operation(u"complete"_s, images(1), 1'000'000));
  transport->on("GET", u"fal.media"_s).answers(200, test::samplePng());
  const auto outputs = generate();
  ASSERT_EQ(outputs.size(), 1u);
  EXPECT_EQ(outputs[0].cost->note, u"Paid with 1 Sorvan Credit."_s);
}

TEST_F(CreditsProviderTest, NeverTakesASilentGatewayForOneThatNeverSawTheRequest) {
  for (const int status : {401, 403, 429, 500, 503}) {
    transport->on("GET", u"v1/requests/"_s).answers(status, R"({"error":"not now"})");
    EXPECT_EQ(failure(), u"not now"_s) << status;
  }
  transport->on("GET", u"v1/requests/"_s).fails(HttpProblem::TimedOut, u"gone quiet"_s);
  EXPECT_EQ(failure(), u"gone quiet"_s);
  EXPECT_EQ(posts(), 0);
}

TEST_F(CreditsProviderTest, FetchesAfterTheNextSignInWhatATokenRevokedMeanwhileWasBuying) {
  neverSeen();
  accepts();
  transport->on("GET", u"v1/operations/op-1"_s).answers(401, R"({"error":"This device was signed out."})");
  EXPECT_EQ(failure<GatewayRefusal>(), u"This device was signed out."_s);
  EXPECT_TRUE(run->trace) << "what was sent stays noted";
  known = u"op-1"_s;
  token = u"next-token"_s;
  seenAs(operation(u"complete"_s, images(1), 4'000'000));
  transport->on("GET", u"fal.media"_s).answers(200, test::samplePng());
  EXPECT_EQ(generate().size(), 1u);
  EXPECT_EQ(posts(), 1);
}

TEST_F(CreditsProviderTest, BuysAFailedRequestAgainUnderTheSameKey) {
  seenAs(operation(u"failed"_s));
  run->trace = GatewayTrace{gateway, *account, u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s};
  known = u"op-0"_s;
  accepts();
  completesWith(1);
  EXPECT_EQ(generate().size(), 1u);
  EXPECT_EQ(posts(), 1);
}

TEST_F(CreditsProviderTest, NeverBuysForAnotherAccountWhatOneWasSentFor) {
  run->trace = GatewayTrace{gateway, u"bob@example.org"_s, u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s};
  neverSeen();
  EXPECT_EQ(failure(), otherAccount);
  run->trace = GatewayTrace{u"https://other.example"_s, *account, u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s};
  neverSeen();
  EXPECT_EQ(failure(), otherAccount);
  run->trace = std::nullopt;
  known = u"op-9"_s;
  neverSeen();
  EXPECT_EQ(failure(), otherAccount);
  EXPECT_EQ(posts(), 0);
}

TEST_F(CreditsProviderTest, BuysAgainWhereItsOwnEarlierPostNeverArrived) {
  run->trace = GatewayTrace{gateway, *account, u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s};
  neverSeen();
  accepts();
  completesWith(1);
  EXPECT_EQ(generate().size(), 1u);
  EXPECT_EQ(posts(), 1);
}

TEST_F(CreditsProviderTest, TakesAnEarlierIdOfTheSameJobForAnotherRequest) {
  run->trace = GatewayTrace{gateway, u"bob@example.org"_s, u"AN-OLDER-REQUEST"_s};
  neverSeen();
  accepts();
  completesWith(1);
  EXPECT_EQ(generate().size(), 1u);
}

TEST_F(CreditsProviderTest, AsksWhoIsSignedInBeforeItBuysWhenThatIsNotKnown) {
  account = std::nullopt;
  neverSeen();
  transport->on("GET", u"v1/me"_s).answers(500, R"({"error":"down"})").answers(200, R"({"email":"Ada@Example.org"})");
  EXPECT_EQ(failure(), u"down"_s);
  EXPECT_EQ(posts(), 0);
  neverSeen();
  accepts();
  completesWith(1);
  generate();
  ASSERT_TRUE(run->trace);
  EXPECT_EQ(run->trace->account, u"ada@example.org"_s);
}

TEST_F(CreditsProviderTest, KeepsTheNoteWhileAnAnswerIsUnclearAndDropsItWhenNothingWasTaken) {
  neverSeen();
  transport->on("POST", u"v1/images"_s).answers(502, "<html>");
  EXPECT_NE(failure<SubmissionUnknown>(), u"accepted"_s);
  EXPECT_TRUE(run->trace);
  EXPECT_EQ(run->count(u"not submitted"_s), 0);

  // The second try is refused, which says nothing of the first.
  neverSeen();
  transport->on("POST", u"v1/images"_s).answers(402, R"({"error":"insufficient Sorvan Credits"})");
  EXPECT_EQ(failure(), u"insufficient Sorvan Credits"_s);
  EXPECT_TRUE(run->trace);

  run->trace.reset();
  neverSeen();
  transport->on("POST", u"v1/images"_s).answers(402, R"({"error":"insufficient Sorvan Credits"})");
  EXPECT_EQ(failure(), u"insufficient Sorvan Credits"_s);
  EXPECT_FALSE(run->trace);
  EXPECT_EQ(posts(), 3);
}

TEST_F(CreditsProviderTest, NeedsASavedIdAndAToken) {
  request.creditRequestID.reset();
  EXPECT_EQ(failure(), u"Missing persisted credits request ID."_s);
  token = std::nullopt;
  EXPECT_EQ(failure(), u"Sign in under Settings → Account to use Sorvan Credits."_s);
  EXPECT_TRUE(transport->recorded.empty());
}

TEST_F(CreditsProviderTest, RefusesWhatCannotRunBeforeAnyUploadOrPurchase) {
  request.model = u"acme/gone"_s;
  neverSeen();
  EXPECT_EQ(failure(), u"This model is no longer in your model list. Add it again from More Models."_s);
  request.model = u"fal-ai/flux/schnell"_s;
  request.prompt = u"  "_s;
  neverSeen();
  EXPECT_EQ(failure(), u"Enter a prompt first."_s);
  EXPECT_EQ(transport->recorded.size(), 2u);
}

TEST_F(CreditsProviderTest, SettlesTheLengthThatIsPaidForWithoutChangingTheRequest) {
  const FalModel clip = clipModel();
  neverSeen();
  transport->on("POST", u"v1/images"_s).answers(422, R"({"error":"stop here"})");
  EXPECT_EQ(failure(), u"stop here"_s);
  const QJsonObject body = QJsonDocument::fromJson(transport->requests(u"v1/images"_s)[0].body).object();
  EXPECT_EQ(body.value(u"input"_s).toObject().value(u"duration"_s), u"4"_s);
  EXPECT_FALSE(request.options);
  request.options = TextByKey{{u"duration"_s, u"10"_s}};
  EXPECT_EQ(pricedLength(request, clip), u"10"_s);
}

TEST_F(CreditsProviderTest, RefusesAClipPricedByTheSecondWithoutALengthBeforeAnyUpload) {
  FalModel clip = clipModel();
  clip.settings.reset();
  clip.imageInput = SingleInput{u"image_url"_s, false};
  catalog->add(clip);
  perSecond = true;
  references = {{run->folder.write(u"a.png"_s, test::samplePng())}};
  request.referenceIDs = {QUuid::createUuid()};
  neverSeen();
  EXPECT_TRUE(failure().startsWith(u"Choose a length for this video with the Length control"_s));
  EXPECT_EQ(transport->recorded.size(), 1u);
}

TEST_F(CreditsProviderTest, FillsInWhatTheResolutionAndTheQualityWouldBe) {
  FalModel model = clipModel();
  Setting resolution;
  resolution.field = u"resolution"_s;
  resolution.values = {u"480p"_s, u"720p"_s};
  resolution.defaultValue = u"720p"_s;
  model.settings->push_back(resolution);
  EXPECT_EQ(withPricedOptions(request, model, false).options->value(u"resolution"_s), u"720p"_s);
  request.options = TextByKey{{u"resolution"_s, u"480p"_s}};
  EXPECT_EQ(withPricedOptions(request, model, false).options->value(u"resolution"_s), u"480p"_s);
  EXPECT_FALSE(withPricedOptions(request, model, false).options->contains(u"quality"_s));
}

TEST_F(CreditsProviderTest, UploadsEachReferenceAndSendsTheAddresses) {
  FalModel edit;
  edit.id = u"acme/edit"_s;
  edit.name = u"Edit"_s;
  edit.imageInput = SingleInput{u"image_url"_s, true};
  catalog->add(edit);
  request.model = edit.id;
  request.referenceIDs = {QUuid::createUuid()};
  references = {{run->folder.write(u"a.png"_s, test::samplePng())}};
  neverSeen();
  transport->on("POST", u"v1/uploads"_s).answers(200, R"({"url":"https://v3.fal.media/in.png"})");
  accepts();
  completesWith(1);
  generate();
  EXPECT_EQ(run->events.front(), u"Uploading reference 1 of 1"_s);
  const auto upload = transport->requests(u"v1/uploads"_s).at(0);
  EXPECT_EQ(upload.idleTimeout, std::chrono::seconds(180));
  EXPECT_TRUE(upload.body.startsWith("\x89PNG"));
  const QJsonObject body = QJsonDocument::fromJson(transport->requests(u"v1/images"_s)[0].body).object();
  EXPECT_EQ(body.value(u"input"_s).toObject().value(u"image_url"_s), u"https://v3.fal.media/in.png"_s);
}

TEST_F(CreditsProviderTest, RefusesAnUploadThatLeadsNowhere) {
  FalModel edit;
  edit.id = u"acme/edit"_s;
  edit.name = u"Edit"_s;
  edit.imageInput = SingleInput{u"image_url"_s, true};
  catalog->add(edit);
  request.model = edit.id;
  request.referenceIDs = {QUuid::createUuid()};
  references = {{run->folder.write(u"a.png"_s, test::samplePng())}};
  for (const char* body : {"{}", R"({"url":7})", R"({"url":"http://fal.media/a"})", R"({"url":""})"}) {
    neverSeen();
    transport->on("POST", u"v1/uploads"_s).answers(200, body);
    EXPECT_EQ(failure(), u"The Sorvan gateway could not complete this request."_s) << body;
  }
  EXPECT_EQ(posts(), 0);
}

TEST_F(CreditsProviderTest, FetchesFromTheHostOfFinishedMediaOnly) {
  for (const auto& url : {u"https://evil.example/a.png"_s, u"http://fal.media/a.png"_s, u"https://fal.media.evil.example/a"_s,
                          u"https://user@fal.media/a"_s}) {
    seenAs(operation(u"complete"_s, QJsonArray{QJsonObject{{u"url"_s, url}}}, 1'000'000));
    EXPECT_EQ(failure(), u"Unexpected media download host."_s) << url.toStdString();
  }
  EXPECT_EQ(transport->recorded.size(), 4u);
}

TEST_F(CreditsProviderTest, AsksTheSameOfEveryRedirect) {
  seenAs(operation(u"complete"_s, images(1), 1'000'000));
  transport->on("GET", u"fal.media"_s).answers(200, test::samplePng());
  generate();
  const auto& follow = transport->recorded.back().request.mayFollow;
  ASSERT_TRUE(follow);
  EXPECT_TRUE(follow(QUrl(u"https://v3b.fal.media/x"_s)));
  EXPECT_FALSE(follow(QUrl(u"https://evil.example/x"_s)));
}

TEST_F(CreditsProviderTest, SaysThatAPaidResultCanBeFetchedAgain) {
  const QString again = u"The paid result could not be downloaded. Retry reconnects to this same result."_s;
  seenAs(operation(u"complete"_s, images(1), 1'000'000));
  transport->on("GET", u"fal.media"_s).answers(404);
  EXPECT_EQ(failure(), again);
  seenAs(operation(u"complete"_s, images(1), 1'000'000));
  transport->on("GET", u"fal.media"_s).fails(HttpProblem::TimedOut);
  EXPECT_EQ(failure(), again);
  seenAs(operation(u"complete"_s, images(1), 1'000'000));
  transport->on("GET", u"fal.media"_s).answers(200, test::samplePng().chopped(20));
  EXPECT_EQ(failure(), again);
  EXPECT_EQ(run->count(u"Paid · downloading result"_s), 3);
}

TEST_F(CreditsProviderTest, NeverInvitesToBuyAgainWhatHasNoOutputs) {
  seenAs(operation(u"complete"_s));
  EXPECT_EQ(failure(),
            u"The gateway returned no outputs. Contact support with the request ID; do not start a new paid request to "
            u"recover it."_s);
}

TEST_F(CreditsProviderTest, TellsAFailedOperationAsFreeAndAnUncertainOneAsOpen) {
  seenAs(operation(u"queued"_s));
  transport->on("GET", u"v1/operations/op-1"_s).answers(200, operation(u"failed"_s));
  EXPECT_EQ(failure<RemoteJobFailed>(), u"Request failed."_s);
  EXPECT_EQ(changes, 2);
  seenAs(operation(u"uncertain"_s));
  EXPECT_THROW(failure<RemoteJobFailed>(), SorvanError);
}

TEST_F(CreditsProviderTest, StoresWhatTheGatewayTookAlsoWhenTheJobWasCancelledMeanwhile) {
  neverSeen();
  transport->on("POST", u"v1/images"_s).answersBy([&](const HttpRequest&) {
    stop.request_stop();
    HttpReply reply;
    reply.status = 200;
    reply.body = operation(u"queued"_s);
    return reply;
  });
  EXPECT_THROW(generate(), Cancelled);
  EXPECT_EQ(run->updates.at(0).requestID, u"op-1"_s);
}

TEST_F(CreditsProviderTest, SendsNothingForAJobThatIsCancelledBeforeThePost) {
  run->cancelledBeforeSubmission = true;
  neverSeen();
  EXPECT_THROW(generate(), Cancelled);
  EXPECT_EQ(posts(), 0);
}

TEST(FileExtensionTest, TrustsAKnownNameAndLooksAtTheBytesOfASoundOtherwise) {
  const auto of = [](const QString& name, const QByteArray& start, MediaType made) {
    return fileExtension(QUrl(u"https://fal.media/"_s + name), start, made);
  };
  EXPECT_EQ(of(u"a.JPEG"_s, {}, MediaType::image), u"jpeg"_s);
  EXPECT_EQ(of(u"a.m4v?x=1"_s, {}, MediaType::video), u"m4v"_s);
  EXPECT_EQ(of(u"a.exe"_s, {}, MediaType::image), u"png"_s);
  EXPECT_EQ(of(u"a"_s, {}, MediaType::video), u"mp4"_s);
  EXPECT_EQ(of(u"a"_s, {}, MediaType::audio), u"mp3"_s);
  EXPECT_EQ(of(u"a"_s, "ID3\4", MediaType::audio), u"mp3"_s);
  EXPECT_EQ(of(u"a"_s, "RIFFxxxxWAVEfmt ", MediaType::audio), u"wav"_s);
  EXPECT_EQ(of(u"a"_s, "fLaC", MediaType::audio), u"flac"_s);
  EXPECT_EQ(of(u"a"_s, QByteArray("\0\0\0\x20" "ftypisom", 12), MediaType::audio), u"m4a"_s);
  EXPECT_EQ(of(u"a"_s, "OggS", MediaType::audio), u"ogg"_s);
  EXPECT_EQ(of(u"a"_s, "\xff\xf1\x50\x80", MediaType::audio), u"aac"_s);
  EXPECT_EQ(of(u"a"_s, "\xff\xfb\x90\x00", MediaType::audio), u"mp3"_s);
}

}  // namespace
}  // namespace sorvan::catalogue
