// The stored form of a model: keys are the field names; `sizing` and `imageInput` are objects with one key, the case.
#pragma once

#include <array>
#include <string_view>

#include <boost/describe.hpp>

#include "base/json.h"
#include "catalogue/fal_model.h"

namespace sorvan::catalogue {

BOOST_DESCRIBE_ENUM(Setting::Kind, choice, number, toggle)
BOOST_DESCRIBE_STRUCT(Setting, (), (field, label, kind, values, defaultValue, accepts, onlyWith, numbers))
BOOST_DESCRIBE_STRUCT(TextInput, (), (field, label, placeholder, required, limit))
BOOST_DESCRIBE_STRUCT(SizeByDimensions, (), (field))
BOOST_DESCRIBE_STRUCT(SizeByAspect, (), (field, values))
BOOST_DESCRIBE_STRUCT(SizeByName, (), (field, values))
BOOST_DESCRIBE_STRUCT(NoSizing, (), ())
BOOST_DESCRIBE_STRUCT(SingleInput, (), (field, required))
BOOST_DESCRIBE_STRUCT(ListInput, (), (field, required))
BOOST_DESCRIBE_STRUCT(NoInput, (), ())
BOOST_DESCRIBE_STRUCT(SideBounds, (), (least, most, step))
BOOST_DESCRIBE_STRUCT(FalModel, (),
                      (id, name, category, summary, output, hasPrompt, promptRequired, settings, endImageField,
                       maxCount, sizing, hasSeed, pngOutput, imageInput, defaultsJSON, camera, dialogue, promptField,
                       videoInput, promptLimit, billedPerMinute, billedEvery, audioInput, texts, inputByteLimit,
                       minInputs, maxInputs, sides, seedRequired, endImageRequired))

/// What a stored list of models held.
struct StoredModels {
  std::vector<FalModel> models;  ///< those that read, in order
  bool complete = false;         ///< false when the text is no JSON array, or an element of it did not read
};
/// One bad element costs only itself.
StoredModels modelsFromText(const QByteArray& text);
QByteArray modelsToText(const std::vector<FalModel>& models);

}  // namespace sorvan::catalogue

namespace sorvan::base {

template <>
struct JsonCases<catalogue::Sizing> {
  static constexpr std::array<std::string_view, 4> names{"none", "dimensions", "aspect", "sizes"};
};
template <>
struct JsonCases<catalogue::ImageInput> {
  static constexpr std::array<std::string_view, 3> names{"none", "single", "list"};
};

/// As any described struct, but an unknown `output` is an error: a model of an unknown kind must not pass as another.
template <>
struct JsonCodec<catalogue::FalModel> {
  static QJsonValue write(const catalogue::FalModel& model);
  static catalogue::FalModel read(const QJsonValue& value, const JsonPath& path);
};

}  // namespace sorvan::base
