// References: the chips of the composer, the panel that attaches them, their cards and their editor.
#include <QGridLayout>

#include "shell/views/attach_panel.h"
#include "shell/views/labels.h"
#include "shell/views/reference_chip.h"
#include "shell/views/reference_editor.h"
#include "shell/views/saved_references_view.h"
#include "shell/views/thumbnail_store.h"
#include "views/component_sheets.h"
#include "views/reference_samples.h"
#include "views/sheet_parts.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kPage(560, 300);

// Lives in the sheet before the widgets that show it, so that it goes after them.
template <class Sample>
Sample* sampleIn(QWidget& sheet, const QString& pictures) {
  auto* sample = new Sample(pictures);
  QObject::connect(&sheet, &QObject::destroyed, sample, &QObject::deleteLater);
  return sample;
}

QWidget* chips(ThumbnailStore& thumbnails, const QString& pictures) {
  std::vector<QWidget*> all;
  const AttachedReference tin{QUuid::createUuid(), u"@Tin"_s, u"Product"_s, pictures + u"/tin_1.jpg"_s, {}, 0, {}};
  const AttachedReference lost{QUuid::createUuid(), u"@Look"_s, u"Style"_s, u"/gone.png"_s, {}, 0, {}};
  for (const ControlState state : {ControlState::normal, ControlState::hover, ControlState::pressed, ControlState::focus}) {
    auto* chip = new ReferenceChip(state == ControlState::pressed ? lost : tin, thumbnails);
    chip->setFixedSize(chip->sizeHint());
    all.push_back(inState(chip, state));
  }
  return row(all);
}

QWidget* buttons() {
  std::vector<QWidget*> all;
  for (const ControlState state : {ControlState::normal, ControlState::hover, ControlState::focus}) {
    auto* button = new ReferenceButton;
    button->setWords(u"2 of 8 attached"_s, {});
    all.push_back(inState(button, state));
  }
  auto* inert = new ReferenceButton;
  inert->setWords({}, u"The chosen model takes text only."_s);
  all.push_back(inert);
  return row(all);
}

// Stays where it would open.
QWidget* panel(SampleReferences& references, ThumbnailStore& thumbnails) {
  auto* holder = new QWidget;
  auto* view = new AttachPanelView(references, thumbnails, 360);
  view->setParent(holder);
  view->move(0, 0);
  view->resize(view->sizeHint());
  view->show();
  holder->setFixedSize(view->size());
  return holder;
}

QWidget* page(SampleSavedReferences& references, ThumbnailStore& thumbnails) {
  auto* view = new SavedReferencesView(references, ReferenceScope::global, thumbnails);
  view->setFixedSize(kPage);
  return view;
}

QWidget* editor(SampleSavedReferences& references, ThumbnailStore& thumbnails, const QString& name) {
  SavedReferenceDraft draft;
  draft.name = name;
  draft.kind = u"Product"_s;
  draft.subject = name.isEmpty() ? QString() : u"a round coffee tin"_s;
  if (!name.isEmpty()) draft.assetIDs = {references.pictures({}).front().id};
  auto* holder = new QWidget;
  auto* view = new ReferenceEditor(references, draft, thumbnails, holder);
  view->setWindowFlags(Qt::Widget);
  view->setAttribute(Qt::WA_DeleteOnClose, false);
  view->move(0, 0);
  view->resize(view->sizeHint());
  view->show();
  holder->setFixedSize(view->size());
  return holder;
}

}  // namespace

std::unique_ptr<QWidget> referencesSheet(const QString& pictures) {
  auto sheet = emptySheet(u"references"_s, u"References"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  auto* open = sampleIn<SampleReferences>(*sheet, pictures);
  auto* inert = sampleIn<SampleReferences>(*sheet, pictures);
  inert->inert = u"The chosen model takes text only."_s;
  inert->hasTiles = false;
  auto* saved = sampleIn<SampleSavedReferences>(*sheet, pictures);
  auto* none = sampleIn<SampleSavedReferences>(*sheet, pictures);
  none->hasCards = false;
  auto* grid = new QGridLayout;
  grid->setSpacing(14);
  grid->addWidget(column({caption(u"Chips: normal, hover, pressed without its file, focus"_s), chips(thumbnails, pictures)}), 0, 0, 1, 2);
  grid->addWidget(column({caption(u"Reference button: normal, hover, focus, inert"_s), buttons()}), 1, 0, 1, 2);
  grid->addWidget(column({caption(u"Attach panel"_s), panel(*open, thumbnails)}), 2, 0, Qt::AlignTop);
  grid->addWidget(column({caption(u"Attach panel, nothing to attach"_s), panel(*inert, thumbnails)}), 2, 1, Qt::AlignTop);
  grid->addWidget(column({caption(u"Saved references"_s), page(*saved, thumbnails)}), 3, 0, Qt::AlignTop);
  grid->addWidget(column({caption(u"Saved references, none"_s), page(*none, thumbnails)}), 3, 1, Qt::AlignTop);
  grid->addWidget(column({caption(u"Reference editor"_s), editor(*saved, thumbnails, u"Tin"_s)}), 4, 0, Qt::AlignTop);
  grid->addWidget(column({caption(u"Reference editor, new"_s), editor(*saved, thumbnails, {})}), 4, 1, Qt::AlignTop);
  fillSheet(*sheet, grid);
  return sheet;
}

}  // namespace sorvan::views
