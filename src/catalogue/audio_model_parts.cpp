#include "catalogue/audio_model_parts.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

FalModel soundRow(const QString& id, const QString& name, const QString& category, const QString& summary) {
  FalModel model;
  model.id = id;
  model.name = name;
  model.category = category;
  model.summary = summary;
  model.output = MediaType::audio;
  model.maxCount = 1;
  return model;
}

Setting lengthSetting(const QString& field, const QStringList& values, const QString& start, LengthBounds bounds) {
  Setting setting;
  setting.field = field;
  setting.label = u"Length"_s;
  setting.kind = Setting::Kind::number;
  setting.values = values;
  setting.defaultValue = start;
  setting.accepts = ClosedRange<qint64>{bounds.least, bounds.most};
  return setting;
}

Setting choiceSetting(const QString& field, const QString& label, const QStringList& values,
                      std::optional<QString> start) {
  Setting setting;
  setting.field = field;
  setting.label = label;
  setting.kind = Setting::Kind::choice;
  setting.values = values;
  setting.defaultValue = std::move(start);
  return setting;
}

Setting toggleSetting(const QString& field, const QString& label, bool start) {
  Setting setting;
  setting.field = field;
  setting.label = label;
  setting.kind = Setting::Kind::toggle;
  setting.defaultValue = start ? u"true"_s : u"false"_s;
  return setting;
}

TextInput optionalText(const QString& field, const QString& label, const QString& placeholder, int limit) {
  TextInput text;
  text.field = field;
  text.label = label;
  text.placeholder = placeholder;
  text.limit = limit;
  return text;
}

}  // namespace sorvan::catalogue
