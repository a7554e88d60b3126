// The tour without X: there nobody can send keys to another program, so the program is led through its accessibility
// tree, as a screen reader leads it.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QSet>
#include <stdexcept>

#include "tour/steps.h"
#include "tour/wayland_desktop.h"

namespace tour {
namespace {

class WaylandTour : public testing::Test {
 protected:
  WaylandTour() {
    QProcessEnvironment environment = desktop.environment();
    environment.insert(u"SORVAN_SERVICE"_qs, sandbox.configurationPath());
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.start(QStringLiteral(SORVAN_STUDIO), {});
  }
  ~WaylandTour() override {
    program.kill();
    program.waitForFinished(5000);
  }

  void waitFor(const Wanted& wanted, int seconds = 30) {
    if (within(seconds, [&] { return accessibility.count(wanted) > 0; })) return;
    throw std::runtime_error((u"no “"_qs + wanted.name + u"”; the window has:\n"_qs +
                              describe(accessibility.controls()))
                                 .toStdString());
  }
  void press(const Wanted& wanted) {
    waitFor(wanted);
    EXPECT_TRUE(accessibility.act(wanted)) << wanted.name.toStdString();
  }
  int coloursOf(const QString& file) {
    const QImage screen(file);
    QSet<QRgb> colours;
    for (int y = 0; y < screen.height(); y += 16)
      for (int x = 0; x < screen.width(); x += 16) colours.insert(screen.pixel(x, y));
    return static_cast<int>(colours.size());
  }
  void keep(const QString& file, const QString& name) {
    const QString folder = qEnvironmentVariable("SORVAN_TOUR_PICTURES");
    if (folder.isEmpty()) return;
    QDir().mkpath(folder);
    QFile::remove(folder + u'/' + name);
    QFile::copy(file, folder + u'/' + name);
  }

  WaylandDesktop desktop{QSize(1440, 900)};
  Accessibility accessibility;
  sorvan::test::SandboxProcess sandbox{{1200, {}, {}}};
  QProcess program;
};

TEST_F(WaylandTour, OpensALibraryAndGeneratesAPicture) {
  press({u"Use "_qs, u"push button"_qs, true});
  waitFor(prompt);
  EXPECT_TRUE(accessibility.write(prompt, u"A lighthouse on a cliff in evening light"_qs));
  press(generate);
  waitFor({u"A-lighthouse-on-a-cliff-in"_qs, u"list item"_qs, true}, 60);
  EXPECT_EQ(mediaIn(desktop.home() + u"/.local/share/sorvan-studio-sandbox/Sorvan"_qs, {u"*.png"_qs}).size(), 1);
  EXPECT_EQ(sandbox.ledger().size(), 1);
  QString picture;
  EXPECT_TRUE(within(20, [&] { return coloursOf(picture = desktop.picture()) > 100; })) << "the compositor saw no window";
  keep(picture, u"wayland-generated.png"_qs);
  program.terminate();
  ASSERT_TRUE(program.waitForFinished(20000));
  EXPECT_EQ(program.exitCode(), 0);
}

}  // namespace
}  // namespace tour
