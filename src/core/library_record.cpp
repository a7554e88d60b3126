#include "core/library_record.h"

#include <algorithm>

#include "core/texts.h"

namespace sorvan::core {
namespace {

/// Calls `visit` with a null pointer of the kind's record type.
template <class Visit>
void visitKind(const QString& kind, Visit&& visit) {
  bool known = false;
  const auto offer = [&]<class R>(const R* type) {
    if (kind != QLatin1StringView(historyKind<R>)) return;
    known = true;
    visit(type);
  };
  offer(static_cast<const Project*>(nullptr));
  offer(static_cast<const Asset*>(nullptr));
  offer(static_cast<const SavedReference*>(nullptr));
  offer(static_cast<const ContactSheet*>(nullptr));
  offer(static_cast<const ClipSequence*>(nullptr));
  if (!known) throw SorvanError(texts::unknownUndoRecord());
}

template <class R>
void writeFields(const LibraryRecord& data, R& record) {
  forEachField<R>([&](const char* name, auto member) {
    using Value = std::remove_cvref_t<decltype(record.*member)>;
    if (const QByteArray* json = data.json(name)) record.*member = fromJson<Value>(valueOfJson(*json));
  });
}

template <class R>
bool isWhole(const LibraryRecord& data) {
  bool whole = true;
  forEachField<R>(
      [&](const char* name, auto) { whole = whole && (std::string_view(name) == "id" || data.json(name) != nullptr); });
  return whole;
}

template <class R>
void applyAs(RecordContext& context, const LibraryRecord& data) {
  if (const Ref<R> known = context.find<R>(data.id)) {
    writeFields(data, context.edit(known));
    return;
  }
  if (!isWhole<R>(data)) throw SorvanError(texts::historyItemGone());
  R made;
  made.id = data.id;
  writeFields(data, made);
  context.insert(std::move(made));
}

}  // namespace

// A document is an object or a list, so a single value travels as a list of one.
QByteArray valueJson(const QJsonValue& value) {
  const QByteArray list = jsonText(QJsonArray{value});
  return list.sliced(1, list.size() - 2);
}

QJsonValue valueOfJson(const QByteArray& json) { return parseJson('[' + json + ']').toArray().at(0); }

qint64 LibraryRecord::bytes() const {
  qint64 sum = 0;
  for (const RecordField& field : fields) sum += field.json.size();
  return sum;
}

const QByteArray* LibraryRecord::json(std::string_view field) const {
  const auto found = std::ranges::find_if(fields, [&](const RecordField& one) { return field == one.name; });
  return found == fields.end() ? nullptr : &found->json;
}

void applyRecord(RecordContext& context, const LibraryRecord& record) {
  visitKind(record.kind, [&]<class R>(const R*) { applyAs<R>(context, record); });
}

void removeRecord(RecordContext& context, const LibraryRecord& record) {
  visitKind(record.kind, [&]<class R>(const R*) {
    if (const Ref<R> known = context.find<R>(record.id)) context.remove(known);
  });
}

}  // namespace sorvan::core
