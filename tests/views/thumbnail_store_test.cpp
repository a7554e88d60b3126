#include "shell/views/thumbnail_store.h"

#include <QFile>
#include <QImageReader>
#include <QtEndian>

#include "support/temporary_folder.h"
#include "views/dressed.h"

namespace sorvan::views {
namespace {
using namespace Qt::Literals::StringLiterals;
using State = ThumbnailStore::State;

// The check sum of a part of a PNG file.
QByteArray checkOf(const QByteArray& bytes) {
  quint32 sum = 0xffffffff;
  for (const char byte : bytes) {
    sum ^= static_cast<uchar>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) ? 0xedb88320 : 0);
  }
  QByteArray written(4, Qt::Uninitialized);
  qToBigEndian(~sum, written.data());
  return written;
}

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
  EXPECT_EQ(store.picture(path, {}, 200).state, State::missing) << "until the file was looked at again";
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

TEST_F(ThumbnailStoreTest, AFittedPictureHasTheSizeOfItsCellAndRoundCorners) {
  const PictureFiles files{picture(u"a.png"_s, {800, 400}), {}};
  EXPECT_EQ(store.fitted(files).state, State::loading);
  EXPECT_EQ(store.pending(), 0) << "looking asks for nothing";
  store.want(this, {{files, {120, 100}, 2}});
  settle();
  const ThumbnailStore::Answer answer = store.fitted(files);
  ASSERT_EQ(answer.state, State::ready);
  EXPECT_EQ(answer.picture.size(), QSize(120, 100));
  EXPECT_EQ(answer.picture.devicePixelRatio(), 2);
  const QImage image = answer.picture.toImage();
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
  EXPECT_EQ(image.pixelColor(60, 50), QColor(Qt::red));
}

TEST_F(ThumbnailStoreTest, APictureOfAnotherSizeStandsInUntilTheNewOneIsThere) {
  const PictureFiles files{picture(u"a.png"_s, {800, 400}), {}};
  store.want(this, {{files, {120, 100}}});
  settle();
  store.want(this, {{files, {60, 50}}});
  EXPECT_EQ(store.fitted(files).picture.size(), QSize(120, 100));
  settle();
  EXPECT_EQ(store.fitted(files).picture.size(), QSize(60, 50));
  EXPECT_EQ(store.pictures(), 1);
}

TEST_F(ThumbnailStoreTest, WhatWasScrolledAwayIsNotDecodedAnyMore) {
  std::vector<ThumbnailStore::Wish> left;
  for (int number = 0; number < 200; ++number) left.push_back({{picture(u"l%1.png"_s.arg(number), {40, 40}), {}}, {20, 20}});
  const PictureFiles seen{picture(u"seen.png"_s, {40, 40}), {}};
  store.want(this, left);
  store.want(this, {{seen, {20, 20}}});
  settle();
  EXPECT_EQ(store.fitted(seen).state, State::ready);
  EXPECT_LT(store.pictures(), 50);
  EXPECT_EQ(store.fitted(left.back().files).state, State::loading);
}

TEST_F(ThumbnailStoreTest, AWallsWishesComeBeforeWhatOthersAskFor) {
  std::vector<QString> others;
  for (int number = 0; number < 100; ++number) others.push_back(picture(u"o%1.png"_s.arg(number), {400, 400}));
  const PictureFiles urgent{picture(u"urgent.png"_s, {40, 40}), {}};
  for (const QString& path : others) store.picture(path, {}, 256);
  store.want(this, {{urgent, {20, 20}}});
  ASSERT_TRUE(QTest::qWaitFor([&] { return store.fitted(urgent).state == State::ready; }));
  EXPECT_GT(store.pending(), 50);
  settle();
}

TEST_F(ThumbnailStoreTest, AFileWithoutAPictureIsToldApartFromOneThatIsGone) {
  QFile text(folder / u"text.jpg"_s);
  ASSERT_TRUE(text.open(QIODevice::WriteOnly));
  text.write("no picture");
  text.close();
  const PictureFiles unreadable{text.fileName(), text.fileName()};
  const PictureFiles gone{folder / u"gone.jpg"_s, folder / u"gone.png"_s};
  store.want(this, {{unreadable, {20, 20}}, {gone, {20, 20}}});
  settle();
  EXPECT_EQ(store.fitted(unreadable).state, State::unreadable);
  EXPECT_EQ(store.fitted(gone).state, State::missing);
}

