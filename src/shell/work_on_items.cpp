#include "shell/work_on_items.h"

#include "core/library_store.h"
#include "generation/generation_request.h"
#include "generation/in_place_work.h"

namespace sorvan::shell {

namespace {

using Kind = generation::InPlaceWork::Kind;

QString wordsOf(Kind kind) {
  switch (kind) {
    case Kind::edit:
      return QStringLiteral("Editing…");
    case Kind::clipSound:
      return QStringLiteral("Adding sound…");
    case Kind::animate:
      return QStringLiteral("Animating…");
    case Kind::continueClip:
      return QStringLiteral("Extending…");
    case Kind::cutOut:
      return QStringLiteral("Cutting out…");
    case Kind::upscale:
      return QStringLiteral("Upscaling…");
    case Kind::generate:
      break;
  }
  return {};
}

// A clip goes on from one of its frames, which is an item of its own.
QUuid clipOfFrame(const QUuid& frame, const core::LibraryStore& store) {
  for (const core::RelationshipRef& edge : store.parentEdges(frame))
    if (edge->type() == core::RelationshipType::frameOf) return edge->parentAssetID;
  return frame;
}

QUuid sourceOf(Kind kind, const core::GenerationRequest& request, const core::LibraryStore& store) {
  if (kind == Kind::clipSound && request.layUnder) return *request.layUnder;
  if (kind == Kind::edit)
    for (const core::ReferenceBinding& binding : generation::orderedReferences(request))
      if (binding.role && *binding.role == generation::editSourceRole) return binding.assetID;
  if (request.referenceIDs.empty()) return {};
  const QUuid first = request.referenceIDs.front();
  return kind == Kind::continueClip ? clipOfFrame(first, store) : first;
}

}  // namespace

std::optional<std::pair<QUuid, QString>> workOnItem(const core::GenerationRequest& request,
                                                    const core::LibraryStore& store,
                                                    const generation::ModelFacts& models) {
  const Kind kind = generation::inPlaceWork(request, store, models).kind;
  const QUuid source = kind == Kind::generate ? QUuid() : sourceOf(kind, request, store);
  if (source.isNull()) return std::nullopt;
  return std::pair(source, wordsOf(kind));
}

}  // namespace sorvan::shell
