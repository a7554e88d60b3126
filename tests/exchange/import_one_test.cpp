#include "exchange/import_one.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QDirIterator>

#include "base/checksum.h"
#include "base/json.h"
#include "core/history.h"
#include "core/library_fixture.h"
#include "exchange/texts.h"
#include "exchange/trash.h"
#include "exchange/unfinished_imports.h"
#include "support/failing_file_layer.h"
#include "support/made_pictures.h"
#include "support/run_task.h"

namespace sorvan::exchange {
namespace {

using namespace Qt::StringLiterals;
using test::runTask;
using test::text;

QByteArray png(QSize size) { return test::encoded(test::cornerMarked(size), "PNG"); }

struct ImportOneTest : test::LibraryFixture {
  UnfinishedImports unfinished{store};
  ImportPorts ports;

  ImportOneTest() { open(); }
  ~ImportOneTest() override { runTask(unfinished.drain()); }

  QString outside(const QString& name, const QByteArray& bytes) {
    folder.write(u"outside/"_s + name, bytes);
    return folder / (u"outside/"_s + name);
  }
  AssetRef bring(const QString& path, std::optional<QUuid> project = {}) {
    return runTask(importReference(&store, ports, path, project, {})).item;
  }
  std::string refusal(const QString& path) {
    return test::messageOf([&] { bring(path); });
  }
  /// What lies in the media folders of the Inbox, and the notes of imports.
  QStringList filesInside() const {
    QStringList found;
    for (const QString& place : {u"Inbox"_s, u".sorvan/imports"_s}) {
      QDirIterator walk(files().absolute(place), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
      while (walk.hasNext()) found << walk.next().mid(root().size() + 1);
    }
    return found;
  }
  ProjectRef addProject(const QString& name) {
    const ProjectRef project = store.context().insert(Project(name, store.files().createProjectFolder(name), clock->now()));
    store.save(LibraryTables::projects);
    return project;
  }
  void settle() {
    reopen();
    test::runUntil([&] { return unfinished.running() == 0; });
  }
};

TEST_F(ImportOneTest, CopiesAPictureIntoReferencesWithThumbnailAndRecord) {
  const QByteArray bytes = png({40, 30});
  const QString source = outside(u"Sunset Beach.PNG"_s, bytes);
  const AssetRef asset = bring(source);
  EXPECT_EQ(text(asset->localFilePath), "Inbox/references/Sunset-Beach-001.png");
  EXPECT_EQ(text(asset->originalFilename), "Sunset Beach.PNG");
  EXPECT_EQ(asset->width, 40);
  EXPECT_EQ(asset->importedAt, clock->now());
  EXPECT_EQ(asset->sourceType(), AssetSourceType::imported);
  EXPECT_EQ(text(asset->checksum.value()), text(sha256Hex(bytes)));
  EXPECT_EQ(folder.read(u"work/"_s + asset->localFilePath), bytes);
  EXPECT_EQ(folder.read(u"outside/Sunset Beach.PNG"_s), bytes);
  EXPECT_FALSE(QImage(store.thumbnailOf(*asset).value()).isNull());
  EXPECT_EQ(store.asset(asset->id), asset);
  EXPECT_TRUE(importNotes(files()).empty());
  EXPECT_EQ(store.localOperations(), 0);
}

TEST_F(ImportOneTest, GoesIntoTheFolderOfItsProjectAndMovesTheProjectUp) {
  const ProjectRef project = addProject(u"Harbour"_s);
  clock->advance(std::chrono::seconds(60));
  const AssetRef asset = bring(outside(u"a.png"_s, png({8, 8})), project->id);
  EXPECT_EQ(text(asset->localFilePath), text(project->rootFolder + u"/references/a-001.png"_s));
  EXPECT_EQ(asset->projectID, project->id);
  EXPECT_EQ(project->updatedAt, clock->now());
}

TEST_F(ImportOneTest, AnswersALiveItemOfTheSameBytesWithoutACopy) {
  const AssetRef first = bring(outside(u"a.png"_s, png({8, 8})));
  const QStringList before = filesInside();
  EXPECT_EQ(bring(outside(u"b.png"_s, png({8, 8}))), first);
  EXPECT_EQ(filesInside(), before);
  EXPECT_EQ(store.assets().size(), 1u);
}

TEST_F(ImportOneTest, ImportsAnewWhatIsInTrash) {
  const AssetRef first = bring(outside(u"a.png"_s, png({8, 8})));
  ASSERT_TRUE(trash(store, {first}));
  const AssetRef second = bring(outside(u"a.png"_s, png({8, 8})));
  EXPECT_NE(second, first);
  EXPECT_EQ(text(second->localFilePath), "Inbox/references/a-002.png");
}

TEST_F(ImportOneTest, GivesAnItemThatLostItsFileItsBytesBack) {
  const AssetRef first = bring(outside(u"a.png"_s, png({8, 8})));
  ASSERT_TRUE(QFile::remove(store.fileOf(*first)));
  EXPECT_EQ(bring(outside(u"a.png"_s, png({8, 8}))), first);
  EXPECT_EQ(folder.read(u"work/"_s + first->localFilePath), png({8, 8}));
  EXPECT_EQ(filesInside().filter(u"/references/"_s).size(), 1);
  EXPECT_EQ(filesInside().filter(u"/thumbnails/"_s).size(), 1);
}

TEST_F(ImportOneTest, ImportsAnewWhatHasLostItsFileUnderAnotherName) {
  const AssetRef first = bring(outside(u"a.png"_s, png({8, 8})));
  ASSERT_TRUE(QFile::remove(store.fileOf(*first)));
  const AssetRef second = bring(outside(u"b.png"_s, png({8, 8})));
  EXPECT_NE(second->id, first->id);
  EXPECT_EQ(folder.read(u"work/"_s + second->localFilePath), png({8, 8}));
}

TEST_F(ImportOneTest, CopiesOnceWhenTwoRoadsBringTheSameBytesAtOnce) {
  auto one = importReference(&store, ports, outside(u"a.png"_s, png({90, 8})), {}, {});
  auto two = importReference(&store, ports, outside(u"b.png"_s, png({90, 8})), {}, {});
  const ImportedReference first = runTask(std::move(one));
  const ImportedReference second = runTask(std::move(two));
  EXPECT_EQ(first.item, second.item);
  EXPECT_NE(first.isNew, second.isNew);
  EXPECT_EQ(store.assets().size(), 1u);
  EXPECT_EQ(filesInside().filter(u"/references/"_s).size(), 1);
  EXPECT_TRUE(importNotes(files()).empty());
}

TEST_F(ImportOneTest, FollowsALinkToItsFileAndCopiesTheFile) {
  const QString source = outside(u"a.png"_s, png({8, 8}));
  ASSERT_TRUE(QFile::link(source, folder / u"outside/link.png"_s));
  const AssetRef asset = bring(folder / u"outside/link.png"_s);
  EXPECT_FALSE(QFileInfo(store.fileOf(*asset)).isSymLink());
  EXPECT_EQ(folder.read(u"work/"_s + asset->localFilePath), png({8, 8}));
}

TEST_F(ImportOneTest, RefusesFilesThatAreNoWholePictureAndLeavesNothing) {
  const QByteArray whole = test::encoded(test::cornerMarked({400, 300}), "JPEG");
  EXPECT_EQ(refusal(outside(u"notes.txt"_s, "words")), "Unsupported media: notes.txt");
  EXPECT_EQ(refusal(outside(u"empty.png"_s, "")), "Unsupported media: empty.png");
  EXPECT_EQ(refusal(outside(u"cut.jpg"_s, whole.first(whole.size() / 2))), "This image could not be read.");
  EXPECT_EQ(refusal(outside(u"cut.png"_s, png({64, 64}).chopped(40))), "This image could not be read.");
  EXPECT_EQ(refusal(outside(u"huge.png"_s, test::pngHeader({60000, 60000}))), "This image could not be read.");
  EXPECT_TRUE(filesInside().isEmpty());
  EXPECT_EQ(store.assets().size(), 0u);
  EXPECT_EQ(store.localOperations(), 0);
}

TEST_F(ImportOneTest, RefusesFoldersPipesAndLinksToNothing) {
  EXPECT_EQ(refusal(folder.path()), "Choose a media file, not a folder.");
  ASSERT_TRUE(QFile::link(folder / u"nowhere.png"_s, folder / u"dangling.png"_s));
  EXPECT_EQ(refusal(folder / u"dangling.png"_s), "Choose a media file, not a folder.");
  ASSERT_EQ(::mkfifo(qUtf8Printable(folder / u"pipe.png"_s), 0600), 0);
  EXPECT_EQ(refusal(folder / u"pipe.png"_s), "Choose a media file, not a folder.");
  EXPECT_TRUE(filesInside().isEmpty());
}

TEST_F(ImportOneTest, SaysWhatAnUnreadableFileIs) {
  const QString source = outside(u"a.png"_s, png({8, 8}));
  test::FailingFileLayer layer(1, EACCES);
  const FileLayerOverride failing(layer);
  const std::string said = refusal(source);
  EXPECT_NE(said.find("Permission denied"), std::string::npos) << said;
}

TEST_F(ImportOneTest, LeavesNoFileWithoutARecordWhateverStepOnTheDiskFails) {
  const QString source = outside(u"a.png"_s, png({8, 8}));
  for (const int problem : {ENOSPC, EIO}) {
    for (int step = 1;; ++step) {
      bool failed = false;
      {
        test::FailingFileLayer layer(step, problem, test::Failing::ThisAndAllAfter);
        const FileLayerOverride failing(layer);
        const std::string said = refusal(source);
        failed = layer.hasFailed();
        if (failed && store.assets().size() == 0) { EXPECT_FALSE(said.empty()) << step; }
      }
      settle();
      // What a writer could not take away is hidden, and goes at the next opening after a crash.
      const qsizetype copies = filesInside().filter(QRegularExpression(u"/references/[^.]"_s)).size();
      EXPECT_EQ(copies, static_cast<qsizetype>(store.assets().size())) << "step " << step;
      EXPECT_TRUE(importNotes(files()).empty()) << "step " << step;
      for (const AssetRef& asset : store.assets()) EXPECT_TRUE(QFileInfo::exists(store.fileOf(*asset))) << step;
      if (!failed) break;
      std::vector<AssetRef> all(store.assets().begin(), store.assets().end());
      if (!all.empty()) ASSERT_TRUE(trash(store, all));
      for (const AssetRef& asset : all) store.context().remove(asset), QFile::remove(store.fileOf(*asset));
      store.save(LibraryTables::all);
    }
  }
}

TEST_F(ImportOneTest, AFailedSaveLeavesTheFileToTheNextOpeningWhichTakesItAway) {
  const QString source = outside(u"a.png"_s, png({8, 8}));
  failWrites("INSERT", "Asset");
  EXPECT_FALSE(refusal(source).empty());
  allowWrites("INSERT", "Asset");
  EXPECT_EQ(store.assets().size(), 0u);
  settle();
  EXPECT_EQ(store.assets().size(), 0u);
  EXPECT_TRUE(filesInside().isEmpty());
}

TEST_F(ImportOneTest, AnImportThatWasCutOffIsCompletedAtTheNextOpening) {
  const QByteArray bytes = png({20, 10});
  folder.write(u"work/Inbox/references/kept-001.png"_s, bytes);
  const ImportNote note{newUuid(), u"Inbox/references/kept-001.png"_s, sha256Hex(bytes), {}, u"kept.png"_s,
                        u"clipboard"_s, {}, {}};
  writeImportNote(files(), note);
  settle();
  const AssetRef asset = store.asset(note.asset);
  ASSERT_TRUE(asset);
  EXPECT_EQ(asset->sourceType(), AssetSourceType::clipboard);
  EXPECT_EQ(asset->width, 20);
  EXPECT_FALSE(QImage(store.thumbnailOf(*asset).value()).isNull());
  EXPECT_TRUE(importNotes(files()).empty());
}

TEST_F(ImportOneTest, ANoteWhoseCopyNeverCameGoes) {
  writeImportNote(files(), {newUuid(), u"Inbox/references/gone-001.png"_s, sha256Hex("x"), {}, u"gone.png"_s,
                            u"imported"_s, {}, {}});
  settle();
  EXPECT_EQ(store.assets().size(), 0u);
  EXPECT_TRUE(filesInside().isEmpty());
}

TEST_F(ImportOneTest, ANoteThatNamesAnotherPlaceTouchesNothing) {
  folder.write(u"outside/of-somebody-else.png"_s, png({8, 8}));
  for (const QString& path : {u"../outside/of-somebody-else.png"_s, u"/etc/passwd"_s, u"Inbox/generated/a.png"_s,
                              u".sorvan/references/library.store"_s, u"Inbox/references/../../.sorvan/library.store"_s})
    writeImportNote(files(), {newUuid(), path, sha256Hex(png({8, 8})), {}, u"a.png"_s, u"imported"_s, {}, true});
  settle();
  EXPECT_EQ(folder.read(u"outside/of-somebody-else.png"_s), png({8, 8}));
  EXPECT_TRUE(store.hasWorkspace());
  EXPECT_EQ(store.assets().size(), 0u);
}

TEST_F(ImportOneTest, RefusesDuringABackupBeforeAnythingMoves) {
  store.setBackingUp(true);
  EXPECT_EQ(refusal(outside(u"a.png"_s, png({8, 8}))),
            "Sorvan is backing up this workspace. Please wait until the backup finishes before making changes.");
  store.setBackingUp(false);
  EXPECT_TRUE(filesInside().isEmpty());
  EXPECT_EQ(store.localOperations(), 0);
}

TEST_F(ImportOneTest, AProjectThatGoesMeanwhileEndsTheImportWithNothingLeft) {
  const ProjectRef project = addProject(u"Gone"_s);
  ports.provenance = [](const QString&, const QString&) { return HistoryWriter(); };
  auto importing = importReference(&store, ports, outside(u"a.png"_s, png({8, 8})), project->id, {});
  const QString place = project->rootFolder;
  store.context().remove(project);
  store.save(LibraryTables::projects);
  EXPECT_EQ(test::messageOf([&] { runTask(std::move(importing)); }), text(texts::projectGone()));
  EXPECT_TRUE(QDir(files().absolute(place + u"/references"_s)).isEmpty());
}

TEST_F(ImportOneTest, AStopLeavesNothing) {
  std::stop_source stop;
  auto importing = importReference(&store, ports, outside(u"a.png"_s, png({300, 300})), {}, stop.get_token());
  stop.request_stop();
  EXPECT_THROW(runTask(std::move(importing)), Cancelled);
  EXPECT_TRUE(filesInside().isEmpty());
  EXPECT_EQ(store.localOperations(), 0);
}

TEST_F(ImportOneTest, AHistoryThatIsRefusedCopiesNothing) {
  ports.provenance = [](const QString&, const QString&) -> HistoryWriter {
    throw SorvanError(u"The history of this file could not be read."_s);
  };
  EXPECT_EQ(refusal(outside(u"a.png"_s, png({8, 8}))), "The history of this file could not be read.");
  EXPECT_TRUE(filesInside().isEmpty());
}

TEST_F(ImportOneTest, ARecoveredPromptComesInWithTheItem) {
  ports.recoveredPrompt = [](const QString&) -> HistoryWriter {
    return [](const Asset& asset) {
      Generation generation;
      generation.id = newUuid();
      generation.assetID = asset.id;
      generation.prompt = u"a harbour"_s;
      generation.status = u"imported"_s;
      return std::vector<Generation>{generation};
    };
  };
  const AssetRef asset = bring(outside(u"a.png"_s, png({8, 8})));
  ASSERT_TRUE(store.generationOf(asset->id));
  EXPECT_EQ(text(store.generationOf(asset->id)->prompt), "a harbour");
}

TEST_F(ImportOneTest, APastedPictureIsKeptAsClipboardOnce) {
  const QImage picture = test::cornerMarked({16, 16});
  const AssetRef first = runTask(importPastedReference(&store, ports, picture, {}, {})).item;
  EXPECT_EQ(first->sourceType(), AssetSourceType::clipboard);
  EXPECT_TRUE(first->originalFilename.startsWith(u"Pasted-"_s));
  EXPECT_EQ(runTask(importPastedReference(&store, ports, picture, {}, {})).item, first);
  EXPECT_EQ(test::messageOf([&] { runTask(importPastedReference(&store, ports, QImage(), {}, {})); }),
            "This image could not be read.");
}

TEST_F(ImportOneTest, ABatchThatIsRememberedGoesToTrashInOneStep) {
  const AssetRef one = bring(outside(u"a.png"_s, png({8, 8})));
  const AssetRef two = bring(outside(u"b.png"_s, png({9, 8})));
  rememberAddedAssets(store, {one, two}, texts::importStep());
  applyHistory(store, HistoryDirection::undo);
  EXPECT_TRUE(one->isTrashed());
  EXPECT_TRUE(two->isTrashed());
  EXPECT_TRUE(QFileInfo::exists(store.fileOf(*one)));
}

}  // namespace
}  // namespace sorvan::exchange
