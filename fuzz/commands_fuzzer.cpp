// Commands: what a text asks for, what a remote interpreter answers, and the names that are offered and given while a
// prompt is typed. The first line is the text, the second an answer in JSON, each further one a label.
#include "base/json.h"
#include "base/text.h"
#include "composer/local_intent_parser.h"
#include "composer/mention_completion.h"
#include "composer/reference_names.h"
#include "composer/remote_action.h"
#include "composer/submission.h"
#include "fuzz/reading.h"
#include "generation/mentions.h"

namespace sorvan::fuzz {

using namespace Qt::StringLiterals;
using namespace composer;
using generation::ReferenceMentions;

/// The words that an intent takes from the text, where it takes any.
static std::optional<QString> takenFrom(const SorvanIntent& intent) {
  if (const auto* made = std::get_if<GenerationInstruction>(&intent)) return made->prompt;
  if (const auto* search = std::get_if<SearchAssets>(&intent)) return search->query;
  if (const auto* move = std::get_if<MoveAssets>(&intent)) return move->project;
  if (const auto* project = std::get_if<CreateProject>(&intent)) return project->name;
  return std::nullopt;
}

static void checkText(const QString& text) {
  const QString trimmed = text.trimmed();
  const SorvanIntent intent = LocalIntentParser::parse(text);
  require(LocalIntentParser::parse(trimmed) == intent, "white space around a text means nothing");
  require(!label(intent).isEmpty() && !presentationKey(intent).isEmpty(), "every intent has a name");
  const auto words = takenFrom(intent);
  require(!words || trimmed.contains(*words), "an intent takes the words as they were typed");
  const auto* made = std::get_if<GenerationInstruction>(&intent);
  require(!made || trimmed.endsWith(made->prompt), "a prompt loses its beginning only");
  require(!made || !made->count || *made->count >= 1, "a count is at least one");
  require(LocalIntentParser::parse(text, ComposerMode::generation) ==
              SorvanIntent(GenerationInstruction{trimmed, {}, false, core::RelationshipType::referenceFor}),
          "a prompt is never read as a command");
  require(!std::holds_alternative<GenerationInstruction>(LocalIntentParser::parse(text, ComposerMode::command)),
          "a command never generates");
  const auto seed = readOrRefused([&] { return readSeed(text); });
  require(!seed || !*seed || **seed >= 0, "a seed is not negative");
}

static void checkBounds(const SorvanIntent& intent) {
  const auto words = takenFrom(intent);
  require(!words || (!base::isBlank(*words) && base::chars(*words) <= 8000), "a text of an answer has its bounds");
  if (const auto* made = std::get_if<GenerationInstruction>(&intent))
    require(!made->count || (*made->count >= 1 && *made->count <= 4), "an answer asks for one to four outputs");
  if (const auto* filter = std::get_if<CompoundAssetFilter>(&intent))
    require(!filter->days || (*filter->days >= 1 && *filter->days <= 3650), "an answer asks for at most ten years");
}

static void checkAnswer(const QString& line) {
  const auto action = readOrRefused([&] { return base::decodeJson<RemoteAppAction>(line.toUtf8()); });
  if (!action) return;
  require(base::decodeJson<RemoteAppAction>(base::encodeJson(*action)) == *action, "an answer reads back equal");
  require(action->summary().left(action->action.size()) == action->action, "the review begins with the action");
  if (const auto intent = readOrRefused([&] { return action->intent(); })) checkBounds(*intent);
}

static void checkTyping(const QString& text, const QString& handle) {
  for (qsizetype cursor = 0; cursor <= std::min<qsizetype>(text.size(), 200); ++cursor) {
    const auto mention = typedMention(text, cursor);
    if (!mention) continue;
    require(text[mention->start] == u'@' && mention->end == cursor &&
                text.sliced(mention->start + 1, cursor - mention->start - 1) == mention->name,
            "what is typed stands between the @ and the cursor");
    const CompletedText done = completed(text, *mention, handle);
    require(done.text.first(done.cursor).endsWith(u'@' + handle), "the cursor stands behind the name");
    require(done.text.size() - text.size() == handle.size() - mention->name.size(), "nothing else is replaced");
  }
}

static void checkNames(const QStringList& labels, const QString& draft) {
  std::vector<core::ReferenceBinding> bindings;
  std::vector<QUuid> ids;
  for (const QString& label : labels) {
    ids.push_back(QUuid::createUuidV5(QUuid(), QString::number(ids.size())));
    // Every third picture has no name yet.
    if (ids.size() % 3 != 0) bindings.push_back({ids.back(), label, {}, {}, {}});
  }
  const auto named = synchronizedNames(bindings, ids, draft);
  require(synchronizedNames(named, ids, draft) == named, "names that are there stay");
  require(named.size() == ids.size(), "every picture has one name");
  const NamedReferences anew = namesForNewPrompt(named, draft);
  require(anew.bindings.size() == named.size(), "no name is lost");
  const auto fits = readOrRefused([&] { return ReferenceMentions::resolve(QString(), named); });
  const auto stillFits = readOrRefused([&] { return ReferenceMentions::resolve(QString(), anew.bindings); });
  require(!fits || stillFits, "names that fitted still fit when they are numbered anew");
  require(namesForNewPrompt(anew.bindings, anew.draft) == anew, "numbering twice changes nothing");
}

}  // namespace sorvan::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sorvan::fuzz;
  const QStringList lines = Input(data, size).lines();
  const QStringList labels = lines.mid(2, 12);
  checkText(lines.first());
  checkAnswer(lines.value(1));
  checkTyping(lines.first(), sorvan::generation::handleOfLabel(labels.value(0)));
  checkNames(labels, lines.first());
  return 0;
}
