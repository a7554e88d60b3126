#include "app/sandbox_models.h"

namespace sorvan::app {

using catalogue::FalModel;
using catalogue::Setting;
using catalogue::SizeByAspect;

namespace {

Setting choice(const QString& field, const QString& label, const QStringList& values, const QString& value) {
  Setting setting;
  setting.field = field;
  setting.label = label;
  setting.kind = Setting::Kind::choice;
  setting.values = values;
  setting.defaultValue = value;
  return setting;
}

Setting toggle(const QString& field, const QString& label, const QString& value) {
  Setting setting;
  setting.field = field;
  setting.label = label;
  setting.kind = Setting::Kind::toggle;
  setting.defaultValue = value;
  return setting;
}

}  // namespace

// Fields, values and defaults are those of the model's published document.
FalModel sandboxVideoModel() {
  FalModel model;
  model.id = QStringLiteral("fal-ai/veo3.1");
  model.name = QStringLiteral("Veo 3.1");
  model.category = QStringLiteral("text-to-video");
  model.summary = QStringLiteral("Google · video with sound");
  model.output = core::MediaType::video;
  model.hasPrompt = true;
  model.promptRequired = true;
  model.promptLimit = 20000;
  model.maxCount = 1;
  model.sizing = SizeByAspect{QStringLiteral("aspect_ratio"), {QStringLiteral("16:9"), QStringLiteral("9:16")}};
  model.hasSeed = true;
  model.settings = {
      choice(QStringLiteral("duration"), QStringLiteral("Length"),
             {QStringLiteral("4s"), QStringLiteral("6s"), QStringLiteral("8s")}, QStringLiteral("8s")),
      choice(QStringLiteral("resolution"), QStringLiteral("Resolution"),
             {QStringLiteral("720p"), QStringLiteral("1080p"), QStringLiteral("4k")}, QStringLiteral("720p")),
      toggle(QStringLiteral("generate_audio"), QStringLiteral("Generate Audio"), QStringLiteral("true")),
  };
  return model;
}

FalModel sandboxEditModel() {
  FalModel model;
  model.id = QStringLiteral("fal-ai/nano-banana-2/edit");
  model.name = QStringLiteral("Nano Banana 2 Edit");
  model.category = QStringLiteral("image-to-image");
  model.summary = QStringLiteral("Google · edits and combines images");
  model.output = core::MediaType::image;
  model.hasPrompt = true;
  model.promptRequired = true;
  model.promptLimit = 50000;
  model.maxCount = 4;
  QStringList ratios;
  for (const char* ratio : {"auto", "21:9", "16:9", "3:2", "4:3", "5:4", "1:1", "4:5", "3:4", "2:3", "9:16", "4:1",
                            "1:4", "8:1", "1:8"})
    ratios << QString::fromLatin1(ratio);
  model.sizing = SizeByAspect{QStringLiteral("aspect_ratio"), ratios};
  model.hasSeed = true;
  model.pngOutput = true;
  model.imageInput = catalogue::ListInput{QStringLiteral("image_urls"), true};
  model.settings = {
      choice(QStringLiteral("resolution"), QStringLiteral("Resolution"),
             {QStringLiteral("0.5K"), QStringLiteral("1K"), QStringLiteral("2K"), QStringLiteral("4K")},
             QStringLiteral("1K")),
  };
  return model;
}

}  // namespace sorvan::app
