#include "shell/views/thumbnail_store.h"

#include <QPainter>

#include "support/temporary_folder.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;
using State = ThumbnailStore::State;

class ThumbnailStoreTest : public Dressed {
 protected:
  QString picture(const QString& name, QSize size) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString path = folder / name;
    EXPECT_TRUE(image.save(path));
    return path;
  }
  void settle() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return store.pending() == 0; }));
  }
  test::TemporaryFolder folder;
  ThumbnailStore store;
};

TEST_F(ThumbnailStoreTest, APictureIsLoadingAtFirstAndThereLater) {
  const QString path = picture(u"a.png"_s, {800, 400});
  EXPECT_EQ(store.picture(path, {}, 200).state, State::loading);
  settle();
  const ThumbnailStore::Answer answer = store.picture(path, {}, 200);
  ASSERT_EQ(answer.state, State::ready);
  EXPECT_EQ(answer.picture.width(), 256);
  EXPECT_EQ(answer.picture.height(), 128);
}

TEST_F(ThumbnailStoreTest, TheSecondPathStandsInForAFirstThatCannotBeRead) {
  const QString path = picture(u"a.png"_s, {80, 40});
  store.picture(folder / u"gone.png"_s, path, 200);
  settle();
  EXPECT_EQ(store.picture(folder / u"gone.png"_s, path, 200).state, State::ready);
}

TEST_F(ThumbnailStoreTest, AFileThatIsMissingIsToldAndTriedAgainWhenForgotten) {
  const QString path = folder / u"later.png"_s;
  store.picture(path, {}, 200);
  settle();
  EXPECT_EQ(store.picture(path, {}, 200).state, State::missing);
  picture(u"later.png"_s, {40, 40});
  store.forgetMissing();
  EXPECT_EQ(store.picture(path, {}, 200).state, State::loading);
  settle();
  EXPECT_EQ(store.picture(path, {}, 200).state, State::ready);
}

TEST_F(ThumbnailStoreTest, WithoutAnyPathThereIsNothingToWaitFor) {
  EXPECT_EQ(store.picture({}, {}, 200).state, State::missing);
  EXPECT_EQ(store.pending(), 0);
}

TEST_F(ThumbnailStoreTest, OldRequestsAreDroppedWhenTooManyWait) {
  for (int number = 0; number < 2000; ++number) store.picture(folder / u"%1.png"_s.arg(number), {}, 200);
  EXPECT_LE(store.pending(), 310);
  settle();
}

TEST_F(ThumbnailStoreTest, NoMoreThanTheBoundOfPicturesIsKept) {
  std::vector<QString> paths;
  for (int number = 0; number < 290; ++number) paths.push_back(picture(u"%1.png"_s.arg(number), {20, 20}));
  for (const QString& path : paths) store.picture(path, {}, 64);
  settle();
  int ready = 0;
  for (const QString& path : paths) {
    if (store.picture(path, {}, 64).state == State::ready) ++ready;
  }
  EXPECT_LE(ready, 250);
  EXPECT_GT(ready, 200);
  settle();
}

}  // namespace
}  // namespace sorvan::views
