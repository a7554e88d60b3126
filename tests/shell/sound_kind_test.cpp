#include <gtest/gtest.h>

#include "catalogue/audio_models.h"
#include "desk.h"

namespace sorvan::shell {
namespace {

struct SoundKindTest : testing::Test {
  test::Desk desk;
  // A sound that this model made; none: it came from outside.
  QUuid sound(const QString& model) {
    core::MediaMetadata metadata;
    metadata.duration = 3;
    const QString name = QStringLiteral("sound-%1.wav").arg(desk.store.assets().size());
    const core::AssetRef asset = desk.store.context().insert(
        core::Asset({}, core::MediaType::audio, QStringLiteral("Inbox/") + name, name, metadata, desk.store.now()));
    std::vector<core::GenerationRef> made;
    if (!model.isEmpty()) {
      core::Generation generation;
      generation.id = base::newUuid();
      generation.assetID = asset->id;
      generation.jobID = base::newUuid();
      generation.model = model;
      made.push_back(desk.store.context().insert(generation));
    }
    desk.store.save(core::LibraryTables::none);
    desk.store.registerRecords({{asset}, made, {}, {}});
    return asset->id;
  }
};

TEST_F(SoundKindTest, ACellTellsWhatKindOfSoundItIs) {
  using catalogue::AudioKind;
  for (const auto& [kind, words, icon] :
       {std::tuple(AudioKind::voice, u"Voice", u"mic"), std::tuple(AudioKind::music, u"Music", u"music"),
        std::tuple(AudioKind::effect, u"Effect", u"audio-waveform")}) {
    const GalleryCell cell = desk.gallery.cellOf(sound(catalogue::audioModels(kind).front().id));
    EXPECT_EQ(cell.soundText, QString::fromUtf16(words));
    EXPECT_EQ(cell.soundIcon, QString::fromUtf16(icon));
    EXPECT_TRUE(cell.accessibleName.contains(QString::fromUtf16(words)));
  }
}

TEST_F(SoundKindTest, ASoundFromOutsideIsASound) {
  EXPECT_EQ(desk.gallery.cellOf(sound({})).soundText, QStringLiteral("Sound"));
  desk.generate(QStringLiteral("a boat"));
  desk.settle();
  EXPECT_TRUE(desk.gallery.cellOf(desk.store.assets().front()->id).soundText.isEmpty());
}

}  // namespace
}  // namespace sorvan::shell
