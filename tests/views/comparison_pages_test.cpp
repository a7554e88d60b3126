#include <QAccessible>
#include <QPainter>
#include <QScrollBar>

#include <cmath>

#include "core/history.h"
#include "shell/sheet_texts.h"
#include "shell/views/add_media_dialog.h"
#include "shell/views/controls.h"
#include "shell/views/empty_note.h"
#include "shell/views/labels.h"
#include "shell/views/lineage_view.h"
#include "shell/views/media_cell.h"
#include "shell/views/sheet_cards.h"
#include "shell/views/sheet_keys.h"
#include "shell/views/sheet_view.h"
#include "views/comparison_desk.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

using ComparisonPagesTest = ComparisonDesk;

TEST_F(ComparisonPagesTest, ASheetOfSelectedItemsOpensWithItsPlacesAndBackReturns) {
  const std::vector<QUuid> ids = several(3);
  openSheet(ids);
  EXPECT_EQ(window->library().page(), ModeKind::contactSheet);
  ASSERT_EQ(places().count(), 3);
  for (int place = 0; place < 3; ++place) EXPECT_GT(places().at(place)->picture().height(), 120);
  EXPECT_GT(places().at(1)->geometry().right(), sheet().width() - 60) << "two columns take the sheet's width";
  EXPECT_TRUE(sheet().hasFocus() || sheet().isAncestorOf(window->focusWidget()));
  key(Qt::Key_Escape);
  EXPECT_EQ(window->library().page(), ModeKind::gallery);
  desk.state.setMode({ModeKind::contactSheets});
  auto* cards = the<SheetCards>();
  ASSERT_EQ(cards->rowCount(), 1);
  EXPECT_EQ(cards->rowName(0).section(u',', 0, 0), u"a boat"_s);
  key(Qt::Key_Return);
  EXPECT_EQ(window->library().page(), ModeKind::contactSheet);
}

TEST_F(ComparisonPagesTest, OneAndNineItemsOfferNoSheet) {
  const std::vector<QUuid> ids = several(9);
  desk.state.select({ids.front()});
  EXPECT_FALSE(actions->isEnabled(ActionId::newContactSheet));
  EXPECT_FALSE(actions->isEnabled(ActionId::compareItems));
  desk.state.select({ids.begin(), ids.end()});
  EXPECT_FALSE(actions->isEnabled(ActionId::newContactSheet));
  desk.state.select({ids.begin(), ids.begin() + 8});
  EXPECT_TRUE(actions->isEnabled(ActionId::newContactSheet));
}

TEST_F(ComparisonPagesTest, AComparisonFromTheComposerOpensItsSheetAndResultsDropIn) {
  desk.provider->gate.emplace();
  desk.state.openContactSheet(ComparisonBatch{desk.compare(3)});
  test::runPosted();
  ASSERT_EQ(places().count(), 3);
  SheetPlace* first = places().at(0);
  auto* cancel = named<Button>(*first, u"Cancel"_s);
  ASSERT_NE(cancel, nullptr);
  EXPECT_TRUE(cancel->isVisible());
  auto* add = named<Button>(*window, shell::texts::addMedia);
  EXPECT_FALSE(add->isEnabled());
  EXPECT_EQ(add->toolTip(), u"Add media after the comparison finishes"_s);
  desk.provider->gate->finish();
  desk.settle();
  EXPECT_EQ(places().at(0), first);
  EXPECT_FALSE(first->place().asset.isNull());
  EXPECT_FALSE(cancel->isVisible());
  EXPECT_TRUE(add->isEnabled());
}

TEST_F(ComparisonPagesTest, AFailedPlaceIsTriedAgainByItsButton) {
  desk.provider->failure = std::make_exception_ptr(SorvanError(u"The model is busy."_s));
  desk.state.openContactSheet(ComparisonBatch{desk.compare(2)});
  desk.settle();
  desk.provider->failure = nullptr;
  auto* retry = named<Button>(*places().at(1), u"Retry"_s);
  ASSERT_NE(retry, nullptr);
  QTest::mouseClick(retry, Qt::LeftButton);
  desk.settle();
  EXPECT_FALSE(places().at(1)->place().asset.isNull());
  EXPECT_TRUE(places().at(0)->place().asset.isNull());
}

