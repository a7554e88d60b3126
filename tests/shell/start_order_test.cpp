#include "shell/start_order.h"

#include "base/sorvan_error.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace sorvan::shell {
namespace {

TEST(StartOrder, StepsRunInTheirOrderAndLaterOnesTakeTheirPlace) {
  StartOrder order;
  QStringList ran;
  const auto step = [&ran](const char* name) { return [&ran, name] { ran << QString::fromLatin1(name); }; };
  order.add(QStringLiteral("keys"), step("keys"));
  order.add(QStringLiteral("window"), step("window"));
  order.addBefore(QStringLiteral("window"), QStringLiteral("credits"), step("credits"));
  order.addBefore(QStringLiteral("nothing"), QStringLiteral("updates"), step("updates"));
  order.run([](const QString& problem) { ADD_FAILURE() << problem.toStdString(); });
  EXPECT_EQ(ran, (QStringList{QStringLiteral("keys"), QStringLiteral("credits"), QStringLiteral("window"),
                              QStringLiteral("updates")}));
  EXPECT_EQ(order.names().size(), 4u);
}

TEST(StartOrder, AStepThatFailsIsToldAndTheNextOnesStillRun) {
  StartOrder order;
  bool ran = false;
  QStringList told;
  order.add(QStringLiteral("bad"), [] { throw base::SorvanError(QStringLiteral("Planted.")); });
  order.add(QStringLiteral("good"), [&ran] { ran = true; });
  order.run([&told](const QString& problem) { told << problem; });
  EXPECT_TRUE(ran);
  EXPECT_EQ(told, QStringList{QStringLiteral("Planted.")});
}

}  // namespace
}  // namespace sorvan::shell
