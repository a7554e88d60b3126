// How the parts of the windows look, where a look needs more than a colour: what stands beside what, and how high.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QLayout>
#include <QPainter>

#include "shell/views/controls.h"
#include "shell/views/feedback.h"
#include "shell/views/fields.h"
#include "shell/views/history_row.h"
#include "shell/views/icons.h"
#include "shell/views/inspector_parts.h"
#include "shell/views/labels.h"
#include "shell/views/painting.h"
#include "shell/views/style_menus.h"
#include "shell/views/text_area.h"
#include "views/dressed.h"
#include "views/text_contrast.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class LookTest : public Dressed {
 protected:
  static QImage pictureOf(QWidget& widget) { return widget.grab().toImage(); }

  static Toast toastOf(const QString& text, const QString& second) {
    Toast toast;
    toast.text = text;
    toast.secondLine = second;
    toast.actionTitle = u"Undo"_s;
    return toast;
  }
};

// The first and the last row of `column` that is not of the ground's colour.
std::pair<int, int> inked(const QImage& picture, const QRect& area, QColor ground) {
  int first = -1;
  int last = -1;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      if (picture.pixelColor(x, y) == ground) continue;
      if (first < 0) first = y;
      last = y;
    }
  }
  return {first, last};
}

TEST_F(LookTest, TheDotOfEveryStatusIsSeenOnABadgeInBothLooks) {
  for (const Appearance look : {Appearance::dark, Appearance::light}) {
    Theme::instance().setAppearance(look);
    QColor badge = colors().pictureBadge;
    badge.setAlpha(255);
    for (const QString& token : {u"draft"_s, u"shortlist"_s, u"approved"_s, u"final"_s, u"rejected"_s})
      EXPECT_GT(test::contrastOf(statusColorOnPicture(token), badge), 3) << token.toStdString();
  }
}

