#include "service_pages.h"

#include <QJsonDocument>

namespace sorvan::test {

using namespace Qt::StringLiterals;

QJsonObject cataloguePage(const std::vector<ListedModel>& models, const QString& next) {
  QJsonArray rows;
  for (const ListedModel& model : models)
    rows.append(QJsonObject{{u"endpoint_id"_s, model.id},
                            {u"metadata"_s, QJsonObject{{u"display_name"_s, model.name},
                                                        {u"category"_s, u"image-to-image"_s},
                                                        {u"description"_s, u"Draws well"_s},
                                                        {u"license_type"_s, model.licence}}}});
  return {{u"models"_s, rows},
          {u"next_cursor"_s, next.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(next)},
          {u"has_more"_s, !next.isEmpty()}};
}

QByteArray modelDocument(const QString& id, Takes takes) {
  QByteArray properties = R"("prompt":{"type":"string"},"image_size":{"enum":["square","landscape_16_9"]})";
  QByteArray required = R"(["prompt")";
  if (takes == Takes::image) {
    properties += R"(,"image_urls":{"type":"array","items":{"type":"string"},"maxItems":3})";
    required += R"(,"image_urls")";
  } else if (takes == Takes::mask) {
    properties += R"(,"mask_url":{"type":"string"})";
    required += R"(,"mask_url")";
  }
  QByteArray document = R"({"openapi":"3.0.4","components":{"schemas":{
      "Input":{"type":"object","properties":{PROPERTIES},"required":REQUIRED]},
      "Output":{"type":"object","properties":{"images":{"type":"array"}}}}},
    "paths":{"/ID":{"post":{"requestBody":{"content":{"application/json":
        {"schema":{"$ref":"#/components/schemas/Input"}}}}}},
      "/ID/requests/{request_id}":{"get":{"responses":{"200":{"content":{"application/json":
        {"schema":{"$ref":"#/components/schemas/Output"}}}}}}}}})";
  document.replace("PROPERTIES", properties).replace("REQUIRED", required);
  return document.replace("ID", id.toUtf8());
}

QJsonObject priceList(const std::vector<ListedModelPrice>& prices) {
  QJsonArray rows;
  for (const ListedModelPrice& each : prices)
    rows.append(QJsonObject{{u"endpoint_id"_s, each.id},
                            {u"unit_price"_s, each.price},
                            {u"unit"_s, each.unit},
                            {u"currency"_s, u"USD"_s}});
  return {{u"prices"_s, rows}, {u"next_cursor"_s, QJsonValue::Null}, {u"has_more"_s, false}};
}

}  // namespace sorvan::test
