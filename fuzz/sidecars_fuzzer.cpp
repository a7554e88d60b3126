// The files beside the library database; the first byte chooses which.
#include "core/ledger_values.h"
#include "fuzz/stored_value.h"

namespace sorvan::fuzz {

static void readDraft(const QByteArray& json) {
  const auto draft = readTwice<core::ComposerDraft>(json);
  if (draft) readTwice<core::GenerationRequest>(draft->request);
}

template <class Entry>
void readDated(const QByteArray& json) {
  const auto entries = readTwice<std::vector<Entry>>(json);
  if (!entries) return;
  for (const Entry& entry : *entries) {
    if constexpr (requires { entry.date; }) {
      require(base::isoText(entry.date).isEmpty() == !entry.date.toDateTime().isValid(), "a date can be shown");
    }
  }
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan;
  fuzz::Input input(data, size);
  switch (input.byte()) {
    case 'p':
      fuzz::readDated<core::PromptEntry>(input.rest());
      break;
    case 'c':
      fuzz::readDated<core::ExtraCharge>(input.rest());
      break;
    case 'a':
      fuzz::readTwice<QHash<QUuid, core::SavedAnalysis>>(input.rest());
      break;
    case 'd':
      fuzz::readDraft(input.rest());
      break;
    default:
      break;
  }
  return 0;
}
