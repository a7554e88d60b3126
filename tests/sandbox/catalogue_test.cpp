// The list of models with its pages and its search, and the list of prices.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSet>

#include "sandbox/client.h"
#include "sandbox/published.h"

namespace sorvan::test {
namespace {

QUrl models(const QString& query) { return QUrl(QStringLiteral("https://api.fal.ai/v1/models?") + query); }
QUrl pricing(const QString& query) { return QUrl(QStringLiteral("https://api.fal.ai/v1/models/pricing?") + query); }

QString idOf(const QJsonValue& row) { return row[QStringLiteral("endpoint_id")].toString(); }

class SandboxCatalogue : public testing::Test {
 protected:
  // Every row of the list under `key`, page by page until the end.
  QList<QJsonObject> rowsOf(const QUrl& start, const QString& key) {
    QList<QJsonObject> rows;
    QString cursor;
    do {
      QUrl url = start;
      if (!cursor.isEmpty()) url.setQuery(start.query() + QStringLiteral("&cursor=") + cursor);
      const QJsonObject page = client.get(url).json();
      for (const QJsonValue& row : page.value(key).toArray()) rows.append(row.toObject());
      const QJsonValue next = page.value(QStringLiteral("next_cursor"));
      EXPECT_EQ(page.value(QStringLiteral("has_more")).toBool(), next.isString());
      cursor = next.toString();
      ++pages;
    } while (!cursor.isEmpty() && pages < 100);
    return rows;
  }
  QList<QJsonObject> modelsOf(const QString& query) { return rowsOf(models(query), QStringLiteral("models")); }
  QStringList idsOf(const QString& query) {
    QStringList ids;
    for (const QJsonObject& row : modelsOf(query)) ids.append(idOf(row));
    return ids;
  }
  QString errorType(const QUrl& url, int status) {
    const WireAnswer answer = client.get(url);
    EXPECT_EQ(answer.status, status);
    return answer.json()[QStringLiteral("error")][QStringLiteral("type")].toString();
  }