TEST_F(LookTest, TheShadowOfALowCardReachesItsEnds) {
  const Shadow shadow{8, 32, Qt::black};
  const auto painted = [&](int height) {
    QImage picture(400, height + 100, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintShadow(painter, {50, 50, 300, height}, 10, shadow);
    return picture;
  };
  for (const int height : {30, 44, 60, 200}) {
    const QImage picture = painted(height);
    const int below = 50 + height + 2;
    const int middle = picture.pixelColor(200, below).alpha();
    EXPECT_GT(middle, 40) << height;
    EXPECT_NEAR(picture.pixelColor(80, below).alpha(), middle, 3) << height;
    EXPECT_NEAR(picture.pixelColor(319, below).alpha(), middle, 3) << height;
  }
}

TEST_F(LookTest, AMenuRowShowsItsKeysSideBySide) {
  EXPECT_EQ(shownKeys(u"Ctrl+Shift+C"_s), u"Ctrl Shift C"_s);
  EXPECT_EQ(shownKeys(u"Ctrl++"_s), u"Ctrl +"_s);
  EXPECT_EQ(shownKeys(u"+"_s), u"+"_s);
  EXPECT_EQ(shownKeys(u"Del"_s), u"Delete"_s);
  EXPECT_EQ(shownKeys(u"Shift+Del"_s), u"Shift Delete"_s);
  EXPECT_EQ(shownKeys({}), QString());
}

TEST_F(LookTest, AShortToastHasItsActionBesideTheText) {
  ToastCard card(toastOf(u"12 items moved to Trash"_s, {}));
  const int height = card.layout()->heightForWidth(card.width());
  show(card, {card.width(), height});
  auto* action = named<Button>(card, u"Undo"_s);
  auto* text = card.findChild<Paragraph*>();
  ASSERT_TRUE(action && text);
  EXPECT_GE(action->mapTo(&card, QPoint()).x(), text->mapTo(&card, QPoint(text->width(), 0)).x());
  EXPECT_EQ(action->variant(), ButtonVariant::link);
}

TEST_F(LookTest, AToastOfMoreWordsHasItsActionBelowThem) {
  ToastCard card(toastOf(u"A job you cancelled had already finished, so its credits were spent."_s, {}));
  const int height = card.layout()->heightForWidth(card.width());
  show(card, {card.width(), height});
  auto* action = named<Button>(card, u"Undo"_s);
  auto* text = card.findChild<Paragraph*>();
  ASSERT_TRUE(action && text);
  EXPECT_GE(action->mapTo(&card, QPoint()).y(), text->mapTo(&card, QPoint(0, text->height())).y());
  ToastCard two(toastOf(u"Saved"_s, u"The quay at dawn"_s));
  auto* below = named<Button>(two, u"Undo"_s);
  ASSERT_TRUE(below);
  EXPECT_EQ(below->variant(), ButtonVariant::secondary);
}

TEST_F(LookTest, ATextOfSeveralLinesStandsInAFieldWithRoundCorners) {
  QWidget sheet;
  TextArea text(u"Notes"_s, {}, &sheet);
  text.setGeometry(20, 20, 200, 60);
  show(sheet, {240, 100});
  const QImage picture = pictureOf(sheet);
  EXPECT_EQ(picture.pixelColor(20, 20), picture.pixelColor(10, 10)) << "the corner is not round";
  EXPECT_EQ(picture.pixelColor(120, 70), colors().surfaceInset);
  EXPECT_NE(picture.pixelColor(20, 50), colors().surfaceInset) << "no border";
}

TEST_F(LookTest, ATextFieldKeepsItsTextOffTheButtonInside) {
  TextField field(u"Seed"_s);
  auto* roll = new IconButton(u"dices"_s, u"Random Seed"_s);
  roll->setControlSize(ControlSize::compact);
  field.setInnerControl(roll);
  show(field, {154, metrics().field});
  EXPECT_TRUE(field.rect().contains(roll->geometry()));
  EXPECT_GT(roll->x(), field.width() / 2);
  EXPECT_GE(field.textMargins().right(), roll->width());
  EXPECT_TRUE(roll->isVisible());
}

TEST_F(LookTest, TheCrossOfAChipTakesItsChoiceBackAndDoesNotOpenIt) {
  Chip chip;
  chip.setLabel(u"418207"_s);
  chip.setClearable(true);
  show(chip, chip.sizeHint());
  int cleared = 0;
  int opened = 0;
  QObject::connect(&chip, &Chip::clearRequested, &chip, [&cleared] { ++cleared; });
  QObject::connect(&chip, &Chip::clicked, &chip, [&opened] { ++opened; });
  QTest::mouseClick(&chip, Qt::LeftButton, {}, QPoint(chip.width() - 14, chip.height() / 2));
  EXPECT_EQ(std::pair(cleared, opened), std::pair(1, 0));
  QTest::mouseClick(&chip, Qt::LeftButton, {}, QPoint(14, chip.height() / 2));
  EXPECT_EQ(std::pair(cleared, opened), std::pair(1, 1));
  QTest::keyClick(&chip, Qt::Key_Delete);
  EXPECT_EQ(cleared, 2);
  chip.setClearable(false);
  QTest::mouseClick(&chip, Qt::LeftButton, {}, QPoint(chip.width() - 14, chip.height() / 2));
  EXPECT_EQ(std::pair(cleared, opened), std::pair(2, 2));
}

TEST_F(LookTest, TheWordsOfAJobStandInTheMiddleOfItsRow) {
  JobDisplay job;
  job.prompt = u"HHHH"_s;
  job.state = JobState::cancelled;
  const auto middleOf = [&job](const QString& detail) {
    job.detail = detail;
    QImage picture(900, historyRowHeight, QImage::Format_ARGB32_Premultiplied);
    picture.fill(colors().surfaceCanvas);
    QPainter painter(&picture);
    paintHistoryRow(painter, picture.rect(), job, {});
    painter.end();
    const HistoryColumns columns(900);
    const auto [first, last] =
        inked(picture, QRect(columns.words, 1, columns.wordsEnd - columns.words, historyRowHeight - 3), colors().surfaceCanvas);
    return (first + last) / 2;
  };
  EXPECT_NEAR(middleOf(u"HHHH"_s), historyRowHeight / 2, 2);
  EXPECT_NEAR(middleOf(u"HHHH "_s.repeated(16)), historyRowHeight / 2, 2);
}

TEST_F(LookTest, WhatHappenedToTheMoneyIsReadWholeInEveryList) {
  const QString longest =
      u"Cancelled here. The model had already started; its credits are held until it stops or finishes."_s;
  for (const int list : {560, 628, 728, 888, 1400}) {
    const HistoryColumns columns(list);
    const int width = columns.wordsEnd - columns.words;
    EXPECT_GE(width, 220) << list;
    EXPECT_LE(paragraphLines({longest, fontFor(Type::small), {}}, width, 9), 3) << list;
    EXPECT_LE(columns.wordsEnd, columns.model) << list;
    EXPECT_LE(columns.modelEnd, columns.startedEnd) << list;
  }
}

TEST_F(LookTest, AWordOfManyLettersIsBrokenAndWidensNothing) {
  const QString word = u"Schlittschuhläuferinnenweltmeisterschaftsqualifikationswettbewerb"_s;
  Paragraph paragraph(word + u"\nein"_s);
  paragraph.setSelectable(true);
  EXPECT_LE(paragraph.minimumSizeHint().width(), 40);
  EXPECT_GE(paragraph.heightForWidth(200), 4 * lineHeight(Type::body) - 8);
  EXPECT_EQ(paragraph.paragraph(), word + u"\nein"_s);
  show(paragraph, {200, 120});
  const int breaks = static_cast<int>(word.size() - 1) / 8;
  paragraph.setSelection(0, static_cast<int>(word.size()) + breaks + 4);
  ASSERT_TRUE(paragraph.hasSelectedText());
  QTest::keyClick(&paragraph, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), word + u"\nein"_s) << "copied without the places to break it";
}

TEST_F(LookTest, AWordOfOrdinaryLengthIsLeftAlone) {
  Paragraph paragraph(u"a lighthouse on a cliff"_s);
  EXPECT_FALSE(paragraph.text().contains(QChar(0x200B)));
}

TEST_F(LookTest, CountsTheLinesOfAParagraph) {
  const TextLine words{u"one two three four five six seven eight nine ten"_s, fontFor(Type::body), {}};
  EXPECT_EQ(paragraphLines(words, 4000, 3), 1);
  const int lines = paragraphLines(words, 150, 9);
  EXPECT_GE(lines, 2);
  EXPECT_LE(lines, 4);
  EXPECT_EQ(paragraphLines(words, 150, lines - 1), lines - 1);
  EXPECT_EQ(paragraphLines({{}, fontFor(Type::body), {}}, 150, 2), 0);
}

TEST_F(LookTest, ASpinnerIsAFaintRingWithAQuarterInFullColour) {
  QImage picture(48, 48, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::black);
  QPainter painter(&picture);
  paintSpinner(painter, picture.rect(), 48, Qt::white, 0);
  painter.end();
  EXPECT_GT(picture.pixelColor(37, 11).lightness(), 150) << "the quarter begins at the top and turns to the right";
  const int faint = picture.pixelColor(11, 37).lightness();
  EXPECT_GT(faint, 30);
  EXPECT_LT(faint, 110);
}

}  // namespace
}  // namespace sorvan::views
