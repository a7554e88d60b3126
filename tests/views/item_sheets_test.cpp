#include "views/item_sheets.h"

#include <QImage>

#include "views/dressed.h"
#include "views/state_stage.h"
#include "views/text_contrast.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class ItemSheets : public Dressed, public testing::WithParamInterface<std::tuple<Appearance, ItemSheet>> {
 protected:
  ItemSheets() { Theme::instance().setAppearance(std::get<0>(GetParam())); }

  // The pairs of states of one component that cannot be told apart.
  static QString lookTheSame(const QList<StatePicture*>& pictures) {
    QString same;
    for (int one = 0; one < pictures.size(); ++one)
      for (int other = one + 1; other < pictures.size(); ++other) {
        const StatePicture& first = *pictures[one];
        const StatePicture& second = *pictures[other];
        if (first.component != second.component || first.image() != second.image()) continue;
        same += first.component + u": “"_s + second.state + u"” looks like “"_s + first.state + u"”\n"_s;
      }
    return same;
  }
};

TEST_P(ItemSheets, ShowsEachStateUnlikeTheOthersAndEveryTextReadable) {
  const std::unique_ptr<QWidget> sheet = std::get<1>(GetParam()).make(u":/sorvan/samples"_s);
  show(*sheet, sheet->size());
  EXPECT_LE(sheet->height(), 1500) << "too high to be looked at";
  const QList<StatePicture*> pictures = sheet->findChildren<StatePicture*>();
  EXPECT_GE(pictures.size(), 8);
  EXPECT_EQ(lookTheSame(pictures).toStdString(), "");
  // Besides the name of each state there are texts of the components themselves.
  EXPECT_GT(static_cast<qsizetype>(test::paintedTexts(*sheet).size()), pictures.size() + 6);
  EXPECT_EQ(test::faintTexts(*sheet).toStdString(), "");
}

std::string nameOf(const testing::TestParamInfo<std::tuple<Appearance, ItemSheet>>& info) {
  const auto& [look, sheet] = info.param;
  return std::string(sheet.name) + (look == Appearance::dark ? "InDark" : "InLight");
}

INSTANTIATE_TEST_SUITE_P(InBothLooks, ItemSheets,
                         testing::Combine(testing::Values(Appearance::dark, Appearance::light),
                                          testing::ValuesIn(itemSheets())),
                         nameOf);

}  // namespace
}  // namespace sorvan::views
