// The chips, pictures and editor of references, in every state.
#include <QComboBox>
#include <QGridLayout>
#include <QTextEdit>

#include "shell/views/controls.h"
#include "shell/views/fields.h"
#include "shell/views/picture_button.h"
#include "shell/views/reference_chip.h"
#include "shell/views/reference_editor.h"
#include "shell/views/thumbnail_store.h"
#include "views/item_sheets.h"
#include "views/reference_samples.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kEditor(560, 478);

AttachedReference attached(const QString& name, const QString& picture) {
  return {QUuid::createUuid(), name, u"Product"_s, picture, {}, 0, {}};
}

QWidget* chips(const StateStage& stage, ThumbnailStore& thumbnails, const QString& folder) {
  const QString tin = folder + u"/tin_1.jpg"_s;
  const auto chip = [&thumbnails](const AttachedReference& reference) {
    return [&thumbnails, reference] { return new ReferenceChip(reference, thumbnails); };
  };
  return column({stage.states(u"Reference chip"_s, chip(attached(u"@Tin"_s, tin)), {},
                              {{u"Normal"_s},
                               {u"Hover"_s, hoverMiddle},
                               {u"Hover on ×"_s, [](QWidget& it) { hoverMiddle(*it.findChild<IconButton*>()); }},
                               {u"Focus"_s, focusByKey},
                               {u"Focus on ×"_s, [](QWidget& it) { focusByKey(*it.findChild<IconButton*>()); }}},
                              5),
                 row({stage.states(u"Reference chip, missing"_s, chip(attached(u"@Look"_s, u"/gone.png"_s)), {}, {{u"Missing file"_s}}, 1),
                      stage.states(u"Reference chip, long"_s, chip(attached(u"@TheTinFromTheHarbourWarehouse"_s, tin)), {},
                                   {{u"Long name"_s}}, 1)})});
}

QWidget* buttons(const StateStage& stage) {
  const auto words = [](const QString& count, const QString& inert, const Bring& then = {}) -> Bring {
    return [count, inert, then](QWidget& it) {
      static_cast<ReferenceButton&>(it).setWords(count, inert);
      it.resize(it.sizeHint());
      if (then) then(it);
    };
  };
  const QString two = u"2 of 8 attached"_s;
  return stage.states(u"Reference button"_s, [] { return new ReferenceButton; }, {},
                      {{u"Nothing attached"_s, words({}, {})},
                       {u"Normal"_s, words(two, {})},
                       {u"Hover"_s, words(two, {}, hoverMiddle)},
                       {u"Focus"_s, words(two, {}, focusByKey)},
                       {u"The models take text only"_s, words({}, u"The chosen model takes text only."_s)}},
                      5);
}

QWidget* pictures(const StateStage& stage, ThumbnailStore& thumbnails, const SampleSavedReferences& references) {
  const ReferenceTile tile = references.pictures({}).front();
  const std::vector<ComponentState> states{{u"Normal"_s}, {u"Hover"_s, hoverMiddle}, {u"Focus"_s, focusByKey}};
  return row({stage.states(u"Picture of a reference"_s, [&] { return new PictureButton(thumbnails, tile, u"Image 1 of 2"_s); }, {48, 48}, states, 3),
              stage.states(u"Add a picture"_s, [] { return new AddPictureButton(u"Add pictures"_s); }, {48, 48}, states, 3)});
}

Button& saveButton(QWidget& editor) {
  for (Button* button : editor.findChildren<Button*>())
    if (button->variant() == ButtonVariant::primary) return *button;
  qFatal("the editor cannot save");
}

ComponentState failing(const QString& name, SampleSavedReferences& references, const ReferenceProblem& problem) {
  return {name, [&references, problem](QWidget& editor) {
            references.problem = problem;
            saveButton(editor).click();
            references.problem.reset();
          }};
}

QWidget* editors(const StateStage& stage, ThumbnailStore& thumbnails, SampleSavedReferences& references) {
  const auto make = [&references, &thumbnails] {
    SavedReferenceDraft draft;
    draft.name = u"Tin"_s;
    draft.kind = u"Product"_s;
    draft.subject = u"a round coffee tin"_s;
    draft.notes = u"The one with the dented lid."_s;
    draft.assetIDs = {references.pictures({}).front().id};
    return new ReferenceEditor(references, draft, thumbnails, nullptr);
  };
  return stage.states(u"Reference editor"_s, make, kEditor,
                      {{u"Normal"_s},
                       {u"Hover on the kinds"_s, [](QWidget& it) { hoverMiddle(*it.findChild<QComboBox*>()); }},
                       {u"Focus on the kinds"_s, [](QWidget& it) { focusByKey(*it.findChild<QComboBox*>()); }},
                       {u"Focus on the notes"_s, [](QWidget& it) { focusByKey(*it.findChild<QTextEdit*>()); }},
                       failing(u"The name is taken"_s, references,
                               {ReferenceField::name, u"Give each reference a unique name starting with a letter."_s}),
                       failing(u"It shows nothing"_s, references,
                               {ReferenceField::subject, u"Say what the reference shows, in a few words."_s})},
                      3);
}

}  // namespace

std::unique_ptr<QWidget> referenceStatesSheet(const QString& folder) {
  auto sheet = emptySheet(u"reference-parts"_s, u"Parts of references"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* references = new SampleSavedReferences(folder);
  QObject::connect(sheet.get(), &QObject::destroyed, references, &QObject::deleteLater);
  auto* box = new QGridLayout;
  const std::pair<QString, QWidget*> parts[] = {{u"Chips of the composer, and the button that attaches"_s,
                                                 row({chips(stage, thumbnails, folder), buttons(stage)})},
                                                {u"Pictures of a reference"_s, pictures(stage, thumbnails, *references)},
                                                {u"Editor"_s, editors(stage, thumbnails, *references)}};
  int line = 0;
  for (const auto& [title, part] : parts) box->addWidget(column({caption(title), part}), line++, 0, Qt::AlignLeft);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
