#include "catalogue/fal_model_json.h"

namespace sorvan::base {

namespace {

using catalogue::FalModel;

template <class Member>
QJsonValue written(const Member& member) {
  if constexpr (std::same_as<Member, core::MediaType>) {
    return core::rawValue(member);
  } else {
    return JsonCodec<Member>::write(member);
  }
}

template <class Member>
Member readMember(const QJsonValue& value, const JsonPath& path) {
  if constexpr (std::same_as<Member, core::MediaType>) {
    const auto type = core::fromRawValue<core::MediaType>(JsonCodec<QString>::read(value, path));
    if (!type) throwJsonUnexpected(path, QStringLiteral("one of the known values"));
    return *type;
  } else {
    return JsonCodec<Member>::read(value, path);
  }
}

}  // namespace

QJsonValue JsonCodec<FalModel>::write(const FalModel& model) {
  QJsonObject object;
  boost::mp11::mp_for_each<detail::JsonMembers<FalModel>>([&](auto member) {
    const QJsonValue value = written(model.*member.pointer);
    if (!value.isNull()) object.insert(detail::jsonKey(member.name), value);
  });
  return object;
}

FalModel JsonCodec<FalModel>::read(const QJsonValue& value, const JsonPath& path) {
  const QJsonObject object = detail::readJsonObject(value, path);
  FalModel model;
  boost::mp11::mp_for_each<detail::JsonMembers<FalModel>>([&](auto member) {
    using Member = std::remove_cvref_t<decltype(model.*member.pointer)>;
    const QString key = detail::jsonKey(member.name);
    const JsonPath place = path.child(key);
    if (!detail::IsOptional<Member>::value && !object.contains(key)) throwJsonMissing(place);
    model.*member.pointer = readMember<Member>(object.value(key), place);
  });
  return model;
}

}  // namespace sorvan::base

namespace sorvan::catalogue {

StoredModels modelsFromText(const QByteArray& text) {
  StoredModels stored;
  const QJsonDocument document = QJsonDocument::fromJson(text);
  stored.models = fromJsonDroppingBad<FalModel>(document.array());
  stored.complete = document.isArray() && static_cast<qsizetype>(stored.models.size()) == document.array().size();
  return stored;
}

QByteArray modelsToText(const std::vector<FalModel>& models) { return encodeJson(models); }

}  // namespace sorvan::catalogue
