#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cstdio>

#include "mounted_disk.h"

// What OpenSSL keeps for a thread goes when the thread ends, and those of the pool end after the look for leaks.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:CRYPTO_zalloc\n"; }

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  constexpr int skipped = 77;
  if (!GTEST_FLAG_GET(list_tests) && !sorvan::test::becomeMounter()) {
    std::puts("Skipped: this machine lets no program mount a file system.");
    return skipped;
  }
  QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
