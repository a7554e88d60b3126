#include "shell/views/quick_look.h"

#include <QSignalSpy>

#include "shell/views/viewer_desk.h"
#include "views/comparison_desk.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class QuickLookPagesTest : public ComparisonDesk {
 protected:
  QuickLook& look() { return window->viewer().quickLook(); }
  std::vector<QUuid> looked() {
    std::vector<QUuid> items;
    for (const QuickLookPane* pane : look().panes()) items.push_back(pane->cell().id);
    return items;
  }
  void relate(QUuid parent, QUuid child) {
    const auto edge =
        desk.store.context().insert(core::AssetRelationship(parent, child, core::RelationshipType::editedFrom));
    desk.store.save(core::LibraryTables::none);
    desk.store.registerRecords({{}, {}, {edge}, {}});
  }
};

TEST_F(QuickLookPagesTest, SpaceOnASheetLooksAtItsPlacesInTheirOrder) {
  openSheet(several(3));
  const std::vector<QUuid> order = desk.comparison.sheet().ids();
  desk.state.setLocation(favoritesLocation);  // where the gallery has none of them
  desk.state.openContactSheet(desk.comparison.sheet().source());
  test::runPosted();
  key(Qt::Key_Home);
  key(Qt::Key_Space);
  ASSERT_EQ(looked(), std::vector<QUuid>{order[0]});
  key(Qt::Key_Right);
  EXPECT_EQ(looked(), std::vector<QUuid>{order[1]});
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{order[1]});
  key(Qt::Key_Space);
  EXPECT_FALSE(look().isOpen());
  EXPECT_EQ(window->library().page(), ModeKind::contactSheet);
  EXPECT_EQ(places().current(), 1) << "the keyboard is where the look ended";
}

TEST_F(QuickLookPagesTest, SelectedPlacesStandSideBySideAndStaySelected) {
  openSheet(several(4));
  const std::vector<QUuid> order = desk.comparison.sheet().ids();
  key(Qt::Key_3);
  const QSet<QUuid> chosen{order[0], order[2]};
  desk.state.select(chosen);
  key(Qt::Key_Space);
  EXPECT_EQ(looked(), (std::vector<QUuid>{order[0], order[2]}));
  key(Qt::Key_Escape);
  EXPECT_FALSE(look().isOpen());
  EXPECT_EQ(desk.state.selection(), chosen);
  EXPECT_EQ(places().current(), 2);
}

TEST_F(QuickLookPagesTest, EnterInTheLookOpensTheItemInTheOrderOfItsSheetAndBackReturns) {
  openSheet(several(3));
  const std::vector<QUuid> order = desk.comparison.sheet().ids();
  key(Qt::Key_2);
  key(Qt::Key_Space);
  key(Qt::Key_Return);
  EXPECT_EQ(window->library().page(), ModeKind::asset);
  EXPECT_EQ(desk.state.mode().subject, order[1]);
  EXPECT_EQ(desk.state.assetSequence(), order);
  key(Qt::Key_Escape);
  EXPECT_EQ(window->library().page(), ModeKind::contactSheet);
}

TEST_F(QuickLookPagesTest, SpaceInTheTreeLooksAtTheFamilyAndTheTreeFollows) {
  const std::vector<QUuid> ids = several(3);
  relate(ids[0], ids[1]);
  relate(ids[1], ids[2]);
  desk.state.openLineage(ids[1]);
  test::runPosted();
  LineageTree& tree = the<LineageView>()->tree();
  key(Qt::Key_Space);
  ASSERT_EQ(looked(), std::vector<QUuid>{ids[1]});
  EXPECT_EQ(window->library().page(), ModeKind::lineage);
  key(Qt::Key_Down);
  EXPECT_EQ(looked(), std::vector<QUuid>{ids[2]});
  key(Qt::Key_Escape);
  EXPECT_FALSE(look().isOpen());
  EXPECT_EQ(window->library().page(), ModeKind::lineage);
  EXPECT_EQ(tree.currentRow(), ids[2]);
  EXPECT_EQ(desk.state.inspectedId(), ids[2]);
}

TEST_F(QuickLookPagesTest, TheMenuLooksAndOpensWhereSpaceAndEnterDo) {
  openSheet(several(2));
  const std::vector<QUuid> order = desk.comparison.sheet().ids();
  key(Qt::Key_2);
  ASSERT_TRUE(actions->isEnabled(ActionId::quickLook));
  actions->trigger(ActionId::quickLook);
  EXPECT_EQ(looked(), std::vector<QUuid>{order[1]});
  key(Qt::Key_Space);
  actions->trigger(ActionId::openItem);
  EXPECT_EQ(desk.state.mode().subject, order[1]);
  EXPECT_EQ(desk.state.assetSequence(), order);
}

TEST_F(QuickLookPagesTest, AJobHasNothingToLookAt) {
  desk.provider->gate.emplace();
  desk.state.openContactSheet(ComparisonBatch{desk.compare(2)});
  test::runPosted();
  key(Qt::Key_1);
  key(Qt::Key_Space);
  EXPECT_FALSE(look().isOpen());
  desk.provider->gate->finish();
  desk.settle();
}

}  // namespace
}  // namespace sorvan::views
