// Reads a model from the OpenAPI document that fal.ai publishes for it, or says why the model cannot be used.
#pragma once

#include <QByteArray>
#include <QStringList>

#include "base/sorvan_error.h"
#include "catalogue/fal_model.h"

namespace sorvan::catalogue {

/// A model that cannot be used. The message is the final sentence.
class SchemaRefusal final : public SorvanError {
 public:
  explicit SchemaRefusal(const QString& message, QStringList missing = {})
      : SorvanError(message), missingFields(std::move(missing)) {}
  /// The fields that every request needs and that cannot be filled, in the document's order.
  const QStringList& missing() const noexcept { return missingFields; }

 private:
  QStringList missingFields;
};

/// The model of the listing's id as its document describes it; name, category and summary are the listing's. Throws
/// SchemaRefusal, or SorvanError "Invalid provider response." when the bytes are no JSON object, are larger than 10 MB
/// or nest deeper than 200. Pure and bounded, whatever the bytes are. Thread: any.
FalModel modelFromSchema(const FalListing& listing, const QByteArray& openAPI);

/// What a document says of itself: its endpoint and the endpoint's category, each empty when it does not say. The
/// endpoint is the one path that takes a POST when the document names none. Throws as `modelFromSchema` for bytes that
/// cannot be read.
struct SchemaIdentity {
  QString id;
  QString category;
};
SchemaIdentity schemaIdentity(const QByteArray& openAPI);

}  // namespace sorvan::catalogue
