// Documents in the published form, made from the parts that a test is about.
#pragma once

#include <QByteArray>

#include "catalogue/schema_reader.h"

namespace sorvan::test {

/// A document of the endpoint "acme/paint" with these input properties, and more schemas if need be. `required` is a
/// JSON list; the output holds one field.
struct MadeSchema {
  QByteArray properties = "{}";
  QByteArray required = "[]";
  QByteArray order = {};    ///< a JSON list; empty for none
  QByteArray schemas = {};  ///< members beside the input and the output
  QByteArray output = "images";

  QByteArray text() const;
  catalogue::FalModel model() const;
  /// The sentence of the refusal; a text of its own when the model is accepted.
  QString refusal() const;
  QStringList missing() const;
};

catalogue::FalListing paintListing();

}  // namespace sorvan::test
