#include "base/invariant.h"

#include <QtGlobal>

namespace sorvan::base {

void invariantBroken(const char* what, const std::source_location& where) {
  qFatal("%s:%u: this must hold: %s", where.file_name(), static_cast<unsigned>(where.line()), what);
}

}  // namespace sorvan::base
