#include "catalogue/schema_lines.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "catalogue/fal_model_json.h"
#include "catalogue/schema_field.h"
#include "catalogue/schema_reader.h"
#include "catalogue/texts.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

/// The page, its list and its row.
constexpr std::size_t levelsOfAPage = 3;

QByteArray lineOf(const QJsonObject& object) { return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n'; }

QJsonObject refused(const QString& file, const QString& id, const QString& sentence, const QStringList& missing) {
  return {
      {u"file"_s, file}, {u"id"_s, id}, {u"refused"_s, sentence}, {u"missing"_s, QJsonArray::fromStringList(missing)}};
}

/// `listing` as far as it is known; what is empty is taken from the document.
QJsonObject told(const QString& file, FalListing listing, const QByteArray& document) {
  try {
    const SchemaIdentity identity = schemaIdentity(document);
    if (!identity.id.isEmpty()) listing.id = identity.id;
    if (!identity.category.isEmpty()) listing.category = identity.category;
    if (listing.name.isEmpty()) listing.name = listing.id;
    return {{u"file"_s, file}, {u"id"_s, listing.id}, {u"model"_s, toJson(modelFromSchema(listing, document))}};
  } catch (const SchemaRefusal& refusal) {
    return refused(file, listing.id, refusal.message(), refusal.missing());
  } catch (const SorvanError& unreadable) {
    return refused(file, listing.id, unreadable.message(), {});
  }
}

/// The rows of a catalogue page; null when the bytes are something else.
const json::array* rowsOf(const json::value& tree) {
  const json::object* page = tree.if_object();
  const json::value* models = page && !page->contains("paths") ? page->if_contains("models") : nullptr;
  return models ? models->if_array() : nullptr;
}

FalListing listingOf(const json::object& row) {
  const Schema whole{&row, {}};
  const json::value* about = whole.member("metadata");
  const Schema metadata{about ? about->if_object() : nullptr, {}};
  return {textOf(whole.text("endpoint_id")), textOf(metadata.text("display_name")), textOf(metadata.text("category")),
          textOf(metadata.text("description")), QString()};
}

QByteArray toldRow(const QString& file, const json::value& row) {
  static const json::object nothing;
  const json::object& object = row.is_object() ? row.get_object() : nothing;
  const json::value* document = object.if_contains("openapi");
  // The text keeps the order of the document's keys.
  const std::string text = document ? json::serialize(*document) : std::string();
  return lineOf(told(file, listingOf(object), QByteArray::fromStdString(text)));
}

}  // namespace

QByteArrayList schemaLines(const QString& file, const QByteArray& bytes) {
  json::parse_options options;
  options.max_depth = SchemaDocument::deepest + levelsOfAPage;
  boost::system::error_code problem;
  const std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  const json::value tree = json::parse(text, problem, json::storage_ptr(), options);
  const json::array* rows = problem ? nullptr : rowsOf(tree);
  if (!rows) return {lineOf(told(file, {}, bytes))};
  QByteArrayList lines;
  for (const json::value& row : *rows) lines << toldRow(file, row);
  return lines;
}

}  // namespace sorvan::catalogue
