// Pages of the service's catalogue, documents of models and price lists, in the service's form.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace sorvan::test {

struct ListedModel {
  QString id;
  QString name;
  QString licence = QStringLiteral("commercial");
};

QJsonObject cataloguePage(const std::vector<ListedModel>& models, const QString& next = {});

enum class Takes { words, image, mask };
// A document of an image model that needs a prompt; with `image` also up to three pictures, with `mask` a mask.
QByteArray modelDocument(const QString& id, Takes takes);

struct ListedModelPrice {
  QString id;
  double price = 0;
  QString unit = QStringLiteral("images");
};
QJsonObject priceList(const std::vector<ListedModelPrice>& prices);

}  // namespace sorvan::test