  SandboxProcess sandbox;
  Client client{sandbox};
  int pages = 0;
};

TEST_F(SandboxCatalogue, PagesGoOnToTheEndAndRepeatNothing) {
  const QStringList ids = idsOf(QStringLiteral("limit=40&status=active"));
  EXPECT_GT(ids.size(), 200);
  EXPECT_EQ(QSet<QString>(ids.begin(), ids.end()).size(), ids.size());
  EXPECT_EQ(pages, (ids.size() + 39) / 40);
}

TEST_F(SandboxCatalogue, EachRowSaysWhatTheRealOnesAlwaysSay) {
  for (const QJsonObject& row : modelsOf(QStringLiteral("limit=100"))) {
    const QJsonObject about = row.value(QStringLiteral("metadata")).toObject();
    for (const char16_t* key : {u"display_name", u"category", u"description", u"status", u"tags", u"updated_at",
                                u"is_favorited", u"thumbnail_url", u"model_url", u"date", u"highlighted", u"pinned"})
      EXPECT_TRUE(about.contains(QString::fromUtf16(key))) << idOf(row).toStdString();
  }
}

TEST_F(SandboxCatalogue, EveryRowHasADocumentSaveTheOneThatCannotBeHad) {
  QStringList without;
  for (const QString& id : idsOf(QStringLiteral("limit=100")))
    if (!QFile::exists(documentPath(id))) without.append(id);
  EXPECT_EQ(without, QStringList{QStringLiteral("fal-ai/unread/text-to-image")});
}

TEST_F(SandboxCatalogue, ASearchFindsEveryWordInNameIdOrDescription) {
  EXPECT_TRUE(idsOf(QStringLiteral("q=nano banana")).contains(QStringLiteral("fal-ai/nano-banana-2")));
  EXPECT_TRUE(
      idsOf(QStringLiteral("q=BANANA&category=image-to-image")).contains(QStringLiteral("fal-ai/nano-banana-2/edit")));
  EXPECT_FALSE(
      idsOf(QStringLiteral("q=banana&category=image-to-image")).contains(QStringLiteral("fal-ai/nano-banana-2")));
  EXPECT_EQ(idsOf(QStringLiteral("q=cuts out what stands")), QStringList{QStringLiteral("fal-ai/birefnet/v2")});
  EXPECT_TRUE(idsOf(QStringLiteral("q=nothing of that kind")).isEmpty());
}

TEST_F(SandboxCatalogue, WhatIsOldIsListedApartAndWhatIsUnlistedNowhere) {
  const QStringList active = idsOf(QStringLiteral("status=active&limit=100"));
  const QStringList old = idsOf(QStringLiteral("status=deprecated&limit=100"));
  const QStringList all = idsOf(QStringLiteral("limit=100"));
  EXPECT_GT(old.size(), 3);
  EXPECT_EQ(active.size() + old.size(), all.size());
  for (const QString& id : old) EXPECT_FALSE(active.contains(id)) << id.toStdString();
  EXPECT_LT(all.size(), QDir(documentsFolder()).entryList(QDir::Files).size());
}

TEST_F(SandboxCatalogue, SomeLicencesAreForResearchOnly) {
  QMap<QString, int> licences;
  for (const QJsonObject& row : modelsOf(QStringLiteral("limit=100")))
    ++licences[row[QStringLiteral("metadata")][QStringLiteral("license_type")].toString()];
  EXPECT_GT(licences.value(QStringLiteral("research")), 3);
  EXPECT_GT(licences.value(QStringLiteral("private")), 1);
  EXPECT_GT(licences.value(QStringLiteral("commercial")), 100);
}

TEST_F(SandboxCatalogue, DocumentsStandInTheRowsWhereTheyAreAskedFor) {
  const QList<QJsonObject> rows = modelsOf(QStringLiteral("category=text-to-image&expand=openapi-3.0&q=cannot be had"));
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(rows[0][QStringLiteral("openapi")][QStringLiteral("error")][QStringLiteral("code")].toString(),
            QStringLiteral("expansion_failed"));
  const QList<QJsonObject> veo = modelsOf(QStringLiteral("endpoint_id=fal-ai/veo3.1&expand=openapi-3.0"));
  ASSERT_EQ(veo.size(), 1);
  EXPECT_EQ(veo[0][QStringLiteral("openapi")][QStringLiteral("openapi")].toString(), QStringLiteral("3.0.4"));
  EXPECT_FALSE(modelsOf(QStringLiteral("endpoint_id=fal-ai/veo3.1&expand[]=openapi-3.0"))[0].contains(
      QStringLiteral("openapi")));
}

TEST_F(SandboxCatalogue, QuestionsInNoFormAreRefused) {
  for (const char16_t* query : {u"limit=0", u"limit=many", u"cursor=!!!"})
    EXPECT_EQ(errorType(models(QString::fromUtf16(query)), 400), QStringLiteral("validation_error"));
  EXPECT_EQ(errorType(pricing({}), 400), QStringLiteral("validation_error"));
}

TEST_F(SandboxCatalogue, PricesComeInManyUnitsAndSomeCurrencies) {
  QSet<QString> units, currencies;
  QStringList ids = idsOf(QStringLiteral("limit=100"));
  while (!ids.isEmpty()) {
    const QStringList some = ids.mid(0, 50);
    ids = ids.mid(50);
    const QList<QJsonObject> prices =
        rowsOf(pricing(QStringLiteral("endpoint_id=") + some.join(QLatin1Char(','))), QStringLiteral("prices"));
    EXPECT_EQ(prices.size(), some.size());
    for (const QJsonObject& price : prices) {
      units.insert(price.value(QStringLiteral("unit")).toString());
      currencies.insert(price.value(QStringLiteral("currency")).toString());
    }
  }
  for (const char16_t* unit : {u"images",
                               u"megapixels",
                               u"processed megapixels",
                               u"seconds",
                               u"compute seconds",
                               u"minutes",
                               u"videos",
                               u"units",
                               u"1000 characters",
                               u"1000 characters ",
                               u"1000 tokens",
                               u"1m tokens",
                               u"audios",
                               u"generations",
                               u"requests",
                               u"5 seconds",
                               u"30 seconds",
                               u"minute of video ",
                               u"video segments",
                               u"input seconds",
                               u"steps",
                               u""})
    EXPECT_TRUE(units.contains(QString::fromUtf16(unit))) << QString::fromUtf16(unit).toStdString();
  EXPECT_EQ(currencies.size(), 4);
}

TEST_F(SandboxCatalogue, PricesComeInPages) {
  const QStringList ids = idsOf(QStringLiteral("category=text-to-image&limit=45"));
  pages = 0;
  const QList<QJsonObject> prices =
      rowsOf(pricing(QStringLiteral("endpoint_id=") + ids.mid(0, 45).join(QLatin1Char(','))), QStringLiteral("prices"));
  EXPECT_EQ(prices.size(), 45);
  EXPECT_EQ(pages, 3);
}

TEST_F(SandboxCatalogue, OneUnknownIdMakesABatchOfPricesNotFound) {
  EXPECT_EQ(errorType(pricing(QStringLiteral("endpoint_id=fal-ai/veo3.1,acme/none")), 404),
            QStringLiteral("not_found"));
  EXPECT_EQ(client.get(pricing(QStringLiteral("endpoint_id=fal-ai/veo3.1"))).status, 200);
}

TEST_F(SandboxCatalogue, AFaultLetsThePageEndInItsMiddle) {
  sandbox.addFault(QStringLiteral("models"), QStringLiteral("half-page"));
  const WireAnswer half = client.get(models(QStringLiteral("limit=5")));
  EXPECT_EQ(half.status, 200);
  EXPECT_TRUE(half.complete);
  EXPECT_FALSE(half.body.isEmpty());
  EXPECT_TRUE(half.json().isEmpty());
  EXPECT_FALSE(client.get(models(QStringLiteral("limit=5"))).json().isEmpty());
}

}  // namespace
}  // namespace sorvan::test
