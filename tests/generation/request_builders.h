// Requests, models and facts that the tests of this room share.
#pragma once

#include <QHash>

#include "generation/generation_request.h"

namespace sorvan::generation::test {

inline ModelOption imageModel(const QString& id = QStringLiteral("fal-ai/flux/schnell")) {
  ModelOption model;
  model.id = id;
  model.name = QStringLiteral("Flux");
  model.maxCount = 4;
  return model;
}

inline GenerationRequest promptRequest(const QString& prompt = QStringLiteral("a red kite")) {
  GenerationRequest request;
  request.prompt = prompt;
  return request;
}

inline ReferenceBinding bindingOf(const QUuid& id, const QString& label, const QString& role = {}) {
  ReferenceBinding binding;
  binding.assetID = id;
  binding.label = label;
  if (!role.isEmpty()) binding.role = role;
  return binding;
}

// Shares of the picture's width and height.
inline MarkupBox box(double x, double y, double width, double height) {
  MarkupBox box;
  box.x = x;
  box.y = y;
  box.width = width;
  box.height = height;
  return box;
}

inline MarkupBox markedBox(const QString& note) {
  MarkupBox box;
  box.x = box.y = 0.25;
  box.width = box.height = 0.5;
  box.note = note;
  return box;
}

/// A catalogue that knows what the test tells it.
class FactsByID final : public ModelFacts {
 public:
  QHash<QString, ModelFact> facts;
  std::optional<ModelFact> find(const QString& model) const override {
    const auto found = facts.constFind(model);
    return found == facts.constEnd() ? std::nullopt : std::optional(*found);
  }
  QString displayName(const QString& model) const override {
    const auto known = find(model);
    return known ? known->name : QStringLiteral("named ") + model;
  }
};

}  // namespace sorvan::generation::test
