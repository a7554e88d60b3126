#pragma once

#include "shell/contact_sheets.h"
#include "shell/gallery_presenter.h"
#include "shell/job_display.h"
#include "shell/prompt_names.h"

#include <QString>
#include <QUuid>

#include <functional>
#include <vector>

namespace sorvan::shell {

// One place of a contact sheet as it is shown: an item, or work that will become one. Texts are final.
struct PlaceDisplay {
  QString id;      // of the place; stays the same while results arrive
  int number = 1;  // from 1, as its badge says
  QUuid asset;     // null while the place waits for its item
  JobDisplay job;  // what works or failed here; a null id where there is none, or the place has its item
  CellKind kind = CellKind::image;
  double aspectRatio = 1;  // width by height
  QString fileName;
  QString modelName;
  QString costText;  // “12 credits ($0.12)”, or that nothing was recorded; of work, what it is expected to cost
  QString tookText;  // “21 s”; empty when it is not known
  QString thumbnailPath;
  QString filePath;
  QString durationText;
  QString statusText;  // empty for a draft
  QString markText;    // “Reviewed” for what the review mark says, else the status
  QString statusToken;
  bool favorite = false;
  int rating = 0;
  bool movable = false;     // its place among the ones that were added by hand can be changed
  QString accessibleName;   // ‘{n} of {count}, {model}, {state or cost}’
};

// A whole sheet, open in its view.
struct SheetDisplay {
  QString title;
  QString prompt;        // that all places share; empty when they do not
  std::vector<PromptName> names;  // of references, in the prompt
  QString factsText;     // “4 models · 3:2 · 1 output per model · seed 418207”
  QString progressText;  // “2 of 4 done” while its comparison runs
  QString countText;     // “4 places”
  bool running = false;
  bool stored = false;   // there is a record: it can be renamed and moved to Trash
  bool trashed = false;
  bool canSave = false;  // a passing selection that could become a sheet
  int clips = 0;         // places with a clip in them
  std::vector<PlaceDisplay> places;
};

class JobDisplays;

// What one output of a request is expected to cost; empty while that is not known.
using PriceOf = std::function<QString(const core::GenerationRequest&)>;

// How the places of a sheet look now.
std::vector<PlaceDisplay> displayPlaces(const core::LibraryStore& store, const JobDisplays& displays,
                                        const ContactSheetPlaces& places, const PriceOf& priceOf = {});

// “21 s” or “2 min 5 s”; negative counts as zero.
QString tookText(double seconds);

// What all jobs of a comparison have in common, in one line.
QString comparisonFacts(const std::vector<core::JobRef>& jobs);

}  // namespace sorvan::shell
