#include "shell/byte_search.h"

#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace sorvan::shell {

#if defined(__SSE2__)

namespace {

constexpr std::size_t width = 16;

// A bit for each of sixteen places at which the first and the last byte of the needle stand where they should.
unsigned candidates(const char* at, std::size_t span, __m128i first, __m128i last) {
  const __m128i begins = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)), first);
  const __m128i ends = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at + span)), last);
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(begins, ends)));
}

}  // namespace

const char* findBytes(const char* text, std::size_t textSize, const char* needle, std::size_t needleSize) {
  if (needleSize == 0) return text;
  if (needleSize > textSize) return nullptr;
  if (needleSize == 1) return static_cast<const char*>(std::memchr(text, needle[0], textSize));
  const std::size_t span = needleSize - 1;
  const __m128i first = _mm_set1_epi8(needle[0]);
  const __m128i last = _mm_set1_epi8(needle[span]);
  std::size_t at = 0;
  for (; at + span + width <= textSize; at += width) {
    for (unsigned found = candidates(text + at, span, first, last); found != 0; found &= found - 1) {
      const char* place = text + at + std::countr_zero(found);
      if (std::memcmp(place + 1, needle + 1, span) == 0) return place;
    }
  }
  return static_cast<const char*>(memmem(text + at, textSize - at, needle, needleSize));
}

#else

const char* findBytes(const char* text, std::size_t textSize, const char* needle, std::size_t needleSize) {
  return static_cast<const char*>(memmem(text, textSize, needle, needleSize));
}

#endif

}  // namespace sorvan::shell
