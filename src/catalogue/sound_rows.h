// Makes the rows of each part of the sound catalogue; `audio_models` keeps them.
#pragma once

#include <vector>

#include "catalogue/fal_model.h"

namespace sorvan::catalogue {

std::vector<FalModel> speechRows();
std::vector<FalModel> musicRows();
std::vector<FalModel> effectRows();
std::vector<FalModel> soundToolRows();
std::vector<FalModel> extendRows();
std::vector<FalModel> clipEffectRows();
std::vector<FalModel> clipMusicRows();

}  // namespace sorvan::catalogue
