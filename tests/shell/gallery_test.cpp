#include <gtest/gtest.h>

#include <QSignalSpy>

#include "base/ids.h"
#include "core/small_edits.h"
#include "core/workspace_opening.h"
#include "desk.h"

namespace sorvan::shell {
namespace {

using namespace std::chrono_literals;

struct GalleryTest : testing::Test {
  test::Desk desk;
  QUuid make(const QString& prompt) {
    desk.generate(prompt);
    desk.settle();
    desk.clock->advance(1s);
    return desk.store.assets().front()->id;
  }
};

TEST_F(GalleryTest, ShowsNewestItemsFirst) {
  const QUuid first = make(QStringLiteral("one"));
  const QUuid second = make(QStringLiteral("two"));
  ASSERT_EQ(desk.gallery.count(), 2);
  EXPECT_EQ(desk.gallery.idAt(0), second);
  EXPECT_EQ(desk.gallery.idAt(1), first);
  EXPECT_EQ(desk.gallery.countText(), QStringLiteral("2 items"));
}

TEST_F(GalleryTest, AnItemsCellTellsItsFileKindAndModel) {
  make(QStringLiteral("one"));
  const GalleryCell cell = desk.gallery.cellAt(0);
  EXPECT_EQ(cell.kind, CellKind::image);
  EXPECT_TRUE(cell.fileName.endsWith(QStringLiteral(".png")));
  EXPECT_EQ(cell.modelName, QStringLiteral("Nano Banana 2"));
  EXPECT_NEAR(desk.gallery.aspectRatioAt(0), 48.0 / 27, 0.001);
  EXPECT_TRUE(cell.accessibleName.contains(QStringLiteral("Image")));
}

TEST_F(GalleryTest, RunningAndWaitingJobsLeadTheWallAndBecomeItems) {
  make(QStringLiteral("one"));
  desk.provider->gate.emplace();
  for (const char* prompt : {"two", "three", "four"}) desk.generate(QString::fromLatin1(prompt));
  ASSERT_EQ(desk.gallery.jobCount(), 3);
  EXPECT_EQ(desk.gallery.cellAt(0).job.state, JobState::running);
  EXPECT_EQ(desk.gallery.cellAt(1).job.state, JobState::running);
  EXPECT_EQ(desk.gallery.cellAt(2).job.state, JobState::queued);
  EXPECT_EQ(desk.gallery.cellAt(2).job.detail, QStringLiteral("Waiting to start"));
  EXPECT_FALSE(desk.gallery.isJobAt(3));
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.gallery.jobCount(), 0);
  EXPECT_EQ(desk.gallery.count(), 4);
}

TEST_F(GalleryTest, AFailedJobStaysUntilItIsDismissed) {
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(QStringLiteral("Planted.")));
  desk.generate(QStringLiteral("one"));
  desk.settle();
  ASSERT_EQ(desk.gallery.jobCount(), 1);
  EXPECT_EQ(desk.gallery.cellAt(0).job.state, JobState::failed);
  EXPECT_EQ(desk.gallery.cellAt(0).job.message, QStringLiteral("Planted."));
  desk.gallery.dismissJob(desk.gallery.idAt(0));
  EXPECT_EQ(desk.gallery.count(), 0);
  EXPECT_EQ(desk.jobs.count(), 1);
}

TEST_F(GalleryTest, ADismissedJobStaysAwayWhenTheWorkspaceOpensAgainAndComesBackWithARetry) {
  const QString root = *desk.store.workspaceRoot();
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(QStringLiteral("Planted.")));
  desk.generate(QStringLiteral("one"));
  desk.settle();
  const QUuid job = desk.gallery.idAt(0);
  desk.gallery.dismissJob(job);
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Another"), core::Remember::no);
  core::openWorkspace(desk.store, root, core::Remember::no);
  test::runPosted();
  ASSERT_EQ(desk.store.jobs().size(), 1u);
  EXPECT_EQ(desk.gallery.count(), 0);
  desk.provider->gate.emplace();
  desk.jobs.retry(job);
  test::runPosted();
  EXPECT_EQ(desk.gallery.jobCount(), 1);
  desk.provider->gate->finish();
  desk.settle();
  // It failed again, and that is news.
  EXPECT_EQ(desk.gallery.jobCount(), 1);
}

TEST_F(GalleryTest, ARunningJobCannotBeDismissed) {
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("one"));
  desk.gallery.dismissJob(desk.gallery.idAt(0));
  EXPECT_EQ(desk.gallery.jobCount(), 1);
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(GalleryTest, ElapsedTimeTicksOnceASecondWhileAJobRuns) {
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("one"));
  QSignalSpy content(&desk.gallery, &GalleryPresenter::contentChanged);
  desk.clock->advance(1s);
  test::runPosted();
  desk.clock->advance(1s);
  test::runPosted();
  EXPECT_EQ(content.count(), 2);
  EXPECT_EQ(desk.gallery.cellAt(0).job.elapsedText, QStringLiteral("0:02"));
  desk.provider->gate->finish();
  desk.settle();
}

