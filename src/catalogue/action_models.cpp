#include "catalogue/action_models.h"

#include "catalogue/listings.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;

namespace {

QString choicesKey() { return u"actionModels"_s; }

/// The rows of a role that has tools, in the order of its panel; null for roles that any fitting model can do.
const std::vector<FalListing>* toolsOf(ActionRole role) {
  if (role == ActionRole::upscale) return &upscaleTools();
  if (role == ActionRole::cutOut) return &cutOutPanelTools();
  return nullptr;
}

bool isUsable(const FalCatalog& catalog, const QString& id, ActionRole role) {
  if (const auto* tools = toolsOf(role)) return contains(*tools, id);
  const auto model = catalog.model(id);
  return model && fitsRole(*model, role);
}

}  // namespace

QString actionRoleKey(ActionRole role) {
  switch (role) {
    case ActionRole::edit:
      return u"edit"_s;
    case ActionRole::animate:
      return u"animate"_s;
    case ActionRole::variation:
      return u"variation"_s;
    case ActionRole::extend:
      return u"extend"_s;
    case ActionRole::upscale:
      return u"upscale"_s;
    case ActionRole::cutOut:
      return u"cutOut"_s;
    case ActionRole::shotSet:
      return u"shotSet"_s;
  }
  return {};
}

bool fitsRole(const FalModel& model, ActionRole role) {
  if (const auto* tools = toolsOf(role)) return contains(*tools, model.id);
  const bool makesClips = role == ActionRole::animate || role == ActionRole::extend;
  const bool worksOnSound = model.videoInput.value_or(false) || model.audioInput.value_or(false);
  if (worksOnSound || std::holds_alternative<NoInput>(model.imageInput)) return false;
  if (model.output != (makesClips ? MediaType::video : MediaType::image)) return false;
  // Tools that only enlarge or cut out follow no instruction.
  return makesClips || model.hasPrompt || model.camera.value_or(false);
}

std::optional<QString> actionModel(const FalCatalog& catalog, const Settings& settings, ActionRole role) {
  const QString chosen = settings.get<QJsonObject>(choicesKey(), {}).value(actionRoleKey(role)).toString();
  if (isUsable(catalog, chosen, role)) return chosen;
  if (const auto* tools = toolsOf(role)) return tools->front().id;
  for (const FalModel& model : catalog.all()) {
    if (fitsRole(model, role)) return model.id;
  }
  return std::nullopt;
}

void chooseActionModel(Settings& settings, ActionRole role, const QString& model) {
  QJsonObject choices = settings.get<QJsonObject>(choicesKey(), {});
  choices.insert(actionRoleKey(role), model);
  settings.set(choicesKey(), choices);
}

}  // namespace sorvan::catalogue