TEST_F(ComparisonPagesTest, DigitsChoosePlacesAndAltAndADigitRates) {
  const std::vector<QUuid> ids = several(3);
  openSheet(ids);
  key(Qt::Key_2);
  EXPECT_EQ(places().current(), 1);
  const QUuid second = places().at(1)->place().asset;
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{second});
  key(Qt::Key_4, Qt::AltModifier);
  EXPECT_EQ(desk.store.asset(second)->rating, 4);
  key(Qt::Key_P);
  EXPECT_EQ(desk.store.asset(second)->status(), core::AssetStatus::shortlist);
  key(Qt::Key_D);
  EXPECT_EQ(desk.store.asset(second)->status(), core::AssetStatus::rejected);
  EXPECT_EQ(desk.store.asset(second)->rating, 4);
}

TEST_F(ComparisonPagesTest, MarksReachAnItemThatTheGalleryDoesNotShow) {
  const std::vector<QUuid> ids = several(2);
  openSheet(ids);
  GalleryFilter none = desk.state.filter();
  none.search = u"nothing has this"_s;
  desk.state.setFilter(none);
  test::runPosted();
  key(Qt::Key_1);
  key(Qt::Key_F);
  EXPECT_TRUE(desk.store.asset(places().at(0)->place().asset)->favorite);
}

TEST_F(ComparisonPagesTest, ItemsMoveByKeyAndLeaveByTheirButton) {
  openSheet(several(3));
  const std::vector<QUuid> before = desk.comparison.sheet().ids();
  key(Qt::Key_2);
  key(Qt::Key_Left);
  EXPECT_EQ(places().current(), 0);
  key(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(desk.comparison.sheet().ids(), (std::vector<QUuid>{before[1], before[0], before[2]}));
  auto* remove = named<IconButton>(*places().at(0), u"Remove from contact sheet; keep in library"_s);
  ASSERT_NE(remove, nullptr);
  QTest::mouseClick(remove, Qt::LeftButton);
  test::runPosted();
  EXPECT_EQ(desk.comparison.sheet().ids(), (std::vector<QUuid>{before[0], before[2]}));
  EXPECT_FALSE(desk.store.asset(before[1])->isTrashed());
}

TEST_F(ComparisonPagesTest, WhatTakesTheCurrentPlaceIsSelectedSoThatTheNextDeleteHitsIt) {
  openSheet(several(4));
  const std::vector<QUuid> before = desk.comparison.sheet().ids();
  key(Qt::Key_3);
  key(Qt::Key_Delete);
  EXPECT_EQ(places().current(), 2);
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{before[3]});
  EXPECT_TRUE(places().at(2)->isAncestorOf(window->focusWidget()));
  key(Qt::Key_Delete);
  EXPECT_EQ(desk.comparison.sheet().ids(), (std::vector<QUuid>{before[0], before[1]}));
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{before[1]});
}

TEST_F(ComparisonPagesTest, AnItemThatGoesToTrashGivesItsPlaceOnTheSheetToTheNext) {
  openSheet(several(3));
  const std::vector<QUuid> before = desk.comparison.sheet().ids();
  key(Qt::Key_1);
  actions->trigger(ActionId::moveToTrash);
  if (desk.alerts.current()) desk.alerts.answer(desk.alerts.current()->id, 0);
  test::runPosted();
  EXPECT_EQ(window->library().page(), ModeKind::contactSheet);
  EXPECT_EQ(desk.comparison.sheet().ids(), (std::vector<QUuid>{before[1], before[2]}));
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{before[1]});
}

TEST_F(ComparisonPagesTest, TheSheetBehindAnotherViewLeavesItsSelectionAlone) {
  const std::vector<QUuid> ids = several(4);
  openSheet({ids[1], ids[2]});
  key(Qt::Key_1);
  key(Qt::Key_Escape);
  ASSERT_EQ(window->library().page(), ModeKind::gallery);
  const QUuid leaving = desk.comparison.sheet().ids().front();
  desk.state.select({leaving});
  desk.curation.moveToTrash();
  if (desk.alerts.current()) desk.alerts.answer(desk.alerts.current()->id, 0);
  const QSet<QUuid> next = desk.state.selection();
  test::runPosted();
  EXPECT_EQ(desk.state.selection(), next);
}

