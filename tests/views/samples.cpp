#include "views/samples.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

// SampleWall

void SampleWall::set(std::vector<GalleryCell> cells) {
  cells_ = std::move(cells);
  indices_.clear();
  for (int index = 0; index < count(); ++index) indices_.insert(idAt(index), index);
  Q_EMIT layoutChanged();
}

GalleryCell SampleWall::cellAt(int index) const {
  ++asked;
  return cells_.at(static_cast<size_t>(index));
}

int SampleWall::indexOf(QUuid id) const { return indices_.value(id, -1); }

// SampleHistory

void SampleHistory::set(std::vector<JobDisplay> jobs, std::vector<JobGroup> groups) {
  jobs_ = std::move(jobs);
  groups_ = std::move(groups);
  Q_EMIT layoutChanged();
}

int SampleHistory::indexOf(QUuid id) const {
  for (int index = 0; index < count(); ++index) {
    if (idAt(index) == id) return index;
  }
  return -1;
}

// SampleComposer

namespace {

ModelChoice sampleModel(const QString& key, const QString& name, const QString& kind, const QString& summary,
                        const QString& badge = {}, const QString& price = {}) {
  ModelChoice model;
  model.key = key;
  model.id = key;
  model.name = name;
  model.kindText = kind;
  model.summary = summary;
  model.badge = badge;
  model.price = price;
  model.priceDate = price.isEmpty() ? QString() : u"as of 21 Nov 2026"_s;
  return model;
}

std::vector<ModelSection> sampleTabs() {
  ModelChoice nano = sampleModel(u"nano"_s, u"Nano Banana 2"_s, u"Image"_s, u"Google · fast and versatile"_s,
                                 u"Top rated"_s, u"$0.039 / image"_s);
  nano.chosen = true;
  ModelChoice edit = sampleModel(u"edit"_s, u"Nano Banana 2 Edit"_s, u"Image"_s,
                                 u"Google · fast edits with several references"_s, {}, u"$0.039 / image"_s);
  edit.abilities = {{u"image-plus"_s, u"8"_s, u"Takes up to 8 reference images"_s}};
  edit.removable = true;
  ModelChoice kling = sampleModel(u"kling"_s, u"Kling Video V3 Pro"_s, u"Video"_s,
                                  u"Kling · people and precise motion"_s, {}, u"$0.14 / second"_s);
  kling.abilities = {{u"volume-2"_s, {}, u"Makes sound with the clip"_s}};
  kling.removable = true;
  return {{u"Image"_s,
           true,
           {nano,
            sampleModel(u"flux"_s, u"FLUX 3"_s, u"Image"_s, u"Black Forest Labs · newest FLUX"_s, u"New"_s,
                        u"$0.025 / megapixel"_s),
            sampleModel(u"seedream"_s, u"Seedream V5 Pro"_s, u"Image"_s, u"ByteDance · detail and text"_s)},
           {},
           {},
           0},
          {u"Edit"_s, true, {edit}, {}, {}, 1},
          {u"Video"_s,
           true,
           {sampleModel(u"wan"_s, u"Wan 3.0"_s, u"Video"_s, u"Alibaba · top rated text-to-video"_s, u"Top rated"_s,
                        u"$0.09 / second"_s),
            kling},
           {},
           {},
           2},
          {u"Animate"_s,
           true,
           {},
           u"No model for animating yet"_s,
           u"Add one that makes a clip from an image."_s,
           3}};
}

}  // namespace

SettingChoices sampleSetting(const QString& field, const QString& label, const QStringList& values) {
  SettingChoices setting{field, label, {}};
  for (const QString& value : values) setting.values.push_back({value, value, value == values.value(1)});
  return setting;
}

