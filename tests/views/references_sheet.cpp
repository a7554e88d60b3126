// References: the panel that attaches them, their page and their editor.
#include <QGridLayout>

#include "shell/views/attach_panel.h"
#include "shell/views/labels.h"
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

QWidget* editor(SampleSavedReferences& references, ThumbnailStore& thumbnails) {
  SavedReferenceDraft draft;
  draft.kind = u"Product"_s;
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
  grid->addWidget(column({caption(u"Attach panel"_s), panel(*open, thumbnails)}), 0, 0, Qt::AlignTop);
  grid->addWidget(column({caption(u"Attach panel, nothing to attach"_s), panel(*inert, thumbnails)}), 0, 1, Qt::AlignTop);
  grid->addWidget(column({caption(u"Saved references"_s), page(*saved, thumbnails)}), 1, 0, Qt::AlignTop);
  grid->addWidget(column({caption(u"Saved references, none"_s), page(*none, thumbnails)}), 1, 1, Qt::AlignTop);
  grid->addWidget(column({caption(u"Reference editor, new"_s), editor(*saved, thumbnails)}), 2, 0, Qt::AlignTop);
  fillSheet(*sheet, grid);
  return sheet;
}

}  // namespace sorvan::views
