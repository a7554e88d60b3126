// The one JSON codec for our own files and for the plain structs of wires.
//
// A struct described with BOOST_DESCRIBE_STRUCT is an object whose keys are the field names (a trailing underscore is
// not part of the key). An empty optional is left out; absent and null are read as empty. A required key that is
// missing, and a key that is present with the wrong type, are errors that name the key; unknown keys are ignored.
// Whole numbers accept 2 and 2.0; bytes are base64; UUIDs are upper case; an Instant is one number, seconds since
// 2001-01-01T00:00:00Z, printed so that it reads back exactly; dictionaries are objects (reading also an array that
// alternates keys and values); a ClosedRange is [lower, upper]; a std::variant is {"case": {…}}.
// Objects are written with their keys sorted. Thread: any.
#pragma once

#include "base/file_reading.h"
#include "base/json_codec.h"

namespace sorvan::base {

enum class JsonForm { Compact, Indented };

// Throws JsonError when the bytes are no JSON, are larger than allowed, or nest deeper than 1,024.
QJsonValue parseJson(const QByteArray& bytes, qint64 maximumBytes = maximumSidecarBytes);
// Compact text of an object or array.
QByteArray jsonText(const QJsonValue& value, JsonForm form = JsonForm::Compact);

template <class T>
QJsonValue toJson(const T& value) {
  return JsonCodec<T>::write(value);
}

// Throws JsonError.
template <class T>
T fromJson(const QJsonValue& value) {
  return JsonCodec<T>::read(value, JsonPath{});
}

// The value must be an object or an array.
template <class T>
QByteArray encodeJson(const T& value, JsonForm form = JsonForm::Compact) {
  return jsonText(toJson(value), form);
}

// Throws JsonError, a SorvanError.
template <class T>
T decodeJson(const QByteArray& bytes, qint64 maximumBytes = maximumSidecarBytes) {
  return fromJson<T>(parseJson(bytes, maximumBytes));
}

// Each element that can be read, in order: one bad element does not cost the others.
template <class T>
std::vector<T> fromJsonDroppingBad(const QJsonArray& array) {
  std::vector<T> values;
  for (const QJsonValue& element : array) {
    try {
      values.push_back(fromJson<T>(element));
    } catch (const JsonError&) {
      continue;
    }
  }
  return values;
}

}  // namespace sorvan::base
