// One record as data: what the history keeps of a change.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUuid>
#include <string_view>
#include <vector>

#include "base/json.h"
#include "core/record_context.h"

namespace sorvan::core {

struct RecordField {
  const char* name = nullptr;  ///< the field's name in the record's description
  QByteArray json;             ///< the value by itself; "null" for none

  bool operator==(const RecordField& other) const {
    return std::string_view(name) == std::string_view(other.name) && json == other.json;
  }
};

/// JSON of one value by itself. The same value always gives the same bytes. Throws SorvanError for a number that is not
/// finite.
QByteArray valueJson(const QJsonValue& value);
/// The value of such a JSON; throws JsonError.
QJsonValue valueOfJson(const QByteArray& json);

/// All fields of a record but its id, or only those that an edit changed, in the order of the description.
struct LibraryRecord {
  QString kind;  ///< the record's table: "Project", "Asset", "SavedReference", "ContactSheet" or "ClipSequence"
  QUuid id;
  std::vector<RecordField> fields;

  bool operator==(const LibraryRecord&) const = default;
  /// What it counts in the history: the bytes of its values.
  qint64 bytes() const;
  /// The JSON of a field, or null when it is not among the fields.
  const QByteArray* json(std::string_view field) const;
  /// One field as a value of the wanted type, or the fallback when it is absent or none.
  template <class T>
  T value(std::string_view field, T fallback) const {
    const QByteArray* found = json(field);
    if (!found) return fallback;
    return base::fromJson<std::optional<T>>(valueOfJson(*found)).value_or(std::move(fallback));
  }
};

/// The kinds of which the history keeps fields.
template <class R>
inline constexpr const char* historyKind = nullptr;
template <>
inline constexpr const char* historyKind<Project> = "Project";
template <>
inline constexpr const char* historyKind<Asset> = "Asset";
template <>
inline constexpr const char* historyKind<SavedReference> = "SavedReference";
template <>
inline constexpr const char* historyKind<ContactSheet> = "ContactSheet";
template <>
inline constexpr const char* historyKind<ClipSequence> = "ClipSequence";

/// The whole record.
template <class R>
LibraryRecord wholeRecord(const R& record) {
  LibraryRecord data{QString::fromLatin1(historyKind<R>), record.id, {}};
  forEachField<R>([&](const char* name, auto member) {
    if (std::string_view(name) != "id") data.fields.push_back({name, valueJson(base::toJson(record.*member))});
  });
  return data;
}

/// Those fields of the record that differ from the other one's.
template <class R>
LibraryRecord differingPart(const R& record, const R& other) {
  LibraryRecord data{QString::fromLatin1(historyKind<R>), record.id, {}};
  forEachField<R>([&](const char* name, auto member) {
    if (std::string_view(name) == "id" || record.*member == other.*member) return;
    data.fields.push_back({name, valueJson(base::toJson(record.*member))});
  });
  return data;
}

/// Writes every field into the record of that kind and id, which is made again with its old id when it is gone. Nothing
/// is saved. Throws "Unknown undo record." for an unknown kind, and "The history item is no longer available." when the
/// record is gone and only some of its fields are known.
void applyRecord(RecordContext& context, const LibraryRecord& record);
/// Removes the record, if it is there. Nothing is saved. Throws for an unknown kind.
void removeRecord(RecordContext& context, const LibraryRecord& record);

}  // namespace sorvan::core
