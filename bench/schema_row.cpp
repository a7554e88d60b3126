// Reading 1,000 published documents as models, against parsing the same bytes with simdjson.
#ifdef SORVAN_BENCH_SIMDJSON
#include <simdjson.h>
#endif

#include "bench/row.h"
#include "catalogue/schema_reader.h"

namespace sorvan::bench {
namespace {

using namespace Qt::StringLiterals;

constexpr int documents = 1000;

QByteArrayList recordedDocuments() {
  const QDir folder(QStringLiteral(SORVAN_TEST_DATA) + u"/openapi"_s);
  QByteArrayList texts;
  for (const QString& name : folder.entryList({u"*.json"_s}, QDir::Files, QDir::Name)) {
    QFile file(folder.filePath(name));
    if (file.open(QIODevice::ReadOnly)) texts << file.readAll();
  }
  if (texts.isEmpty()) throw std::runtime_error("no recorded documents");
  return texts;
}

struct Published {
  catalogue::FalListing listing;
  QByteArray text;
};

/// The recorded documents in turn, each copy under its own bytes.
std::vector<Published> published() {
  const QByteArrayList recorded = recordedDocuments();
  std::vector<Published> all;
  for (int index = 0; index < documents; ++index) {
    QByteArray text = recorded.at(index % recorded.size());
    text.detach();
    const auto identity = catalogue::schemaIdentity(text);
    all.push_back({{identity.id, u"It"_s, identity.category, {}, {}}, std::move(text)});
  }
  return all;
}

double readAll(const std::vector<Published>& all) {
  return timed([&] {
    int accepted = 0;
    for (const Published& each : all) {
      try {
        if (!catalogue::modelFromSchema(each.listing, each.text).id.isEmpty()) ++accepted;
      } catch (const catalogue::SchemaRefusal&) {
        continue;
      }
    }
    if (accepted < documents / 2) throw std::runtime_error("too few documents gave a model");
  });
}

#ifdef SORVAN_BENCH_SIMDJSON
std::optional<double> parseAll(const std::vector<Published>& all) {
  return timed([&] {
    simdjson::dom::parser parser;
    for (const Published& each : all) {
      const auto tree = parser.parse(each.text.constData(), static_cast<std::size_t>(each.text.size()));
      if (tree.error() != simdjson::SUCCESS) throw std::runtime_error("a document did not parse");
    }
  });
}
#else
std::optional<double> parseAll(const std::vector<Published>&) { return std::nullopt; }
#endif

Contestants schemas(const QDir&) {
  const auto all = std::make_shared<std::vector<Published>>(published());
  return {.ours = [=] { return readAll(*all); }, .peer = [=] { return parseAll(*all); }, .limit = {}};
}

const RegisterRow row{{.name = u"schemas-1000"_s, .make = {}, .measure = schemas}};

}  // namespace
}  // namespace sorvan::bench
