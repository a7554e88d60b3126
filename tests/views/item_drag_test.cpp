#include "shell/views/item_drag.h"

#include <QMimeData>

#include <QFile>

#include "shell/desk.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

struct ItemDragTest : Dressed {
  test::Desk desk;
  QWidget source;
  core::AssetRef make() {
    desk.generate(u"a boat"_s);
    desk.settle();
    desk.state.select({desk.store.assets().front()->id});
    return desk.store.assets().front();
  }
};

TEST_F(ItemDragTest, OffersCopyAloneAndAProgramThatAsksForMoveLeavesTheFile) {
  const core::AssetRef item = make();
  Qt::DropActions offered;
  QList<QUrl> files;
  const bool dragged = dragSelectedItems(source, desk.transfer, {}, [&](QDrag& drag, Qt::DropActions actions) {
    offered = actions;
    files = drag.mimeData()->urls();
    return Qt::MoveAction;
  });
  EXPECT_TRUE(dragged);
  EXPECT_EQ(offered, Qt::DropActions(Qt::CopyAction));
  EXPECT_EQ(files, QList<QUrl>{QUrl::fromLocalFile(desk.store.fileOf(*item))});
  desk.settle();
  EXPECT_TRUE(QFile::exists(desk.store.fileOf(*item)));
  EXPECT_FALSE(desk.store.assets().front()->isTrashed());
}

TEST_F(ItemDragTest, WithoutAFileThereIsNothingToDrag) {
  const core::AssetRef item = make();
  ASSERT_TRUE(QFile::remove(desk.store.fileOf(*item)));
  bool ran = false;
  EXPECT_FALSE(dragSelectedItems(source, desk.transfer, {}, [&](QDrag&, Qt::DropActions) {
    ran = true;
    return Qt::CopyAction;
  }));
  EXPECT_FALSE(ran);
  ASSERT_FALSE(desk.alerts.toasts().empty());
  EXPECT_EQ(desk.alerts.toasts().back().text, u"Its original is missing, so there is nothing to drag."_s);
}

TEST_F(ItemDragTest, ThePictureAtThePointerCountsTheItems) {
  QPixmap thumbnail(200, 100);
  thumbnail.fill(Qt::red);
  const QImage one = dragPicture(thumbnail, 1, 2).toImage();
  const QImage three = dragPicture(thumbnail, 3, 2).toImage();
  EXPECT_EQ(one.size(), QSize(224, 112));
  EXPECT_NE(one, three);
}

}  // namespace
}  // namespace sorvan::views
