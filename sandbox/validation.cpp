#include "validation.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

#include "schema_walk.h"

namespace sandbox {

namespace {

QString toText(std::string_view text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

// 7, 0.5: as a sentence tells a number.
QString numberText(double number) { return QString::number(number, 'g', 12); }

// 'a', 'b' or 'c'
QString listed(const json::array& values) {
  QStringList words;
  for (const json::value& value : values) {
    if (value.is_null()) continue;
    words.append(value.is_string() ? QStringLiteral("'%1'").arg(toText(value.get_string()))
                                   : QString::fromStdString(json::serialize(value)));
  }
  if (words.size() < 2) return words.join(QString());
  const QString last = words.takeLast();
  return words.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

class Validator {
 public:
  explicit Validator(const json::object& document) : walk_(document) {}

  void check(const json::object& schema, const json::value& value, const QJsonArray& place);
  const SchemaWalk& walk() const { return walk_; }
  QJsonArray takeProblems() { return std::move(problems_); }
  void note(const QString& type, const QString& message, const QJsonArray& place, const json::value& value,
            const QJsonObject& context = {});

 private:
  struct Rule {
    const char* keyword;
    const char* type;
    const char* sentence;
    const char* context;
    bool (*holds)(double value, double bound);
  };

  void checkVariants(const std::vector<json::object>& variants, const json::value& value, const QJsonArray& place);
  bool checkType(const json::object& schema, const json::value& value, const QJsonArray& place);
  void checkListedValues(const json::object& schema, const json::value& value, const QJsonArray& place);
  void checkNumber(const json::object& schema, const json::value& value, const QJsonArray& place);
  void checkText(const json::object& schema, const json::value& value, const QJsonArray& place);
  void checkList(const json::object& schema, const json::value& value, const QJsonArray& place);
  void checkObject(const json::object& schema, const json::value& value, const QJsonArray& place);
  void checkLength(const json::object& schema, qint64 length, const char* least, const char* most, const QString& what,
                   const QJsonArray& place, const json::value& value);

  SchemaWalk walk_;
  QJsonArray problems_;
};

void Validator::note(const QString& type, const QString& message, const QJsonArray& place, const json::value& value,
                     const QJsonObject& context) {
  QJsonObject problem{{QStringLiteral("loc"), place},
                      {QStringLiteral("msg"), message},
                      {QStringLiteral("type"), type},
                      {QStringLiteral("input"), plainValue(value)}};
  if (!context.isEmpty()) problem.insert(QStringLiteral("ctx"), context);
  problems_.append(problem);
}

QJsonArray below(QJsonArray place, const QJsonValue& part) {
  place.append(part);
  return place;
}

bool isNull(const json::object& schema) { return textIn(schema, "type") == "null"; }

// What a refused value of several variants is told by: the name of the type, or its kind.
QString tagOf(const json::object& variant) {
  const std::string reference = textIn(variant, "$ref");
  if (!reference.empty()) return toText(std::string_view(reference).substr(reference.rfind('/') + 1));
  if (const json::array* values = arrayIn(variant, "enum"))
    return QStringLiteral("literal[%1]").arg(listed(*values).replace(QStringLiteral(" or "), QStringLiteral(",")));
  const std::string type = textIn(variant, "type");
  if (type == "string") return QStringLiteral("str");
  if (type == "integer") return QStringLiteral("int");
  return toText(type);
}

void Validator::check(const json::object& schema, const json::value& value, const QJsonArray& place) {
  const json::object whole = walk_.resolved(schema);
  const json::value* nullable = whole.if_contains("nullable");
  if (value.is_null() && nullable && nullable->is_bool() && nullable->get_bool()) return;
  const std::vector<json::object> variants = walk_.variantsOf(whole);
  if (whole.contains("anyOf") || whole.contains("oneOf")) return checkVariants(variants, value, place);
  if (!checkType(whole, value, place)) return;
  checkListedValues(whole, value, place);
  if (value.is_number()) checkNumber(whole, value, place);
  if (value.is_string()) checkText(whole, value, place);
  if (value.is_array()) checkList(whole, value, place);
  if (value.is_object()) checkObject(whole, value, place);
}

// The first variant that fits decides; without one, every variant tells why it does not.
void Validator::checkVariants(const std::vector<json::object>& variants, const json::value& value,
                              const QJsonArray& place) {
  const auto meant = std::count_if(variants.begin(), variants.end(), [](const auto& each) { return !isNull(each); });
  const QJsonArray before = problems_;
  QJsonArray all = problems_;
  for (const json::object& variant : variants) {
    if (isNull(variant) && value.is_null()) return void(problems_ = before);
    if (isNull(variant)) continue;
    problems_ = before;
    check(variant, value, meant > 1 ? below(place, tagOf(variant)) : place);
    if (problems_.size() == before.size()) return;
    for (qsizetype i = before.size(); i < problems_.size(); ++i) all.append(problems_[i]);
  }
  problems_ = all;
}

bool isWhole(const json::value& value) {
  return value.is_int64() || value.is_uint64() ||
         (value.is_double() && value.get_double() == std::floor(value.get_double()));
}

bool Validator::checkType(const json::object& schema, const json::value& value, const QJsonArray& place) {
  struct Kind {
    const char* name;
    bool fits;
    const char* type;
    const char* message;
  };
  const std::string type = textIn(schema, "type");
  for (const Kind& kind :
       {Kind{"string", value.is_string(), "string_type", "Input should be a valid string"},
        Kind{"integer", value.is_number() && isWhole(value), "int_type", "Input should be a valid integer"},
        Kind{"number", value.is_number(), "float_type", "Input should be a valid number"},
        Kind{"boolean", value.is_bool(), "bool_type", "Input should be a valid boolean"},
        Kind{"array", value.is_array(), "list_type", "Input should be a valid list"},
        Kind{"object", value.is_object(), "model_attributes_type",
             "Input should be a valid dictionary or object to extract fields from"},
        Kind{"null", value.is_null(), "none_required", "Input should be None"}}) {
    if (type != kind.name || kind.fits) continue;
    note(QString::fromLatin1(kind.type), QString::fromLatin1(kind.message), place, value);
    return false;
  }
  return true;
}

void Validator::checkListedValues(const json::object& schema, const json::value& value, const QJsonArray& place) {
  json::array values;
  if (const json::array* list = arrayIn(schema, "enum")) values = *list;
  if (const json::value* only = schema.if_contains("const")) values.push_back(*only);
  if (values.empty() || std::find(values.begin(), values.end(), value) != values.end()) return;
  note(QStringLiteral("literal_error"), QStringLiteral("Input should be %1").arg(listed(values)), place, value,
       {{QStringLiteral("expected"), listed(values)}});
}

void Validator::checkNumber(const json::object& schema, const json::value& value, const QJsonArray& place) {
  static constexpr Rule rules[] = {
      {"minimum", "greater_than_equal", "Input should be greater than or equal to %1", "ge",
       [](double number, double bound) { return number >= bound; }},
      {"maximum", "less_than_equal", "Input should be less than or equal to %1", "le",
       [](double number, double bound) { return number <= bound; }},
      {"exclusiveMinimum", "greater_than", "Input should be greater than %1", "gt",
       [](double number, double bound) { return number > bound; }},
      {"exclusiveMaximum", "less_than", "Input should be less than %1", "lt",
       [](double number, double bound) { return number < bound; }},
      {"multipleOf", "multiple_of", "Input should be a multiple of %1", "multiple_of",
       [](double number, double step) { return std::abs(std::remainder(number, step)) < 1e-9; }}};
  for (const Rule& rule : rules) {
    const json::value* bound = schema.if_contains(rule.keyword);
    if (!bound || !bound->is_number()) continue;
    const double limit = bound->to_number<double>();
    if (rule.holds(value.to_number<double>(), limit)) continue;
    note(QString::fromLatin1(rule.type), QString::fromLatin1(rule.sentence).arg(numberText(limit)), place, value,
         {{QString::fromLatin1(rule.context), limit}});
  }
}

void Validator::checkLength(const json::object& schema, qint64 length, const char* least, const char* most,
                            const QString& what, const QJsonArray& place, const json::value& value) {
  const bool isText = value.is_string();
  const QString unit = isText ? QStringLiteral("characters") : QStringLiteral("items");
  const auto tell = [&](const char* keyword, const QString& type, const QString& word, const QString& context) {
    const qint64 bound = schema.at(keyword).to_number<qint64>();
    QString sentence = QStringLiteral("%1 should have %2 %3 %4").arg(what, word).arg(bound).arg(unit);
    if (!isText) sentence += QStringLiteral(" after validation, not %1").arg(length);
    note(isText ? QStringLiteral("string_") + type : type, sentence, place, value, {{context, bound}});
  };
  if (schema.contains(least) && length < schema.at(least).to_number<qint64>())
    tell(least, QStringLiteral("too_short"), QStringLiteral("at least"), QStringLiteral("min_length"));
  if (schema.contains(most) && length > schema.at(most).to_number<qint64>())
    tell(most, QStringLiteral("too_long"), QStringLiteral("at most"), QStringLiteral("max_length"));
}

// Lengths of texts count code points.
void Validator::checkText(const json::object& schema, const json::value& value, const QJsonArray& place) {
  const qint64 length = toText(value.get_string()).toUcs4().size();
  checkLength(schema, length, "minLength", "maxLength", QStringLiteral("String"), place, value);
}

void Validator::checkList(const json::object& schema, const json::value& value, const QJsonArray& place) {
  const json::array& list = value.get_array();
  checkLength(schema, qint64(list.size()), "minItems", "maxItems", QStringLiteral("List"), place, value);
  const json::object* items = objectIn(schema, "items");
  for (std::size_t i = 0; items && i < list.size(); ++i) check(*items, list[i], below(place, int(i)));
}

void Validator::checkObject(const json::object& schema, const json::value& value, const QJsonArray& place) {
  const json::object& object = value.get_object();
  const json::object* properties = objectIn(schema, "properties");
  if (const json::array* required = arrayIn(schema, "required"))
    for (const json::value& name : *required)
      if (!object.contains(name.as_string()))
        note(QStringLiteral("missing"), QStringLiteral("Field required"), below(place, toText(name.as_string())),
             value);
  const json::value* further = schema.if_contains("additionalProperties");
  for (const auto& [name, each] : object) {
    const json::object* property = properties ? objectIn(*properties, name) : nullptr;
    if (property)
      check(*property, each, below(place, toText(name)));
    else if (further && further->is_bool() && !further->get_bool())
      note(QStringLiteral("extra_forbidden"), QStringLiteral("Extra inputs are not permitted"),
           below(place, toText(name)), each);
  }
}

std::string typeOf(const SchemaWalk& walk, const json::object& property) {
  const json::object whole = walk.resolved(property);
  for (const json::object& variant : walk.variantsOf(whole)) {
    const std::string type = textIn(walk.resolved(variant), "type");
    if (type != "null") return type;
  }
  return {};
}

}  // namespace

QJsonValue plainValue(const json::value& value) {
  const std::string text = "[" + json::serialize(value) + "]";
  return QJsonDocument::fromJson(QByteArray::fromStdString(text)).array().first();
}

QJsonArray problemsOf(const json::object& document, const QByteArray& input) {
  json::error_code failure;
  const json::value body = json::parse(std::string_view(input.constData(), std::size_t(input.size())), failure);
  Validator validator(document);
  const QJsonArray place{QStringLiteral("body")};
  if (failure) {
    validator.note(QStringLiteral("json_invalid"), QStringLiteral("JSON decode error"), place, json::object());
  } else if (const json::object* schema = validator.walk().input()) {
    validator.check(*schema, body, place);
  }
  return validator.takeProblems();
}

std::vector<PublishedOutput> outputsOf(const json::object& document) {
  std::vector<PublishedOutput> outputs;
  const SchemaWalk walk(document);
  const json::object* schema = walk.output();
  if (!schema) return outputs;
  const json::object whole = walk.resolved(*schema);
  const json::object* properties = objectIn(whole, "properties");
  if (!properties) return outputs;
  const json::array* required = arrayIn(whole, "required");
  for (const auto& [name, property] : *properties) {
    const bool needed = required && std::find(required->begin(), required->end(), json::value(name)) != required->end();
    const std::string type = typeOf(walk, property.as_object());
    outputs.push_back({toText(name), needed, type == "array", type});
  }
  return outputs;
}

}  // namespace sandbox
