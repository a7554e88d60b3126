#include "published/trial_bodies.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <stdexcept>

#include "catalogue/request_body.h"
#include "core/image_format.h"

namespace sorvan::test {

using namespace Qt::StringLiterals;
using namespace sorvan::catalogue;

namespace {

constexpr int patience = 200000;  ///< milliseconds

/// The values of a setting that are to be tried: the ends of its list, or both states.
QStringList extremes(const Setting& setting) {
  if (setting.kind == Setting::Kind::toggle) return {u"true"_s, u"false"_s};
  return {setting.values.first(), setting.values.last()};
}

QString usableSize(const FalModel& model) {
  const auto ratios = model.option().ratios;
  for (const ImageFormat& format : ImageFormat::all()) {
    if (!ratios || ratios->contains(format.ratio)) return QString(format.size);
  }
  return {};
}

QStringList pictures(qsizetype count) { return QStringList(count, u"https://v3.fal.media/files/a.png"_s); }

QString prompt(const FalModel& model, const QString& words) {
  return model.dialogue.value_or(false) ? u"Aria: "_s + words : words;
}

BodyParts smallest(const FalModel& model) {
  const ModelOption option = model.option();
  BodyParts parts;
  if (option.needsPrompt) parts.prompt = prompt(model, u"a fox"_s);
  parts.size = usableSize(model);
  if (option.requiresReference) parts.inputs = pictures(model.minInputs.value_or(1));
  if (model.endImageRequired) parts.endImage = u"https://v3.fal.media/files/z.png"_s;
  if (model.seedRequired) parts.seed = 1;
  for (const TextInput& text : model.texts.value_or(std::vector<TextInput>())) {
    if (text.required) parts.options.insert(text.field, u"words of it"_s);
  }
  return parts;
}

BodyParts fullest(const FalModel& model, int which) {
  BodyParts parts = smallest(model);
  if (model.hasPrompt) parts.prompt = prompt(model, u"a red fox in the snow"_s);
  parts.count = std::min(4, model.maxCount);
  if (model.hasSeed) parts.seed = 12345;
  parts.inputs = pictures(model.option().maxReferences);
  if (model.endImageField) parts.endImage = u"https://v3.fal.media/files/z.png"_s;
  for (const TextInput& text : model.texts.value_or(std::vector<TextInput>())) {
    parts.options.insert(text.field, u"more words of it"_s);
  }
  for (const Setting& setting : model.allSettings()) parts.options.insert(setting.field, extremes(setting).at(which));
  if (model.camera) {
    parts.options.insert({{u"horizontal_angle"_s, u"45"_s}, {u"vertical_angle"_s, u"0"_s}, {u"zoom"_s, u"5"_s}});
  }
  return parts;
}

}  // namespace

QJsonArray trialBodies(const FalModel& model) {
  QJsonArray bodies{requestBody(model, smallest(model)), requestBody(model, fullest(model, 0)),
                    requestBody(model, fullest(model, 1))};
  const auto ratios = model.option().ratios;
  for (const ImageFormat& format : ImageFormat::all()) {
    BodyParts parts = fullest(model, 1);
    parts.size = QString(format.size);
    if (!ratios || ratios->contains(format.ratio)) bodies.append(requestBody(model, parts));
  }
  return bodies;
}

QJsonObject trial(const QString& file, const QJsonArray& bodies) {
  return {{u"document"_s, file}, {u"bodies"_s, bodies}};
}

std::string breaches(const QJsonArray& trials) {
  QProcess validator;
  validator.start(u"/usr/bin/python3"_s, {QStringLiteral(SORVAN_VALIDATOR)});
  validator.write(QJsonDocument(trials).toJson());
  validator.closeWriteChannel();
  if (!validator.waitForFinished(patience)) throw std::runtime_error("the validator did not end");
  const bool ended = validator.exitStatus() == QProcess::NormalExit && validator.exitCode() == 0;
  const QByteArray told = ended ? validator.readAllStandardOutput().trimmed() : validator.readAllStandardError();
  return told.toStdString();
}

}  // namespace sorvan::test
