// The input of one published endpoint: its fields, in the order in which they are to be looked at.
#pragma once

#include <QStringList>

#include <map>
#include <memory>
#include <vector>

#include "catalogue/schema_field.h"

namespace sorvan::catalogue {

class SchemaInput {
 public:
  /// The fields of an input object. Those that its `x-fal-order-properties` lists come first, then the others as they
  /// stand in the document. A field whose schema leads nowhere is left out, but for one that is named as a size.
  SchemaInput(const SchemaDocument& document, const Schema& input);

  bool isEmpty() const { return fields.empty(); }
  const std::vector<SchemaField>& all() const { return fields; }
  /// The field of exactly this name, or null.
  const SchemaField* field(const QString& name) const;
  /// The names of the fields that every body needs, in the document's order, each once; also those without a field.
  const QStringList& required() const { return requiredNames; }

 private:
  std::vector<SchemaField> fields;
  std::map<QString, std::size_t> places;
  QStringList requiredNames;
};

/// The schema itself, or the first of its variants, that has properties; absent when none has.
Schema withProperties(const SchemaDocument& document, const Schema& schema);

}  // namespace sorvan::catalogue
