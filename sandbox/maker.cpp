#include "maker.h"

#include "clip_maker.h"
#include "other_maker.h"
#include "picture_maker.h"
#include "sound_maker.h"

namespace sandbox {

ModelRefusal refusal(const QString& type, const QString& field, const QString& message) {
  QJsonArray place{QStringLiteral("body")};
  if (!field.isEmpty()) place.append(field);
  return {422,
          {QJsonObject{{QStringLiteral("loc"), place},
                       {QStringLiteral("msg"), message},
                       {QStringLiteral("type"), type},
                       {QStringLiteral("url"), QStringLiteral("https://docs.fal.ai/errors#%1").arg(type)}}}};
}

Made make(const WorkOrder& order, const MediaShelf& shelf) {
  switch (order.product) {
    case Product::Picture:
      return makePictures(order);
    case Product::PictureEdit:
      return editPicture(order, shelf);
    case Product::Upscale:
      return upscalePicture(order, shelf);
    case Product::CutOut:
      return cutOutPicture(order, shelf);
    case Product::Clip:
      return makeClip(order, shelf);
    case Product::ClipEdit:
      return editClip(order, shelf);
    case Product::ClipUpscale:
      return upscaleClip(order, shelf);
    case Product::Speech:
    case Product::Music:
    case Product::Effect:
      return makeSound(order);
    case Product::Stems:
      return splitIntoStems(order, shelf);
    case Product::PulledSound:
      return pullSoundOut(order, shelf);
    case Product::CleanSound:
      return cleanSound(order, shelf);
    case Product::LongerSound:
      return lengthenSound(order, shelf);
    case Product::SoundForClip:
      return makeSoundForClip(order, shelf);
    case Product::Solid:
      return makeSolid(order);
    case Product::Words:
      return sayWords(order);
  }
  return {};
}

}  // namespace sandbox
