#include "shell/gallery_index.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "core/library_fixture.h"
#include "core/small_edits.h"
#include "support/run_task.h"

namespace sorvan::shell {
namespace {

struct GalleryIndexTest : test::LibraryFixture {
  GalleryFilter filter;

  GalleryIndexTest() { open(); }
  core::AssetRef add(const QString& name, const QString& prompt = {}, double age = 0) {
    const core::AssetRef asset = store.context().insert(newAsset(QStringLiteral("Inbox/generated/") + name, age));
    core::NewRecords records{{asset}, {}, {}, {}};
    if (!prompt.isEmpty()) {
      core::Generation made;
      made.id = base::newUuid();
      made.assetID = asset->id;
      made.jobID = base::newUuid();
      made.model = QStringLiteral("fal/flux");
      made.prompt = prompt;
      records.generations.push_back(store.context().insert(made));
    }
    store.save(core::LibraryTables::none);
    store.registerRecords(records);
    return asset;
  }
  QStringList found(GalleryIndex& index) {
    QStringList names;
    for (const core::AssetRef& asset : index.assets(filter)) names << asset->filename();
    return names;
  }
  QStringList search(GalleryIndex& index, const QString& text) {
    filter.search = text;
    return found(index);
  }
  static QString modelName(const QString& model) {
    return model == QStringLiteral("fal/flux") ? QStringLiteral("Flux Prime") : model;
  }
};

TEST_F(GalleryIndexTest, FindsACafeWithAndWithoutItsAccent) {
  GalleryIndex index(store, modelName);
  add(QStringLiteral("one.png"), QStringLiteral("A quiet Café in Łódź"));
  add(QStringLiteral("two.png"), QStringLiteral("a cafe"));
  add(QStringLiteral("three.png"), QStringLiteral("a bar"));
  EXPECT_EQ(search(index, QStringLiteral("cafe")).size(), 2);
  EXPECT_EQ(search(index, QStringLiteral("CAFÉ")).size(), 2);
  EXPECT_EQ(search(index, QStringLiteral("quiet ca")), QStringList{QStringLiteral("one.png")});
  EXPECT_EQ(search(index, QStringLiteral("  ")).size(), 3);
  EXPECT_TRUE(search(index, QStringLiteral("nowhere")).isEmpty());
}

TEST_F(GalleryIndexTest, FindsByFileNameNotesModelAndProject) {
  GalleryIndex index(store, modelName);
  const core::AssetRef fox = add(QStringLiteral("red-fox.png"), QStringLiteral("animal"));
  add(QStringLiteral("hare.png"));
  core::setNotes(store, fox, QStringLiteral("for the cover"));
  const core::ProjectRef project =
      store.context().insert(core::Project(QStringLiteral("Büro"), QStringLiteral("buero"), clock->now()));
  store.context().edit(fox).projectID = project->id;
  store.save(core::LibraryTables::projects);
  for (const char* text : {"RED-fox", "the cover", "flux prime", "buro", "animal"})
    EXPECT_EQ(search(index, QString::fromUtf8(text)), QStringList{QStringLiteral("red-fox.png")}) << text;
  store.context().edit(project).name = QStringLiteral("Sea");
  store.save(core::LibraryTables::projects);
  EXPECT_TRUE(search(index, QStringLiteral("buro")).isEmpty());
  EXPECT_EQ(search(index, QStringLiteral("sea")).size(), 1);
}

TEST_F(GalleryIndexTest, FieldsAreNotSearchedAcrossTheirEnds) {
  GalleryIndex index(store, modelName);
  add(QStringLiteral("one.png"), QStringLiteral("prompt"));
  EXPECT_TRUE(search(index, QStringLiteral("pngcame")).isEmpty());
}

TEST_F(GalleryIndexTest, TheSameFilterAtTheSameRevisionCostsNoPass) {
  GalleryIndex index(store, modelName);
  const core::AssetRef fox = add(QStringLiteral("fox.png"), QStringLiteral("animal"));
  filter.search = QStringLiteral("animal");
  found(index);
  const int passes = index.passes();
  found(index);
  EXPECT_EQ(index.passes(), passes);
  core::toggleFavorite(store, fox);
  found(index);
  EXPECT_EQ(index.passes(), passes + 1);
  filter.favoritesOnly = true;
  EXPECT_EQ(found(index).size(), 1);
  EXPECT_EQ(index.passes(), passes + 2);
}

TEST_F(GalleryIndexTest, AListOfRecentDaysIsMadeAgainWhenAskedTo) {
  GalleryIndex index(store, modelName);
  add(QStringLiteral("fox.png"));
  filter.days = 1;
  EXPECT_EQ(found(index).size(), 1);
  clock->advance(std::chrono::hours(25));
  EXPECT_EQ(found(index).size(), 1);
  index.forgetTimes();
  EXPECT_TRUE(found(index).isEmpty());
}

TEST_F(GalleryIndexTest, SortsNamesInNaturalOrderAndKeepsUpWithARename) {
  GalleryIndex index(store, modelName);
  add(QStringLiteral("shot-10.png"));
  add(QStringLiteral("Shot-2.png"), {}, 5);
  const core::AssetRef last = addAsset(QStringLiteral("zebra.png"), 9);
  filter.sort = GallerySort::name;
  EXPECT_EQ(found(index).join(u' '), QStringLiteral("Shot-2.png shot-10.png zebra.png"));
  core::rename(store, last, QStringLiteral("antelope"));
  EXPECT_EQ(found(index).join(u' '), QStringLiteral("antelope-001.png Shot-2.png shot-10.png"));
  add(QStringLiteral("bear.png"), {}, 20);
  EXPECT_EQ(found(index).join(u' '), QStringLiteral("antelope-001.png bear.png Shot-2.png shot-10.png"));
}

TEST_F(GalleryIndexTest, AnOlderItemThatComesInIsFoundAtItsPlace) {
  GalleryIndex index(store, modelName);
  add(QStringLiteral("new.png"), QStringLiteral("boat"));
  add(QStringLiteral("old.png"), QStringLiteral("boat"), 100);
  EXPECT_EQ(search(index, QStringLiteral("boat")).join(u' '), QStringLiteral("new.png old.png"));
  add(QStringLiteral("middle.png"), QStringLiteral("boat"), 50);
  EXPECT_EQ(search(index, QStringLiteral("boat")).join(u' '), QStringLiteral("new.png middle.png old.png"));
}

TEST_F(GalleryIndexTest, ALargeLibraryIsFoldedInTheBackgroundAndTellsWhenItStands) {
  for (int number = 0; number < 600; ++number) {
    const core::AssetRef asset =
        store.context().insert(newAsset(QStringLiteral("Inbox/generated/n%1.png").arg(number), number));
    static_cast<void>(asset);
  }
  store.save(core::LibraryTables::assets);
  GalleryIndex index(store, modelName);
  QSignalSpy grew(&index, &GalleryIndex::searchGrew);
  EXPECT_FALSE(index.searchIsComplete());
  EXPECT_TRUE(search(index, QStringLiteral("n599")).isEmpty());
  test::runTask(index.whenSearchStands());
  EXPECT_TRUE(index.searchIsComplete());
  EXPECT_EQ(grew.count(), 1);
  EXPECT_EQ(search(index, QStringLiteral("n599")).size(), 1);
  EXPECT_EQ(index.texts().count(), 600u);
  filter.search.clear();
  filter.sort = GallerySort::name;
  EXPECT_EQ(found(index).first(), QStringLiteral("n0.png"));
  EXPECT_EQ(found(index).last(), QStringLiteral("n599.png"));
}

TEST_F(GalleryIndexTest, AnotherWorkspaceStartsAnew) {
  GalleryIndex index(store, modelName);
  add(QStringLiteral("fox.png"), QStringLiteral("animal"));
  EXPECT_EQ(search(index, QStringLiteral("animal")).size(), 1);
  core::openWorkspace(store, folder / QStringLiteral("other"), core::Remember::no);
  EXPECT_TRUE(search(index, QStringLiteral("animal")).isEmpty());
  EXPECT_EQ(index.texts().count(), 0u);
}

TEST_F(GalleryIndexTest, CountsItemsOfProjectsAndNamesModels) {
  GalleryIndex index(store, modelName);
  const core::AssetRef fox = add(QStringLiteral("fox.png"), QStringLiteral("animal"));
  add(QStringLiteral("hare.png"));
  EXPECT_EQ(index.projectCounts().value(QUuid()), 2);
  store.context().edit(fox).deletedAt = clock->now();
  store.save(core::LibraryTables::none);
  EXPECT_EQ(index.projectCounts().value(QUuid()), 1);
  EXPECT_EQ(index.models(), std::vector<QString>{QStringLiteral("fal/flux")});
}

TEST(SearchTextsTest, AReplacedTextIsFoundNoMoreAndManyReplacementsAreTidiedUp) {
  SearchTexts texts;
  const QUuid id = base::newUuid();
  const auto source = [](const QString& prompt) {
    SearchSource made;
    made.path = QStringLiteral("a.png");
    made.prompt = prompt;
    return made;
  };
  texts.put({fold(id, source(QStringLiteral("first")))});
  EXPECT_TRUE(texts.isCurrent(id, source(QStringLiteral("first"))));
  texts.put({fold(id, source(QStringLiteral("second")))});
  EXPECT_EQ(texts.find("first")[0], 0);
  EXPECT_EQ(texts.find("second")[0], 1);
  EXPECT_EQ(texts.count(), 1u);
  for (int round = 0; round < 40; ++round) texts.put({fold(id, source(QString(100'000, QChar(u'a' + round % 26))))});
  EXPECT_LT(texts.bytes(), 2'500'000u);
  EXPECT_EQ(texts.find("nnnn")[0], 1);
}

}  // namespace
}  // namespace sorvan::shell
