#include "views/component_states.h"

#include <QAbstractButton>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/focus_ring.h"
#include "views/every_sheet.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

// Paints the same whatever happens to it.
class Mute final : public QAbstractButton {
 public:
  Mute() {
    setProperty(ownFocusProperty, true);
    setFocusPolicy(Qt::StrongFocus);
  }
  QSize sizeHint() const override { return {40, 20}; }

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Qt::red); }
};

std::unique_ptr<QWidget> sheetOfOne(const Component& component, const std::vector<State>& states) {
  return sheetOf(u"one"_s, u"One"_s, {{component.name, stateFlow(component, states, 5)}});
}

using StatesOfOne = Dressed;

TEST_F(StatesOfOne, AButtonLooksDifferentInEach) {
  const Component button{u"Button"_s, [] { return new Button(u"Export…"_s); }};
  EXPECT_EQ(statesThatLookTheSame(*sheetOfOne(button, buttonStates())).toStdString(), "");
}

TEST_F(StatesOfOne, StatesThatAreNotPaintedAreNamed) {
  const QString same = statesThatLookTheSame(*sheetOfOne({u"Mute"_s, [] { return new Mute; }}, buttonStates()));
  EXPECT_EQ(same.count(u'\n'), 10) << same.toStdString();
  EXPECT_TRUE(same.contains(u"Mute: “Focus” looks like “Normal”"_s));
}

TEST_F(StatesOfOne, TheStateReachesThePartThatIsMeant) {
  const Component pair{u"Pair"_s,
                       [] {
                         return row({new Button(u"One"_s), new Button(u"Other"_s)});
                       },
                       [](QWidget& whole) { return whole.findChildren<Button*>().last(); }};
  const auto sheet = sheetOfOne(pair, {normalState(), disabledState()});
  const QList<Sample*> samples = sheet->findChildren<Sample*>();
  ASSERT_EQ(samples.size(), 2);
  EXPECT_EQ(samples.last()->kind(), u"Button"_s);
  EXPECT_TRUE(samples.last()->findChildren<Button*>().first()->isEnabled());
  EXPECT_FALSE(samples.last()->findChildren<Button*>().last()->isEnabled());
}

using StatesOnSheets = EverySheet;

TEST_P(StatesOnSheets, NoTwoStatesOfAComponentLookTheSame) {
  const std::unique_ptr<QWidget> made = sheet().make();
  EXPECT_LE(made->height(), 1500) << "too high to be looked at";
  EXPECT_EQ(statesThatLookTheSame(*made).toStdString(), "");
}

INSTANTIATE_TEST_SUITE_P(InBothLooks, StatesOnSheets, EverySheet::all(), EverySheet::name);

}  // namespace
}  // namespace sorvan::views
