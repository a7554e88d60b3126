#include "core/thumbnail_maintenance.h"

#include <QImage>

#include "library_fixture.h"
#include "support/made_pictures.h"
#include "support/run_task.h"

namespace sorvan::core {
namespace {

using test::text;

/// Silence but for one loud moment, as a WAV file of 16-bit mono samples.
QByteArray wave(int samples) {
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out.setByteOrder(QDataStream::LittleEndian);
  const quint32 data = static_cast<quint32>(samples) * 2;
  out.writeRawData("RIFF", 4);
  out << quint32(36 + data);
  out.writeRawData("WAVEfmt ", 8);
  out << quint32(16) << quint16(1) << quint16(1) << quint32(8000) << quint32(16000) << quint16(2) << quint16(16);
  out.writeRawData("data", 4);
  out << data;
  for (int index = 0; index < samples; ++index) out << qint16(index == samples / 2 ? 30000 : 0);
  return bytes;
}

struct ThumbnailMaintenanceTest : test::LibraryFixture {
  ThumbnailMaintenance maintenance{store};

  ThumbnailMaintenanceTest() {
    open();
    finish();
    QFile::remove(marker());
  }
  ~ThumbnailMaintenanceTest() override { test::runTask(maintenance.drain()); }

  QString marker() const { return files().sidecar(QStringLiteral("thumbnails-squares")); }
  void finish() {
    test::runUntil([this] { return maintenance.running() == 0; });
  }

