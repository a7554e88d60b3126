// What frames the window: the menu strip with its pills, the sidebar, the toolbar and the edges of panels.
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>

#include "shell/item_transfer.h"
#include "shell/views/balance_badge.h"
#include "shell/views/controls.h"
#include "shell/views/menu_strip.h"
#include "shell/views/pane_handle.h"
#include "shell/views/sidebar_view.h"
#include "shell/views/thumbnail_store.h"
#include "shell/views/toolbar_view.h"
#include "views/component_sheets.h"
#include "views/component_states.h"
#include "views/sheet_parts.h"
#include "views/state_stage.h"

namespace sorvan::views {
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kRow = 196;

QWidget* strip() {
  auto* made = new MenuStrip;
  for (const char* menu : {"&File", "&Edit", "&View"}) made->bar().addMenu(QLatin1StringView(menu));
  made->bar().actions().at(1)->setEnabled(false);
  made->setActivity(u"2 generating"_s);
  made->setBalance({true, 1'240'000'000, u"1,240 credits. Open the account."_s});
  made->setFixedWidth(470);
  return made;
}

// The first part of the strip that is of this class.
std::function<QWidget*(QWidget&)> ofClass(const QString& name) {
  return [name](QWidget& whole) -> QWidget* {
    for (QWidget* part : whole.findChildren<QWidget*>())
      if (className(*part) == name) return part;
    return nullptr;
  };
}

QWidget* strips() {
  const std::vector<State> states{normalState(), hoverState(), pressedState(), focusState()};
  // The bar lets go of its title when it is shown anew, so this state is kept as a picture.
  const State title{u"Menu title under the pointer"_s, [](QWidget&, QWidget& bar) { hoverAt(bar, {20, 15}); }, true};
  return column({stateFlow({u"Menu bar"_s, strip, ofClass(u"QMenuBar"_s)}, {normalState(), title}, 2),
                 stateFlow({u"Activity"_s, strip, ofClass(u"ActivityPill"_s)}, states, 2),
                 stateFlow({u"Balance"_s, strip, ofClass(u"BalanceBadge"_s)}, states, 2)});
}

SidebarRow rowOf(const QString& title, const QString& icon, const QString& count) {
  SidebarRow made;
  made.key = title;
  made.title = title;
  made.iconName = icon;
  made.countText = count;
  made.takesItems = true;
  return made;
}

Component sidebarRow(const QString& name, const SidebarRow& row, ThumbnailStore* thumbnails = nullptr) {
  return {name, [row, thumbnails] {
            auto* made = new SidebarRowButton(row, thumbnails);
            made->setFixedWidth(kRow);
            return made;
          }};
}

State dropTarget() {
  return {u"Drop target"_s, [](QWidget&, QWidget& part) {
            QMimeData items;
            items.setData(itemsFormat, "x");
            QDragEnterEvent enter({20, 10}, Qt::CopyAction, &items, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&part, &enter);
          }};
}

QWidget* rows(ThumbnailStore& thumbnails, const QString& pictures) {
  SidebarRow current = rowOf(u"All Media"_s, u"images"_s, u"2,418"_s);
  current.current = true;
  SidebarRow project = rowOf(u"Coffee Launch"_s, u"folder"_s, u"312"_s);
  project.thumbnailPath = pictures + u"/tin_1.jpg"_s;
  SidebarRow attention = rowOf(u"History"_s, u"history"_s, u"1 failed"_s);
  attention.attention = true;
  const std::vector<State> states{normalState(), hoverState(), pressedState(), focusState()};
  std::vector<State> droppable = states;
  droppable.push_back(dropTarget());
  return column({stateGrid({sidebarRow(u"Place"_s, rowOf(u"Favorites"_s, u"heart"_s, u"84"_s)),
                            sidebarRow(u"Project"_s, project, &thumbnails)},
                           droppable),
                 stateGrid({sidebarRow(u"Open"_s, current), sidebarRow(u"Needs a look"_s, attention),
                            sidebarRow(u"Settings page"_s, rowOf(u"Appearance"_s, u"sliders-horizontal"_s, {}))},
                           states)});
}

QWidget* workspaces() {
  const Component workspace{u"Workspace"_s, [] {
                              auto* made = new WorkspaceButton;
                              made->setWorkspace(u"Northlight"_s, u"~/Pictures/Northlight"_s);
                              made->setFixedWidth(kRow);
                              return made;
                            }};
  return stateFlow(workspace, {normalState(), hoverState(), pressedState(), focusState()}, 4);
}

QWidget* toolbar() {
  auto* made = new ToolbarView;
  made->setTitle(u"All Media"_s, u"2,418 items"_s);
  made->setFixedWidth(840);
  return made;
}

QWidget* toolbars() {
  const auto bar = [](QWidget& whole) -> ToolbarView& { return static_cast<ToolbarView&>(whole); };
  const State filtered{u"Searched, with filters and inspector"_s, [bar](QWidget& whole, QWidget&) {
                         bar(whole).setSearch(u"quay"_s);
                         bar(whole).setFiltersShown(true);
                         bar(whole).setInspectorShown(true);
                       }};
  const State tabbed{u"With tabs"_s, [bar](QWidget& whole, QWidget&) {
                       bar(whole).setTabs({ModeKind::gallery, ModeKind::contactSheets, ModeKind::projectReferences},
                                          ModeKind::contactSheets);
                       bar(whole).setGalleryToolsShown(false);
                     }};
  const State inside{u"With the way back, and steps of which one leads nowhere"_s, [bar](QWidget& whole, QWidget&) {
                       bar(whole).setTitle(u"roof_dusk_3.png"_s, {});
                       bar(whole).setBack(u"All Media"_s);
                       bar(whole).setGalleryToolsShown(false);
                       bar(whole).setSizeSliderShown(false);
                       bar(whole).setSteps(true, false, true);
                     }};
  return stateFlow({u"Toolbar"_s, toolbar}, {normalState(), filtered, tabbed, inside}, 1);
}

QWidget* edges() {
  const Component edge{u"Edge of a panel"_s, [] {
                         auto* made = new PaneHandle(u"Width of the sidebar"_s, PaneHandle::Panel::left);
                         made->setFixedSize(PaneHandle::width, 48);
                         return made;
                       }};
  return stateFlow(edge, {normalState(), hoverState(), pressedState(u"Dragged"_s, {3, 20}), focusState()}, 4);
}

}  // namespace

std::unique_ptr<QWidget> stripSheet() {
  return sheetOf(u"strip"_s, u"Menu strip and toolbar"_s, {{u"Menu strip"_s, strips()}, {u"Toolbar"_s, toolbars()}});
}

std::unique_ptr<QWidget> sidebarSheet(const QString& pictures) {
  auto* thumbnails = new ThumbnailStore;
  // What has the keyboard is kept as a picture, in which nothing arrives later.
  awaitThat([&] {
    return thumbnails->picture(pictures + u"/tin_1.jpg"_s, {}, 18).state == ThumbnailStore::State::ready;
  });
  std::unique_ptr<QWidget> sheet = sheetOf(u"sidebar"_s, u"Sidebar"_s,
                                           {{u"Rows"_s, rows(*thumbnails, pictures)},
                                            {u"Workspace"_s, workspaces()},
                                            {u"Edge of a panel"_s, edges()}});
  QObject::connect(sheet.get(), &QObject::destroyed, thumbnails, &QObject::deleteLater);
  return sheet;
}

}  // namespace sorvan::views
