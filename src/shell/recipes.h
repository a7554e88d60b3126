#pragma once

#include "shell/room.h"

#include "core/request_values.h"

#include <QUuid>

#include <cstdint>
#include <optional>

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::shell {

// What made an item, or what a job is to make. An item of an early version has no recipe of its own: then it is the
// little that its record tells. Nothing for imported items and unknown ids.
std::optional<core::GenerationRequest> recipeOf(const core::LibraryStore& store, const QUuid& itemOrJob);

// The seed that the service told for an item, else the one that was asked for.
std::optional<std::int64_t> seedOf(const core::LibraryStore& store, const QUuid& itemOrJob);

}  // namespace sorvan::shell
