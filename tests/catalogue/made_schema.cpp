#include "catalogue/made_schema.h"

#include "support/failure_of.h"

namespace sorvan::test {

using namespace Qt::StringLiterals;

catalogue::FalListing paintListing() {
  return {u"acme/paint"_s, u"Paint"_s, u"text-to-image"_s, u"Acme · paints"_s, QString()};
}

QByteArray MadeSchema::text() const {
  QByteArray document = R"({"openapi":"3.0.4","components":{"schemas":{
      "PaintInput":{"title":"Request","type":"object","properties":PROPERTIES,"required":REQUIRED ORDER},
      "PaintOutput":{"type":"object","properties":{"OUTPUT":{"type":"object"}}} SCHEMAS}},
    "paths":{
      "/acme/paint/requests/{request_id}/status":{"get":{}},
      "/acme/paint":{"post":{"requestBody":{"required":true,"content":{"application/json":
        {"schema":{"$ref":"#/components/schemas/PaintInput"}}}}}},
      "/acme/paint/requests/{request_id}":{"get":{"responses":{"200":{"content":{"application/json":
        {"schema":{"$ref":"#/components/schemas/PaintOutput"}}}}}}}}})";
  document.replace("PROPERTIES", properties).replace("REQUIRED", required).replace("OUTPUT", output);
  document.replace("ORDER", order.isEmpty() ? QByteArray() : ",\"x-fal-order-properties\":" + order);
  return document.replace("SCHEMAS", schemas.isEmpty() ? QByteArray() : "," + schemas);
}

catalogue::FalModel MadeSchema::model() const { return catalogue::modelFromSchema(paintListing(), text()); }

QString MadeSchema::refusal() const {
  return failureOf([&] { model(); });
}

QStringList MadeSchema::missing() const {
  try {
    model();
  } catch (const catalogue::SchemaRefusal& refusal) {
    return refusal.missing();
  }
  return {u"(nothing was refused)"_s};
}

}  // namespace sorvan::test
