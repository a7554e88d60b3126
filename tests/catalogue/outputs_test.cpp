#include "catalogue/outputs.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

#include "base/sorvan_error.h"
#include "catalogue/room.h"

namespace sorvan::catalogue {
namespace {

using namespace Qt::StringLiterals;

QJsonObject parsed(const char* text) { return QJsonDocument::fromJson(text).object(); }

QString failure(const char* text, NamedParts parts = NamedParts::no) {
  try {
    outputAddresses(parsed(text), parts);
  } catch (const SorvanError& error) {
    return error.message();
  }
  return {};
}

TEST(Outputs, ReadsThePicturesInTheirOrder) {
  const auto found = outputAddresses(parsed(
      R"({"images":[{"url":"https://v3b.fal.media/a","content_type":"image/webp","file_size":12},
                    {"url":"https://v3b.fal.media/b.JPEG"},{"url":"https://v3b.fal.media/c"}],
          "video":{"url":"https://x.example/v.mp4"}})"));
  ASSERT_EQ(found.size(), 3u);
  EXPECT_EQ(found[0].ext, u"webp"_s);
  EXPECT_EQ(found[0].announcedBytes, 12);
  EXPECT_EQ(found[1].ext, u"jpeg"_s);
  EXPECT_EQ(found[2].ext, u"png"_s);
}

TEST(Outputs, TakesTheUsualExtensionWhereTheAddressEndsInNone) {
  for (const char* address : {"https://a.example/x.jpg!d", "https://a.example/x.p%00g", "https://a.example/x.p%0Ag",
                              "https://a.example/x.", "https://a.example/x.ppppppppppppppppppppppppppppppp"}) {
    const QJsonObject result{{u"image"_s, QJsonObject{{u"url"_s, QString::fromLatin1(address)}}}};
    EXPECT_EQ(outputAddresses(result)[0].ext, u"png"_s) << address;
  }
}

TEST(Outputs, ReadsTheSinglePlacesInTheirOrder) {
  EXPECT_EQ(outputAddresses(parsed(R"({"images":[],"image":{"url":"https://a.example/x"}})"))[0].ext, u"png"_s);
  EXPECT_EQ(outputAddresses(parsed(R"({"video":{"url":"https://a.example/x"}})"))[0].ext, u"mp4"_s);
  EXPECT_EQ(outputAddresses(parsed(R"({"audio":{"url":"https://a.example/x"}})"))[0].ext, u"mp3"_s);
  EXPECT_EQ(outputAddresses(parsed(R"({"audio_file":{"url":"https://a.example/x.wav"}})"))[0].ext, u"wav"_s);
  EXPECT_EQ(
      outputAddresses(parsed(R"({"audio":[{"url":"https://a.example/x"},{"url":"https://a.example/y"}]})")).size(), 2u);
}

TEST(Outputs, KnowsTheExtensionOfAContentTypeWithParameters) {
  EXPECT_EQ(extensionOfContentType(u"Audio/X-WAV; rate=1"_s), u"wav"_s);
  EXPECT_EQ(extensionOfContentType(u"model/gltf-binary"_s), std::nullopt);
}

TEST(Outputs, RefusesAnAddressThatIsNotHttps) {
  for (const char* url : {"http://a.example/x", "file:///etc/passwd", "data:image/png;base64,AA", "", "https://"}) {
    const QByteArray text = R"({"image":{"url":")" + QByteArray(url) + R"("}})";
    EXPECT_EQ(failure(text.constData()), u"Invalid output URL."_s) << url;
  }
  EXPECT_EQ(failure(R"({"image":{"url":7}})"), u"Invalid output URL."_s);
}

TEST(Outputs, SaysWhenThereAreNone) {
  EXPECT_EQ(failure("{}"), u"The provider returned no outputs."_s);
  EXPECT_EQ(failure(R"({"images":["https://a.example/x"]})"), u"The provider returned no outputs."_s);
  EXPECT_EQ(failure(R"({"vocals":{"url":"https://a.example/x"}})"), u"The provider returned no outputs."_s);
}

TEST(Outputs, TakesThePartsOfASplitSoundUnderTheirNames) {
  const auto parts = outputAddresses(parsed(R"({"vocals":{"url":"https://a.example/v.mp3"},"seed":1,
      "bass":{"url":"https://a.example/b.wav"},"note":{"text":"x"},"drums":{"url":"http://a.example/d"}})"),
                                     NamedParts::yes);
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_EQ(parts[0].label, u"bass"_s);
  EXPECT_EQ(parts[0].ext, u"wav"_s);
  EXPECT_EQ(parts[1].label, u"vocals"_s);
}

TEST(Outputs, DoesNotBelieveAListOfThousands) {
  QJsonArray images;
  for (int index = 0; index < 5000; ++index) images.append(QJsonObject{{u"url"_s, u"https://a.example/x"_s}});
  EXPECT_THROW(outputAddresses(QJsonObject{{u"images"_s, images}}), SorvanError);
}

}  // namespace
}  // namespace sorvan::catalogue
