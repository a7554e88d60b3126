// The voices of Fish Audio, Sarvam and Inworld.
#include "catalogue/audio_voice.h"
#include "catalogue/voice_tables.h"

namespace sorvan::catalogue {

using namespace Qt::StringLiterals;
using Group = AudioVoice::Group;

std::vector<AudioVoice> fishVoices() {
  return {
      {u"933563129e564b19a115bedd57b7406a"_s, u"Soft and engaged, young · conversation"_s, Group::women, u"Sarah"_s},
      {u"b347db033a6549378b48d00acb0d06cd"_s, u"Calm and meditative · narration"_s, Group::women, u"Selene"_s},
      {u"9a9cf47702da476aa4629e2506d4a857"_s, u"Professional, conversational · explainers"_s, Group::women,
       u"Hannah"_s},
      {u"e3cd384158934cc9a01029cd7d278634"_s, u"Confident and low · narration"_s, Group::women, u"Laura"_s},
      {u"8abfa9ebd4c24a3399b68c3cdac8c7b5"_s, u"Natural, British"_s, Group::women, u"Freya"_s},
      {u"b121b91872f54f04ba9f6da08b8b6253"_s, u"Natural, Australian"_s, Group::women, u"Chloe"_s},
      {u"2f64e528a4f2406691925ab1e0ed5b7f"_s, u"Clear and confident, young · Hindi"_s, Group::women, u"Ananya"_s},
      {u"bf322df2096a46f18c579d0baa36f41d"_s, u"Deep, steady and slow · narration"_s, Group::men, u"Adrian"_s},
      {u"536d3a5e000945adb7038665781a4aca"_s, u"Clear and curious · explainers"_s, Group::men, u"Ethan"_s},
      {u"79d0bd3e4e5444b18f7b6d89b5927bf1"_s, u"Confident, older · motivational"_s, Group::men, u"Jordan"_s},
      {u"fbc1029c018041d4b17f2c1e57222dff"_s, u"British · storytelling"_s, Group::men, u"Richard"_s},
      {u"732ea755bd9e446eb31dc79966b50428"_s, u"Laid-back, American"_s, Group::men, u"Beau"_s},
      {u"b080019dc38545f39def724726386d30"_s, u"Clear and confident, young · Hindi"_s, Group::men, u"Aarav"_s},
      {u"cefd91a07b99468f9148e2580990082d"_s, u"Professional, young · Hindi"_s, Group::men, u"Arjun"_s},
      {u"e7c1eeb5267b45a2ac54780ad90f9243"_s, u"Natural, young · Bengali"_s, Group::men, u"Rafi"_s},
  };
}

std::vector<AudioVoice> sarvamVoices() {
  return {
      {u"shubh"_s, u"Sarvam's default · speaks every language offered"_s, Group::men, std::nullopt},
      {u"aditya"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"ritu"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"priya"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"neha"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"rahul"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"pooja"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"rohan"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"simran"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"kavya"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"amit"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"dev"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"ishita"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"shreya"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"ratan"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"varun"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"manan"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"sumit"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"roopa"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"kabir"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"aayan"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"ashutosh"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"advait"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"anand"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"tanya"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"tarun"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"sunny"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"mani"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"gokul"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"vijay"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"shruti"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"suhani"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"mohit"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"kavitha"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
      {u"rehan"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"soham"_s, u"Speaks every language offered"_s, Group::men, std::nullopt},
      {u"rupali"_s, u"Speaks every language offered"_s, Group::women, std::nullopt},
  };
}

std::vector<AudioVoice> inworldVoices() {
  return {
      {u"Ashley (en)"_s, u"English"_s, Group::women, std::nullopt},
      {u"Sarah (en)"_s, u"English"_s, Group::women, std::nullopt},
      {u"Olivia (en)"_s, u"English"_s, Group::women, std::nullopt},
      {u"Julia (en)"_s, u"English"_s, Group::women, std::nullopt},
      {u"Deborah (en)"_s, u"English"_s, Group::women, std::nullopt},
      {u"Elizabeth (en)"_s, u"English"_s, Group::women, std::nullopt},
      {u"Wendy (en)"_s, u"English"_s, Group::women, std::nullopt},
      {u"Priya (en)"_s, u"English"_s, Group::women, std::nullopt},
      {u"Riya (hi)"_s, u"Hindi"_s, Group::women, std::nullopt},
      {u"Hélène (fr)"_s, u"French"_s, Group::women, std::nullopt},
      {u"Johanna (de)"_s, u"German"_s, Group::women, std::nullopt},
      {u"Lupita (es)"_s, u"Spanish"_s, Group::women, std::nullopt},
      {u"Orietta (it)"_s, u"Italian"_s, Group::women, std::nullopt},
      {u"Minji (ko)"_s, u"Korean"_s, Group::women, std::nullopt},
      {u"Xinyi (zh)"_s, u"Chinese"_s, Group::women, std::nullopt},
      {u"Svetlana (ru)"_s, u"Russian"_s, Group::women, std::nullopt},
      {u"Craig (en)"_s, u"English"_s, Group::men, std::nullopt},
      {u"Mark (en)"_s, u"English"_s, Group::men, std::nullopt},
      {u"Dennis (en)"_s, u"English"_s, Group::men, std::nullopt},
      {u"Edward (en)"_s, u"English"_s, Group::men, std::nullopt},
      {u"Theodore (en)"_s, u"English"_s, Group::men, std::nullopt},
      {u"Timothy (en)"_s, u"English"_s, Group::men, std::nullopt},
      {u"Ronald (en)"_s, u"English"_s, Group::men, std::nullopt},
      {u"Alex (en)"_s, u"English"_s, Group::men, std::nullopt},
      {u"Manoj (hi)"_s, u"Hindi"_s, Group::men, std::nullopt},
      {u"Alain (fr)"_s, u"French"_s, Group::men, std::nullopt},
      {u"Josef (de)"_s, u"German"_s, Group::men, std::nullopt},
      {u"Diego (es)"_s, u"Spanish"_s, Group::men, std::nullopt},
      {u"Gianni (it)"_s, u"Italian"_s, Group::men, std::nullopt},
      {u"Satoshi (ja)"_s, u"Japanese"_s, Group::men, std::nullopt},
      {u"Yichen (zh)"_s, u"Chinese"_s, Group::men, std::nullopt},
      {u"Dmitry (ru)"_s, u"Russian"_s, Group::men, std::nullopt},
  };
}

}  // namespace sorvan::catalogue
