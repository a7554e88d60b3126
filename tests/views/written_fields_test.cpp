#include <QMenu>

#include "shell/views/choice_field.h"
#include "shell/views/text_area.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class WrittenFields : public Dressed {
 protected:
  WrittenFields() {
    field.addItems({u"Generic"_s, u"Product"_s, u"Style"_s});
    field.setCurrentIndex(1);
    field.setParent(&window);
    field.setGeometry(20, 20, 200, 30);
    area.setParent(&window);
    area.setGeometry(20, 70, 200, 60);
    show(window, {300, 200});
  }
  // At the corners of a rounded field the window shows, inside its edge the field's own ground.
  static bool isRounded(QWidget& widget) {
    const QImage shown = widget.window()->grab(widget.geometry()).toImage();
    const QColor ground = widget.window()->palette().color(QPalette::Window);
    return shown.pixelColor(0, 0) == ground && shown.pixelColor(shown.width() - 1, shown.height() - 1) == ground &&
           shown.pixelColor(4, shown.height() / 2) == colors().surfaceInset;
  }
  QWidget window;
  ChoiceField field{u"Kind"_s};
  TextArea area{u"Notes"_s, u"Notes (not sent to models)"_s};
};

TEST_F(WrittenFields, BothHaveTheRoundCornersOfAFieldOfOneLine) {
  EXPECT_TRUE(isRounded(field));
  EXPECT_TRUE(isRounded(area));
}

TEST_F(WrittenFields, TheValuesOpenInAMenuThatTellsTheChosenOne) {
  field.setFocus();
  QTest::keyClick(&field, Qt::Key_Space);
  auto* menu = field.findChild<QMenu*>();
  ASSERT_TRUE(menu && menu->isVisible());
  ASSERT_EQ(menu->actions().size(), 3);
  EXPECT_TRUE(menu->actions()[1]->isChecked());
  EXPECT_EQ(menu->activeAction(), menu->actions()[1]);
  QTest::keyClick(menu, Qt::Key_Down);
  QTest::keyClick(menu, Qt::Key_Return);
  EXPECT_EQ(field.currentText(), u"Style"_s);
}

TEST_F(WrittenFields, ArrowsChangeTheValueWithoutOpeningIt) {
  field.setFocus();
  QTest::keyClick(&field, Qt::Key_Up);
  EXPECT_EQ(field.currentText(), u"Generic"_s);
  EXPECT_EQ(field.findChild<QMenu*>(), nullptr);
}

TEST_F(WrittenFields, TheAreaShowsThatItHasTheKeyboardAndTabLeavesIt) {
  area.setFocus();
  const QImage with = window.grab(area.geometry()).toImage();
  QTest::keyClick(&area, Qt::Key_Tab);
  EXPECT_FALSE(area.hasFocus());
  EXPECT_NE(window.grab(area.geometry()).toImage(), with);
}

}  // namespace
}  // namespace sorvan::views
