#include <gtest/gtest.h>

#include <QApplication>
#include <QThreadPool>

// OpenSSL keeps a state for each thread that hashed something; a thread of the pool that is just ending when the process
// does may not have given it back yet. The library that encodes HEVC keeps a few blocks to itself. Neither is a leak of ours.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:CRYPTO_zalloc\nleak:libx265\n"; }

// Every test program runs on the offscreen platform with a widget application, so that any room can be tested.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  const int result = RUN_ALL_TESTS();
  // What the last test gave to the event loop to delete is deleted, so that a leak that is reported is one.
  for (int round = 0; round < 3; ++round) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  // Threads that end before the libraries clean up give back what those keep for each thread.
  QThreadPool::globalInstance()->waitForDone();
  return result;
}
