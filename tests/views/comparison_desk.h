// The whole window with sheets, comparing and lineage walked in it.
#pragma once

#include <QDir>
#include <QFileInfo>

#include "shell/views/lineage_view.h"
#include "shell/views/sheet_view.h"
#include "views/whole_window.h"

namespace sorvan::views {

// A window with a real library in it, over which sheets, comparing and lineage are walked.
class ComparisonDesk : public WholeWindow {
 protected:
  QUuid made(const QString& prompt) {
    desk.generate(prompt);
    desk.settle();
    desk.clock->advance(std::chrono::seconds(1));
    return desk.store.generationsOf(desk.newestJob()->id).front()->assetID;
  }
  std::vector<QUuid> several(int count) {
    std::vector<QUuid> ids;
    for (int number = 0; number < count; ++number) ids.push_back(made(QStringLiteral("a boat")));
    desk.state.setLocation(allMediaLocation);
    test::runPosted();
    return ids;
  }
  // An item whose file is made by `make` at the path that it is given.
  QUuid placed(const QString& name, core::MediaType type, const core::MediaMetadata& metadata,
               const std::function<void(const QString& path)>& make) {
    const core::AssetRef asset = desk.store.context().insert(
        core::Asset({}, type, QStringLiteral("Inbox/") + name, name, metadata, desk.store.now()));
    QDir().mkpath(QFileInfo(desk.store.fileOf(*asset)).path());
    make(desk.store.fileOf(*asset));
    desk.store.save(core::LibraryTables::none);
    desk.store.registerRecords({{asset}, {}, {}, {}});
    desk.clock->advance(std::chrono::seconds(1));
    return asset->id;
  }
  template <class Kind>
  Kind* the() {
    return window->findChild<Kind*>();
  }
  SheetView& sheet() { return *the<SheetView>(); }
  CompareView& comparing() { return sheet().comparing(); }
  SheetPlaces& places() { return sheet().places(); }
  void key(int pressed, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(window->focusWidget(), static_cast<Qt::Key>(pressed), modifiers);
    test::runPosted();
  }
  void openSheet(const std::vector<QUuid>& ids) {
    desk.state.select({ids.begin(), ids.end()});
    actions->trigger(ActionId::newContactSheet);
    test::runPosted();
  }
  void openCompare(const std::vector<QUuid>& ids) {
    desk.state.select({ids.begin(), ids.end()});
    actions->trigger(ActionId::compareItems);
    test::runPosted();
  }
};

}  // namespace sorvan::views
