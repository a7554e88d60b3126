#include "base/json.h"

#include <cmath>

#include "base/texts.h"

namespace sorvan::base {

QString JsonPath::text() const {
  // Bounded by the depth that the parser allows.
  const QString before = parent != nullptr ? parent->text() : QString();
  if (index >= 0) return before + QStringLiteral("[%1]").arg(index);
  if (before.isEmpty()) return key;
  return key.isEmpty() ? before : before + u'.' + key;
}

// Keys of hostile documents may be megabytes long.
static QString shown(const JsonPath& path) {
  const QString text = path.text();
  if (text.isEmpty()) return QStringLiteral("JSON");
  return text.size() <= 200 ? text : text.first(199) + u'…';
}

void throwJsonMissing(const JsonPath& path) { throw JsonError(path.text(), texts::jsonMissing(shown(path))); }

void throwJsonUnexpected(const JsonPath& path, const QString& expected) {
  throw JsonError(path.text(), texts::jsonUnexpected(shown(path), expected));
}

bool JsonCodec<bool>::read(const QJsonValue& value, const JsonPath& path) {
  if (!value.isBool()) throwJsonUnexpected(path, QStringLiteral("true or false"));
  return value.toBool();
}

QJsonValue JsonCodec<double>::write(double value) {
  if (!std::isfinite(value)) throw SorvanError(texts::jsonNotFinite());
  return value;
}

double JsonCodec<double>::read(const QJsonValue& value, const JsonPath& path) {
  if (!value.isDouble() || !std::isfinite(value.toDouble())) throwJsonUnexpected(path, QStringLiteral("a number"));
  return value.toDouble();
}

QString JsonCodec<QString>::read(const QJsonValue& value, const JsonPath& path) {
  if (!value.isString()) throwJsonUnexpected(path, QStringLiteral("a text"));
  return value.toString();
}

QJsonValue JsonCodec<QByteArray>::write(const QByteArray& value) { return QString::fromLatin1(value.toBase64()); }

QByteArray JsonCodec<QByteArray>::read(const QJsonValue& value, const JsonPath& path) {
  const QByteArray text = JsonCodec<QString>::read(value, path).toUtf8();
  const auto decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
  if (!decoded) throwJsonUnexpected(path, QStringLiteral("base64"));
  return *decoded;
}

QJsonValue JsonCodec<QUrl>::write(const QUrl& value) { return value.toString(QUrl::FullyEncoded); }

QUrl JsonCodec<QUrl>::read(const QJsonValue& value, const JsonPath& path) {
  const QString text = JsonCodec<QString>::read(value, path);
  const QUrl url(text);
  if (!text.isEmpty() && !url.isValid()) throwJsonUnexpected(path, QStringLiteral("an address"));
  // A text that is no strict address, such as "##", is written as one and must be equal when it is read again.
  return QUrl::fromEncoded(url.toEncoded());
}

QUuid JsonCodec<QUuid>::read(const QJsonValue& value, const JsonPath& path) {
  const QString text = JsonCodec<QString>::read(value, path);
  const QUuid id = uuidFromText(text);
  // The null UUID is a value of its own, and only its own text may give it.
  if (id.isNull() && text != uuidText(QUuid())) throwJsonUnexpected(path, QStringLiteral("a UUID"));
  return id;
}

QJsonValue JsonCodec<Instant>::write(Instant value) { return JsonCodec<double>::write(value.seconds); }

Instant JsonCodec<Instant>::read(const QJsonValue& value, const JsonPath& path) {
  if (!value.isString()) return {JsonCodec<double>::read(value, path)};
  const auto moment = instantFromIso(value.toString());
  if (!moment) throwJsonUnexpected(path, QStringLiteral("a date"));
  return *moment;
}

QJsonObject JsonCodec<QJsonObject>::read(const QJsonValue& value, const JsonPath& path) {
  return detail::readJsonObject(value, path);
}

QJsonArray JsonCodec<QJsonArray>::read(const QJsonValue& value, const JsonPath& path) {
  return detail::readJsonArray(value, path);
}

namespace detail {

qint64 readJsonInteger(const QJsonValue& value, const JsonPath& path) {
  const qint64 whole = value.toInteger(0);
  // With a number that is no whole one both calls give their default.
  if (!value.isDouble() || whole != value.toInteger(1)) throwJsonUnexpected(path, QStringLiteral("a whole number"));
  return whole;
}

QJsonArray readJsonArray(const QJsonValue& value, const JsonPath& path) {
  if (!value.isArray()) throwJsonUnexpected(path, QStringLiteral("a list"));
  return value.toArray();
}

QJsonObject readJsonObject(const QJsonValue& value, const JsonPath& path) {
  if (!value.isObject()) throwJsonUnexpected(path, QStringLiteral("an object"));
  return value.toObject();
}

static std::vector<std::pair<QString, QJsonValue>> readAlternating(const QJsonArray& array, const JsonPath& path) {
  if (array.size() % 2 != 0) throwJsonUnexpected(path, QStringLiteral("a list of keys and values"));
  std::vector<std::pair<QString, QJsonValue>> pairs;
  for (qsizetype index = 0; index < array.size(); index += 2)
    pairs.emplace_back(JsonCodec<QString>::read(array.at(index), path.child(index)), array.at(index + 1));
  return pairs;
}

std::vector<std::pair<QString, QJsonValue>> readJsonPairs(const QJsonValue& value, const JsonPath& path) {
  if (value.isArray()) return readAlternating(value.toArray(), path);
  const QJsonObject object = readJsonObject(value, path);
  std::vector<std::pair<QString, QJsonValue>> pairs;
  for (auto entry = object.begin(); entry != object.end(); ++entry) pairs.emplace_back(entry.key(), entry.value());
  return pairs;
}

}  // namespace detail

QJsonValue parseJson(const QByteArray& bytes, qint64 maximumBytes) {
  if (bytes.size() > maximumBytes) throw JsonError({}, texts::jsonTooLarge());
  QJsonParseError problem;
  const QJsonDocument document = QJsonDocument::fromJson(bytes, &problem);
  if (problem.error != QJsonParseError::NoError) throw JsonError({}, texts::notJson(problem.errorString()));
  if (document.isArray()) return document.array();
  return document.object();
}

QByteArray jsonText(const QJsonValue& value, JsonForm form) {
  const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
  return document.toJson(form == JsonForm::Compact ? QJsonDocument::Compact : QJsonDocument::Indented);
}

}  // namespace sorvan::base
