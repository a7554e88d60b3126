#include "base/json.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "support/failure_of.h"
#include "support/text_printers.h"

namespace sorvan::test {
using namespace sorvan::base;

enum class Colour { red, green, none_ };
BOOST_DESCRIBE_ENUM(Colour, red, green, none_)
enum class Role { referenceFor, editOf };
}  // namespace sorvan::test

template <>
struct sorvan::base::EnumText<sorvan::test::Role> {
  static constexpr std::array<std::pair<sorvan::test::Role, const char*>, 2> rows{
      {{sorvan::test::Role::referenceFor, "reference-for"}, {sorvan::test::Role::editOf, "edit-of"}}};
  static constexpr auto fallback = sorvan::test::Role::referenceFor;
};

namespace sorvan::test {

struct Inner {
  QString name;
  std::optional<int> count;
  friend bool operator==(const Inner&, const Inner&) = default;
};
BOOST_DESCRIBE_STRUCT(Inner, (), (name, count))

struct Everything {
  QUuid id;
  QString text;
  bool flag = false;
  int small = 0;
  qint64 large = 0;
  double real = 0;
  QByteArray bytes;
  QUrl url;
  Instant date;
  Colour colour = Colour::red;
  Role role = Role::referenceFor;
  Inner inner;
  std::vector<Inner> list;
  std::map<QString, QString> options;
  std::map<QUuid, Inner> byID;
  std::optional<QString> maybeText;
  std::optional<Inner> maybeInner;
  std::optional<ClosedRange<int>> range;
  friend bool operator==(const Everything&, const Everything&) = default;
};
BOOST_DESCRIBE_STRUCT(Everything, (),
                      (id, text, flag, small, large, real, bytes, url, date, colour, role, inner, list, options, byID,
                       maybeText, maybeInner, range))

struct Dimensions {
  QString field;
  friend bool operator==(const Dimensions&, const Dimensions&) = default;
};
BOOST_DESCRIBE_STRUCT(Dimensions, (), (field))
struct Nothing {
  friend bool operator==(const Nothing&, const Nothing&) = default;
};
BOOST_DESCRIBE_STRUCT(Nothing, (), ())
using Sizing = std::variant<Dimensions, Nothing>;

struct Defaulted {
  QString name;
  int default_ = 7;
};
BOOST_DESCRIBE_STRUCT(Defaulted, (), (name, default_))

struct Derived : Inner {
  bool more = false;
};
BOOST_DESCRIBE_STRUCT(Derived, (Inner), (more))

}  // namespace sorvan::test

template <>
struct sorvan::base::JsonCases<sorvan::test::Sizing> {
  static constexpr std::array<std::string_view, 2> names{"dimensions", "none"};
};
template <>
struct sorvan::base::JsonDefaulted<sorvan::test::Defaulted> {
  static constexpr std::array<std::string_view, 1> keys{"default_"};
};

namespace rc {
template <>
struct Arbitrary<QString> {
  static Gen<QString> arbitrary() {
    // Valid text: any code point but the surrogates.
    const auto point = gen::distinctFrom(gen::inRange<char32_t>(0, 0x110000), U'\0');
    return gen::map(gen::container<std::u32string>(point), [](const std::u32string& points) {
      QString text;
      for (const char32_t c : points)
        if (c < 0xD800 || c > 0xDFFF) text += QString::fromUcs4(&c, 1);
      return text;
    });
  }
};
template <>
struct Arbitrary<QByteArray> {
  static Gen<QByteArray> arbitrary() {
    return gen::map(gen::arbitrary<std::string>(), [](const std::string& s) { return QByteArray::fromStdString(s); });
  }
};
template <>
struct Arbitrary<QUuid> {
  static Gen<QUuid> arbitrary() {
    return gen::map(gen::arbitrary<std::array<uchar, 16>>(), [](const std::array<uchar, 16>& bytes) {
      return QUuid::fromRfc4122(QByteArrayView(bytes.data(), 16));
    });
  }
};
template <>
struct Arbitrary<sorvan::test::Inner> {
  static Gen<sorvan::test::Inner> arbitrary() {
    return gen::build<sorvan::test::Inner>(
        gen::set(&sorvan::test::Inner::name),
        gen::set(&sorvan::test::Inner::count, gen::map(gen::arbitrary<std::pair<bool, int>>(), [](auto pair) {
          return pair.first ? std::optional<int>(pair.second) : std::nullopt;
        })));
  }
};
}  // namespace rc

