#include "maker.h"

#include <stdexcept>

#include "picture_maker.h"

namespace sandbox {

ModelRefusal refusal(const QString& type, const QString& field, const QString& message) {
  QJsonArray place{QStringLiteral("body")};
  if (!field.isEmpty()) place.append(field);
  return {422, {QJsonObject{{QStringLiteral("loc"), place},
                            {QStringLiteral("msg"), message},
                            {QStringLiteral("type"), type},
                            {QStringLiteral("url"), QStringLiteral("https://docs.fal.ai/errors#%1").arg(type)}}}};
}

Made make(const WorkOrder& order, const MediaShelf& shelf) {
  switch (order.product) {
    case Product::Picture: return makePictures(order);
    case Product::PictureEdit: return editPicture(order, shelf);
    case Product::Upscale: return upscalePicture(order, shelf);
    case Product::CutOut: return cutOutPicture(order, shelf);
    default: throw std::runtime_error("The sandbox makes no media of this kind.");
  }
}

}  // namespace sandbox
