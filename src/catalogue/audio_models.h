// The fixed catalogue of sound: voices, music and effects, the tools that work on a sound, and sound for a clip.
#pragma once

#include <optional>
#include <vector>

#include "catalogue/fal_model.h"

namespace sorvan::catalogue {

enum class AudioKind { voice, music, effect };

/// "voice", "music" or "effect".
QString audioKindName(AudioKind kind);
/// The models of a kind, in the order of the picker.
const std::vector<FalModel>& audioModels(AudioKind kind);
/// The kind of a model, when it is in one of the three lists.
std::optional<AudioKind> audioKindOf(const QString& model);

/// Tools that take a sound and give one or more: clean up, split into parts, pull out.
const std::vector<FalModel>& soundTools();
/// Models that carry a sound on. The three outpainting models take the seconds added as `extend_seconds_after` or
/// `extend_seconds_before`, Mirelo as `append_duration`.
const std::vector<FalModel>& extendModels();
/// Models that watch a clip and make its sound effects, and its music.
const std::vector<FalModel>& clipEffectModels();
const std::vector<FalModel>& clipMusicModels();

/// Whether a model id is in a list.
bool contains(const std::vector<FalModel>& models, const QString& model);
/// Whether a model makes sound for a clip, effects or music.
bool isClipModel(const QString& model);

namespace sound_ids {
// Ids that other code must tell apart.
inline constexpr char16_t elevenDialogue[] = u"fal-ai/elevenlabs/text-to-dialogue/eleven-v3";
inline constexpr char16_t cleanUp[] = u"veed/clean-audio";
inline constexpr char16_t splitParts[] = u"fal-ai/demucs";
inline constexpr char16_t pullOut[] = u"fal-ai/sam-audio/separate";
}  // namespace sound_ids

}  // namespace sorvan::catalogue
