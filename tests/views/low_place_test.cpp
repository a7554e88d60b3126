#include "shell/views/controls.h"
#include "shell/views/sheet_place.h"
#include "views/dressed.h"
#include "views/job_states.h"

namespace sorvan::views {
namespace {

using LowPlaceTest = Dressed;

TEST_F(LowPlaceTest, KeepsTheButtonOfEveryJobInsideItsFrame) {
  ThumbnailStore thumbnails;
  PlacePicture picture(thumbnails);
  static_cast<QWidget&>(picture).resize(300, 170);
  int buttons = 0;
  for (const auto& [name, job] : sampleJobStates()) {
    PlaceDisplay place;
    place.id = name;
    place.job = job;
    picture.show(place);
    const auto* button = picture.findChild<Button*>();
    if (button->isHidden()) continue;
    ++buttons;
    EXPECT_TRUE(picture.rect().adjusted(4, 4, -4, -4).contains(button->geometry())) << qPrintable(name);
  }
  EXPECT_GE(buttons, 6);
}

}  // namespace
}  // namespace sorvan::views
