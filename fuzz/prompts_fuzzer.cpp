// Prompts: mentions of pictures and notes of marked areas. The first line is the prompt, each further one a label, and
// the same lines are the notes.
#include "base/text.h"
#include "fuzz/reading.h"
#include "generation/markup.h"
#include "generation/mentions.h"

namespace sorvan::fuzz {

using namespace Qt::StringLiterals;
using generation::Markup;
using generation::ReferenceMentions;

static std::vector<core::ReferenceBinding> bindingsOf(const QStringList& labels) {
  std::vector<core::ReferenceBinding> bindings;
  for (const QString& label : labels) {
    core::ReferenceBinding binding;
    binding.label = label.section(u'|', 0, 0);
    if (label.count(u'|') > 0) binding.group = label.section(u'|', 1, 1);
    if (label.count(u'|') > 1) binding.role = label.section(u'|', 2, 2);
    if (label.count(u'|') > 2) binding.subject = label.section(u'|', 3);
    bindings.push_back(binding);
  }
  return bindings;
}

static void checkResolved(const QString& prompt, const std::vector<core::ReferenceBinding>& bindings) {
  const auto resolved = readOrRefused([&] { return ReferenceMentions::resolve(prompt, bindings); });
  if (!resolved) return;
  if (bindings.empty()) return require(*resolved == prompt, "a prompt without pictures is sent as it is");
  for (std::size_t index = 0; index < bindings.size(); ++index)
    require(resolved->contains(u"\nImage %1: "_s.arg(index + 1) + bindings[index].label),
            "the legend names every picture");
}

static void checkHandle(const QString& label) {
  const QString handle = generation::handleOfLabel(label);
  require(generation::handleOfLabel(handle) == handle, "a handle stays as it is");
  const auto match = ReferenceMentions::pattern().match(u'@' + handle);
  require(!match.hasMatch() || match.captured(1) == handle, "a handle that can be mentioned is mentioned whole");
  require(ReferenceMentions::replace(u"a @%1 b"_s.arg(handle), handle, u"fox"_s) ==
              (match.hasMatch() ? u"a fox b"_s : u"a @%1 b"_s.arg(handle)),
          "a mention is replaced, and nothing else");
}

static void checkDropped(const QString& original, const QString& rewrite) {
  require(ReferenceMentions::dropped(original, original).isEmpty(), "an unchanged prompt lost nothing");
  const QStringList lost = ReferenceMentions::dropped(original, rewrite);
  for (const QString& name : lost) require(original.contains(u'@' + name), "what was lost had been there");
  require(ReferenceMentions::dropped(original, rewrite + u" @"_s + lost.join(u" @"_s)).isEmpty(),
          "what is put back is no longer lost");
}

static void checkMarkup(const QString& prompt, const QStringList& notes) {
  std::vector<core::MarkupBox> boxes;
  for (const QString& note : notes) boxes.push_back({0, 0, 0.5, 0.5, note});
  const QString combined = Markup::prompt(prompt, boxes);
  for (const QString& note : notes) {
    QString plain = note.trimmed();
    if (plain.endsWith(u'.')) plain.chop(1);
    require(combined.contains(plain, Qt::CaseInsensitive), "every note stands in the prompt");
  }
  const QString instruction = Markup::instruction(boxes);
  require(instruction.isEmpty() == boxes.empty(), "boxes are explained where there are any");
  for (std::size_t index = 1; index <= boxes.size(); ++index)
    require(instruction.contains(u"\nBox %1: "_s.arg(index)), "every box is explained");
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan::fuzz;
  const QStringList lines = Input(data, size).lines();
  const QStringList others = lines.mid(1, 32);
  checkResolved(lines.first(), bindingsOf(others));
  for (const QString& label : others) checkHandle(label);
  checkDropped(lines.first(), others.join(u'\n'));
  checkMarkup(lines.first(), others);
  return 0;
}
