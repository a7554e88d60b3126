// sorvan-keystroke: types into a prompt of 8,000 characters with 8 references and their mentions, in the composer as it
// stands in the window, and prints the longest stall in seconds: from a key to its picture, and of any turn of the event
// loop after it.
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <cstdio>

#include "shell/desk.h"
#include "shell/views/composer_dock.h"
#include "shell/views/prompt_edit.h"
#include "shell/views/theme.h"
#include "shell/views/thumbnail_store.h"
#include "support/made_pictures.h"

using namespace sorvan;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int promptLength = 8000;
constexpr int keys = 300;
constexpr int idleMilliseconds = 12;  // between two keys of a very fast typist there is more

// Tells when the prompt was painted.
class PaintWatch final : public QObject {
 public:
  bool painted = false;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) painted = true;
    return false;
  }
};

// Time that this thread took, without what it had to wait because other programs had the processor: waiting for the disk
// or for another thread of ours counts, a busy machine does not.
class OwnTime {
 public:
  void start() {
    waited_ = waited();
    clock_.start();
  }
  qint64 nanoseconds() const {
    const qint64 passed = clock_.nsecsElapsed();
    return passed - (waited() - waited_);
  }

 private:
  // Nanoseconds on the run queue since the thread began; 0 where the system does not tell.
  static qint64 waited() {
    QFile file(u"/proc/thread-self/schedstat"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toLongLong() : 0;
  }

  QElapsedTimer clock_;
  qint64 waited_ = 0;
};

void attachEight(test::Desk& desk) {
  std::vector<QUuid> items;
  for (int number = 0; number < 8; ++number) {
    const QString path = u"Inbox/references/picture-%1.png"_s.arg(number);
    desk.folder.write(u"Workspace/"_s + path, test::encoded(test::cornerMarked({64, 64}), "PNG"));
    const core::MediaMetadata metadata{core::MediaType::image, 64, 64, {}, 100, u"image/png"_s};
    const core::AssetRef asset =
        desk.store.context().insert(core::Asset({}, core::MediaType::image, path, path, metadata, desk.store.now()));
    desk.store.save(core::LibraryTables::none);
    desk.store.registerRecords({{asset}, {}, {}, {}});
    items.push_back(asset->id);
  }
  desk.references.attachItems(items);
}

QString longPrompt() {
  QString text;
  for (int part = 0; text.size() < promptLength; ++part)
    text += u"a harbour at dusk with boats and lanterns, "_s + (part % 20 == 0 ? u"@Reference%1 "_s.arg(part % 8 + 1) : QString());
  return text.left(promptLength);
}

double longestStall(views::PromptEdit& prompt, PaintWatch& watch) {
  qint64 longest = 0;
  OwnTime time;
  for (int key = 0; key < keys; ++key) {
    watch.painted = false;
    QElapsedTimer limit;
    limit.start();
    time.start();
    QTest::keyClick(&prompt, key % 7 == 6 ? Qt::Key_Space : static_cast<Qt::Key>(Qt::Key_A + key % 26));
    while (!watch.painted && limit.elapsed() < 1000) QCoreApplication::processEvents();
    longest = std::max(longest, time.nanoseconds());
    QElapsedTimer idle;
    idle.start();
    while (idle.elapsed() < idleMilliseconds) {
      time.start();
      QCoreApplication::processEvents();
      longest = std::max(longest, time.nanoseconds());
    }
  }
  return static_cast<double>(longest) / 1e9;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  views::Theme::instance().dress(application);
  test::Desk desk;
  // The draft is kept a moment after each key, as in the running studio.
  desk.clock->passSleeps();
  attachEight(desk);
  desk.composing.setText(longPrompt());
  QWidget window;
  window.resize(1440, 900);
  views::ThumbnailStore thumbnails;
  views::ComposerDock dock(desk.composer, thumbnails, &window);
  const auto place = [&dock] {
    const int height = dock.heightForWidth(900);
    dock.setGeometry(270, 890 - height, 900, height);
  };
  QObject::connect(&dock, &views::ComposerDock::heightChanged, &dock, place);
  dock.focusPrompt();
  place();
  window.show();
  (void)QTest::qWaitForWindowExposed(&window);
  window.activateWindow();
  auto* prompt = window.findChild<views::PromptEdit*>();
  prompt->setFocus();
  PaintWatch watch;
  prompt->viewport()->installEventFilter(&watch);
  QElapsedTimer settled;
  settled.start();
  while (settled.elapsed() < 500) QCoreApplication::processEvents();
  std::printf("%.6f\n", longestStall(*prompt, watch));
  return 0;
}
