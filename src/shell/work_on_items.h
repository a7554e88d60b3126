#pragma once

#include "shell/room.h"

#include <QHash>
#include <QString>
#include <QUuid>

#include <optional>
#include <utility>

namespace sorvan::core {
class LibraryStore;
struct GenerationRequest;
}  // namespace sorvan::core
namespace sorvan::generation {
class ModelFacts;
}

namespace sorvan::shell {

// The item that a request works on, and what it does there: “Upscaling…”. Nothing for one that makes something of its
// own, or while the catalogue is not known.
std::optional<std::pair<QUuid, QString>> workOnItem(const core::GenerationRequest& request,
                                                    const core::LibraryStore& store,
                                                    const generation::ModelFacts& models);

}  // namespace sorvan::shell
