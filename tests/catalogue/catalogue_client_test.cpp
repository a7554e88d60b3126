#include "catalogue/catalogue_client.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QUrlQuery>

#include "catalogue/made_schema.h"
#include "catalogue/schema_reader.h"
#include "support/failure_of.h"
#include "support/run_task.h"
#include "support/scripted_transport.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;
using test::failureOf;
using test::MadeSchema;
using test::runTask;
using test::ScriptedTransport;

const QString models = u"/v1/models"_s;
const QString documents = u"/api/openapi/queue/openapi.json"_s;

QJsonObject row(const QString& id, const QJsonObject& more = {}) {
  QJsonObject about{
      {u"display_name"_s, u"Paint"_s}, {u"category"_s, u"text-to-image"_s}, {u"description"_s, u"Paints\nwell"_s}};
  for (auto each = more.begin(); each != more.end(); ++each) about.insert(each.key(), each.value());
  return {{u"endpoint_id"_s, id}, {u"metadata"_s, about}};
}

QJsonObject pageOf(const QJsonArray& rows, const QJsonValue& next = QJsonValue::Null) {
  return {{u"models"_s, rows}, {u"next_cursor"_s, next}, {u"has_more"_s, next.isString()}};
}

class CatalogueClient : public testing::Test {
 protected:
  CatalogPage search(const CatalogQuestion& question) { return runTask(client.search(question, {})); }
  QUrlQuery asked(std::size_t index = 0) const { return QUrlQuery(transport->recorded.at(index).request.url); }

  std::shared_ptr<ScriptedTransport> transport = std::make_shared<ScriptedTransport>();
  CatalogClient client{transport};
};

TEST_F(CatalogueClient, AsksForActiveModelsOfACategoryWithoutAKey) {
  transport->on("GET", models).answersJson(pageOf({row(u"acme/paint"_s)}));
  const CatalogPage page = search({u"text-to-image"_s, u"  red & blue+ "_s, 20, std::nullopt});
  ASSERT_EQ(page.rows.size(), 1u);
  EXPECT_EQ(page.rows[0].listing,
            (FalListing{u"acme/paint"_s, u"Paint"_s, u"text-to-image"_s, u"Paints well"_s, QString()}));
  EXPECT_FALSE(page.rows[0].researchOnly);
  EXPECT_FALSE(page.next);
  const HttpRequest& request = transport->recorded.at(0).request;
  EXPECT_EQ(request.url.host(), u"api.fal.ai"_s);
  EXPECT_TRUE(request.headers.empty());
  EXPECT_EQ(asked().queryItemValue(u"limit"_s), u"20"_s);
  EXPECT_EQ(asked().queryItemValue(u"status"_s), u"active"_s);
  EXPECT_EQ(asked().queryItemValue(u"q"_s, QUrl::FullyDecoded), u"red & blue+"_s);
  EXPECT_FALSE(asked().hasQueryItem(u"cursor"_s));
}

TEST_F(CatalogueClient, LeavesBlankWordsOut) {
  transport->on("GET", models).answersJson(pageOf({}));
  search({u"text-to-image"_s, u"  "_s, 40, std::nullopt});
  EXPECT_FALSE(asked().hasQueryItem(u"q"_s));
}

TEST_F(CatalogueClient, FollowsPagesUntilTheEnd) {
  transport->on("GET", models).answersJson(pageOf({row(u"a/1"_s)}, u"Mg=="_s)).answersJson(pageOf({row(u"a/2"_s)}));
  const CatalogPage first = search({u"llm"_s, {}, 1, std::nullopt});
  ASSERT_EQ(first.next, u"Mg=="_s);
  const CatalogPage second = search({u"llm"_s, {}, 1, first.next});
  EXPECT_EQ(asked(1).queryItemValue(u"cursor"_s, QUrl::FullyDecoded), u"Mg=="_s);
  EXPECT_EQ(second.rows.at(0).listing.id, u"a/2"_s);
  EXPECT_FALSE(second.next);
}

TEST_F(CatalogueClient, EndsAtAPageThatNamesItself) {
  transport->on("GET", models).answersJson(pageOf({}, u"Mg=="_s));
  EXPECT_FALSE(search({u"llm"_s, {}, 1, u"Mg=="_s}).next);
}

TEST_F(CatalogueClient, SkipsRowsThatLackSomething) {
  transport->on("GET", models)
      .answersJson(pageOf({row(u"a/1"_s), QJsonValue(5), QJsonObject{{u"endpoint_id"_s, u"a/2"_s}},
                           row(u"a/3"_s, {{u"description"_s, QJsonValue::Null}}), row(QString()),
                           row(u"a/4"_s, {{u"license_type"_s, u"research"_s}})}));
  const CatalogPage page = search({u"llm"_s, {}, 9, std::nullopt});
  ASSERT_EQ(page.rows.size(), 2u);
  EXPECT_EQ(page.rows[1].listing.id, u"a/4"_s);
  EXPECT_TRUE(page.rows[1].researchOnly);
}

