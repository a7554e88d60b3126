#include "core/inspection_line.h"

#include <gtest/gtest.h>

#include "base/checksum.h"
#include "support/made_clips.h"
#include "support/made_pictures.h"
#include "support/temporary_folder.h"

namespace sorvan::core {
namespace {

using namespace sorvan::test;

TEST(InspectionLines, OfAPictureHoldEveryKeyInOrder) {
  const TemporaryFolder folder;
  QImage clear(80, 48, QImage::Format_ARGB32);
  clear.fill(Qt::transparent);
  const QByteArray png = encoded(clear, "png");
  const QString path = folder.write(QStringLiteral("clear.png"), png);
  const InspectionLine line = inspectionLine(path);
  EXPECT_FALSE(line.failed);
  EXPECT_EQ(line.json,
            R"({"file":")" + path.toUtf8() + R"(","type":"image","width":80,"height":48,"duration":null,"fileSize":)" +
                QByteArray::number(png.size()) + R"(,"mimeType":"image/png","seeThrough":true,"checksum":")" +
                sha256Hex(png).toUtf8() + "\"}\n");
}

TEST(InspectionLines, OfASoundTellItsLength) {
  const TemporaryFolder folder;
  const QString path = folder / QStringLiteral("sound.wav");
  makeWav(path, 8000, 4000, [](int) { return 0; });
  EXPECT_TRUE(
      inspectionLine(path).json.contains(R"("type":"audio","width":0,"height":0,"duration":0.5,"fileSize":8044,)"));
}

TEST(InspectionLines, OfWhatIsNoMediaHoldTheFailure) {
  const TemporaryFolder folder;
  const QString path = folder.write(QStringLiteral("a \"quoted\" note.txt"), "hello");
  const InspectionLine line = inspectionLine(path);
  EXPECT_TRUE(line.failed);
  EXPECT_EQ(line.json, R"({"file":")" + folder.path().toUtf8() +
                           R"(/a \"quoted\" note.txt","error":"Unsupported media: a \"quoted\" note.txt"})" + "\n");
}

}  // namespace
}  // namespace sorvan::core
