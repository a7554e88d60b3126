#include "core/record_columns.h"

namespace sorvan::core {
namespace {

constexpr int uuidTextBytes = 36;

int hexDigit(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  if (character >= 'a' && character <= 'f') return character - 'a' + 10;
  return -1;
}

bool isHyphenPlace(int index) { return index == 8 || index == 13 || index == 18 || index == 23; }

}  // namespace

QUuid uuidFromUtf8(const char* text, int bytes) {
  if (bytes != uuidTextBytes) return {};
  std::array<unsigned char, 16> value{};
  std::size_t nibble = 0;
  for (int index = 0; index < uuidTextBytes; ++index) {
    if (isHyphenPlace(index)) {
      if (text[index] != '-') return {};
      continue;
    }
    const int digit = hexDigit(text[index]);
    if (digit < 0) return {};
    value[nibble / 2] = static_cast<unsigned char>(value[nibble / 2] << 4 | digit);
    ++nibble;
  }
  return QUuid::fromRfc4122(QByteArrayView(value.data(), static_cast<qsizetype>(value.size())));
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
