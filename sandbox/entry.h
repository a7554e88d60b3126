// One model of the service's catalogue.
#pragma once
#include <QString>
#include <functional>

#include "sheet.h"

namespace sandbox {

struct Price {
  double amount = 0;  // for one unit
  QString unit;       // as the list says it
  QString currency = QStringLiteral("USD");
};

// Facts that the list says of a few models.
enum class Standing {
  Usual,
  Research,     // may be used for research only
  Private,      // a licence of its own
  Deprecated,   // still answers, no longer listed as active
  Unlisted,     // has a document, is in no list
  Undocumented  // is in the list, its document cannot be had
};

struct Entry {
  std::string id;
  std::string name;
  std::string category;
  std::string about;
  std::function<Sheet()> sheet;
  std::optional<Price> price = {};  // nothing: what its product usually costs
  Standing standing = Standing::Usual;
  std::vector<std::string> tags = {};
};
using Entries = std::vector<Entry>;

// The rows, one function for each part of the catalogue.
Entries pictureEntries();  // pictures out of words
Entries editEntries();     // pictures out of pictures
Entries toolEntries();     // upscaling, cutting out, the camera
Entries clipEntries();     // clips out of words, pictures and clips
Entries speechEntries();
Entries musicEntries();
Entries effectEntries();
Entries soundToolEntries();  // sounds out of sounds and clips
Entries refusedEntries();    // models that a studio of pictures, clips and sounds cannot use
Entries furtherEntries();    // many more, made by rule out of every form that documents take

}  // namespace sandbox
