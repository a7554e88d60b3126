#include "catalogue/list_price.h"

#include <gtest/gtest.h>

#include "catalogue/fal_catalog.h"
#include "support/text_printers.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

FalModel sized() {
  FalModel model;
  model.sizing = SizeByDimensions{u"image_size"_s};
  return model;
}

FalModel timed(const std::optional<QString>& usual) {
  FalModel model;
  Setting length;
  length.field = u"duration"_s;
  length.defaultValue = usual;
  model.settings = {length};
  return model;
}

std::optional<double> cost(const QString& unit, const FalModel& model, const QString& size, int count,
                           const TextByKey& options = {}) {
  GenerationRequest request;
  request.size = size;
  request.count = count;
  if (!options.isEmpty()) request.options = options;
  return listEstimate({2, unit, std::nullopt}, request, model);
}

TEST(ListPrice, CountsMegapixelsRoundedUp) {
  EXPECT_EQ(cost(u"per megapixel"_s, sized(), u"1000x1000"_s, 2), 4);
  EXPECT_EQ(cost(u"Megapixels"_s, sized(), u"1024x1024"_s, 2), 8);
  EXPECT_EQ(cost(u"megapixels"_s, sized(), u"100x100"_s, 1), 2);
  EXPECT_EQ(cost(u"megapixels"_s, sized(), u"100"_s, 1), std::nullopt);
  EXPECT_EQ(cost(u"megapixels"_s, sized(), u"1x2x3"_s, 1), std::nullopt);
  EXPECT_EQ(cost(u"megapixels"_s, sized(), u"axb"_s, 1), std::nullopt);
}

TEST(ListPrice, DoesNotCountThePixelsOfAModelThatChoosesItsSize) {
  EXPECT_EQ(cost(u"megapixels"_s, FalModel(), u"1024x1024"_s, 1), std::nullopt);
  FalModel named;
  named.sizing = SizeByName{u"image_size"_s, {u"1024x1024"_s, u"square_hd"_s}};
  EXPECT_EQ(cost(u"megapixels"_s, named, u"1024x1024"_s, 1), 4);
  EXPECT_EQ(cost(u"megapixels"_s, named, u"1536x1024"_s, 1), std::nullopt);
}

TEST(ListPrice, CountsSecondsOfTheLengthAndNotOfTheOutputs) {
  EXPECT_EQ(cost(u"seconds"_s, timed(u"4"_s), {}, 1, {{u"duration"_s, u"8s"_s}}), 16);
  EXPECT_EQ(cost(u"second"_s, timed(u"4"_s), {}, 3, {{u"duration"_s, u"5"_s}}), 10);
  EXPECT_EQ(cost(u"compute seconds"_s, timed(u"4.5s"_s), {}, 3), 9);
  EXPECT_EQ(cost(u"requests per second"_s, timed(u"4"_s), {}, 1), 8);
  for (const QString& length : {u"auto"_s, u""_s, u"1.2.3"_s, u"."_s}) {
    EXPECT_EQ(cost(u"seconds"_s, timed(u"4"_s), {}, 1, {{u"duration"_s, length}}), std::nullopt);
  }
  EXPECT_EQ(cost(u"seconds"_s, timed(std::nullopt), {}, 1), std::nullopt);
  EXPECT_EQ(cost(u"seconds"_s, FalModel(), {}, 1), std::nullopt);
}

TEST(ListPrice, CountsOutputs) {
  for (const QString& unit :
       {u"images"_s, u"Image"_s, u"videos"_s, u"requests"_s, u"generations"_s, u"calls"_s, u"unit"_s}) {
    EXPECT_EQ(cost(unit, FalModel(), {}, 3), 6) << unit.toStdString();
    EXPECT_EQ(cost(unit, FalModel(), {}, 0), 2) << unit.toStdString();
  }
}

TEST(ListPrice, GivesNoFigureWhereTheUnitDoesNotTell) {
  for (const QString& unit : {u""_s,
                              u"  "_s,
                              u"units"_s,
                              u"1"_s,
                              u"5 seconds"_s,
                              u"10 seconds"_s,
                              u"1000 characters"_s,
                              u"1000 characters "_s,
                              u"1m tokens"_s,
                              u"tokens"_s,
                              u"minutes"_s,
                              u"minute of video "_s,
                              u"input seconds"_s,
                              u"processed megapixels"_s,
                              u"video segments"_s,
                              u"credits"_s,
                              u"trainings"_s,
                              u"steps"_s,
                              u"audios"_s,
                              u"cloned voices"_s}) {
    EXPECT_EQ(cost(unit, timed(u"5"_s), u"1024x1024"_s, 1), std::nullopt) << unit.toStdString();
    EXPECT_EQ(cost(unit, sized(), u"1024x1024"_s, 1), std::nullopt) << unit.toStdString();
  }
}

}  // namespace
}  // namespace sorvan::catalogue