TEST_F(ComparisonPagesTest, SeveralItemsAreSelectedAndLeaveTogether) {
  openSheet(several(4));
  const std::vector<QUuid> before = desk.comparison.sheet().ids();
  QTest::mouseClick(&places().at(1)->picture(), Qt::LeftButton);
  QTest::mouseClick(&places().at(3)->picture(), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_EQ(desk.state.selection(), (QSet<QUuid>{before[1], before[2], before[3]}));
  QTest::mouseClick(&places().at(2)->picture(), Qt::LeftButton, Qt::ControlModifier);
  QTest::mousePress(&places().at(1)->picture(), Qt::RightButton);
  EXPECT_EQ(desk.state.selection(), (QSet<QUuid>{before[1], before[3]})) << "the menu is for both";
  key(Qt::Key_Delete);
  EXPECT_EQ(desk.comparison.sheet().ids(), (std::vector<QUuid>{before[0], before[2]}));
  core::applyHistory(desk.store, core::HistoryDirection::undo);
  test::runPosted();
  EXPECT_EQ(desk.comparison.sheet().ids(), before);
}

TEST_F(ComparisonPagesTest, ASheetWithoutItemsTellsWhatItIsFor) {
  openSheet(several(2));
  const auto* note = sheet().findChild<EmptyNote*>();
  ASSERT_NE(note, nullptr);
  EXPECT_FALSE(note->isVisible());
  key(Qt::Key_Delete);
  ASSERT_EQ(places().count(), 0) << "both were selected";
  EXPECT_TRUE(note->isVisible());
  EXPECT_EQ(note->findChild<Paragraph*>()->paragraph(),
            u"Add media to compare prompts, models, and results side by side."_s);
  EXPECT_EQ(window->focusWidget(), &sheet());
}

TEST_F(ComparisonPagesTest, ANarrowPlaceShowsItsModelWhole) {
  openSheet(several(8));
  for (int index = 0; index < places().count(); ++index) {
    SheetPlace& place = *places().at(index);
    ASSERT_LT(place.width(), 380);
    for (const ElidedLabel* label : place.findChildren<ElidedLabel*>())
      if (label->text() == place.place().modelName) EXPECT_GE(label->width(), label->sizeHint().width());
    for (QWidget* mark : place.findChildren<QAbstractButton*>())
      if (mark->isVisible())
        EXPECT_TRUE(place.rect().contains(QRect(mark->mapTo(&place, QPoint()), mark->size())));
  }
}

TEST_F(ComparisonPagesTest, AnItemIsDraggedToAnotherPlace) {
  openSheet(several(3));
  const std::vector<QUuid> before = desk.comparison.sheet().ids();
  PlacePicture& from = places().at(2)->picture();
  const QPoint to = from.mapFromGlobal(places().at(0)->picture().mapToGlobal(QPoint(12, 40)));
  QTest::mousePress(&from, Qt::LeftButton, Qt::NoModifier, QPoint(40, 40));
  QMouseEvent move(QEvent::MouseMove, to, from.mapToGlobal(to), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&from, &move);
  QTest::mouseRelease(&from, Qt::LeftButton, Qt::NoModifier, to);
  test::runPosted();
  EXPECT_EQ(desk.comparison.sheet().ids(), (std::vector<QUuid>{before[2], before[0], before[1]}));
  core::applyHistory(desk.store, core::HistoryDirection::undo);
  test::runPosted();
  EXPECT_EQ(desk.comparison.sheet().ids(), before);
}

TEST_F(ComparisonPagesTest, MediaIsAddedFromADialogThatLeavesOutWhatIsThere) {
  const std::vector<QUuid> ids = several(4);
  openSheet({ids[0], ids[1]});
  QTest::mouseClick(named<Button>(*window, shell::texts::addMedia), Qt::LeftButton);
  auto* dialog = the<AddMediaDialog>();
  ASSERT_NE(dialog, nullptr);
  Q_EMIT dialog->wall().selectionRequested({ids[0], ids[3]});
  EXPECT_EQ(dialog->wall().selection(), QSet<QUuid>{ids[3]});
  QTest::mouseClick(named<Button>(*dialog, u"Add to Sheet"_s), Qt::LeftButton);
  test::runPosted();
  EXPECT_EQ(desk.comparison.sheet().ids().size(), 3u);
  EXPECT_EQ(desk.comparison.sheet().ids().back(), ids[3]);
}

TEST_F(ComparisonPagesTest, PicturesAreComparedInStep) {
  openCompare(several(3));
  ASSERT_TRUE(sheet().isComparing());
  ASSERT_EQ(comparing().canvases().size(), 3u);
  key(Qt::Key_Plus);
  key(Qt::Key_Plus);
  for (const CompareCanvas* canvas : comparing().canvases())
    EXPECT_EQ(canvas->picturePlace().size(), comparing().canvases()[0]->picturePlace().size());
  key(Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_GT(comparing().view().centre.x(), 0.5);
  EXPECT_GT(comparing().view().zoom, 1);
  key(Qt::Key_Z);
  EXPECT_TRUE(comparing().view().isFitted());
}

TEST_F(ComparisonPagesTest, TheWinnerIsMarkedByKey) {
  openCompare(several(3));
  key(Qt::Key_3);
  const QUuid winner = comparing().chosen();
  EXPECT_EQ(desk.state.selection(), QSet<QUuid>{winner});
  key(Qt::Key_5, Qt::AltModifier);
  key(Qt::Key_P);
  EXPECT_EQ(desk.store.asset(winner)->rating, 5);
  EXPECT_EQ(desk.store.asset(winner)->status(), core::AssetStatus::shortlist);
  EXPECT_EQ(comparing().chosen(), winner);
}

TEST_F(ComparisonPagesTest, OneAtATimeFlipsInPlace) {
  openCompare(several(3));
  comparing().setCompareLayout(CompareLayout::oneAtATime);
  ASSERT_EQ(comparing().canvases().size(), 1u);
  comparing().zoomBy(2);
  const StepView view = comparing().view();
  const QUuid first = comparing().chosen();
  key(Qt::Key_Right);
  EXPECT_NE(comparing().chosen(), first);
  EXPECT_EQ(comparing().view(), view);
  key(Qt::Key_Space);
  key(Qt::Key_Space);
  EXPECT_EQ(comparing().chosen(), first);
}

TEST_F(ComparisonPagesTest, OfSeveralPicturesTheChosenOneIsComparedWithTheFirst) {
  openCompare(several(3));
  const auto facts = [this](const QString& wanted) {
    for (const ElidedLabel* label : comparing().findChildren<ElidedLabel*>())
      if (label->text().startsWith(wanted)) return true;
    return false;
  };
  comparing().setCompareLayout(CompareLayout::difference);
  ASSERT_EQ(comparing().compareLayout(), CompareLayout::difference);
  EXPECT_TRUE(facts(u"Pictures 1 and 2"_s));
  test::runUntil([this] { return comparing().differing().has_value(); });
  QTest::keyClick(window->focusWidget(), Qt::Key_3);
  EXPECT_TRUE(facts(u"Pictures 1 and 3"_s));
  EXPECT_EQ(comparing().differing(), std::nullopt) << "the other pair's difference is gone at once";
  test::runUntil([this] { return comparing().differing().has_value(); });
  key(Qt::Key_1);
  EXPECT_TRUE(facts(u"Pictures 1 and 3"_s)) << "the first lies over none; its marks are shown";
  EXPECT_TRUE(comparing().differing().has_value());
  key(Qt::Key_Right);
  EXPECT_TRUE(facts(u"Pictures 1 and 2"_s));
}

TEST_F(ComparisonPagesTest, TheSizeThatIsToldIsThatOfTheNewArrangement) {
  openCompare(several(2));
  const auto told = [this] {
    QStringList sizes;
    for (const Label* label : comparing().findChildren<Label*>()) sizes << label->text();
    return sizes;
  };
  const auto shown = [this] {
    const CompareCanvas& canvas = *comparing().canvases().front();
    const double percent = comparing().view().percent(canvas.pictureSize(), canvas.size(), 1);
    return u"%1 %"_s.arg(std::lround(percent));
  };
  const QString small = shown();
  ASSERT_TRUE(told().contains(small));
  comparing().setCompareLayout(CompareLayout::divider);
  EXPECT_NE(shown(), small);
  EXPECT_TRUE(told().contains(shown()));
}

TEST_F(ComparisonPagesTest, AfterAPressOnALayoutTheKeysAreThePictures) {
  openCompare(several(2));
  auto* flip = named<QAbstractButton>(comparing(), u"One at a Time"_s);
  ASSERT_NE(flip, nullptr);
  QTest::mouseClick(flip, Qt::LeftButton);
  const QUuid first = comparing().chosen();
  key(Qt::Key_Space);
  EXPECT_NE(comparing().chosen(), first);
}

TEST_F(ComparisonPagesTest, TheKeyThatComparesEndsItToo) {
  openSheet(several(2));
  key(Qt::Key_C);
  ASSERT_TRUE(sheet().isComparing());
  key(Qt::Key_C);
  EXPECT_FALSE(sheet().isComparing());
  EXPECT_EQ(window->library().page(), ModeKind::contactSheet);
}

TEST_F(ComparisonPagesTest, ADividerIsMovedByKey) {
  const std::vector<QUuid> ids = several(2);
  openCompare(ids);
  comparing().setCompareLayout(CompareLayout::divider);
  EXPECT_EQ(comparing().compareLayout(), CompareLayout::divider);
  const double before = comparing().divider();
  key(Qt::Key_Right);
  EXPECT_GT(comparing().divider(), before);
}

TEST_F(ComparisonPagesTest, TheDifferenceIsWorkedOutOffTheMainThread) {
  const std::vector<QUuid> ids = several(2);
  openCompare(ids);
  comparing().setCompareLayout(CompareLayout::difference);
  test::runUntil([this] { return comparing().differing().has_value(); });
  EXPECT_DOUBLE_EQ(*comparing().differing(), 1.0);
}

TEST_F(ComparisonPagesTest, ComparingThatWasOpenedFromTheGalleryGoesBackThere) {
  openCompare(several(2));
  ASSERT_TRUE(sheet().isComparing());
  key(Qt::Key_Escape);
  EXPECT_EQ(window->library().page(), ModeKind::gallery);
  EXPECT_FALSE(sheet().isComparing());
}

TEST_F(ComparisonPagesTest, ComparingOnASheetGoesBackToItsPlaces) {
  openSheet(several(2));
  key(Qt::Key_C);
  ASSERT_TRUE(sheet().isComparing());
  key(Qt::Key_Escape);
  EXPECT_FALSE(sheet().isComparing());
  EXPECT_EQ(window->library().page(), ModeKind::contactSheet);
}

TEST_F(ComparisonPagesTest, TheFamilyTreeIsWalkedByKeyAndLeftByReturnAndEscape) {
  const std::vector<QUuid> ids = several(3);
  for (const auto& [parent, child] : {std::pair(ids[0], ids[1]), std::pair(ids[0], ids[2])}) {
    const auto edge = desk.store.context().insert(
        core::AssetRelationship(parent, child, core::RelationshipType::editedFrom));
    desk.store.save(core::LibraryTables::none);
    desk.store.registerRecords({{}, {}, {edge}, {}});
  }
  desk.state.select({ids[2]});
  actions->trigger(ActionId::showLineage);
  test::runPosted();
  LineageTree& tree = the<LineageView>()->tree();
  ASSERT_EQ(tree.rowCount(), 3);
  EXPECT_EQ(tree.currentRow(), ids[2]);
  key(Qt::Key_Left);
  EXPECT_EQ(desk.state.inspectedId(), ids[0]);
  key(Qt::Key_Right);
  EXPECT_EQ(desk.state.inspectedId(), ids[1]);
  key(Qt::Key_Return);
  EXPECT_EQ(window->library().page(), ModeKind::gallery);
  desk.state.select({ids[2]});
  actions->trigger(ActionId::showLineage);
  test::runPosted();
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.cellRect(0).center());
  EXPECT_EQ(desk.state.inspectedId(), ids[0]);
  key(Qt::Key_Escape);
  EXPECT_EQ(window->library().page(), ModeKind::gallery);
}

TEST_F(ComparisonPagesTest, MarksReachTheInspectedItemOfAFamilyByKey) {
  const std::vector<QUuid> ids = several(1);
  desk.state.openLineage(ids[0]);
  test::runPosted();
  key(Qt::Key_F);
  key(Qt::Key_4);
  key(Qt::Key_P);
  EXPECT_TRUE(desk.store.asset(ids[0])->favorite);
  EXPECT_EQ(desk.store.asset(ids[0])->rating, 4);
  EXPECT_EQ(desk.store.asset(ids[0])->status(), core::AssetStatus::shortlist);
  key(Qt::Key_Delete);
  EXPECT_TRUE(desk.store.asset(ids[0])->isTrashed());
  EXPECT_EQ(window->library().page(), ModeKind::lineage);
  EXPECT_TRUE(the<LineageView>()->tree().rowName(0).contains(u"in Trash"_s));
}

TEST_F(ComparisonPagesTest, MarksReachNoItemFromARowThatWasDeletedForGood) {
  const std::vector<QUuid> ids = several(1);
  const auto edge = desk.store.context().insert(
      core::AssetRelationship(base::newUuid(), ids[0], core::RelationshipType::editedFrom));
  desk.store.save(core::LibraryTables::none);
  desk.store.registerRecords({{}, {}, {edge}, {}});
  desk.state.openLineage(ids[0]);
  test::runPosted();
  key(Qt::Key_Up);
  ASSERT_EQ(the<LineageView>()->tree().currentRow(), edge->parentAssetID);
  key(Qt::Key_F);
  key(Qt::Key_Delete);
  EXPECT_FALSE(desk.store.asset(ids[0])->favorite);
  EXPECT_FALSE(desk.store.asset(ids[0])->isTrashed());
  key(Qt::Key_Down);
  key(Qt::Key_F);
  EXPECT_TRUE(desk.store.asset(ids[0])->favorite);
}

TEST_F(ComparisonPagesTest, AFamilyTellsHowItIsReadAndItsRowsWhatTheyAre) {
  const std::vector<QUuid> ids = several(1);
  desk.state.openLineage(ids[0]);
  test::runPosted();
  QStringList words;
  for (const ElidedLabel* label : the<LineageView>()->findChildren<ElidedLabel*>()) words << label->text();
  EXPECT_TRUE(words.contains(u"Click an image to inspect it. Double-click to open it."_s));
  EXPECT_TRUE(words.contains(
      u"Assets with multiple parents appear once. All direct relationships are listed in the inspector."_s));
  EXPECT_EQ(window->library().pageTitle()->title, u"Generation History"_s);
  EXPECT_EQ(shell::texts::lineageOpenedFrom, u"OPENED FROM"_s);
  EXPECT_EQ(shell::texts::lineageInTrash, u"IN TRASH"_s);
}

TEST_F(ComparisonPagesTest, TheWayBackFromAFamilyTellsItsKeys) {
  const std::vector<QUuid> ids = several(1);
  desk.state.openLineage(ids[0]);
  test::runPosted();
  auto* back = named<Button>(*window, u"Back to All Media"_s);
  ASSERT_NE(back, nullptr);
  EXPECT_TRUE(back->toolTip().contains(u"Return · Escape"_s));
  EXPECT_EQ(back->accessibleDescription(), u"Return · Escape"_s);
}

TEST_F(ComparisonPagesTest, TheFamilyIsATreeToAssistiveTechnology) {
  const std::vector<QUuid> ids = several(1);
  desk.state.openLineage(ids[0]);
  test::runPosted();
  QAccessibleInterface* tree = QAccessible::queryAccessibleInterface(&the<LineageView>()->tree());
  EXPECT_EQ(tree->role(), QAccessible::Tree);
  ASSERT_EQ(tree->childCount(), 1);
  EXPECT_EQ(tree->child(0)->role(), QAccessible::TreeItem);
  EXPECT_TRUE(tree->child(0)->text(QAccessible::Name).contains(u"opened from"_s));
  EXPECT_EQ(tree->child(0)->text(QAccessible::Description), u"The image this lineage was opened from"_s);
}

TEST(PictureBadge, ANumberOfOneDigitHasItsBadge) {
  QImage ground(300, 200, QImage::Format_RGB32);
  ground.fill(Qt::white);
  QPainter painter(&ground);
  const QRect badge = paintPictureBadge(painter, ground.rect(), Qt::TopLeftCorner, {}, u"1"_s);
  painter.end();
  EXPECT_EQ(badge.width(), badge.height());
  ASSERT_TRUE(ground.rect().contains(badge));
  EXPECT_LT(QColor(ground.pixel(badge.left() + 2, badge.center().y())).lightness(), 128);
  QPainter again(&ground);
  EXPECT_TRUE(paintPictureBadge(again, {0, 0, 24, 200}, Qt::TopLeftCorner, {}, u"1"_s).isNull()) << "no room";
}

TEST(SheetKeys, RatingsAreAltAndADigitAndOtherKeysAreTheGallerys) {
  const auto actionOf = [](int key, Qt::KeyboardModifiers modifiers) {
    return itemActionFor(QKeyEvent(QEvent::KeyPress, key, modifiers));
  };
  EXPECT_EQ(actionOf(Qt::Key_3, Qt::AltModifier), ActionId::rateThree);
  EXPECT_EQ(actionOf(Qt::Key_3, Qt::NoModifier), std::nullopt);
  EXPECT_EQ(actionOf(Qt::Key_P, Qt::NoModifier), ActionId::statusShortlist);
  EXPECT_EQ(actionOf(Qt::Key_F, Qt::NoModifier), ActionId::toggleFavorite);
  EXPECT_EQ(placeFor(QKeyEvent(QEvent::KeyPress, Qt::Key_8, Qt::NoModifier)), 7);
  EXPECT_EQ(placeFor(QKeyEvent(QEvent::KeyPress, Qt::Key_8, Qt::AltModifier)), -1);
}

}  // namespace
}  // namespace sorvan::views
