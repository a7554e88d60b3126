// Which place a running job takes on the item that it works on.
#pragma once

#include "generation/generation_ports.h"

namespace sorvan::core {
class LibraryStore;
}

namespace sorvan::generation {

struct InPlaceWork {
  enum class Kind { edit, clipSound, animate, continueClip, cutOut, upscale, generate } kind = Kind::generate;
  bool marked = false;  ///< an edit of marked areas
  bool music = false;   ///< a clip's sound that is music
  bool operator==(const InPlaceWork&) const = default;
};

/// Told by the request, by what its model does, and by where its first reference comes from. Nothing is stored.
InPlaceWork inPlaceWork(const GenerationRequest& request, const LibraryStore& store, const ModelFacts& models);

}  // namespace sorvan::generation
