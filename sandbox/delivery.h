// How an answer is put on the wire.
#pragma once
#include "http_connection.h"

namespace sandbox {

enum class Shape { Plain, CutStatusLine, CutWithLength, CutWithoutLength, Slow, Stall, Twice };

// Writes an answer in its shape and finishes the exchange. A stalled one waits, after half of its body, for
// finishStalled(); a slow one goes on by itself at `bytesPerSecond`.
void deliver(HttpConnection& connection, const HttpAnswer& answer, Shape shape, int bytesPerSecond = 4096);
void finishStalled(HttpConnection& connection, const HttpAnswer& answer);

}  // namespace sandbox
