// The voices of ElevenLabs, Gemini, MiniMax, Kokoro and Grok.
#include "catalogue/voice_tables.h"
#include "catalogue/audio_voice.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;
using Group = AudioVoice::Group;

std::vector<AudioVoice> elevenLabsVoices() {
  return {
      {u"Rachel"_s, u"Calm and clear, young American · narration"_s, Group::women, std::nullopt},
      {u"Aria"_s, u"Expressive, slightly husky American"_s, Group::women, std::nullopt},
      {u"Sarah"_s, u"Soft and reassuring, young American · news"_s, Group::women, std::nullopt},
      {u"Laura"_s, u"Upbeat and quirky, young American"_s, Group::women, std::nullopt},
      {u"Charlotte"_s, u"Smooth and low, Swedish accent · characters"_s, Group::women, std::nullopt},
      {u"Alice"_s, u"Confident, British · news and explainers"_s, Group::women, std::nullopt},
      {u"Matilda"_s, u"Friendly and warm, American · narration"_s, Group::women, std::nullopt},
      {u"Jessica"_s, u"Playful and bright, young American"_s, Group::women, std::nullopt},
      {u"Lily"_s, u"Warm and velvety, British · narration"_s, Group::women, std::nullopt},
      {u"Roger"_s, u"Confident and easy-going, American"_s, Group::men, std::nullopt},
      {u"Charlie"_s, u"Natural and laid-back, Australian"_s, Group::men, std::nullopt},
      {u"George"_s, u"Warm and mature, British · storytelling"_s, Group::men, std::nullopt},
      {u"Callum"_s, u"Intense and husky, transatlantic · characters"_s, Group::men, std::nullopt},
      {u"Liam"_s, u"Articulate, young American · narration"_s, Group::men, std::nullopt},
      {u"Will"_s, u"Friendly and relaxed, young American"_s, Group::men, std::nullopt},
      {u"Eric"_s, u"Smooth and friendly, American · conversation"_s, Group::men, std::nullopt},
      {u"Chris"_s, u"Casual and down-to-earth, American"_s, Group::men, std::nullopt},
      {u"Brian"_s, u"Deep and resonant, American · narration"_s, Group::men, std::nullopt},
      {u"Daniel"_s, u"Authoritative, British · news"_s, Group::men, std::nullopt},
      {u"Bill"_s, u"Trustworthy, older American · documentary"_s, Group::men, std::nullopt},
      {u"River"_s, u"Relaxed and even, American · gender-neutral"_s, Group::neutral, std::nullopt},
  };
}

std::vector<AudioVoice> geminiVoices() {
  return {
      {u"Kore"_s, u"Firm"_s, Group::women, std::nullopt},
      {u"Zephyr"_s, u"Bright"_s, Group::women, std::nullopt},
      {u"Aoede"_s, u"Breezy"_s, Group::women, std::nullopt},
      {u"Leda"_s, u"Youthful"_s, Group::women, std::nullopt},
      {u"Callirrhoe"_s, u"Easy-going"_s, Group::women, std::nullopt},
      {u"Autonoe"_s, u"Bright"_s, Group::women, std::nullopt},
      {u"Despina"_s, u"Smooth"_s, Group::women, std::nullopt},
      {u"Erinome"_s, u"Clear"_s, Group::women, std::nullopt},
      {u"Laomedeia"_s, u"Upbeat"_s, Group::women, std::nullopt},
      {u"Achernar"_s, u"Soft"_s, Group::women, std::nullopt},
      {u"Gacrux"_s, u"Mature"_s, Group::women, std::nullopt},
      {u"Pulcherrima"_s, u"Forward"_s, Group::women, std::nullopt},
      {u"Vindemiatrix"_s, u"Gentle"_s, Group::women, std::nullopt},
      {u"Sulafat"_s, u"Warm"_s, Group::women, std::nullopt},
      {u"Puck"_s, u"Upbeat"_s, Group::men, std::nullopt},
      {u"Charon"_s, u"Informative"_s, Group::men, std::nullopt},
      {u"Fenrir"_s, u"Excitable"_s, Group::men, std::nullopt},
      {u"Orus"_s, u"Firm"_s, Group::men, std::nullopt},
      {u"Enceladus"_s, u"Breathy"_s, Group::men, std::nullopt},
      {u"Iapetus"_s, u"Clear"_s, Group::men, std::nullopt},
      {u"Umbriel"_s, u"Easy-going"_s, Group::men, std::nullopt},
      {u"Algieba"_s, u"Smooth"_s, Group::men, std::nullopt},
      {u"Algenib"_s, u"Gravelly"_s, Group::men, std::nullopt},
      {u"Rasalgethi"_s, u"Informative"_s, Group::men, std::nullopt},
      {u"Alnilam"_s, u"Firm"_s, Group::men, std::nullopt},
      {u"Schedar"_s, u"Even"_s, Group::men, std::nullopt},
      {u"Achird"_s, u"Friendly"_s, Group::men, std::nullopt},
      {u"Zubenelgenubi"_s, u"Casual"_s, Group::men, std::nullopt},
      {u"Sadachbia"_s, u"Lively"_s, Group::men, std::nullopt},
      {u"Sadaltager"_s, u"Knowledgeable"_s, Group::men, std::nullopt},
  };
}

