// Looking closely: a picture at its own pixels, a clip that steps frame by frame, quick look on several items, a sound
// with its wave, and the inspector that leads from an item to what it was made from.
#include <gtest/gtest.h>

#include "tour/looks.h"
#include "tour/steps.h"

namespace tour {
namespace {

const Wanted pictureItem{u"A-harbour-at-dawn"_qs, u"list item"_qs, true};
const Wanted figure{u"≈ $"_qs, {}, true};

void generatePictures(Tourist& person) {
  writePrompt(person, u"A harbour at dawn"_qs);
  person.waitFor(figure);
  person.click(generate);
  person.waitForCount(pictureItem, 1, 60);
}

TEST(ViewerTour, LooksCloselyAtAPictureAndGoesBackToTheWall) {
  Tourist person(QSize(1440, 900), u"viewer-"_qs);
  const QString workspace = person.desktop().home() + u"/Pictures/Northlight"_qs;
  person.open(chooseFolder);
  chooseWorkspace(person, workspace);
  generatePictures(person);

  // Quick look: Space opens it over the window, Space closes it.
  person.click(pictureItem);
  person.key(u"space"_qs);
  person.waitFor({u"Close Quick Look"_qs, u"push button"_qs});
  EXPECT_GT(pictureInBothLooks(person, u"quick-look"_qs), 40);
  person.key(u"space"_qs);
  person.waitUntilGone({u"Close Quick Look"_qs, u"push button"_qs});

  // The large view: fitted, then pixel by pixel, then closer.
  person.click(pictureItem);
  person.key(u"Return"_qs);
  person.waitFor({u"Zoom In"_qs, u"push button"_qs});
  EXPECT_GT(pictureInBothLooks(person, u"fitted"_qs), 40);
  person.key(u"z"_qs);
  person.waitFor({u"Size 100 %"_qs, {}});
  EXPECT_GT(person.picture(u"full-size"_qs), 20);
  person.click({u"Zoom In"_qs, u"push button"_qs});
  person.waitFor({u"Size 150 %"_qs, {}});
  person.key(u"z"_qs);
  person.waitUntilGone({u"Size 150 %"_qs, {}});

  // The inspector tells how it was made; Reuse and Copy are acts of their own.
  person.waitFor({u"Reuse"_qs, u"push button"_qs});
  person.waitFor({u"Copy Prompt"_qs, u"push button"_qs});
  person.key(u"Escape"_qs);
  person.waitForCount(pictureItem, 1, 10);
  person.close();
}

}  // namespace
}  // namespace tour
