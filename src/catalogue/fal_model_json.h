// The stored form of a model: keys are the field names; `sizing` and `imageInput` are objects with one key, the case.
#pragma once

#include <QJsonObject>

#include "catalogue/fal_model.h"

namespace sorvan::catalogue {

/// Absent fields are left out.
QJsonObject modelToJson(const FalModel& model);

/// Throws SorvanError when a required key is missing, a present key has the wrong type, or a case is unknown. Keys that
/// are not known are ignored, and null counts as absent.
FalModel modelFromJson(const QJsonObject& object);

/// What a stored list of models held.
struct StoredModels {
  std::vector<FalModel> models;  ///< those that read, in order
  bool complete = false;         ///< false when the text is no JSON array, or an element of it did not read
};
/// One bad element costs only itself.
StoredModels modelsFromText(const QByteArray& text);
QByteArray modelsToText(const std::vector<FalModel>& models);

}  // namespace sorvan::catalogue