SampleComposer::SampleComposer() {
  shown.placeholder = u"Describe an image or a clip. Type @ to use a reference."_s;
  shown.modelLabel = u"Nano Banana 2"_s;
  shown.ratioLabel = u"16:9"_s;
  shown.countLabel = u"1 image"_s;
  shown.submitTitle = u"Generate"_s;
  shown.submitTooltip = u"Generate"_s;
  shown.destination = u"Inbox"_s;
  shown.lengthTitle = u"Video Length"_s;
  shown.lengthLabel = u"5 s"_s;
  shown.lengths = {{u"5"_s, u"5 s"_s, true}, {u"8"_s, u"8 s"_s, false}, {u"10"_s, u"10 s"_s, false}};
  shown.seedDetail =
      u"The same seed, prompt and settings give the same result on models that support it. Leave empty for a new result each time."_s;
  shown.ratios = {{u"square"_s, u"1:1"_s, u"Square"_s, 1, 1, true, false},
                  {u"32"_s, u"3:2"_s, u"Photo"_s, 3, 2, true, false},
                  {u"23"_s, u"2:3"_s, u"Portrait Photo"_s, 2, 3, true, false},
                  {u"43"_s, u"4:3"_s, u"Landscape"_s, 4, 3, true, false},
                  {u"34"_s, u"3:4"_s, u"Portrait"_s, 3, 4, true, false},
                  {u"169"_s, u"16:9"_s, u"Wide"_s, 16, 9, true, true},
                  {u"916"_s, u"9:16"_s, u"Tall"_s, 9, 16, false, false},
                  {u"45"_s, u"4:5"_s, u"Social Portrait"_s, 4, 5, true, false}};
  sections = sampleTabs();
  sounds = {{u"Voice"_s, false, {sampleModel(u"voice"_s, u"Speech 3 HD"_s, u"Voice"_s, u"MiniMax · natural speech"_s)}},
            {u"Music"_s, false, {sampleModel(u"music"_s, u"Lyria 3"_s, u"Music"_s, u"Google · instrumental music"_s)}}};
}

void SampleComposer::editDraft(const QString& draft) {
  text = draft;
  shown.submitEmphasised = !draft.isEmpty();
  calls.append(u"draft "_s + draft);
  Q_EMIT changed();
}

void SampleComposer::chooseOnlyModel(const QString& key) {
  calls.append(u"only "_s + key);
  for (std::vector<ModelSection>* tabs : {&sections, &sounds})
    for (ModelSection& section : *tabs)
      for (ModelChoice& model : section.models) model.chosen = model.key == key;
  Q_EMIT changed();
}

void SampleComposer::setModelChosen(const QString& key, bool chosen) {
  calls.append((chosen ? u"add "_s : u"remove "_s) + key);
  for (ModelSection& section : sections) {
    for (ModelChoice& model : section.models) {
      if (model.key == key) model.chosen = chosen;
    }
  }
  Q_EMIT changed();
}

void SampleComposer::chooseSize(const QString& size) {
  calls.append(u"size "_s + size);
  for (RatioChoice& ratio : shown.ratios) ratio.chosen = ratio.size == size;
  Q_EMIT changed();
}

void SampleComposer::chooseCount(int count) {
  calls.append(u"count %1"_s.arg(count));
  shown.count = count;
  shown.countLabel = u"%1 images"_s.arg(count);
  Q_EMIT changed();
}

void SampleComposer::chooseLength(const QString& value) { calls.append(u"length "_s + value); }

void SampleComposer::editSeed(const QString& seed) {
  calls.append(u"seed "_s + seed);
  shown.seedText = seed;
  Q_EMIT changed();
}

void SampleComposer::rollSeed() { editSeed(u"418207"_s); }

void SampleComposer::setExpanded(bool expanded) {
  if (shown.expanded == expanded) return;
  shown.expanded = expanded;
  Q_EMIT changed();
}

void SampleComposer::startAudio() {
  calls.append(u"audio"_s);
  shown.audio = true;
  chooseOnlyModel(u"voice"_s);
}

void SampleComposer::startImages() {
  calls.append(u"images"_s);
  shown.audio = false;
  chooseOnlyModel(u"nano"_s);
}

void SampleComposer::clear() {
  calls.append(u"clear"_s);
  text.clear();
  Q_EMIT draftReplaced(text);
}

// SampleBrowser

BrowserRow sampleBrowserRow(const QString& id, const QString& name, const QString& summary) {
  BrowserRow row;
  row.id = id;
  row.key = id;
  row.name = name;
  row.summary = summary;
  row.price = u"$0.04 / image"_s;
  row.priceDate = u"as of 21 Nov 2026"_s;
  return row;
}