std::vector<AudioVoice> miniMaxVoices() {
  return {
      {u"Wise_Woman"_s, u"Wise and mature"_s, Group::women, std::nullopt},
      {u"Calm_Woman"_s, u"Calm and even"_s, Group::women, std::nullopt},
      {u"Inspirational_girl"_s, u"Bright and inspiring, young"_s, Group::women, std::nullopt},
      {u"Lively_Girl"_s, u"Lively, young"_s, Group::women, std::nullopt},
      {u"Lovely_Girl"_s, u"Sweet and gentle, young"_s, Group::women, std::nullopt},
      {u"Sweet_Girl_2"_s, u"Sweet and soft, young"_s, Group::women, std::nullopt},
      {u"Exuberant_Girl"_s, u"Exuberant, young"_s, Group::women, std::nullopt},
      {u"Abbess"_s, u"Serene and measured, older"_s, Group::women, std::nullopt},
      {u"Deep_Voice_Man"_s, u"Deep and resonant"_s, Group::men, std::nullopt},
      {u"Casual_Guy"_s, u"Casual and relaxed"_s, Group::men, std::nullopt},
      {u"Patient_Man"_s, u"Patient and gentle"_s, Group::men, std::nullopt},
      {u"Young_Knight"_s, u"Young and heroic"_s, Group::men, std::nullopt},
      {u"Determined_Man"_s, u"Firm and determined"_s, Group::men, std::nullopt},
      {u"Decent_Boy"_s, u"Polite, young"_s, Group::men, std::nullopt},
      {u"Imposing_Manner"_s, u"Commanding and imposing"_s, Group::men, std::nullopt},
      {u"Elegant_Man"_s, u"Refined and elegant"_s, Group::men, std::nullopt},
      {u"Friendly_Person"_s, u"Friendly and warm · gender-neutral"_s, Group::neutral, std::nullopt},
  };
}

std::vector<AudioVoice> kokoroVoices() {
  return {
      {u"hf_alpha"_s, u"Hindi"_s, Group::women, u"Alpha"_s},
      {u"hf_beta"_s, u"Hindi"_s, Group::women, u"Beta"_s},
      {u"hm_omega"_s, u"Hindi"_s, Group::men, u"Omega"_s},
      {u"hm_psi"_s, u"Hindi"_s, Group::men, u"Psi"_s},
  };
}

std::vector<AudioVoice> grokVoices() {
  return {
      {u"ara"_s, u"Warm"_s, Group::women, u"Ara"_s},
      {u"eve"_s, u"Energetic"_s, Group::women, u"Eve"_s},
      {u"leo"_s, u"Authoritative"_s, Group::men, u"Leo"_s},
      {u"rex"_s, u"Confident"_s, Group::men, u"Rex"_s},
      {u"sal"_s, u"Balanced · gender-neutral"_s, Group::neutral, u"Sal"_s},
  };
}

}  // namespace sorvan::catalogue
