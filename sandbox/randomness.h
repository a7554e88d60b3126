// Numbers that follow from a seed: the same on every run.
#pragma once
#include <QString>
#include <QtGlobal>

namespace sandbox {

// One step of a well-mixing 64-bit permutation (splitmix64).
constexpr quint64 mixed(quint64 value) {
  value += 0x9e3779b97f4a7c15ULL;
  value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9ULL;
  value = (value ^ (value >> 27)) * 0x94d049bb133111ebULL;
  return value ^ (value >> 31);
}
constexpr quint64 mixed(quint64 a, quint64 b) { return mixed(a ^ mixed(b)); }

// FNV-1a over the UTF-16 units.
inline quint64 hashOf(const QString& text) {
  quint64 hash = 0xcbf29ce484222325ULL;
  for (const QChar unit : text) hash = (hash ^ unit.unicode()) * 0x100000001b3ULL;
  return mixed(hash);
}

class Randomness {
 public:
  explicit Randomness(quint64 seed) : state_(mixed(seed)) {}
  quint64 next() { return mixed(state_++); }
  double unit() { return double(next() >> 11) * 0x1.0p-53; }  // 0 ≤ x < 1
  double between(double low, double high) { return low + (high - low) * unit(); }
  int below(int limit) { return int(next() % quint64(limit)); }

 private:
  quint64 state_;
};

}  // namespace sandbox