SampleBrowser::SampleBrowser() {
  shown.categories = {u"Text to image"_s, u"Image to image"_s, u"Text to video"_s, u"Image to video"_s};
  shown.category = 1;
  shown.heading = u"Recommended"_s;
  shown.allTitle = u"Show the Whole Catalog"_s;
  shown.note = u"The list and each model's settings come from the model provider's public catalog."_s;
  shown.rows = {sampleBrowserRow(u"sunburst"_s, u"GPT Image 2.5 Sunburst Edit"_s,
                                 u"OpenAI · top rated, tightly scoped edits"_s),
                sampleBrowserRow(u"edit"_s, u"Nano Banana 2 Edit"_s, u"Google · fast edits with several references"_s),
                sampleBrowserRow(u"grok"_s, u"Grok Imagine Image 2.0 Edit"_s, u"xAI · bold edits, made quickly"_s),
                sampleBrowserRow(u"seedvr"_s, u"Upscale (SeedVR2)"_s, u"Enlarges one image · no prompt needed"_s),
                sampleBrowserRow(u"mask"_s, u"Inpaint"_s, u"Paints over a masked part"_s)};
  shown.rows[0].badge = u"Top rated"_s;
  shown.rows[3].badge = u"Tool"_s;
  shown.rows[4].licence = u"Research use only"_s;
  shown.rows[4].price = u"Price unavailable"_s;
  shown.rows[4].priceDate.clear();
}

void SampleBrowser::chooseCategory(int category) {
  calls.append(u"category %1"_s.arg(category));
  shown.category = category;
  Q_EMIT changed();
}

void SampleBrowser::editWords(const QString& words) {
  if (words == shown.words) return;
  calls.append(u"words "_s + words);
  shown.words = words;
  Q_EMIT changed();
}

void SampleBrowser::loadMore() {
  calls.append(u"more"_s);
  shown.loadingMore = true;
  Q_EMIT changed();
}

void SampleBrowser::setRow(const QString& id, BrowserRowState state, const QString& stateText, const QString& problem) {
  for (BrowserRow& row : shown.rows) {
    if (row.id != id) continue;
    row.state = state;
    row.stateText = stateText;
    row.problem = problem;
  }
  Q_EMIT changed();
}

// Cells

GalleryCell pictureCell(const QString& name, double aspectRatio) {
  GalleryCell cell;
  cell.id = QUuid::createUuid();
  cell.aspectRatio = aspectRatio;
  cell.fileName = name + u".png"_s;
  cell.modelName = u"FLUX 3"_s;
  cell.costText = u"6 credits"_s;
  cell.accessibleName = cell.fileName + u", image, FLUX 3"_s;
  return cell;
}

JobDisplay sampleJob(JobState state, const QString& model, const QString& prompt) {
  JobDisplay job;
  job.id = QUuid::createUuid();
  job.state = state;
  job.modelName = model;
  job.prompt = prompt;
  job.destination = u"Harbour Film"_s;
  job.startedText = u"10:14"_s;
  job.aspectRatio = 1.5;
  return job;
}

GalleryCell jobCell(const JobDisplay& job) {
  GalleryCell cell;
  cell.id = job.id;
  cell.kind = CellKind::job;
  cell.aspectRatio = job.aspectRatio;
  cell.accessibleName = job.prompt + u", "_s + job.modelName;
  cell.job = job;
  return cell;
}

