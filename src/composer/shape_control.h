// What the control for the shape offers and says, and what the lengths of several models come to: pure functions.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

#include "catalogue/video_length.h"
#include "composer/selectable_models.h"
#include "core/request_values.h"

namespace sorvan::composer {

struct ShapeControl {
  bool isFixed = false;  ///< nothing to choose
  QString text;
  QString tooltip;
  QStringList sizes;  ///< those that every chosen model makes, in the order of the table
  bool operator==(const ShapeControl&) const = default;
};
ShapeControl shapeControl(const GenerationRequest& request, const std::vector<SelectableModel>& models);

/// Whether the clips take the shape of the picture that they start from as long as no other is picked.
bool followsImage(const GenerationRequest& request, const std::vector<SelectableModel>& models);

struct LengthPanel {
  QStringList shared;   ///< values that every model makes; none when there is no row for all of them
  QString sharedValue;  ///< what that row shows: the one length, or "Different lengths"
  std::vector<video_length::Choice> rows;
  bool operator==(const LengthPanel&) const = default;
};
LengthPanel lengthPanel(const GenerationRequest& request, const std::vector<SelectableModel>& models);

}  // namespace sorvan::composer
