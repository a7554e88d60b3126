// Reads every document that the service simulator publishes, and holds the requests of its models against them.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "catalogue/audio_models.h"
#include "catalogue/fal_catalog.h"
#include "catalogue/listings.h"
#include "catalogue/schema_reader.h"
#include "published/document_forms.h"
#include "published/trial_bodies.h"
#include "support/failure_of.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

/// The simulator's documents in a folder of their own, written once.
class SimulatedDocuments {
 public:
  static const SimulatedDocuments& all() {
    static const SimulatedDocuments documents;
    return documents;
  }

  QString file(const QString& id) const { return files.value(id); }
  QStringList ids() const { return files.keys(); }
  QByteArray text(const QString& id) const {
    QFile document(file(id));
    if (!document.open(QIODevice::ReadOnly)) throw std::runtime_error("no document of " + id.toStdString());
    return document.readAll();
  }

 private:
  SimulatedDocuments() {
    QProcess sandbox;
    sandbox.start(QStringLiteral(SORVAN_SANDBOX), {u"--write-schemas"_s, folder.path()});
    if (!sandbox.waitForFinished(60000) || sandbox.exitCode() != 0)
      throw std::runtime_error("no documents were written");
    for (const QFileInfo& each : QDir(folder.path()).entryInfoList({u"*.json"_s}, QDir::Files)) {
      QFile document(each.filePath());
      if (!document.open(QIODevice::ReadOnly)) throw std::runtime_error("a document cannot be read");
      files.insert(schemaIdentity(document.readAll()).id, each.filePath());
    }
  }

  QTemporaryDir folder;
  QMap<QString, QString> files;
};

FalModel read(const QString& id) {
  const QByteArray text = SimulatedDocuments::all().text(id);
  return modelFromSchema({id, u"It"_s, schemaIdentity(text).category, {}, {}}, text);
}

/// Every id that the studio recommends, or offers as a tool for pictures.
QStringList offeredIDs() {
  QStringList ids;
  for (const auto& [category, rows] : recommendedModels()) {
    for (const FalListing& row : rows) ids << row.id;
  }
  for (const auto* tools : {&upscaleTools(), &cutOutTools(), &shotAngleTools()}) {
    for (const FalListing& row : *tools) ids << row.id;
  }
  ids.removeDuplicates();
  return ids;
}

QStringList soundIDs() {
  QStringList ids;
  for (const FalModel& model : builtInModels()) {
    const bool isSound = model.output == MediaType::audio || model.audioInput.value_or(false);
    if (isSound) ids << model.id;
  }
  return ids;
}

TEST(SimulatedDocuments, ExistForEveryOfferedModel) {
  for (const QString& id : offeredIDs() + soundIDs()) {
    EXPECT_FALSE(SimulatedDocuments::all().file(id).isEmpty()) << id.toStdString();
  }
}

TEST(SimulatedDocuments, GiveAModelForEveryOfferedPictureAndClip) {
  EXPECT_GE(offeredIDs().size(), 50);
  for (const QString& id : offeredIDs()) {
    EXPECT_EQ(test::failureOf([&] { read(id); }), u"(nothing was thrown)"_s) << id.toStdString();
  }
}

TEST(SimulatedDocuments, GiveAModelOrASentence) {
  int accepted = 0;
  for (const QString& id : SimulatedDocuments::all().ids()) {
    try {
      read(id);
      ++accepted;
    } catch (const SchemaRefusal& refusal) {
      const bool isKnown = refusal.message().endsWith(u"does not return an image or a video."_s) ||
                           refusal.message().startsWith(u"The model provider has not published"_s) ||
                           !refusal.missing().isEmpty();
      EXPECT_TRUE(isKnown) << id.toStdString() << ": " << refusal.message().toStdString();
    }
  }
  EXPECT_GE(accepted, offeredIDs().size());
}

TEST(SimulatedDocuments, AllowEveryRequestOfTheModelsReadFromThem) {
  QJsonArray trials;
  for (const QString& id : SimulatedDocuments::all().ids()) {
    try {
      trials.append(test::trial(SimulatedDocuments::all().file(id), test::trialBodies(read(id))));
    } catch (const SchemaRefusal&) {
      continue;
    }
  }
  EXPECT_GE(trials.size(), offeredIDs().size());
  EXPECT_EQ(test::breaches(trials), "[]");
}

TEST(SimulatedDocuments, AllowEveryRequestOfTheBuiltInModels) {
  QJsonArray trials;
  for (const FalModel& model : builtInModels()) {
    trials.append(test::trial(SimulatedDocuments::all().file(model.id), test::trialBodies(model)));
  }
  EXPECT_EQ(test::breaches(trials), "[]");
}

TEST(SimulatedDocuments, AreWrittenInFortyFormsOneForEach) {
  std::map<QString, test::WrittenDocument> documents;
  for (const QString& id : offeredIDs() + soundIDs()) {
    documents.emplace(id, test::WrittenDocument(SimulatedDocuments::all().text(id)));
  }
  const auto spread = test::formsSpreadOver(documents);
  QStringList told;
  for (const auto& [id, form] : spread) told << id + u": "_s + form;
  EXPECT_GE(spread.size(), 40u) << told.join(u'\n').toStdString();
}

}  // namespace
}  // namespace sorvan::catalogue