std::vector<GalleryCell> sampleCells(const QString& pictures) {
  const std::pair<const char*, double> files[] = {{"tin_1", 0.8},
                                                  {"light_dawn_0", 16 / 9.0},
                                                  {"bottle_0", 0.8},
                                                  {"boat_gold_0", 16 / 9.0},
                                                  {"arch_0", 1.5},
                                                  {"vase_1", 0.8},
                                                  {"roof_dusk_3", 16 / 9.0},
                                                  {"orb_1", 1.0},
                                                  {"dune_gold_0", 16 / 9.0},
                                                  {"room_1", 1.5},
                                                  {"city_night_0", 16 / 9.0},
                                                  {"tin_4", 1.0},
                                                  {"lake_dusk_2", 16 / 9.0},
                                                  {"light_gold_3", 0.667},
                                                  {"vase_2", 1.0},
                                                  {"forest_gold_0", 1.5}};
  std::vector<GalleryCell> cells;
  for (int round = 0; round < 3; ++round) {
    for (const auto& [name, aspect] : files) {
      GalleryCell cell = pictureCell(QLatin1StringView(name), aspect);
      cell.filePath = cell.thumbnailPath = pictures + u'/' + QLatin1StringView(name) + u".jpg"_s;
      const size_t number = cells.size();
      if (number == 1 || number == 6) cell.kind = CellKind::video, cell.durationText = u"0:08"_s;
      if (number == 2) cell.statusText = u"Approved"_s, cell.statusToken = u"approved"_s;
      if (number == 3 || number == 7) cell.favorite = true;
      if (number == 5)
        cell.kind = CellKind::audio, cell.title = u"Warm acoustic guitar and soft piano"_s,
        cell.soundText = u"Music"_s, cell.soundIcon = u"music"_s,
        cell.durationText = u"0:32"_s, cell.aspectRatio = 1.6;
      if (number == 9) cell.thumbnailPath = cell.filePath = u"/nowhere/gone.png"_s;
      cells.push_back(cell);
    }
  }
  return cells;
}

std::vector<GalleryCell> sampleJobCells() {
  JobDisplay running =
      sampleJob(JobState::running, u"GPT Image 2.5 Sunburst Edit"_s,
                u"Keep the lighthouse, change the sky to an approaching storm with one break of light"_s);
  running.detail = u"Uploading reference 1 of 2"_s;
  running.elapsedText = u"0:06"_s;
  running.action = JobAction::cancel;
  running.actionTitle = u"Cancel"_s;
  JobDisplay queued = sampleJob(JobState::queued, u"MiniMax H3 Max Turbo"_s,
                                u"Slow push-in over the water toward the lantern, gulls drifting past"_s);
  queued.detail = u"Waiting to start"_s;
  queued.action = JobAction::cancel;
  queued.actionTitle = u"Cancel"_s;
  JobDisplay retained = sampleJob(JobState::failed, u"Seedream V5 Pro Edit"_s, u"Turn the sky into a passing storm."_s);
  retained.message =
      u"Seedream V5 Pro Edit returned a picture of a different shape from the one it was given, so its change could not be kept to the marked areas."_s;
  retained.action = JobAction::saveResult;
  retained.actionTitle = u"Save Result"_s;
  JobDisplay failed = sampleJob(JobState::failed, u"FLUX 3"_s, u"Harbour wall at dusk"_s);
  failed.message = u"The request is taking longer than expected. Retry will reconnect to the existing fal.ai job."_s;
  failed.action = JobAction::retry;
  failed.actionTitle = u"Retry"_s;
  JobDisplay cancelled = sampleJob(JobState::cancelled, u"Kling Video V3 Pro"_s, u"Night storm over the headland"_s);
  cancelled.detail = u"Cancelled. No credits were charged."_s;
  cancelled.action = JobAction::retry;
  cancelled.actionTitle = u"Retry"_s;
  return {jobCell(running), jobCell(queued), jobCell(retained), jobCell(failed), jobCell(cancelled)};
}

SidebarDisplay sampleSidebar() {
  SidebarDisplay display;
  display.workspaceName = u"Northlight"_s;
  display.workspacePath = u"~/Pictures/Northlight"_s;
  display.projectsTitle = u"Projects"_s;
  display.everywhereTitle = u"Everywhere"_s;
  display.rows = {{u"library"_s, SidebarSection::library, u"All Media"_s, u"images"_s, u"2,418"_s, {}, true},
                  {u"favorites"_s, SidebarSection::library, u"Favorites"_s, u"heart"_s, u"84"_s, {}, false},
                  {u"inbox"_s, SidebarSection::library, u"Inbox"_s, u"inbox"_s, u"27"_s, {}, false},
                  {u"p1"_s, SidebarSection::projects, u"Coffee Launch"_s, u"folder"_s, u"312"_s,
                   u":/sorvan/samples/tin_1.jpg"_s, false},
                  {u"p2"_s, SidebarSection::projects, u"Harbour Film"_s, u"folder"_s, u"486"_s,
                   u":/sorvan/samples/light_dawn_0.jpg"_s, false},
                  {u"history"_s, SidebarSection::everywhere, u"History"_s, u"history"_s, u"2 active"_s, {}, false}};
  return display;
}