TEST_F(ThumbnailStoreTest, AThumbnailOfAMissingOriginalIsShownAndSaysSo) {
  const PictureFiles files{picture(u"a.png"_s, {80, 40}), folder / u"gone.png"_s};
  store.want(this, {{files, {20, 20}}});
  settle();
  EXPECT_EQ(store.fitted(files).state, State::ready);
  EXPECT_TRUE(store.fitted(files).originalMissing);
}

TEST_F(ThumbnailStoreTest, AThumbnailThatWasCutShortGivesWayToTheOriginal) {
  const QString cut = picture(u"cut.jpg"_s, {400, 400});
  QFile file(cut);
  ASSERT_TRUE(file.resize(file.size() / 2));
  QImage blue(40, 40, QImage::Format_RGB32);
  blue.fill(Qt::blue);
  ASSERT_TRUE(blue.save(folder / u"original.png"_s));
  const PictureFiles picture{cut, folder / u"original.png"_s};
  const PictureFiles clip{cut, folder / u"original.png"_s, false};
  store.want(this, {{picture, {20, 20}}, {clip, {20, 20}}});
  settle();
  EXPECT_EQ(store.fitted(picture).picture.toImage().pixelColor(10, 10), QColor(Qt::blue));
  EXPECT_EQ(decodeFitted(clip, {20, 20}, 4).image.isNull(), true) << "a clip's file is no picture";
}

TEST_F(ThumbnailStoreTest, AFileThatSaysItIsHugeIsNotDecoded) {
  // A PNG's header alone: 60,000 by 60,000 pixels.
  const QString path = picture(u"bomb.png"_s, {8, 8});
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  QByteArray bytes = file.readAll();
  bytes.replace(16, 8, QByteArray::fromHex("0000ea600000ea60"));
  bytes.replace(29, 4, checkOf(bytes.mid(12, 17)));
  file.seek(0);
  file.write(bytes);
  file.close();
  ASSERT_EQ(QImageReader(path).size(), QSize(60000, 60000));
  const DecodedPicture decoded = decodeFitted({path, path}, {20, 20}, 4);
  EXPECT_TRUE(decoded.image.isNull());
  EXPECT_FALSE(decoded.originalMissing);
}

TEST_F(ThumbnailStoreTest, WhatCouldNotBeReadIsReadAgainOnlyWhenTheFileHasChanged) {
  const PictureFiles files{folder / u"later.png"_s, folder / u"later.png"_s};
  store.want(this, {{files, {20, 20}}});
  settle();
  ASSERT_EQ(store.fitted(files).state, State::missing);
  store.want(this, {{files, {20, 20}}});
  EXPECT_EQ(store.pending(), 0) << "without a doubt there is nothing to try";
  store.forgetMissing();
  store.want(this, {{files, {20, 20}}});
  EXPECT_EQ(store.fitted(files).state, State::missing) << "the words stay while the file is looked at";
  settle();
  picture(u"later.png"_s, {40, 40});
  store.forgetMissing();
  store.want(this, {{files, {20, 20}}});
  settle();
  EXPECT_EQ(store.fitted(files).state, State::ready);
}

TEST_F(ThumbnailStoreTest, LargePicturesStayWithinTheBoundOfBytes) {
  const QString path = picture(u"a.png"_s, {64, 64});
  for (int number = 0; number < 12; ++number) {
    const QString copy = folder / u"copy%1.png"_s.arg(number);
    ASSERT_TRUE(QFile::copy(path, copy));
    store.want(this, {{{copy, {}}, {2000, 2000}}});
    settle();
  }
  EXPECT_LE(store.kibibytes(), ThumbnailStore::mostKibibytes);
  EXPECT_EQ(store.pictures(), 6);
}

}  // namespace
}  // namespace sorvan::views
