#include "core/record_columns.h"

namespace sorvan::core {
namespace {

constexpr int uuidTextBytes = 36;
constexpr std::array<int, 4> hyphenPlaces{8, 13, 18, 23};
/// Where the two digits of each byte begin.
constexpr std::array<int, 16> digitPlaces{0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};

constexpr std::array<signed char, 256> hexDigits = [] {
  std::array<signed char, 256> values{};
  values.fill(-1);
  for (int digit = 0; digit < 10; ++digit)
    values[static_cast<std::size_t>('0' + digit)] = static_cast<signed char>(digit);
  for (int digit = 10; digit < 16; ++digit) {
    values[static_cast<std::size_t>('A' + digit - 10)] = static_cast<signed char>(digit);
    values[static_cast<std::size_t>('a' + digit - 10)] = static_cast<signed char>(digit);
  }
  return values;
}();

int hexDigit(char character) { return hexDigits[static_cast<unsigned char>(character)]; }

}  // namespace

// A library has several ids in each of its hundred thousands of rows, so this reads them without a branch for each
// digit.
QUuid uuidFromUtf8(const char* text, int bytes) {
  if (bytes != uuidTextBytes) return {};
  for (const int place : hyphenPlaces)
    if (text[place] != '-') return {};
  std::array<unsigned char, 16> value{};
  int anyBad = 0;
  for (std::size_t index = 0; index < value.size(); ++index) {
    const int high = hexDigit(text[digitPlaces[index]]);
    const int low = hexDigit(text[digitPlaces[index] + 1]);
    anyBad |= high | low;
    value[index] = static_cast<unsigned char>(high << 4 | low);
  }
  return anyBad < 0 ? QUuid() : QUuid::fromRfc4122(QByteArrayView(value.data(), static_cast<qsizetype>(value.size())));
}

QString SharedTexts::read(const char* text, int bytes) {
  constexpr int missesBeforeGivingUp = 1024;
  if (bytes == 0) return QString(QLatin1StringView(""));
  const bool gaveUp = misses_ > missesBeforeGivingUp && misses_ > hits_;
  if (bytes > longestShared || gaveUp) return QString::fromUtf8(text, bytes);

  const QByteArrayView utf8(text, bytes);
  Slot& slot = slots_[qHash(utf8) % slotCount];
  if (utf8 == slot.utf8) {
    ++hits_;
    return slot.text;
  }
  ++misses_;
  slot = {utf8.toByteArray(), QString::fromUtf8(text, bytes)};
  return slot.text;
}

void Column<std::vector<QUuid>>::read(sqlite3_stmt* row, int index, std::vector<QUuid>& value, SharedTexts&) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, index));
  try {
    value = decodeJson<std::vector<QUuid>>(QByteArray(text, sqlite3_column_bytes(row, index)));
  } catch (const SorvanError&) {
    // A list that does not decode reads as empty, as every damaged value of a record does.
    value.clear();
  }
}

}  // namespace sorvan::core
