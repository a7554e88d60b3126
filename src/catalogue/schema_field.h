// One input field of a published schema, and what its values may be.
#pragma once

#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

#include "base/closed_range.h"
#include "catalogue/schema_document.h"

namespace sorvan::catalogue {

/// A value of a list, as text.
struct ListedValue {
  QString text;
  bool isNumber = false;
};

enum class ValueType { string, number, boolean, array };

class SchemaField {
 public:
  SchemaField(const SchemaDocument& document, QString name, Schema schema, bool required);

  const QString& name() const { return fieldName; }
  bool isRequired() const { return listed; }
  /// Whether the document describes the field at all.
  bool exists() const { return !places.front().isAbsent(); }

  /// Whether a value of this type may stand here: said by a type, by the listed values, or by nothing at all.
  bool accepts(ValueType type) const { return typeAnswer(type).value_or(exists() && !leadsNowhere()); }
  /// Whether any text may stand here.
  bool acceptsAnyText() const { return accepts(ValueType::string) && !list(); }
  /// Whether the document says so itself.
  bool declares(ValueType type) const { return typeAnswer(type).value_or(false); }
  /// Whether the field takes a width and a height.
  bool isImageSize() const;
  /// The field of one side, "width" or "height", where the document describes it.
  std::optional<SchemaField> side(std::string_view name) const;
  /// A list of texts, or a list of which the document does not say what it holds.
  bool isListOfTexts() const;
  /// Marked for another kind of media than pictures.
  bool isMarkedAsOtherMedia() const;

  /// The first list of values; a `const` is a list of one. Nothing without a list, or when one of it is no text.
  std::optional<QStringList> texts() const;
  /// The first list of values, texts and numbers; others are dropped.
  std::vector<ListedValue> textsAndNumbers() const;
  /// The first pair of bounds that are whole numbers and rise.
  std::optional<ClosedRange<qint64>> wholeRange() const;
  /// Each bound by itself.
  std::optional<double> lowest() const;
  std::optional<double> highest() const;
  /// What a number must be a multiple of, where the document says so.
  std::optional<double> step() const;
  /// Whether a number is a multiple of what the document asks for.
  bool isMultiple(double number) const;
  /// Whether the value is of an accepted type, listed where the field lists values, and within its bounds.
  bool takes(const json::value& value) const;
  /// The declared default as text: of a text, a number or a truth value.
  std::optional<QString> defaultText() const;
  /// A value that the service takes when the user chose none: the default, else the first listed, else the lower bound.
  std::optional<QJsonValue> fallback() const;
  /// The smallest of the sizes in bytes that the document names as limits.
  std::optional<qint64> byteLimit() const;
  /// Of a list: the fewest and the most elements.
  std::optional<int> count(std::string_view keyword) const;

 private:
  /// Whether it has variants of which none is there.
  bool leadsNowhere() const;
  std::optional<bool> typeAnswer(ValueType type) const;
  bool takesNumber(double number) const;
  const json::array* list() const;
  /// Each schema of the field and those of its elements.
  std::vector<Schema> withItems() const;

  const SchemaDocument* document;
  QString fieldName;
  bool listed;
  std::vector<Schema> places;  ///< the field itself, then its variants
  json::array onlyValue;       ///< the value of a `const`, as a list
};

/// A text as it is, a whole number as an integer; nothing for everything else.
std::optional<QString> valueText(const json::value& value);
QString textOf(std::string_view text);

}  // namespace sorvan::catalogue
