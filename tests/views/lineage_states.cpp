// The rows of the tree of relations, in every state.
#include <QGridLayout>

#include "shell/sheet_texts.h"
#include "shell/texts.h"
#include "shell/views/lineage_tree.h"
#include "views/item_sheets.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kTree(500, 222);

LineageRowDisplay row(const QString& folder, int depth, const QString& name, const QString& label) {
  LineageRowDisplay shown;
  shown.id = QUuid::createUuid();
  shown.depth = depth;
  shown.parentRow = depth - 1;
  shown.name = name;
  shown.label = label;
  shown.detail = u"Nano Banana 2 Edit"_s;
  shown.dateText = u"12 Nov"_s;
  shown.thumbnailPath = folder + u"/tin_4.jpg"_s;
  return shown;
}

// A parent, a child and a grandchild; the state is the child's.
std::vector<LineageRowDisplay> family(const QString& folder) {
  return {row(folder, 0, u"tin-front-001.png"_s, u"Original"_s), row(folder, 1, u"make-the-label-blue-001.png"_s, u"Edited from"_s),
          row(folder, 2, u"make-the-label-blue-Topaz-001.png"_s, u"Upscaled from"_s)};
}

LineageTree& treeIn(QWidget& widget) { return static_cast<LineageTree&>(widget); }
using Change = std::function<void(LineageRowDisplay&)>;

ComponentState being(const QString& name, const QString& folder, const Change& change, const Bring& then = {}) {
  return {name, [folder, change, then](QWidget& widget) {
            std::vector<LineageRowDisplay> rows = family(folder);
            if (change) change(rows[1]);
            treeIn(widget).show(rows);
            if (then) then(widget);
          }};
}

void becomeDeleted(LineageRowDisplay& shown) {
  shown.deleted = true;
  shown.name = shell::texts::lineageDeleted;
  shown.label.clear();
  shown.detail = shell::texts::lineageDeletedText;
  shown.dateText.clear();
  shown.thumbnailPath.clear();
}

void hoverChild(QWidget& tree) { hover(tree, treeIn(tree).cellRect(1).center()); }

void focusChild(QWidget& tree) {
  focusByKey(tree);
  press(tree, Qt::Key_Home);
  press(tree, Qt::Key_Down);
}

std::vector<ComponentState> states(const QString& folder) {
  return {being(u"Normal"_s, folder, {}),
          being(u"Hover"_s, folder, {}, hoverChild),
          being(u"Inspected"_s, folder, [](LineageRowDisplay& it) { it.inspected = true; }),
          being(u"Keyboard"_s, folder, {}, focusChild),
          being(u"Keyboard, inspected"_s, folder, [](LineageRowDisplay& it) { it.inspected = true; }, focusChild),
          being(u"Opened from"_s, folder, [](LineageRowDisplay& it) { it.openedFrom = true; }),
          being(u"Opened from, inspected"_s, folder, [](LineageRowDisplay& it) { it.openedFrom = it.inspected = true; }),
          being(u"In Trash"_s, folder, [](LineageRowDisplay& it) { it.trashed = true; }),
          being(u"Deleted"_s, folder, becomeDeleted),
          being(u"Deleted, keyboard"_s, folder, becomeDeleted, focusChild),
          being(u"Approved clip"_s, folder,
                [](LineageRowDisplay& it) {
                  it.statusText = u"Approved"_s, it.statusToken = u"approved"_s, it.durationText = u"0:06"_s;
                }),
          being(u"Long name"_s, folder, [](LineageRowDisplay& it) {
            it.name = u"Studio-still-of-the-Tin-on-a-slate-counter-by-a-rain-streaked-window-GPT-Image-001.png"_s;
            it.openedFrom = true;
          })};
}

}  // namespace

std::unique_ptr<QWidget> lineageSheet(const QString& folder) {
  auto sheet = emptySheet(u"lineage-rows"_s, u"Rows of the tree of relations"_s);
  auto& thumbnails = *new ThumbnailStore(sheet.get());
  const StateStage stage(thumbnails);
  auto* box = new QGridLayout;
  box->addWidget(stage.states(u"Lineage row"_s, [&thumbnails] { return new LineageTree(thumbnails); }, kTree, states(folder), 3), 0, 0);
  fillSheet(*sheet, box);
  return sheet;
}

}  // namespace sorvan::views
