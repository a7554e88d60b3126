// Sounds: speech-like babble, music, effects, and what is made out of other sounds.
#pragma once
#include "maker.h"
#include "sound.h"

namespace sandbox {

struct SoundWish {
  QString words;
  qint64 seed = 0;
  double seconds = 1;
  QString voice;  // of speech; sets its pitch
};
// Each lasts exactly as long as asked, and is the same for the same wish.
Sound speak(const SoundWish& wish);
Sound playMusic(const SoundWish& wish);
Sound playEffect(const SoundWish& wish);

// The jobs.
Made makeSound(const WorkOrder& order);
Made splitIntoStems(const WorkOrder& order, const MediaShelf& shelf);
Made pullSoundOut(const WorkOrder& order, const MediaShelf& shelf);
Made cleanSound(const WorkOrder& order, const MediaShelf& shelf);
Made lengthenSound(const WorkOrder& order, const MediaShelf& shelf);
Made makeSoundForClip(const WorkOrder& order, const MediaShelf& shelf);

}  // namespace sandbox
