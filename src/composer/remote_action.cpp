#include "composer/remote_action.h"

#include <QHash>

#include "base/sorvan_error.h"
#include "base/text.h"
#include "composer/command_texts.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestText = 8000;
constexpr int mostOutputs = 4;
constexpr int longestDays = 3650;
constexpr std::size_t mostProjects = 60;

void require(bool holds, const QString& message) {
  if (!holds) throw SorvanError(message);
}

const QString& checked(const std::optional<QString>& text) {
  require(text && !isBlank(*text) && chars(*text) <= longestText, texts::incompleteAction());
  return *text;
}

AssetStatus statusOf(const std::optional<QString>& text, const QString& message) {
  const auto status = fromRawValue<AssetStatus>(text.value_or(QString()));
  require(status.has_value(), message);
  return *status;
}

CompoundAssetFilter filterOf(const RemoteAppAction& action) {
  CompoundAssetFilter filter{action.query, action.model, {}, {}, action.orientation, action.favorites, action.days};
  if (action.status) filter.status = statusOf(action.status, texts::unsupportedStatusFilter());
  if (action.media) filter.media = fromRawValue<MediaType>(*action.media);
  require(!action.media || filter.media, texts::unsupportedMediaFilter());
  static const QStringList orientations{u"portrait"_s, u"landscape"_s, u"square"_s};
  require(!action.orientation || orientations.contains(*action.orientation), texts::unsupportedOrientation());
  require(!action.days || (*action.days >= 1 && *action.days <= longestDays), texts::invalidDateRange());
  return filter;
}

GenerationInstruction generationOf(const RemoteAppAction& action) {
  require(!action.count || (*action.count >= 1 && *action.count <= mostOutputs), texts::chooseOutputs());
  const bool selection = action.useSelection.value_or(false);
  return {checked(action.prompt), action.count, selection,
          selection ? RelationshipType::editedFrom : RelationshipType::referenceFor};
}

SorvanIntent favoriteOf(const RemoteAppAction& action) {
  require(action.enabled.has_value(), texts::missingFavorite());
  return FavoriteAssets{*action.enabled};
}

using Reading = SorvanIntent (*)(const RemoteAppAction&);

const QHash<QString, Reading>& readings() {
  using Action = RemoteAppAction;
  static const QHash<QString, Reading> table{
      {u"search"_s, [](const Action& a) -> SorvanIntent { return SearchAssets{checked(a.query)}; }},
      {u"filter"_s, [](const Action& a) -> SorvanIntent { return filterOf(a); }},
      {u"favorite"_s, [](const Action& a) -> SorvanIntent { return favoriteOf(a); }},
      {u"status"_s,
       [](const Action& a) -> SorvanIntent { return SetAssetStatus{statusOf(a.status, texts::unsupportedStatus())}; }},
      {u"compare"_s, [](const Action&) -> SorvanIntent { return CompareAssets{}; }},
      {u"lineage"_s, [](const Action&) -> SorvanIntent { return ShowLineage{}; }},
      {u"move"_s, [](const Action& a) -> SorvanIntent { return MoveAssets{checked(a.project)}; }},
      {u"createProject"_s, [](const Action& a) -> SorvanIntent { return CreateProject{checked(a.project)}; }},
      {u"generate"_s, [](const Action& a) -> SorvanIntent { return generationOf(a); }},
      {u"unknown"_s,
       [](const Action& a) -> SorvanIntent { return Unknown{a.message.value_or(texts::pleaseClarify())}; }},
  };
  return table;
}

}  // namespace

SorvanIntent RemoteAppAction::intent() const {
  const Reading reading = readings().value(action);
  require(reading != nullptr, texts::unsupportedAction());
  return reading(*this);
}

QString RemoteAppAction::summary() const {
  QStringList parts{action};
  for (const auto* text : {&query, &model, &status, &media, &orientation})
    if (*text) parts << **text;
  if (favorites.value_or(false)) parts << u"favorites"_s;
  for (const auto* text : {&project, &prompt, &message})
    if (*text) parts << **text;
  if (days) parts << u"last %1 days"_s.arg(*days);
  if (count) parts << u"%1 outputs"_s.arg(*count);
  if (useSelection.value_or(false)) parts << u"using selected images"_s;
  if (enabled) parts << (*enabled ? u"on"_s : u"off"_s);
  return parts.join(u" · "_s);
}

CommandContext commandContext(const QStringList& projects, int selectionCount, const std::optional<QString>& current) {
  const QStringList first = projects.first(std::min<qsizetype>(projects.size(), mostProjects));
  return {{first.begin(), first.end()}, selectionCount, current.value_or(texts::inbox())};
}

}  // namespace sorvan::composer
