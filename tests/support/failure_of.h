// The message of what a piece of code throws.
#pragma once

#include <stdexcept>

#include <QString>

#include "base/sorvan_error.h"

namespace sorvan::test {

// The sentence of the SorvanError that `work` throws; a text of its own when it throws nothing. Anything else that is
// thrown goes on.
template <class Work>
QString failureOf(Work work) {
  try {
    work();
  } catch (const sorvan::base::SorvanError& failure) {
    return failure.message();
  }
  return QStringLiteral("(nothing was thrown)");
}

}  // namespace sorvan::test
