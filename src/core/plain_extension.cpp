#include "core/plain_extension.h"

#include <algorithm>

namespace sorvan::core {

static constexpr qsizetype longestExtensionChars = 16;
static constexpr qsizetype longestExtensionBytes = 32;

bool isPlainExtension(const QString& ext) {
  if (ext.isEmpty() || ext.size() > longestExtensionChars || ext.toUtf8().size() > longestExtensionBytes) return false;
  const auto letters = ext.toUcs4();
  return std::all_of(letters.begin(), letters.end(), [](char32_t letter) { return QChar::isLetterOrNumber(letter); });
}

}  // namespace sorvan::core
