#include <gtest/gtest.h>

#include "desk.h"
#include "service_pages.h"
#include "support/text_printers.h"

namespace sorvan::shell {
namespace {

using namespace Qt::StringLiterals;

const QString nanoKey = u"fal.ai:fal-ai/nano-banana-2"_s;
const QString schnellKey = u"fal.ai:fal-ai/flux/schnell"_s;

FalModel clipModel(const QString& id, const QString& category) {
  FalModel model;
  model.id = id;
  model.name = id;
  model.category = category;
  model.output = MediaType::video;
  Setting sound;
  sound.field = u"generate_audio"_s;
  sound.kind = Setting::Kind::toggle;
  model.settings = {sound};
  return model;
}

FalModel editor(const QString& id, int most) {
  FalModel model;
  model.id = id;
  model.name = id;
  model.category = u"image-to-image"_s;
  if (most == 1)
    model.imageInput = catalogue::SingleInput{u"image_url"_s, true};
  else
    model.imageInput = catalogue::ListInput{u"image_urls"_s, true};
  model.maxInputs = most;
  return model;
}

struct ModelSectionsTest : testing::Test {
  void offer(const FalModel& model) {
    desk.catalog->add(model);
    desk.composing.setModels(composer::selectableModels(*desk.catalog));
  }
  QStringList idsOf(std::size_t tab) const {
    QStringList ids;
    const std::vector<ModelSection> sections = desk.composer.modelSections();
    for (const ModelChoice& model : sections.at(tab).models) ids << model.id;
    return ids;
  }
  ModelChoice choice(const QString& id) const {
    for (const ModelSection& section : desk.composer.modelSections())
      for (const ModelChoice& model : section.models)
        if (model.id == id) return model;
    return {};
  }
  test::Desk desk;
};

TEST_F(ModelSectionsTest, EachModelStandsInTheTabOfItsCategory) {
  FalModel animator = clipModel(u"acme/animate"_s, u"image-to-video"_s);
  animator.imageInput = catalogue::SingleInput{u"image_url"_s, true};
  animator.endImageField = u"end_image_url"_s;
  offer(editor(u"acme/edit"_s, 4));
  offer(clipModel(u"acme/film"_s, u"text-to-video"_s));
  offer(animator);
  const auto sections = desk.composer.modelSections();
  ASSERT_EQ(sections.size(), 4u);
  EXPECT_EQ(sections[0].title, u"Image"_s);
  EXPECT_EQ(idsOf(0), (QStringList{u"fal-ai/nano-banana-2"_s, u"fal-ai/flux/schnell"_s}));
  EXPECT_EQ(idsOf(1), QStringList{u"acme/edit"_s});
  EXPECT_EQ(idsOf(2), QStringList{u"acme/film"_s});
  EXPECT_EQ(idsOf(3), QStringList{u"acme/animate"_s});
}

TEST_F(ModelSectionsTest, AModelOfAnotherCategoryStandsWhereItsNeedsPutIt) {
  FalModel odd = editor(u"acme/odd"_s, 2);
  odd.category = u"something-new"_s;
  offer(odd);
  offer(clipModel(u"acme/clip"_s, u"something-new"_s));
  EXPECT_EQ(idsOf(1), QStringList{u"acme/odd"_s});
  EXPECT_EQ(idsOf(2), QStringList{u"acme/clip"_s});
}

TEST_F(ModelSectionsTest, AnEmptyTabSaysWhatToAdd) {
  const ModelSection animate = desk.composer.modelSections().at(3);
  EXPECT_TRUE(animate.models.empty());
  EXPECT_EQ(animate.emptyTitle, u"No model for animating yet"_s);
  EXPECT_EQ(animate.browserCategory, 3);
}

TEST_F(ModelSectionsTest, WhatAModelTakesIsTold) {
  FalModel animator = clipModel(u"acme/animate"_s, u"image-to-video"_s);
  animator.imageInput = catalogue::SingleInput{u"image_url"_s, true};
  animator.endImageField = u"end_image_url"_s;
  offer(animator);
  offer(editor(u"acme/edit"_s, 4));
  const auto abilities = choice(u"acme/animate"_s).abilities;
  ASSERT_EQ(abilities.size(), 3u);
  EXPECT_EQ(abilities[0].text, u"Needs a reference image · Takes 1 reference image"_s);
  EXPECT_EQ(abilities[1].text, u"Takes an end frame"_s);
  EXPECT_EQ(abilities[2].text, u"Makes sound with the clip"_s);
  EXPECT_EQ(choice(u"acme/edit"_s).abilities.at(0).number, u"4"_s);
  EXPECT_TRUE(choice(u"fal-ai/flux/schnell"_s).abilities.empty());
}

TEST_F(ModelSectionsTest, OnlyAddedModelsMayBeRemoved) {
  offer(editor(u"acme/edit"_s, 4));
  EXPECT_TRUE(choice(u"acme/edit"_s).removable);
  EXPECT_FALSE(choice(u"fal-ai/nano-banana-2"_s).removable);
}

TEST_F(ModelSectionsTest, SoundsHaveTabsOfTheirOwn) {
  desk.composer.startAudio();
  const auto sections = desk.composer.modelSections();
  ASSERT_EQ(sections.size(), 3u);
  EXPECT_EQ(sections[0].title, u"Voice"_s);
  EXPECT_FALSE(sections[0].severalAllowed);
  EXPECT_EQ(sections[0].browserCategory, -1);
  EXPECT_TRUE(desk.composer.display().audio);
}

TEST_F(ModelSectionsTest, ComingBackFromSoundsChoosesThePicturesModelsOfBefore) {
  desk.composer.setModelChosen(schnellKey, true);
  desk.composer.startAudio();
  EXPECT_EQ(desk.composing.selectedModels().size(), 1);
  desk.composer.startImages();
  EXPECT_EQ(desk.composing.selectedModels(), (QSet<QString>{nanoKey, schnellKey}));
  EXPECT_FALSE(desk.composer.display().audio);
}

TEST_F(ModelSectionsTest, AReferenceLeavesTheModelsThatTakeItChosen) {
  FalModel animator = clipModel(u"acme/animate"_s, u"image-to-video"_s);
  animator.imageInput = catalogue::SingleInput{u"image_url"_s, true};
  offer(editor(u"acme/edit"_s, 4));
  offer(editor(u"acme/second"_s, 4));
  offer(animator);
  desk.generate(u"a red boat"_s);
  desk.settle();
  ASSERT_EQ(desk.store.assets().size(), 1u);
  const QUuid picture = desk.store.assets().front()->id;
  const QString animateKey = u"fal.ai:acme/animate"_s;
  desk.composer.chooseOnlyModel(animateKey);
  desk.composer.useAsReference(picture);
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{animateKey});
  const QSet<QString> editors{u"fal.ai:acme/edit"_s, u"fal.ai:acme/second"_s};
  desk.composer.chooseOnlyModel(u"fal.ai:acme/edit"_s);
  desk.composer.setModelChosen(u"fal.ai:acme/second"_s, true);
  desk.composer.useAsReference(picture);
  EXPECT_EQ(desk.composing.selectedModels(), editors);
  desk.composer.chooseOnlyModel(nanoKey);
  desk.composer.useAsReference(picture);
  EXPECT_EQ(desk.composing.selectedModels(), QSet<QString>{u"fal.ai:acme/edit"_s});
}

}  // namespace
}  // namespace sorvan::shell
