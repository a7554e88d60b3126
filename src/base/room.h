// The room `base`: errors, tasks, clock, durable files, JSON, settings, text, ids.
// It sees itself and the rooms before it.
#pragma once

namespace sorvan::base {}  // namespace sorvan::base
