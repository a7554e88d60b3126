// How one value becomes JSON and is read again. `json.h` is what other files include.
#pragma once

#include <concepts>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QUrl>
#include <QUuid>
#include <boost/describe.hpp>
#include <boost/mp11.hpp>

#include "base/closed_range.h"
#include "base/enum_text.h"
#include "base/ids.h"
#include "base/instant.h"
#include "base/sorvan_error.h"

namespace sorvan::base {

// Where in a document a value stands: "references[2].role". It lives on the reader's stack and is told only in errors.
struct JsonPath {
  const JsonPath* parent = nullptr;
  QString key;
  qsizetype index = -1;

  JsonPath child(const QString& name) const { return {this, name, -1}; }
  JsonPath child(qsizetype position) const { return {this, {}, position}; }
  QString text() const;
};

// A document that does not hold what it should; `path` names the place.
class JsonError final : public SorvanError {
 public:
  JsonError(QString place, const QString& message) : SorvanError(message), placeText(std::move(place)) {}
  const QString& path() const noexcept { return placeText; }

 private:
  QString placeText;
};
[[noreturn]] void throwJsonMissing(const JsonPath& path);
// `expected` completes "“path” is not …": "a whole number".
[[noreturn]] void throwJsonUnexpected(const JsonPath& path, const QString& expected);

// write: QJsonValue write(const T&); read: T read(const QJsonValue&, const JsonPath&), which throws JsonError.
// Specialise it for a type that is told differently.
template <class T>
struct JsonCodec;

// Members of a described struct that are no optionals and yet may be absent: they keep their initial value then.
// A specialisation has `static constexpr std::array<std::string_view, N> keys{…};`.
template <class T>
struct JsonDefaulted {};

// The case names of a tagged choice, std::variant<A, B, …> of described structs, in order. It is written as an object
// with the name as its single key. A specialisation has `static constexpr std::array<std::string_view, N> names{…};`.
template <class Variant>
struct JsonCases {};

// --- plain values -----------------------------------------------------------------------------------------------
template <>
struct JsonCodec<bool> {
  static QJsonValue write(bool value) { return value; }
  static bool read(const QJsonValue& value, const JsonPath& path);
};
template <>
struct JsonCodec<double> {
  static QJsonValue write(double value);  // throws SorvanError when it is not finite
  static double read(const QJsonValue& value, const JsonPath& path);
};
template <>
struct JsonCodec<QString> {
  static QJsonValue write(const QString& value) { return value.isNull() ? QJsonValue(QStringLiteral("")) : value; }
  static QString read(const QJsonValue& value, const JsonPath& path);
};
template <>
struct JsonCodec<QByteArray> {  // base64
  static QJsonValue write(const QByteArray& value);
  static QByteArray read(const QJsonValue& value, const JsonPath& path);
};
template <>
struct JsonCodec<QUrl> {
  static QJsonValue write(const QUrl& value);
  static QUrl read(const QJsonValue& value, const JsonPath& path);
};
template <>
struct JsonCodec<QUuid> {  // upper case; reads any case
  static QJsonValue write(const QUuid& value) { return uuidText(value); }
  static QUuid read(const QJsonValue& value, const JsonPath& path);
};
template <>
struct JsonCodec<Instant> {  // one number; reads ISO-8601 texts too
  static QJsonValue write(Instant value);
  static Instant read(const QJsonValue& value, const JsonPath& path);
};
template <>
struct JsonCodec<QJsonValue> {
  static QJsonValue write(const QJsonValue& value) { return value; }
  static QJsonValue read(const QJsonValue& value, const JsonPath&) { return value; }
};
template <>
struct JsonCodec<QJsonObject> {
  static QJsonValue write(const QJsonObject& value) { return value; }
  static QJsonObject read(const QJsonValue& value, const JsonPath& path);
};
template <>
struct JsonCodec<QJsonArray> {
  static QJsonValue write(const QJsonArray& value) { return value; }
  static QJsonArray read(const QJsonValue& value, const JsonPath& path);
};

namespace detail {
// Accepts 2 and 2.0, refuses 2.5 and what does not fit 64 bits.
qint64 readJsonInteger(const QJsonValue& value, const JsonPath& path);
QJsonArray readJsonArray(const QJsonValue& value, const JsonPath& path);
QJsonObject readJsonObject(const QJsonValue& value, const JsonPath& path);
// The pairs of an object, or of an array that alternates keys and values.
std::vector<std::pair<QString, QJsonValue>> readJsonPairs(const QJsonValue& value, const JsonPath& path);
inline QString jsonKey(std::string_view name) {
  const std::string_view plain = withoutTrailingUnderscore(name);
  return QString::fromUtf8(plain.data(), static_cast<qsizetype>(plain.size()));
}

template <class T>
concept JsonInteger = std::integral<T> && !std::same_as<T, bool>;
template <class T>
concept JsonStruct = std::is_class_v<T> && boost::describe::has_describe_members<T>::value;
template <class T>
using JsonMembers =
    boost::describe::describe_members<T, boost::describe::mod_any_access | boost::describe::mod_inherited>;

template <class T>
struct IsOptional : std::false_type {};
template <class T>
struct IsOptional<std::optional<T>> : std::true_type {};

template <class T>
bool mayBeAbsent(std::string_view name) {
  if constexpr (requires { JsonDefaulted<T>::keys; }) {
    for (const std::string_view key : JsonDefaulted<T>::keys) {
      if (key == name) return true;
    }
  }
  return false;
}

// Keys of dictionaries.
inline QString writeKey(const QString& key) { return key; }
inline QString writeKey(const QUuid& key) { return uuidText(key); }
template <class Key>
Key readKey(const QString& text, const JsonPath& path) {
  if constexpr (std::same_as<Key, QUuid>) {
    return JsonCodec<QUuid>::read(text, path);
  } else {
    return text;
  }
}
}  // namespace detail

template <detail::JsonInteger T>
struct JsonCodec<T> {
  static QJsonValue write(T value) {
    static_assert(sizeof(T) < 8 || std::is_signed_v<T>, "JSON keeps integers up to 2^63");
    return static_cast<qint64>(value);
  }
  static T read(const QJsonValue& value, const JsonPath& path) {
    const qint64 whole = detail::readJsonInteger(value, path);
    if (!std::in_range<T>(whole)) throwJsonUnexpected(path, QStringLiteral("a number of the expected size"));
    return static_cast<T>(whole);
  }
};

template <>
struct JsonCodec<float> {
  static QJsonValue write(float value) { return JsonCodec<double>::write(static_cast<double>(value)); }
  static float read(const QJsonValue& value, const JsonPath& path) {
    return static_cast<float>(JsonCodec<double>::read(value, path));
  }
};

template <class E>
requires std::is_enum_v<E>
struct JsonCodec<E> {
  static QJsonValue write(E value) { return enumText(value); }
  static E read(const QJsonValue& value, const JsonPath& path) {
    const auto found = enumFromText<E>(JsonCodec<QString>::read(value, path));
    if (!found) throwJsonUnexpected(path, QStringLiteral("one of the known values"));
    return *found;
  }
};

// --- containers -------------------------------------------------------------------------------------------------
template <class T>
struct JsonCodec<std::optional<T>> {
  static QJsonValue write(const std::optional<T>& value) {
    return value ? JsonCodec<T>::write(*value) : QJsonValue(QJsonValue::Null);
  }
  static std::optional<T> read(const QJsonValue& value, const JsonPath& path) {
    if (value.isNull() || value.isUndefined()) return std::nullopt;
    return JsonCodec<T>::read(value, path);
  }
};

namespace detail {
template <class Container, class T>
struct JsonSequenceCodec {
  static QJsonValue write(const Container& values) {
    QJsonArray array;
    for (const auto& value : values) array.append(JsonCodec<T>::write(value));
    return array;
  }
  static Container read(const QJsonValue& value, const JsonPath& path) {
    const QJsonArray array = readJsonArray(value, path);
    Container values;
    for (qsizetype index = 0; index < array.size(); ++index)
      values.insert(values.end(), JsonCodec<T>::read(array.at(index), path.child(index)));
    return values;
  }
};

template <class Map, class Key, class T>
struct JsonDictionaryCodec {
  static QJsonValue write(const Map& values) {
    QJsonObject object;
    for (auto entry = values.begin(); entry != values.end(); ++entry) {
      if constexpr (requires { entry.key(); }) {
        object.insert(writeKey(entry.key()), JsonCodec<T>::write(entry.value()));
      } else {
        object.insert(writeKey(entry->first), JsonCodec<T>::write(entry->second));
      }
    }
    return object;
  }
  static Map read(const QJsonValue& value, const JsonPath& path) {
    Map values;
    for (const auto& [name, entry] : readJsonPairs(value, path)) {
      const JsonPath place = path.child(name);
      values[readKey<Key>(name, place)] = JsonCodec<T>::read(entry, place);
    }
    return values;
  }
};
}  // namespace detail

template <class T>
struct JsonCodec<std::vector<T>> : detail::JsonSequenceCodec<std::vector<T>, T> {};
template <class T>
struct JsonCodec<QList<T>> : detail::JsonSequenceCodec<QList<T>, T> {};
template <class T>
struct JsonCodec<std::set<T>> : detail::JsonSequenceCodec<std::set<T>, T> {};
template <class Key, class T>
struct JsonCodec<std::map<Key, T>> : detail::JsonDictionaryCodec<std::map<Key, T>, Key, T> {};
template <class Key, class T>
struct JsonCodec<QMap<Key, T>> : detail::JsonDictionaryCodec<QMap<Key, T>, Key, T> {};
template <class Key, class T>
struct JsonCodec<QHash<Key, T>> : detail::JsonDictionaryCodec<QHash<Key, T>, Key, T> {};

template <class T>
struct JsonCodec<ClosedRange<T>> {
  static QJsonValue write(const ClosedRange<T>& value) {
    return QJsonArray{JsonCodec<T>::write(value.lower), JsonCodec<T>::write(value.upper)};
  }
  static ClosedRange<T> read(const QJsonValue& value, const JsonPath& path) {
    const QJsonArray ends = detail::readJsonArray(value, path);
    if (ends.size() != 2) throwJsonUnexpected(path, QStringLiteral("a range of two numbers"));
    ClosedRange<T> range{JsonCodec<T>::read(ends.at(0), path.child(0)), JsonCodec<T>::read(ends.at(1), path.child(1))};
    if (range.upper < range.lower) throwJsonUnexpected(path, QStringLiteral("a range from lower to upper"));
    return range;
  }
};

template <class... Cases>
struct JsonCodec<std::variant<Cases...>> {
  using Choice = std::variant<Cases...>;
  static QJsonValue write(const Choice& choice) {
    const QJsonValue content = std::visit(
        [](const auto& value) { return JsonCodec<std::remove_cvref_t<decltype(value)>>::write(value); }, choice);
    return QJsonObject{{detail::jsonKey(JsonCases<Choice>::names[choice.index()]), content}};
  }
  static Choice read(const QJsonValue& value, const JsonPath& path) {
    const QJsonObject object = detail::readJsonObject(value, path);
    std::optional<Choice> found;
    if (object.size() == 1) {
      boost::mp11::mp_for_each<boost::mp11::mp_iota_c<sizeof...(Cases)>>([&](auto index) {
        const QString name = detail::jsonKey(JsonCases<Choice>::names[index]);
        if (!object.contains(name)) return;
        using Case = std::variant_alternative_t<index, Choice>;
        found.emplace(std::in_place_index<index>, JsonCodec<Case>::read(object.value(name), path.child(name)));
      });
    }
    if (!found) throwJsonUnexpected(path, QStringLiteral("one of the known cases"));
    return std::move(*found);
  }
};

// --- described structs ------------------------------------------------------------------------------------------
template <detail::JsonStruct T>
struct JsonCodec<T> {
  static QJsonValue write(const T& value) {
    QJsonObject object;
    boost::mp11::mp_for_each<detail::JsonMembers<T>>([&](auto member) {
      using Member = std::remove_cvref_t<decltype(value.*member.pointer)>;
      const QJsonValue content = JsonCodec<Member>::write(value.*member.pointer);
      if (detail::IsOptional<Member>::value && content.isNull()) return;
      object.insert(detail::jsonKey(member.name), content);
    });
    return object;
  }
  static T read(const QJsonValue& value, const JsonPath& path) {
    const QJsonObject object = detail::readJsonObject(value, path);
    T result{};
    boost::mp11::mp_for_each<detail::JsonMembers<T>>(
        [&](auto member) { readMember(object, result.*member.pointer, member.name, path); });
    return result;
  }

 private:
  template <class Member>
  static void readMember(const QJsonObject& object, Member& target, const char* name, const JsonPath& path) {
    const QString key = detail::jsonKey(name);
    const QJsonValue content = object.value(key);
    const JsonPath place = path.child(key);
    if (!detail::IsOptional<Member>::value && (content.isUndefined() || content.isNull())) {
      if constexpr (std::same_as<Member, QJsonValue>) return;
      if (detail::mayBeAbsent<T>(name)) return;
      throwJsonMissing(place);
    }
    target = JsonCodec<Member>::read(content, place);
  }
};

}  // namespace sorvan::base
