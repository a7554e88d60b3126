#include "shell/views/empty_note.h"

#include <gtest/gtest.h>

#include "shell/views/labels.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;

class EmptyNoteTest : public Dressed {};

TEST_F(EmptyNoteTest, ShowsASentenceOfTwoLinesWhole) {
  EmptyNote note;
  note.setWords({u"images"_s,
                 u"Nothing here yet"_s,
                 u"Describe an image, a clip or a sound below and press the button that stands beside it."_s,
                 {}});
  show(note, {860, 400});
  const auto* text = note.findChild<Paragraph*>();
  ASSERT_NE(text, nullptr);
  EXPECT_GT(text->heightForWidth(text->width()), text->fontMetrics().height() * 3 / 2);
  EXPECT_GE(text->height(), text->heightForWidth(text->width()));
}

}  // namespace
}  // namespace sorvan::views
