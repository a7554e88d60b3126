#include <gtest/gtest.h>

#include <QCoreApplication>

// The tour has no window of its own.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
