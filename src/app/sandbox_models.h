// What a newcomer on the service simulator finds ready beside the compiled-in
// models.
#pragma once

#include "catalogue/fal_model.h"

namespace sorvan::app {

/// A text-to-video model, so that a clip can be made before any model was
/// added.
catalogue::FalModel sandboxVideoModel();

/// A model that edits the pictures it is given, so that areas can be marked
/// before any model was added.
catalogue::FalModel sandboxEditModel();

}  // namespace sorvan::app
