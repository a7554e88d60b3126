// The JSON object that is submitted for a request.
#pragma once

#include <QJsonObject>

#include <optional>

#include "catalogue/fal_model.h"
#include "core/request_values.h"

namespace sorvan::catalogue {

/// Everything of a request that its body is made from; addresses as text.
struct BodyParts {
  QString prompt;
  QString size;
  int count = 1;
  std::optional<qint64> seed;
  bool keepImageShape = true;  ///< a clip keeps the shape of its first picture where the model can
  QStringList inputs;          ///< addresses of input media, in order
  std::optional<QString> endImage;
  TextByKey options;
};

/// Throws SorvanError for what the model cannot do; changes nothing.
QJsonObject requestBody(const FalModel& model, const BodyParts& parts);

}  // namespace sorvan::catalogue
