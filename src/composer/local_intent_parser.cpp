#include "composer/local_intent_parser.h"

#include <QHash>

#include "base/invariant.h"
#include "base/text.h"
#include "composer/command_texts.h"

namespace sorvan::composer {

using namespace Qt::StringLiterals;

namespace {

/// A pattern of ours that does not compile is a mistake in this file.
QRegularExpression compiled(const QString& pattern) {
  QRegularExpression expression(
      pattern, QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
  invariant(expression.isValid(), "a pattern of the commands does not compile");
  expression.optimize();
  return expression;
}

struct Patterns {
  QRegularExpression createProject = compiled(u"^(?:create|add|make) (?:a )?(?:new )?project (?:called|named) (.+)$"_s);
  QRegularExpression move =
      compiled(u"^move (?:the )?(?:selected (?:images|assets|media)|these(?: images| assets| media)?) to (.+)$"_s);
  QRegularExpression find = compiled(u"^(?:find|search for|search) (?:my |all )?(.+)$"_s);
  QRegularExpression mediaWordAtEnd = compiled(u"\\s+(images|photos|media)$"_s);
  QRegularExpression remove = compiled(
      u"^remove (?:all (?:my |the )?(?:images|photos|assets|media|files|projects)"
      "|(?:the )?selected (?:images|photos|assets|media|files)"
      "|these (?:images|photos|assets|media|files)"
      "|(?:the )?(?:images|photos|assets|media|files) from (?:my |the )?(?:library|workspace|project|contact sheet)"
      "|(?:the )?(?:project|contact sheet|folder)\\b)(?:\\s.*)?$"_s);
  QRegularExpression count =
      compiled(u"^(?:generate|create|draw|make)\\s+([1-9][0-9]*|one|two|three|four|five|six|seven|eight)\\b"_s);
  QRegularExpression countAndVerb =
      compiled(u"^(generate|create|draw|make)\\s+([0-9]+|one|two|three|four|five|six|seven|eight)\\s+"_s);
  QRegularExpression verb = compiled(u"^(generate|create|draw)\\s+"_s);
};

const Patterns& patternTable() {
  static const Patterns table;
  return table;
}

using Words = std::initializer_list<QStringView>;
using Result = std::optional<SorvanIntent>;

bool startsWithAny(const QString& text, Words beginnings) {
  return std::any_of(beginnings.begin(), beginnings.end(), [&](QStringView word) { return text.startsWith(word); });
}

bool isAny(const QString& text, Words words) {
  return std::any_of(words.begin(), words.end(), [&](QStringView word) { return text == word; });
}

bool containsAny(const QString& text, Words words) {
  return std::any_of(words.begin(), words.end(), [&](QStringView word) { return text.contains(word); });
}

/// One text on its way through the rules.
struct Text {
  QString trimmed;
  QString lower;
};

std::optional<QString> capture(const QRegularExpression& pattern, const QString& text) {
  const auto match = pattern.match(text);
  if (!match.hasMatch()) return std::nullopt;
  return match.captured(1);
}

using StatusPhrases = QHash<QString, SorvanIntent>;

/// Whole sentences that say a status, made once.
const StatusPhrases& statusPhrases() {
  static const StatusPhrases phrases = [] {
    StatusPhrases made;
    for (const AssetStatus status : allAssetStatuses) {
      const QString word = rawValue(status);
      for (const QString& phrase : {u"mark selected as "_s + word, u"mark these as "_s + word, word + u" selected"_s})
        made.insert(phrase, SetAssetStatus{status});
      for (const QString& phrase : {u"show %1 images"_s.arg(word), u"show %1 media"_s.arg(word)})
        made.insert(phrase, FilterAssets{status});
    }
    made.insert(u"reject selected"_s, SetAssetStatus{AssetStatus::rejected});
    made.insert(u"reject these"_s, SetAssetStatus{AssetStatus::rejected});
    return made;
  }();
  return phrases;
}

/// 1. to 3. Nothing at all, and sentences that are known whole.
Result wholeSentence(const Text& text) {
  if (text.lower.isEmpty()) return Unknown{texts::describeOrCommand()};
  const auto found = statusPhrases().constFind(text.lower);
  if (found == statusPhrases().cend()) return std::nullopt;
  return *found;
}

/// 4. and 5. Commands that name a project.
Result projectCommand(const Text& text) {
  const Patterns& table = patternTable();
  if (startsWithAny(text.lower, {u"create ", u"add ", u"make "}))
    if (auto name = capture(table.createProject, text.trimmed)) return CreateProject{*name};
  if (text.lower.startsWith(u"move "))
    if (auto name = capture(table.move, text.trimmed)) return MoveAssets{*name};
  return std::nullopt;
}

/// 6. to 10. What is done with the selection, and where one goes.
Result selectionCommand(const Text& text) {
  const QString& lower = text.lower;
  if (startsWithAny(lower, {u"favorite selected", u"favorite these", u"favorite the selected", u"favourite these",
                            u"favorite selection"}))
    return FavoriteAssets{true};
  if (lower.startsWith(u"unfavorite ") ||
      isAny(lower, {u"remove favorites", u"remove favorites from selected", u"remove favorites from selected images"}))
    return FavoriteAssets{false};
  if (isAny(lower, {u"compare", u"compare these"}) ||
      startsWithAny(lower, {u"compare the selected", u"compare selected"}))
    return CompareAssets{};
  if (startsWithAny(lower, {u"show ", u"view "}) && lower.contains(u"lineage")) return ShowLineage{};
  if (isAny(lower, {u"show gallery", u"show all media", u"show all images", u"back to gallery"})) return ShowGallery{};
  return std::nullopt;
}

/// 11. and 12. Filters.
Result filterCommand(const Text& text) {
  const QString& lower = text.lower;
  if (startsWithAny(lower, {u"find ", u"show "}) && lower.contains(u"last week")) {
    if (lower.contains(u"generate")) return FilterAssets{GeneratedLastWeek{}};
    return Unknown{texts::tryLastWeek()};
  }
  if (!startsWithAny(lower, {u"show ", u"filter "})) return std::nullopt;
  if (lower.contains(u"flux")) return FilterAssets{ModelFilter{u"flux"_s}};
  if (containsAny(lower, {u"gpt", u"openai"})) return FilterAssets{ModelFilter{u"gpt-image"_s}};
  if (containsAny(lower, {u"favorite", u"favourite"})) return FilterAssets{FavoritesFilter{}};
  if (lower.contains(u"video")) return FilterAssets{MediaType::video};
  if (lower.contains(u"image")) return FilterAssets{MediaType::image};
  return std::nullopt;
}

/// 13. A search by words.
Result searchCommand(const Text& text) {
  if (!startsWithAny(text.lower, {u"find ", u"search "})) return std::nullopt;
  auto words = capture(patternTable().find, text.trimmed);
  if (!words) return std::nullopt;
  return SearchAssets{words->remove(patternTable().mediaWordAtEnd)};
}

/// 14. to 16. What the composer does not do.
Result refusedCommand(const Text& text) {
  const QString& lower = text.lower;
  const bool makes = startsWithAny(lower, {u"generate ", u"create ", u"draw ", u"make ", u"turn ", u"animate "});
  if (makes && (lower.startsWith(u"animate ") || containsAny(lower, {u" video", u" audio", u" music"})))
    return Unsupported{texts::noVideoOrAudio()};
  if (lower.startsWith(u"remove ") && patternTable().remove.match(text.trimmed).hasMatch())
    return Unknown{texts::useMoveToTrash()};
  if (startsWithAny(lower,
                    {u"mark ", u"reject ", u"delete ", u"move ", u"rename ", u"export ", u"open ", u"run ", u"execute ",
                     u"show ", u"filter ", u"compare ", u"favorite ", u"create a new project", u"/"}))
    return Unknown{texts::commandNotSupported()};
  return std::nullopt;
}

/// A number in digits, or a word from one to eight.
std::optional<std::int64_t> readCount(const QString& text) {
  bool reads = false;
  const qlonglong number = text.toLongLong(&reads);
  if (reads) return number;
  static const QStringList words{u"one"_s,  u"two"_s, u"three"_s, u"four"_s,
                                 u"five"_s, u"six"_s, u"seven"_s, u"eight"_s};
  const qsizetype index = words.indexOf(text.toLower());
  if (index < 0) return std::nullopt;
  return index + 1;
}

/// 17. Everything else is a prompt. Its leading verb goes, except a "make" without a number: "make it rain" means that.
GenerationInstruction instruction(const Text& text) {
  GenerationInstruction made;
  made.usesSelection = containsAny(text.lower, {u"selected image", u"current image", u"this image"});
  made.relationship = made.usesSelection ? RelationshipType::editedFrom : RelationshipType::referenceFor;
  if (text.lower.contains(u"variation")) made.relationship = RelationshipType::variationOf;
  made.prompt = text.trimmed;
  if (!startsWithAny(text.lower, {u"generate", u"create", u"draw", u"make"})) return made;
  if (const auto number = capture(patternTable().count, text.trimmed)) {
    made.count = readCount(*number);
    made.prompt.remove(patternTable().countAndVerb);
  } else {
    made.prompt.remove(patternTable().verb);
  }
  return made;
}

}  // namespace

SorvanIntent LocalIntentParser::parse(const QString& text, ComposerMode mode) {
  if (mode == ComposerMode::generation)
    return GenerationInstruction{text.trimmed(), std::nullopt, false, RelationshipType::referenceFor};
  SorvanIntent intent = parse(text);
  if (std::holds_alternative<GenerationInstruction>(intent)) return Unknown{texts::enterCommand()};
  return intent;
}

SorvanIntent LocalIntentParser::parse(const QString& text) {
  const QString trimmed = text.trimmed();
  const Text read{trimmed, lowered(trimmed)};
  for (const auto rule :
       {wholeSentence, projectCommand, selectionCommand, filterCommand, searchCommand, refusedCommand})
    if (Result intent = rule(read)) return *std::move(intent);
  return instruction(read);
}

std::vector<const QRegularExpression*> LocalIntentParser::patterns() {
  const Patterns& table = patternTable();
  return {&table.createProject, &table.move,  &table.find,         &table.mediaWordAtEnd,
          &table.remove,        &table.count, &table.countAndVerb, &table.verb};
}

}  // namespace sorvan::composer