  /// A picture with an old thumbnail that holds other bytes.
  AssetRef addPicture(const QString& name, const QColor& fill, bool trashed = false) {
    QImage image(64, 64, QImage::Format_ARGB32);
    image.fill(fill);
    folder.write(QStringLiteral("work/Inbox/imports/") + name, test::encoded(image, "PNG"));
    folder.write(QStringLiteral("work/") + thumbnail(name), "old");
    Asset asset = newAsset(QStringLiteral("Inbox/imports/") + name);
    asset.thumbnailFilePath = thumbnail(name);
    if (trashed) asset.deletedAt = clock->now();
    return add(asset);
  }
  AssetRef addSound(const QString& name, const QByteArray& bytes) {
    folder.write(QStringLiteral("work/Inbox/generated/") + name, bytes);
    MediaMetadata facts{MediaType::audio, 0, 0, 1.0, bytes.size(), QStringLiteral("audio/wav")};
    return add(Asset({}, MediaType::audio, QStringLiteral("Inbox/generated/") + name, name, facts, clock->now()));
  }
  AssetRef add(const Asset& asset) {
    const AssetRef added = store.context().insert(asset);
    store.save(LibraryTables::assets);
    return added;
  }
  static QString thumbnail(const QString& name) { return QStringLiteral("Inbox/thumbnails/%1.jpg").arg(name); }
  QByteArray thumbnailBytes(const QString& name) const {
    return folder.read(QStringLiteral("work/") + thumbnail(name));
  }
  AssetRef again(const AssetRef& asset) const { return store.asset(asset->id); }
};

const QString cutout = QStringLiteral("cutout.png"), photo = QStringLiteral("photo.png");

// ---- See-through pictures

TEST_F(ThumbnailMaintenanceTest, SeeThroughPicturesAreDrawnAgainOnceAndOthersAreLeftAlone) {
  addPicture(cutout, Qt::transparent);
  addPicture(photo, Qt::red);
  addPicture(QStringLiteral("trashed.png"), Qt::transparent, true);
  reopen();
  finish();
  const QImage drawn = QImage::fromData(thumbnailBytes(cutout));
  ASSERT_FALSE(drawn.isNull());
  EXPECT_NEAR(drawn.pixelColor(4, 4).lightnessF(), 0.96, 0.03) << "the squares show";
  EXPECT_NEAR(drawn.pixelColor(12, 4).lightnessF(), 0.8, 0.03);
  EXPECT_EQ(thumbnailBytes(photo), "old");
  EXPECT_EQ(thumbnailBytes(QStringLiteral("trashed.png")), "old");
  EXPECT_EQ(QFileInfo(marker()).size(), 0);
  ASSERT_TRUE(QFileInfo::exists(marker()));

  folder.write(QStringLiteral("work/") + thumbnail(cutout), "changed since");
  reopen();
  finish();
  EXPECT_EQ(thumbnailBytes(cutout), "changed since") << "once in the life of a workspace";
}

TEST_F(ThumbnailMaintenanceTest, AWorkspaceThatIsClosedDuringThePassHasNoMarkerAndThePassBeginsAgain) {
  addPicture(cutout, Qt::transparent);
  reopen();
  store.close();
  finish();
  EXPECT_FALSE(QFileInfo::exists(marker()));
  open();
  finish();
  EXPECT_TRUE(QFileInfo::exists(marker()));
  EXPECT_NE(thumbnailBytes(cutout), "old");
}

TEST_F(ThumbnailMaintenanceTest, OfManyPicturesEachSeeThroughOneIsDrawnWhereverItStands) {
  const QSet<int> seeThrough{0, 1, 63, 64, 65, 128, 149};
  const auto name = [](int number) { return QStringLiteral("picture-%1.png").arg(number); };
  for (int number = 0; number < 150; ++number)
    addPicture(name(number), seeThrough.contains(number) ? Qt::transparent : Qt::red);
  reopen();
  finish();
  for (int number = 0; number < 150; ++number)
    EXPECT_EQ(thumbnailBytes(name(number)) != "old", seeThrough.contains(number)) << number;
  EXPECT_TRUE(QFileInfo::exists(marker()));
}

TEST_F(ThumbnailMaintenanceTest, ABackupPutsThePassOff) {
  addPicture(cutout, Qt::transparent);
  store.setBackingUp(true);
  maintenance.redrawSeeThroughThumbnails();
  finish();
  EXPECT_FALSE(QFileInfo::exists(marker()));
  EXPECT_EQ(thumbnailBytes(cutout), "old");
  store.setBackingUp(false);
}

TEST_F(ThumbnailMaintenanceTest, APictureThatCannotBeReadIsPassedOver) {
  addPicture(cutout, Qt::transparent);
  addPicture(photo, Qt::transparent);
  ASSERT_TRUE(QFile::remove(root() + QStringLiteral("/Inbox/imports/") + photo));
  reopen();
  finish();
  EXPECT_EQ(thumbnailBytes(photo), "old");
  EXPECT_NE(thumbnailBytes(cutout), "old");
  EXPECT_TRUE(QFileInfo::exists(marker()));
  EXPECT_EQ(store.error(), std::nullopt);
}

TEST_F(ThumbnailMaintenanceTest, ARowThatNamesAPlaceOutsideTheWorkspaceMakesNothingThere) {
  const AssetRef asset = addPicture(cutout, Qt::transparent);
  store.context().edit(asset).thumbnailFilePath = QStringLiteral("../outside.jpg");
  store.save(LibraryTables::assets);
  folder.write(QStringLiteral("outside.jpg"), "somebody's");
  reopen();
  finish();
  EXPECT_EQ(folder.read(QStringLiteral("outside.jpg")), "somebody's");
}

// ---- Sounds

TEST_F(ThumbnailMaintenanceTest, SoundsWithoutAWaveformGetOneAndItIsSaved) {
  const AssetRef sound = addSound(QStringLiteral("wind.wav"), wave(4000));
  reopen();
  finish();
  const QString expected = QStringLiteral("Inbox/thumbnails/%1.jpg").arg(uuidText(sound->id));
  EXPECT_EQ(again(sound)->thumbnailFilePath, expected);
  EXPECT_EQ(QImage(root() + u'/' + expected).size(), QSize(700, 420));
  EXPECT_FALSE(store.context().hasChanges());
  reopen();
  EXPECT_EQ(again(sound)->thumbnailFilePath, expected);
}

TEST_F(ThumbnailMaintenanceTest, AnEmptySoundIsPassedOverAndTriedAgainAtTheNextOpening) {
  const AssetRef sound = addSound(QStringLiteral("empty.wav"), wave(0));
  const AssetRef good = addSound(QStringLiteral("wind.wav"), wave(4000));
  reopen();
  finish();
  EXPECT_EQ(again(sound)->thumbnailFilePath, std::nullopt);
  EXPECT_TRUE(again(good)->thumbnailFilePath);
  folder.write(QStringLiteral("work/Inbox/generated/empty.wav"), wave(4000));
  reopen();
  finish();
  EXPECT_TRUE(again(sound)->thumbnailFilePath);
}

TEST_F(ThumbnailMaintenanceTest, ASoundThatWentWhileItWasDrawnIsNotBroughtBack) {
  const AssetRef sound = addSound(QStringLiteral("wind.wav"), wave(4000));
  maintenance.drawMissingWaveforms();
  store.context().remove(sound);
  store.save(LibraryTables::assets);
  finish();
  EXPECT_EQ(again(sound), nullptr);
  EXPECT_EQ(store.error(), std::nullopt);
}

TEST_F(ThumbnailMaintenanceTest, AFailingSaveIsToldAndTheRowsAreAsTheyWere) {
  const AssetRef sound = addSound(QStringLiteral("wind.wav"), wave(4000));
  failWrites("UPDATE", "Asset");
  maintenance.drawMissingWaveforms();
  finish();
  EXPECT_NE(text(store.error().value_or(QString())), "");
  EXPECT_EQ(again(sound)->thumbnailFilePath, std::nullopt);
  EXPECT_FALSE(store.context().hasChanges());
}

TEST_F(ThumbnailMaintenanceTest, ADriveThatVanishedGetsNoNewFolders) {
  addSound(QStringLiteral("wind.wav"), wave(4000));
  ASSERT_TRUE(QDir(root()).removeRecursively());
  maintenance.drawMissingWaveforms();
  finish();
  EXPECT_FALSE(QFileInfo::exists(root()));
}

}  // namespace
}  // namespace sorvan::core
