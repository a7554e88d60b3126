// The catalogue as the generation room asks for it.
#pragma once

#include <memory>

#include "catalogue/fal_catalog.h"
#include "generation/model_facts.h"

namespace sorvan::catalogue {

class CatalogFacts final : public ModelFacts {
 public:
  explicit CatalogFacts(std::shared_ptr<const FalCatalog> models) : catalog(std::move(models)) {}
  std::optional<ModelFact> find(const QString& model) const override;
  QString displayName(const QString& model) const override { return catalog->displayName(model); }

 private:
  std::shared_ptr<const FalCatalog> catalog;
};

}  // namespace sorvan::catalogue
