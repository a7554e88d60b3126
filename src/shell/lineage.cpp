#include "shell/lineage.h"

#include "shell/texts.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace sorvan::shell {

namespace {

class Family {
 public:
  Family(const core::LibraryStore& store, const QUuid& opened) : store_(store), opened_(opened) { gather(); }

  std::vector<LineageRow> rows() {
    // 1. From the roots down.
    std::vector<QUuid> roots;
    for (const QUuid& id : members_)
      if (store_.parentEdges(id).empty()) roots.push_back(id);
    // 2. A family that is only a cycle has none, and begins where it was opened.
    if (roots.empty()) roots.push_back(opened_);
    sortByDate(roots);
    for (const QUuid& root : roots) visitFrom(root);
    // 3. A cycle that hangs on no root is shown all the same.
    std::vector<QUuid> rest(members_);
    sortByDate(rest);
    visitFrom(opened_);
    for (const QUuid& id : rest) visitFrom(id);
    return std::move(rows_);
  }

 private:
  struct Visit {
    QUuid id;
    int depth = 0;
    QString label;
  };

  // Up and down until nothing new appears.
  void gather() {
    QSet<QUuid> seen{opened_};
    members_.push_back(opened_);
    const auto add = [&](const QUuid& id) {
      if (seen.contains(id)) return;
      seen.insert(id);
      members_.push_back(id);
    };
    for (std::size_t next = 0; next < members_.size(); ++next) {
      const QUuid id = members_[next];
      for (const core::RelationshipRef& edge : store_.parentEdges(id)) add(edge->parentAssetID);
      for (const core::RelationshipRef& edge : store_.childEdges(id)) add(edge->childAssetID);
    }
  }

  void sortByDate(std::vector<QUuid>& ids) const {
    std::ranges::sort(ids, [this](const QUuid& left, const QUuid& right) {
      const core::AssetRef one = store_.asset(left);
      const core::AssetRef other = store_.asset(right);
      if (!one || !other) return one || other ? one != nullptr : left < right;
      return one->createdAt != other->createdAt ? one->createdAt < other->createdAt : left < right;
    });
  }

  // A stack of its own: a family may be thousands of generations deep.
  void visitFrom(const QUuid& root) {
    std::vector<Visit> waiting{{root, 0, rootLabel(root)}};
    while (!waiting.empty()) {
      const Visit visit = std::move(waiting.back());
      waiting.pop_back();
      if (visited_.contains(visit.id)) continue;
      visited_.insert(visit.id);
      const core::AssetRef asset = store_.asset(visit.id);
      rows_.push_back({visit.id, asset, visit.depth, asset ? visit.label : texts::lineageDeleted, visit.id == opened_});
      std::vector<Visit> below = childrenOf(visit);
      waiting.insert(waiting.end(), std::make_move_iterator(below.rbegin()), std::make_move_iterator(below.rend()));
    }
  }

  QString rootLabel(const QUuid& root) const {
    const core::AssetRef asset = store_.asset(root);
    const bool imported = asset && asset->sourceType() == core::AssetSourceType::imported;
    return rows_.empty() || !imported ? texts::lineageOriginal : texts::lineageImported;
  }

  std::vector<Visit> childrenOf(const Visit& parent) const {
    QHash<QUuid, QString> labels;
    std::vector<QUuid> ids;
    for (const core::RelationshipRef& edge : store_.childEdges(parent.id)) {
      if (labels.contains(edge->childAssetID)) continue;
      labels.insert(edge->childAssetID, labelOf(*edge));
      ids.push_back(edge->childAssetID);
    }
    sortByDate(ids);
    std::vector<Visit> children;
    for (const QUuid& id : ids) children.push_back({id, parent.depth + 1, labels.value(id)});
    return children;
  }

  QString labelOf(const core::AssetRelationship& edge) const {
    const core::RelationshipType type = edge.type().value_or(core::RelationshipType::referenceFor);
    const core::GenerationRef generation = store_.generationOf(edge.childAssetID);
    const auto recipe = generation ? generation->recipe() : nullptr;
    if (!recipe) return core::label(type);
    const bool varied = recipe->variance && !recipe->variance->isEmpty();
    if (varied && type == core::RelationshipType::variationOf) return *recipe->variance;
    // A shot is made with its picture as a reference. A copy of it is a copy first.
    return recipe->shot && !generation->isCopy() ? texts::lineageShotSet : core::label(type);
  }

  const core::LibraryStore& store_;
  QUuid opened_;
  std::vector<QUuid> members_;
  QSet<QUuid> visited_;
  std::vector<LineageRow> rows_;
};

}  // namespace

std::vector<LineageRow> lineageRows(const core::LibraryStore& store, const core::Asset& openedFrom) {
  return Family(store, openedFrom.id).rows();
}

}  // namespace sorvan::shell
