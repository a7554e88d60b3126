#include <QSignalSpy>

#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class Clearing : public Dressed {
 protected:
  Clearing() {
    chip.setLabel(u"Approved"_s);
    chip.setTone(ChipTone::active);
    chip.resize(chip.sizeHint());
    search.setKeyHint(u"Ctrl F"_s);
    search.resize(190, 30);
  }
  QPoint crossOfChip() const { return {chip.width() - 16, chip.height() / 2}; }
  QPoint crossOfSearch() const { return {search.width() - 16, search.height() / 2}; }

  Chip chip;
  TextField search{u"Search"_s};
  QSignalSpy clicked{&chip, &Chip::clicked};
  QSignalSpy cleared{&chip, &Chip::clearRequested};
  QSignalSpy edited{&search, &TextField::textEdited};
};

TEST_F(Clearing, TheCrossOfAChipTakesTheChoiceBackAndItsWordsOpenIt) {
  chip.setClearable(true);
  QTest::mouseClick(&chip, Qt::LeftButton, {}, crossOfChip());
  EXPECT_EQ(cleared.count(), 1);
  EXPECT_EQ(clicked.count(), 0);
  QTest::mouseClick(&chip, Qt::LeftButton, {}, {12, chip.height() / 2});
  EXPECT_EQ(cleared.count(), 1);
  EXPECT_EQ(clicked.count(), 1);
  QTest::keyClick(&chip, Qt::Key_Delete);
  EXPECT_EQ(cleared.count(), 2);
}

TEST_F(Clearing, AChipWithoutACrossOpensWhereverItIsPressed) {
  QTest::mouseClick(&chip, Qt::LeftButton, {}, crossOfChip());
  QTest::keyClick(&chip, Qt::Key_Delete);
  EXPECT_EQ(cleared.count(), 0);
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(Clearing, TheCrossOfASearchTakesItsTextAwayAsThoughItHadBeenTyped) {
  search.setText(u"quay"_s);
  QTest::mouseClick(&search, Qt::LeftButton, {}, {40, 15});
  EXPECT_EQ(search.text(), u"quay"_s);
  QTest::mouseClick(&search, Qt::LeftButton, {}, crossOfSearch());
  EXPECT_EQ(search.text(), QString());
  ASSERT_EQ(edited.count(), 1);
  EXPECT_EQ(edited.front().front().toString(), QString());
}

TEST_F(Clearing, AFieldThatIsNoSearchHasNoCross) {
  TextField name(u"Name"_s);
  name.resize(190, 30);
  name.setText(u"Rose"_s);
  QTest::mouseClick(&name, Qt::LeftButton, {}, crossOfSearch());
  EXPECT_EQ(name.text(), u"Rose"_s);
}

}  // namespace
}  // namespace sorvan::views