InspectorDisplay sampleItemInspector(const QString& pictures) {
  InspectorDisplay display;
  display.subject = InspectorSubject::item;
  display.id = QUuid::createUuid();
  display.title = u"Studio-still-of-the-Tin-GPT-Image-001.png"_s;
  display.facts = u"1056 × 1408 · PNG · 2.4 MB · Today 09:41"_s;
  display.previewPath = pictures + u"/tin_1.jpg"_s;
  display.hasRating = true;
  display.rating = 4;
  display.favorite = true;
  display.statusText = u"Approved"_s;
  display.statusToken = u"approved"_s;
  display.canChangeStatus = true;
  display.buttons = {{ActionId::useAsReference, u"Use as Reference"_s, false, u"Reference"_s},
                     {ActionId::markAreas, u"Mark Areas"_s, false},
                     {ActionId::showLineage, u"Lineage"_s, false}};
  display.moreTitle = u"More"_s;
  display.sections = {
      {u"Prompt"_s,
       u"Studio still of the coffee tin on a warm sandstone block, scattered roasted beans, low afternoon sun from the left, long soft shadow"_s,
       {}},
      {u"Made with"_s,
       {},
       {{u"Model"_s, u"GPT Image 2.5 Sunburst Edit"_s},
        {u"Ratio"_s, u"3:4 Portrait"_s},
        {u"Seed"_s, u"418207"_s, true},
        {u"Cost"_s, u"12 credits ($0.12)"_s},
        {u"Took"_s, u"21 s"_s}}}};
  return display;
}

InspectorDisplay sampleJobInspector() {
  InspectorDisplay display;
  display.subject = InspectorSubject::job;
  display.id = QUuid::createUuid();
  display.title = u"Generation failed"_s;
  display.facts = u"Seedream V5 Pro Edit · Today 10:12 · 38 s"_s;
  display.jobState = JobState::failed;
  display.message =
      u"Seedream V5 Pro Edit returned a picture of a different shape from the one it was given, so its change could not be kept to the marked areas. The raw result is retained. Choose Save Raw Result to recover it without another generation charge."_s;
  display.detail = u"Result retained locally · Save Result or Save Raw Result"_s;
  display.buttons = {{ActionId::saveResult, u"Save Result"_s, true},
                     {ActionId::saveRawResult, u"Save Raw Result"_s, false},
                     {ActionId::copyJobDetails, u"Copy Details"_s, false}};
  display.sections = {{u"Prompt"_s, u"Turn the sky into a passing storm. Light the window of the cottage"_s, {}},
                      {u"Request"_s,
                       {},
                       {{u"Paid with"_s, u"My fal.ai key"_s},
                        {u"Request"_s, u"7c41f2ae-9b03-4d11-8a1f-0c5e7d2b9a61"_s, true},
                        {u"Job"_s, u"B2E0C6D1-51A7-4F0E-9C58-2D71A4E6F310"_s, true}}}};
  return display;
}

void fillHistory(SampleHistory& history) {
  std::vector<JobDisplay> jobs;
  for (const GalleryCell& cell : sampleJobCells()) jobs.push_back(cell.job);
  jobs[2].detail = u"Result retained locally · Save Result or Save Raw Result"_s;
  jobs[3].detail = u"Paid result · download needs recovery; Retry does not buy another generation"_s;
  JobDisplay done = sampleJob(JobState::complete, u"Nano Banana 2"_s,
                              u"A small sailing boat on a calm bay, golden hour, low horizon"_s);
  done.detail = u"Saved 2 images locally"_s;
  done.costText = u"≈ $0.060"_s;
  done.elapsedText = u"0:14"_s;
  done.action = JobAction::show;
  done.actionTitle = u"Show"_s;
  done.thumbnailPath = u":/sorvan/samples/boat_gold_0.jpg"_s;
  jobs.push_back(done);
  history.set(jobs, {{u"In progress"_s, 0, 2}, {u"To look at"_s, 2, 3}, {u"Today"_s, 5, 1}});
}

}  // namespace sorvan::views
