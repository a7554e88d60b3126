// The JSON codec itself: documents of any shape, and each kind of value that it knows.
#include <map>
#include <set>
#include <variant>

#include <boost/describe.hpp>

#include "base/instant.h"
#include "fuzz/stored_value.h"

namespace sorvan::fuzz {

enum class Colour { red, green, blue_ };
BOOST_DESCRIBE_ENUM(Colour, red, green, blue_)

struct Square {
  double side = 0;
  bool operator==(const Square&) const = default;
};
BOOST_DESCRIBE_STRUCT(Square, (), (side))
struct Nothing {
  bool operator==(const Nothing&) const = default;
};
BOOST_DESCRIBE_STRUCT(Nothing, (), ())

struct Everything {
  bool flag = false;
  int number = 0;
  std::int64_t large = 0;
  std::uint8_t small = 0;
  double fraction = 0;
  QString text;
  QByteArray bytes;
  QUuid id;
  base::Instant moment;
  Colour colour = Colour::red;
  std::optional<QUrl> address;
  std::optional<QJsonValue> anything;
  std::vector<QString> list;
  std::set<QString> names;
  std::map<QString, int> counts;
  QHash<QUuid, QString> byId;
  base::ClosedRange<int> range;
  std::variant<Nothing, Square> shape;
  bool operator==(const Everything&) const = default;
};
BOOST_DESCRIBE_STRUCT(Everything, (),
                      (flag, number, large, small, fraction, text, bytes, id, moment, colour, address, anything, list,
                       names, counts, byId, range, shape))

}  // namespace sorvan::fuzz

template <>
struct sorvan::base::JsonDefaulted<sorvan::fuzz::Everything> {
  static constexpr std::array<std::string_view, 9> keys{"flag",   "large", "small", "list", "names",
                                                        "counts", "byId",  "range", "shape"};
};
template <>
struct sorvan::base::JsonCases<std::variant<sorvan::fuzz::Nothing, sorvan::fuzz::Square>> {
  static constexpr std::array<std::string_view, 2> names{"nothing", "square"};
};

namespace sorvan::fuzz {

static void readDocument(const QByteArray& bytes) {
  const auto document = readOrRefused([&] { return base::parseJson(bytes); });
  if (!document) return;
  for (const auto form : {base::JsonForm::Compact, base::JsonForm::Indented}) {
    const auto again = readOrRefused([&] { return base::parseJson(base::jsonText(*document, form)); });
    require(again == document, "a document that was written reads back equal");
  }
  require(!readOrRefused([&] { return base::parseJson(bytes, bytes.size() - 1); }), "what is too large is refused");
}

static void readMoment(const QString& text) {
  const auto moment = base::instantFromIso(text);
  if (!moment) return;
  const auto again = base::instantFromIso(base::isoText(*moment));
  require(!again || *again <= *moment, "a moment's text never lies after it");
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan::fuzz;
  const Input input(data, size);
  readDocument(input.rest());
  readTwice<Everything>(input.rest());
  readMoment(input.text());
  return 0;
}