TEST_F(GalleryTest, SeveralChangesOfOneTurnCostOnePass) {
  const QUuid id = make(QStringLiteral("one"));
  QSignalSpy content(&desk.gallery, &GalleryPresenter::contentChanged);
  QSignalSpy layout(&desk.gallery, &GalleryPresenter::layoutChanged);
  for (int stars = 1; stars <= 5; ++stars) core::setRating(desk.store, desk.store.asset(id), stars);
  EXPECT_EQ(content.count(), 0);
  test::runPosted();
  EXPECT_EQ(content.count(), 1);
  EXPECT_EQ(layout.count(), 0);
  EXPECT_EQ(desk.gallery.cellAt(0).rating, 5);
}

TEST_F(GalleryTest, FavoritesShowsOnlyWhatIsMarked) {
  const QUuid marked = make(QStringLiteral("one"));
  make(QStringLiteral("two"));
  core::toggleFavorite(desk.store, desk.store.asset(marked));
  test::runPosted();
  desk.state.setLocation(favoritesLocation);
  ASSERT_EQ(desk.gallery.count(), 1);
  EXPECT_EQ(desk.gallery.idAt(0), marked);
  EXPECT_EQ(desk.gallery.title(), QStringLiteral("Favorites"));
  core::toggleFavorite(desk.store, desk.store.asset(marked));
  test::runPosted();
  EXPECT_EQ(desk.gallery.count(), 0);
}

TEST_F(GalleryTest, TheInboxShowsWhatHasNoProject) {
  make(QStringLiteral("one"));
  desk.state.setLocation(inboxLocation);
  EXPECT_EQ(desk.gallery.count(), 1);
  desk.state.setLocation(allMediaLocation);
  EXPECT_EQ(desk.gallery.title(), QStringLiteral("All Media"));
  EXPECT_EQ(desk.gallery.count(), 1);
}

TEST_F(GalleryTest, FindsACellByItsId) {
  const QUuid id = make(QStringLiteral("one"));
  EXPECT_EQ(desk.gallery.indexOf(id), 0);
  EXPECT_EQ(desk.gallery.indexOf(base::newUuid()), -1);
}

TEST_F(GalleryTest, FindsCellsFarFromEachOtherAndWhereTheyWentAfterAChange) {
  constexpr int many = 200;
  for (int number = 0; number < many; ++number) {
    const QString path = QStringLiteral("Inbox/n%1.png").arg(number);
    static_cast<void>(desk.store.context().insert(
        core::Asset({}, core::MediaType::image, path, path, {}, desk.store.now() - number)));
  }
  desk.store.save(core::LibraryTables::assets);
  desk.settle();
  ASSERT_EQ(desk.gallery.count(), many);
  for (const int index : {0, 199, 3, 100, 198}) EXPECT_EQ(desk.gallery.indexOf(desk.gallery.idAt(index)), index);
  EXPECT_EQ(desk.gallery.indexOf(base::newUuid()), -1);
  const QUuid last = desk.gallery.idAt(many - 1);
  desk.clock->advance(1s);
  const QUuid first = make(QStringLiteral("one"));
  EXPECT_EQ(desk.gallery.indexOf(first), 0);
  EXPECT_EQ(desk.gallery.indexOf(last), many);
  EXPECT_EQ(desk.gallery.indexOf(first), 0);
}

TEST_F(GalleryTest, TheInspectorTellsHowAnItemWasMade) {
  const QUuid id = make(QStringLiteral("a red boat"));
  desk.state.select({id});
  const InspectorDisplay display = desk.inspector.display();
  EXPECT_EQ(display.subject, InspectorSubject::item);
  ASSERT_FALSE(display.sections.empty());
  EXPECT_EQ(display.sections.front().text, QStringLiteral("a red boat"));
  desk.inspector.setRating(3);
  EXPECT_EQ(desk.inspector.display().rating, 3);
  desk.inspector.toggleFavorite();
  EXPECT_TRUE(desk.inspector.display().favorite);
}

TEST_F(GalleryTest, SeveralItemsAreMarkedInOneSaveAndUnmarkedOnceAllAre) {
  const QUuid first = make(QStringLiteral("one"));
  const QUuid second = make(QStringLiteral("two"));
  core::toggleFavorite(desk.store, desk.store.asset(first));
  desk.state.select({first, second});
  const auto before = desk.store.revision();
  desk.inspector.toggleFavorite();
  EXPECT_EQ(desk.store.revision(), before + 1);
  EXPECT_TRUE(desk.store.asset(first)->favorite && desk.store.asset(second)->favorite);
  desk.inspector.toggleFavorite();
  EXPECT_FALSE(desk.store.asset(first)->favorite || desk.store.asset(second)->favorite);
}

TEST_F(GalleryTest, TheInspectorTellsOfNothingAndOfSeveral) {
  EXPECT_EQ(desk.inspector.display().subject, InspectorSubject::nothing);
  const QUuid first = make(QStringLiteral("one"));
  const QUuid second = make(QStringLiteral("two"));
  desk.state.select({first, second});
  EXPECT_EQ(desk.inspector.display().subject, InspectorSubject::severalItems);
  EXPECT_EQ(desk.inspector.display().title, QStringLiteral("2 items selected"));
}

}  // namespace
}  // namespace sorvan::shell