TEST_F(CatalogueClient, RefusesHalfAPage) {
  transport->on("GET", models).answers(200, R"({"models":[{"endpoint_id":"a/1","meta)").answers(200, R"({"error":{}})");
  EXPECT_EQ(failureOf([&] { search({u"llm"_s, {}, 9, std::nullopt}); }), u"Invalid provider response."_s);
  EXPECT_EQ(failureOf([&] { search({u"llm"_s, {}, 9, std::nullopt}); }), u"Invalid provider response."_s);
}

TEST_F(CatalogueClient, CanBeCancelledWhileItWaits) {
  Completion gate;
  transport->on("GET", models).answersJson(pageOf({})).after(gate);
  std::stop_source stop;
  auto task = client.search({u"llm"_s, {}, 9, std::nullopt}, stop.get_token());
  stop.request_stop();
  EXPECT_THROW(runTask(std::move(task)), Cancelled);
}

TEST_F(CatalogueClient, LoadsAModelFromItsPublicDocument) {
  MadeSchema made;
  made.properties = R"({"prompt":{"type":"string"}})";
  transport->on("GET", documents).answers(200, made.text());
  const FalModel model = runTask(client.load(test::paintListing(), {}));
  EXPECT_EQ(model, made.model());
  const HttpRequest& request = transport->recorded.at(0).request;
  EXPECT_EQ(request.url.toString(), u"https://fal.ai/api/openapi/queue/openapi.json?endpoint_id=acme%2Fpaint"_s);
  EXPECT_TRUE(request.headers.empty());
  EXPECT_EQ(request.idleTimeout, std::chrono::seconds(60));
}

TEST_F(CatalogueClient, PassesOnWhyAModelCannotBeUsed) {
  MadeSchema made;
  made.properties = R"({"mask_url":{"type":"string"}})";
  made.required = R"(["mask_url"])";
  transport->on("GET", documents).answers(200, made.text()).answers(200, "[]").answers(404, R"({"detail":"Unknown"})");
  const auto load = [&] { runTask(client.load(test::paintListing(), {})); };
  EXPECT_THROW(load(), SchemaRefusal);
  EXPECT_EQ(failureOf(load), u"Invalid provider response."_s);
  EXPECT_EQ(failureOf(load), u"Provider error 404: Unknown"_s);
}

class Rereading : public CatalogueClient {
 protected:
  Rereading() {
    FalModel old;
    old.id = u"acme/paint"_s;
    old.name = u"My Paint"_s;
    old.category = u"text-to-image"_s;
    old.summary = u"mine"_s;
    catalog->add(old);
  }
  void reread() { runTask(rereadIfStale(client, catalog, settings, {})); }
  std::optional<int> version() const { return settings->get<int>(u"falReaderVersion"_s); }

  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  std::shared_ptr<FalCatalog> catalog = std::make_shared<FalCatalog>(settings);
  MadeSchema made{R"({"prompt":{"type":"string"},"seed":{"type":"integer"}})"};
};

TEST_F(Rereading, ImprovesAModelUnderItsOwnNameOnce) {
  transport->on("GET", documents).answers(200, made.text());
  reread();
  const auto model = catalog->model(u"acme/paint"_s);
  EXPECT_TRUE(model->hasSeed);
  EXPECT_EQ(model->name, u"My Paint"_s);
  EXPECT_EQ(model->summary, u"mine"_s);
  EXPECT_EQ(version(), 4);
  reread();
  EXPECT_EQ(transport->recorded.size(), 1u);
}

TEST_F(Rereading, KeepsAModelThatCannotBeReadAndTriesAgainAtTheNextStart) {
  FalModel second;
  second.id = u"acme/other"_s;
  second.name = u"Other"_s;
  catalog->add(second);
  transport->on("GET", u"acme%2Fpaint"_s).answers(503).answers(200, made.text());
  transport->on("GET", u"acme%2Fother"_s).answers(404).repeating();
  reread();
  EXPECT_FALSE(catalog->model(u"acme/paint"_s)->hasSeed);
  EXPECT_FALSE(version());
  reread();
  EXPECT_TRUE(catalog->model(u"acme/paint"_s)->hasSeed) << "one failure does not stop the others";
  EXPECT_EQ(catalog->model(u"acme/other"_s), second);
  EXPECT_FALSE(version());
}

TEST_F(Rereading, DoesNothingWithoutAddedModels) {
  catalog->remove(u"acme/paint"_s);
  reread();
  EXPECT_TRUE(transport->recorded.empty());
  EXPECT_FALSE(version());
}

TEST_F(Rereading, DoesNotBringBackAModelThatWasTakenOutMeanwhile) {
  Completion gate;
  transport->on("GET", documents).answers(200, made.text()).after(gate);
  auto task = rereadIfStale(client, catalog, settings, {});
  catalog->remove(u"acme/paint"_s);
  gate.finish();
  runTask(std::move(task));
  EXPECT_TRUE(catalog->added().empty());
}

}  // namespace
}  // namespace sorvan::catalogue
