#include "catalogue/action_models.h"

#include <gtest/gtest.h>

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

class ActionModels : public testing::Test {
 protected:
  void add(const QString& id, MediaType output, bool hasPrompt = true) {
    FalModel model;
    model.id = id;
    model.output = output;
    model.hasPrompt = hasPrompt;
    model.imageInput = SingleInput{u"image_url"_s, true};
    catalog.add(model);
  }
  std::optional<QString> chosen(ActionRole role) const { return actionModel(catalog, *settings, role); }

  std::shared_ptr<Settings> settings = std::make_shared<Settings>();
  FalCatalog catalog{settings};
};

TEST_F(ActionModels, AreNoneWhileNoModelTakesAPicture) {
  EXPECT_EQ(chosen(ActionRole::edit), std::nullopt);
  EXPECT_EQ(chosen(ActionRole::animate), std::nullopt);
}

TEST_F(ActionModels, AreTheFirstThatFits) {
  add(u"acme/enlarge"_s, MediaType::image, false);
  add(u"acme/clip"_s, MediaType::video);
  add(u"acme/edit"_s, MediaType::image);
  EXPECT_EQ(chosen(ActionRole::edit), u"acme/edit"_s);
  EXPECT_EQ(chosen(ActionRole::variation), u"acme/edit"_s);
  EXPECT_EQ(chosen(ActionRole::shotSet), u"acme/edit"_s);
  EXPECT_EQ(chosen(ActionRole::animate), u"acme/clip"_s);
  EXPECT_EQ(chosen(ActionRole::extend), u"acme/clip"_s);
}

TEST_F(ActionModels, AreTheFirstRowOfAPanelOfTools) {
  EXPECT_EQ(chosen(ActionRole::upscale), u"fal-ai/seedvr/upscale/image"_s);
  EXPECT_EQ(chosen(ActionRole::cutOut), u"fal-ai/bria/background/remove"_s);
}

TEST_F(ActionModels, FollowTheChoiceWhileItFits) {
  add(u"acme/edit"_s, MediaType::image);
  add(u"acme/better"_s, MediaType::image);
  chooseActionModel(*settings, ActionRole::edit, u"acme/better"_s);
  chooseActionModel(*settings, ActionRole::cutOut, u"fal-ai/sam-3/image"_s);
  EXPECT_EQ(chosen(ActionRole::edit), u"acme/better"_s);
  EXPECT_EQ(chosen(ActionRole::variation), u"acme/edit"_s);
  EXPECT_EQ(chosen(ActionRole::cutOut), u"fal-ai/sam-3/image"_s);
  catalog.remove(u"acme/better"_s);
  EXPECT_EQ(chosen(ActionRole::edit), u"acme/edit"_s);
}

}  // namespace
}  // namespace sorvan::catalogue