namespace sorvan::test {

static Everything sample() {
  Everything all;
  all.id = QUuid::fromString(QStringLiteral("0a1b2c3d-0000-4000-8000-0123456789ab"));
  all.text = QStringLiteral("“x” – 👩‍👩‍👧 / \\ \" \n");
  all.flag = true;
  all.small = -3;
  all.large = 9007199254740993;
  all.real = 0.1;
  all.bytes = QByteArray("\0\1\xff", 3);
  all.url = QUrl(QStringLiteral("https://example.com/a%20b?c=d%2Fe"));
  all.date = {801234567.1234567};
  all.colour = Colour::none_;
  all.role = Role::editOf;
  all.inner = {QStringLiteral("in"), 4};
  all.list = {{QStringLiteral("one"), std::nullopt}, {QString(), 0}};
  all.options = {{QStringLiteral("a/b:c"), QStringLiteral("v")}};
  all.byID = {{all.id, {QStringLiteral("k"), 1}}};
  all.range = ClosedRange<int>{1, 10};
  return all;
}

TEST(JsonCodecs, ReadAnOddAddressAsTheOneThatIsWritten) {
  for (const char* text : {"##", "http###s://a.example/b", "a b%zz", "https://a.example/%2F?x=%23#y z", ""}) {
    const auto url = fromJson<QUrl>(QJsonValue(QString::fromLatin1(text)));
    EXPECT_EQ(fromJson<QUrl>(toJson(url)), url) << text;
  }
}

TEST(Json, ReadsBackEverythingItWrites) { EXPECT_EQ(decodeJson<Everything>(encodeJson(sample())), sample()); }

TEST(Json, KeysAreTheFieldNamesAndEmptyOptionalsAreLeftOut) {
  EXPECT_EQ(encodeJson(Inner{QStringLiteral("n"), {}}), R"({"name":"n"})");
  EXPECT_EQ(encodeJson(Inner{QStringLiteral("n"), 2}), R"({"count":2,"name":"n"})");
}

TEST(Json, WritesEachKindOfValueInItsOneForm) {
  const QJsonObject object = toJson(sample()).toObject();
  EXPECT_EQ(object[u"id"].toString(), QStringLiteral("0A1B2C3D-0000-4000-8000-0123456789AB"));
  EXPECT_EQ(object[u"bytes"].toString(), QStringLiteral("AAH/"));
  EXPECT_EQ(object[u"url"].toString(), QStringLiteral("https://example.com/a%20b?c=d%2Fe"));
  EXPECT_EQ(object[u"colour"].toString(), QStringLiteral("none"));
  EXPECT_EQ(object[u"role"].toString(), QStringLiteral("edit-of"));
  EXPECT_EQ(object[u"range"].toArray(), (QJsonArray{1, 10}));
  EXPECT_TRUE(encodeJson(sample()).contains("\"large\":9007199254740993"));
  EXPECT_TRUE(encodeJson(sample()).contains("\"date\":801234567.1234567"));
}

TEST(Json, AbsentAndNullAreBothReadAsEmpty) {
  EXPECT_EQ(decodeJson<Inner>(R"({"name":"n","count":null})").count, std::nullopt);
  EXPECT_EQ(decodeJson<Inner>(R"({"name":"n"})").count, std::nullopt);
}

TEST(Json, AMissingRequiredKeyIsNamed) {
  EXPECT_EQ(failureOf([] { decodeJson<Inner>(R"({"count":1})"); }), QStringLiteral("“name” is missing."));
  EXPECT_EQ(failureOf([] { decodeJson<Inner>(R"({"name":null})"); }), QStringLiteral("“name” is missing."));
  QJsonObject broken = toJson(sample()).toObject();
  broken[u"list"] = QJsonArray{toJson(Inner{}), QJsonObject()};
  EXPECT_EQ(failureOf([&] { fromJson<Everything>(broken); }), QStringLiteral("“list[1].name” is missing."));
}

TEST(Json, APresentOptionalOfTheWrongTypeIsAnError) {
  EXPECT_EQ(failureOf([] { decodeJson<Inner>(R"({"name":"n","count":"1"})"); }),
            QStringLiteral("“count” is not a whole number."));
  EXPECT_EQ(failureOf([] { decodeJson<Inner>(R"({"name":7})"); }), QStringLiteral("“name” is not a text."));
}

TEST(Json, UnknownKeysAreIgnored) {
  EXPECT_EQ(decodeJson<Inner>(R"({"name":"n","later":{"x":[1]}})"), (Inner{QStringLiteral("n"), {}}));
}

TEST(Json, WholeNumbersMayBeWrittenWithAPointButNotBeFractions) {
  EXPECT_EQ(decodeJson<Inner>(R"({"name":"","count":2.0})").count, 2);
  EXPECT_EQ(decodeJson<Inner>(R"({"name":"","count":2e1})").count, 20);
  EXPECT_THROW(decodeJson<Inner>(R"({"name":"","count":2.5})"), JsonError);
  EXPECT_THROW(decodeJson<Inner>(R"({"name":"","count":4294967296})"), JsonError);
  EXPECT_THROW(decodeJson<Inner>(R"({"name":"","count":1e300})"), JsonError);
  EXPECT_THROW(decodeJson<std::vector<quint16>>("[-1]"), JsonError);
  EXPECT_EQ(decodeJson<std::vector<qint64>>("[9223372036854775807,-9223372036854775808]"),
            (std::vector<qint64>{INT64_MAX, INT64_MIN}));
  EXPECT_THROW(decodeJson<std::vector<qint64>>("[9223372036854775808]"), JsonError);
}

TEST(Json, UuidsAreReadInAnyCase) {
  const QUuid id = sample().id;
  EXPECT_EQ(decodeJson<std::vector<QUuid>>(R"(["0a1B2c3d-0000-4000-8000-0123456789aB"])"), std::vector<QUuid>{id});
  EXPECT_THROW(decodeJson<std::vector<QUuid>>(R"(["0a1b2c3d"])"), JsonError);
  EXPECT_THROW(decodeJson<std::vector<QUuid>>(R"([""])"), JsonError);
  EXPECT_EQ(decodeJson<std::vector<QUuid>>(R"(["00000000-0000-0000-0000-000000000000"])"), std::vector<QUuid>{QUuid()});
}

TEST(Json, DatesAreReadFromNumbersAndFromIsoTexts) {
  const auto read = [](const char* text) { return decodeJson<std::vector<Instant>>(text).at(0).seconds; };
  EXPECT_EQ(read("[0]"), 0);
  EXPECT_EQ(read("[801234567.25]"), 801234567.25);
  EXPECT_EQ(read(R"(["2001-01-01T00:00:10Z"])"), 10);
  EXPECT_EQ(read(R"(["2001-01-01T02:00:10.5+02:00"])"), 10.5);
  EXPECT_THROW(read(R"(["yesterday"])"), JsonError);
  EXPECT_THROW(read("[true]"), JsonError);
}

TEST(Json, DictionariesByUuidAreAlsoReadFromAnAlternatingList) {
  const auto read = decodeJson<std::map<QUuid, int>>(R"(["0a1b2c3d-0000-4000-8000-0123456789ab",5])");
  EXPECT_EQ(read, (std::map<QUuid, int>{{sample().id, 5}}));
  EXPECT_EQ(encodeJson(read), R"({"0A1B2C3D-0000-4000-8000-0123456789AB":5})");
  EXPECT_THROW((decodeJson<std::map<QUuid, int>>(R"(["0a1b2c3d-0000-4000-8000-0123456789ab"])")), JsonError);
  EXPECT_THROW((decodeJson<std::map<QUuid, int>>(R"({"x":1})")), JsonError);
}

TEST(Json, RangesAreTwoNumbersInOrder) {
  using Ranges = std::vector<ClosedRange<int>>;
  EXPECT_EQ(decodeJson<Ranges>("[[1,10]]"), (Ranges{{1, 10}}));
  EXPECT_THROW(decodeJson<Ranges>("[[1]]"), JsonError);
  EXPECT_THROW(decodeJson<Ranges>("[[10,1]]"), JsonError);
}

TEST(Json, AnUnknownCaseFallsBackOnlyWhereThatIsDeclared) {
  EXPECT_EQ(decodeJson<std::vector<Role>>(R"(["from-the-future"])"), std::vector<Role>{Role::referenceFor});
  EXPECT_EQ(failureOf([] { decodeJson<std::vector<Colour>>(R"(["blue"])"); }),
            QStringLiteral("“[0]” is not one of the known values."));
  EXPECT_THROW(decodeJson<std::vector<Role>>("[1]"), JsonError);
}

TEST(Json, TaggedChoicesAreObjectsWithOneKey) {
  const std::vector<Sizing> both{Dimensions{QStringLiteral("image_size")}, Nothing{}};
  EXPECT_EQ(encodeJson(both), R"([{"dimensions":{"field":"image_size"}},{"none":{}}])");
  EXPECT_EQ(decodeJson<std::vector<Sizing>>(encodeJson(both)), both);
  EXPECT_THROW(decodeJson<std::vector<Sizing>>(R"([{"other":{}}])"), JsonError);
  EXPECT_THROW(decodeJson<std::vector<Sizing>>(R"([{"none":{},"dimensions":{"field":"x"}}])"), JsonError);
  EXPECT_THROW(decodeJson<std::vector<Sizing>>("[{}]"), JsonError);
}

TEST(Json, DefaultedMembersMayBeAbsent) {
  EXPECT_EQ(decodeJson<Defaulted>(R"({"name":"n"})").default_, 7);
  EXPECT_EQ(decodeJson<Defaulted>(R"({"name":"n","default":3})").default_, 3);
  EXPECT_EQ(encodeJson(Defaulted{}), R"({"default":7,"name":""})");
}

TEST(Json, MembersOfABaseBelongToTheObject) {
  Derived derived;
  derived.name = QStringLiteral("n");
  derived.more = true;
  EXPECT_EQ(encodeJson(derived), R"({"more":true,"name":"n"})");
  EXPECT_EQ(decodeJson<Derived>(R"({"more":true,"name":"n"})").name, QStringLiteral("n"));
}

TEST(Json, OneBadElementDoesNotCostTheOthers) {
  const QJsonArray array = parseJson(R"([{"name":"a"},{"name":1},7,{"name":"b"}])").toArray();
  EXPECT_EQ(fromJsonDroppingBad<Inner>(array),
            (std::vector<Inner>{{QStringLiteral("a"), {}}, {QStringLiteral("b"), {}}}));
}

TEST(Json, NumbersThatAreNotFiniteAreNeverWritten) {
  EXPECT_THROW(encodeJson(std::vector<double>{std::nan("")}), SorvanError);
  EXPECT_THROW(encodeJson(std::vector<Instant>{{INFINITY}}), SorvanError);
}

TEST(Json, HostileTextsAreErrorsAndNeverMore) {
  const QByteArray deep = QByteArray("[").repeated(200000);
  EXPECT_THROW(decodeJson<QJsonArray>(deep), JsonError);
  EXPECT_THROW(decodeJson<QJsonArray>(""), JsonError);
  EXPECT_THROW(decodeJson<QJsonArray>("[1,]"), JsonError);
  EXPECT_THROW(decodeJson<QJsonArray>(QByteArray("[\"\xff\xfe\"]")), JsonError);
  EXPECT_THROW(decodeJson<QJsonArray>("[1,2,3]", 6), JsonError);
  EXPECT_THROW(decodeJson<std::vector<QByteArray>>(R"(["!not base64!"])"), JsonError);
  const QString message = failureOf([] {
    fromJson<std::map<QString, int>>(QJsonObject{{QString(100000, u'k'), QStringLiteral("x")}});
  });
  EXPECT_LT(message.size(), 300);
}

TEST(Json, AnyDoubleReadsBackExactly) {
  const bool held = rc::check([](double value) {
    RC_PRE(std::isfinite(value));
    RC_ASSERT(decodeJson<std::vector<double>>(encodeJson(std::vector<double>{value})).at(0) == value);
  });
  EXPECT_TRUE(held);
}

TEST(Json, AnyStructReadsBackEqual) {
  const bool held = rc::check([](const std::vector<Inner>& list, const std::map<QUuid, QString>& dictionary,
                                 const QByteArray& bytes, qint64 whole) {
    RC_ASSERT(decodeJson<std::vector<Inner>>(encodeJson(list)) == list);
    RC_ASSERT((decodeJson<std::map<QUuid, QString>>(encodeJson(dictionary)) == dictionary));
    RC_ASSERT(decodeJson<std::vector<QByteArray>>(encodeJson(std::vector{bytes})).at(0) == bytes);
    RC_ASSERT(decodeJson<std::vector<qint64>>(encodeJson(std::vector{whole})).at(0) == whole);
  });
  EXPECT_TRUE(held);
}

TEST(Json, AnyBytesAreReadOrRefusedAndNeverCrash) {
  const QByteArray whole = encodeJson(sample());
  const bool held = rc::check([&](const std::string& rubbish) {
    const auto at = *rc::gen::inRange<qsizetype>(0, whole.size());
    const QByteArray damaged = QByteArray(whole).replace(at, 1, QByteArray::fromStdString(rubbish));
    try {
      decodeJson<Everything>(damaged);
    } catch (const JsonError& failure) {
      RC_ASSERT(!failure.message().isEmpty());
    }
  });
  EXPECT_TRUE(held);
}

}  // namespace sorvan::test
