// The voices behind the voice picker, one table a maker, and the names of languages.
#pragma once

#include <optional>
#include <vector>

#include "catalogue/fal_model.h"

namespace sorvan::catalogue {

struct AudioVoice {
  enum class Group { women, men, neutral };

  QString id;     ///< what is sent to the model
  QString about;  ///< a line on the voice; empty when nothing is known
  /// Absent for a voice that no table holds: it keeps its place in the model's own order.
  std::optional<Group> group;
  std::optional<QString> name;  ///< shown instead of the id

  bool operator==(const AudioVoice&) const = default;
};

enum class VoiceTable { elevenLabs, gemini, miniMax, kokoro, fish, sarvam, grok, inworld };

/// "Women", "Men" or "Neutral".
QString voiceGroupTitle(AudioVoice::Group group);
/// One maker's voices, women first, then men, then neutral, except Sarvam's, which keep the maker's order.
const std::vector<AudioVoice>& voices(VoiceTable table);
QStringList voiceIds(VoiceTable table);

/// The label of the setting that holds a model's voices.
QString voiceLabel();
/// The body field of the model's voice, or nothing.
std::optional<QString> voiceField(const FalModel& model);
/// The voices of a model in the order of its setting's values; empty without such a setting.
std::vector<AudioVoice> offeredVoices(const FalModel& model);

/// The name of a language code; the code itself when no table holds it.
QString languageName(const QString& code);
QStringList sarvamLanguageCodes();
/// The codes of the other models, without "auto".
QStringList otherLanguageCodes();

}  // namespace sorvan::catalogue
