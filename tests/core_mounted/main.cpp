#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cstdio>

#include "mounted_disk.h"

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
