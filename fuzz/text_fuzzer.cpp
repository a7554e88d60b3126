// Texts counted, cut, searched and sorted: three lines are compared with each other.
#include "base/text.h"
#include "fuzz/reading.h"

namespace sorvan::fuzz {

using namespace base;

static void checkCuts(const QString& text, qsizetype count) {
  const qsizetype all = chars(text);
  require(all <= text.size() && (all > 0) == !text.isEmpty(), "a character has at least one unit");
  const QString start = firstChars(text, count);
  require(text.startsWith(start) && chars(start) == std::min(all, count), "a text is cut where it should be");
  const QString fitting = firstCharsWithinBytes(text, count);
  require(text.startsWith(fitting) && fitting.toUtf8().size() <= count, "a text is cut to its bytes");
}

static void checkFolded(const QString& text) {
  const QString folded = foldForSearch(text);
  require(foldForSearch(folded) == folded, "what is folded stays as it is");
}

static void checkOrder(const QString& one, const QString& two, const QString& three) {
  require(naturalCompare(one, one) == 0, "a text is equal to itself");
  require(naturalCompare(one, two) == -naturalCompare(two, one), "an order turns with its texts");
  require((naturalCompare(one, two) == 0) == (one.toUcs4() == two.toUcs4()), "only the same text is equal");
  if (naturalLess(one, two) && naturalLess(two, three)) require(naturalLess(one, three), "an order goes on");
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan::fuzz;
  Input input(data, size);
  const auto count = input.byte();
  const QStringList lines = input.lines();
  checkCuts(input.text(), count);
  checkFolded(input.text());
  checkOrder(lines.value(0), lines.value(1), lines.value(2));
  checkOrder(lines.value(2), lines.value(0), lines.value(1));
  return 0;
}
