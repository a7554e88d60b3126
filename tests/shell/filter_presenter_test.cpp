#include "shell/filter_presenter.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "core/small_edits.h"
#include "core/workspace_opening.h"
#include "desk.h"

namespace sorvan::shell {
namespace {

using namespace std::chrono_literals;

struct FilterPresenterTest : testing::Test {
  test::Desk desk;
  FilterPresenter& filters = desk.filters;

  QUuid make(const QString& prompt) {
    desk.generate(prompt);
    desk.settle();
    desk.clock->advance(1s);
    return desk.store.assets().front()->id;
  }
  FilterChip chip(FilterKind kind) const {
    for (const FilterChip& one : filters.chips())
      if (one.kind == kind) return one;
    return {};
  }
};

TEST_F(FilterPresenterTest, ASearchNarrowsTheWallAndClearingShowsAllAgain) {
  make(QStringLiteral("a red boat"));
  const QUuid fox = make(QStringLiteral("a quiet fox"));
  QSignalSpy changed(&filters, &FilterPresenter::changed);
  filters.setSearch(QStringLiteral("FOX"));
  ASSERT_EQ(desk.gallery.count(), 1);
  EXPECT_EQ(desk.gallery.idAt(0), fox);
  EXPECT_TRUE(filters.narrows());
  filters.setSearch(QStringLiteral("nowhere"));
  EXPECT_EQ(desk.gallery.count(), 0);
  EXPECT_EQ(desk.gallery.emptyTitle(), QStringLiteral("No media match these filters"));
  filters.clear();
  EXPECT_EQ(desk.gallery.count(), 2);
  EXPECT_EQ(changed.count(), 3);
}

TEST_F(FilterPresenterTest, WhileItemsAreNarrowedWorkStaysInSightUntilItHasLanded) {
  make(QStringLiteral("a red boat"));
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("a fox"));
  filters.setSearch(QStringLiteral("boat"));
  EXPECT_EQ(desk.gallery.jobCount(), 1);
  EXPECT_EQ(desk.gallery.count(), 2);
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.gallery.count(), 1);
  EXPECT_EQ(desk.gallery.jobCount(), 0);
}

TEST_F(FilterPresenterTest, WhileItemsAreNarrowedFailedWorkStaysAndCancelledWorkStepsAside) {
  desk.provider->failure = std::make_exception_ptr(base::SorvanError(QStringLiteral("Refused.")));
  desk.generate(QStringLiteral("a fox"));
  desk.settle();
  desk.provider->failure = nullptr;
  desk.provider->gate.emplace();
  desk.generate(QStringLiteral("an owl"));
  desk.jobs.cancel(desk.newestJob()->id);
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(desk.gallery.jobCount(), 2);
  filters.setSearch(QStringLiteral("boat"));
  ASSERT_EQ(desk.gallery.jobCount(), 1);
  EXPECT_EQ(desk.store.job(desk.gallery.idAt(0))->status, core::jobStatus::failed);
}

TEST_F(FilterPresenterTest, TypesModelsAndMarksNarrow) {
  const QUuid boat = make(QStringLiteral("a red boat"));
  make(QStringLiteral("a fox"));
  filters.setType(2);
  EXPECT_EQ(desk.gallery.count(), 0);
  filters.setType(1);
  EXPECT_EQ(desk.gallery.count(), 2);
  EXPECT_EQ(filters.type(), 1);
  core::setRating(desk.store, desk.store.asset(boat), 4);
  core::setStatus(desk.store, desk.store.asset(boat), core::AssetStatus::approved);
  test::runPosted();
  filters.choose(FilterKind::rating, 4);
  EXPECT_EQ(desk.gallery.count(), 1);
  filters.choose(FilterKind::rating, 5);
  EXPECT_EQ(desk.gallery.count(), 0);
  filters.choose(FilterKind::rating, 0);
  filters.choose(FilterKind::status, 3);
  EXPECT_EQ(desk.gallery.count(), 1);
  EXPECT_EQ(chip(FilterKind::status).value, QStringLiteral("Approved"));
  filters.choose(FilterKind::status, 0);
  filters.choose(FilterKind::orientation, 3);
  EXPECT_EQ(desk.gallery.count(), 0);
  filters.choose(FilterKind::orientation, 2);
  EXPECT_EQ(desk.gallery.count(), 2);
  ASSERT_EQ(chip(FilterKind::model).choices.size(), 2u);
  filters.choose(FilterKind::model, 1);
  EXPECT_EQ(desk.gallery.count(), 2);
  EXPECT_EQ(chip(FilterKind::model).value, QStringLiteral("Nano Banana 2"));
  filters.choose(FilterKind::provider, 1);
  EXPECT_EQ(desk.gallery.count(), 2);
  filters.choose(FilterKind::days, 1);
  EXPECT_EQ(desk.gallery.count(), 2);
  desk.clock->advance(std::chrono::hours(48));
  desk.gallery.refreshDates();
  test::runPosted();
  EXPECT_EQ(desk.gallery.count(), 0);
}

TEST_F(FilterPresenterTest, APartOfAModelsNameIsShownAsItsValue) {
  make(QStringLiteral("a red boat"));
  GalleryFilter filter = desk.state.filter();
  filter.model = QStringLiteral("banana");
  desk.gallery.setFilter(filter);
  EXPECT_EQ(desk.gallery.count(), 1);
  EXPECT_EQ(chip(FilterKind::model).current, -1);
  EXPECT_EQ(chip(FilterKind::model).value, QStringLiteral("banana"));
}

TEST_F(FilterPresenterTest, TheSortIsKeptForItsWorkspace) {
  const QUuid first = make(QStringLiteral("a red boat"));
  make(QStringLiteral("a fox"));
  const QString root = *desk.store.workspaceRoot();
  filters.setSort(1);
  EXPECT_EQ(desk.gallery.idAt(0), first);
  EXPECT_EQ(filters.sorts()[static_cast<std::size_t>(filters.sort())], QStringLiteral("Oldest"));
  EXPECT_FALSE(filters.narrows());
  core::openWorkspace(desk.store, desk.folder / QStringLiteral("Another"), core::Remember::no);
  EXPECT_EQ(filters.sort(), 0);
  core::openWorkspace(desk.store, root, core::Remember::no);
  test::runPosted();
  EXPECT_EQ(filters.sort(), 1);
  EXPECT_EQ(desk.gallery.idAt(0), first);
}

TEST_F(FilterPresenterTest, ASelectionStaysWhileAFilterHidesIt) {
  const QUuid boat = make(QStringLiteral("a red boat"));
  make(QStringLiteral("a fox"));
  desk.state.select({boat});
  filters.setSearch(QStringLiteral("fox"));
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{boat});
  filters.clear();
  EXPECT_EQ(desk.gallery.indexOf(boat), 1);
}

}  // namespace
}  // namespace sorvan::shell
