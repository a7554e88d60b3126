// What one model endpoint accepts and returns: complete enough to build a request for it.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>
#include <vector>

#include "base/closed_range.h"
#include "catalogue/room.h"
#include "core/records.h"
#include "generation/provider.h"

namespace sorvan::catalogue {

/// How output size is asked for.
struct SizeByDimensions {
  QString field;
  bool operator==(const SizeByDimensions&) const = default;
};
struct SizeByAspect {
  QString field;
  QStringList values;
  bool operator==(const SizeByAspect&) const = default;
};
struct SizeByName {
  QString field;
  QStringList values;
  bool operator==(const SizeByName&) const = default;
};
struct NoSizing {
  bool operator==(const NoSizing&) const = default;
};
using Sizing = std::variant<NoSizing, SizeByDimensions, SizeByAspect, SizeByName>;

/// How input media are sent.
struct SingleInput {
  QString field;
  bool required = false;
  bool operator==(const SingleInput&) const = default;
};
struct ListInput {
  QString field;
  bool required = false;
  bool operator==(const ListInput&) const = default;
};
struct NoInput {
  bool operator==(const NoInput&) const = default;
};
using ImageInput = std::variant<NoInput, SingleInput, ListInput>;

/// One control of a model.
struct Setting {
  enum class Kind { choice, number, toggle };

  QString field;  ///< body field; `a.b` writes key `b` of the nested object `a`
  QString label;
  Kind kind = Kind::choice;
  QStringList values;  ///< allowed values in display order; empty for a toggle
  std::optional<QString> defaultValue;
  std::optional<ClosedRange<qint64>> accepts;  ///< a number between these is valid although it is not in `values`
  std::optional<QString> onlyWith;             ///< counts only when the option of this field holds non-blank text
  std::optional<QStringList> numbers;          ///< those of `values` that the service wants as JSON numbers

  /// Whether `value` is a whole decimal number, with an optional sign, inside `accepts`.
  bool allows(const QString& value) const;
  /// Whether `value` may be sent: one of `values`, inside `accepts`, or for a toggle "true" or "false".
  bool isValid(const QString& value) const;
  bool operator==(const Setting&) const = default;
};

/// An extra text box that goes into the body as a field of its own.
struct TextInput {
  QString field;
  QString label;
  QString placeholder;
  bool required = false;
  int limit = 0;  ///< the most characters sent
  bool operator==(const TextInput&) const = default;
};

/// What each side of a picture may measure, in pixels.
struct SideBounds {
  int least = 1;
  int most = 1;
  int step = 1;  ///< each side is a multiple of it
  bool operator==(const SideBounds&) const = default;
};

/// The most pictures of one request to a model that takes a list of them.
inline constexpr int mostListInputs = 8;

struct FalModel {
  QString id;  ///< endpoint id, which is also the queue path and the key of the catalogue
  QString name;
  QString category;
  QString summary;
  MediaType output = MediaType::image;
  bool hasPrompt = true;
  std::optional<bool> promptRequired;  ///< absent means required; false: an empty prompt is left out of the body
  std::optional<std::vector<Setting>> settings;
  std::optional<QString> endImageField;
  int maxCount = 1;
  Sizing sizing;
  bool hasSeed = false;
  bool pngOutput = false;  ///< the body carries `output_format` = "png"
  ImageInput imageInput;
  std::optional<QString> defaultsJSON;  ///< a JSON object as text under every body
  std::optional<bool> camera;           ///< takes camera angles as numbers
  std::optional<bool> dialogue;         ///< the prompt is a speaker script, sent as `inputs`
  std::optional<QString> promptField;   ///< when it is not `prompt`
  std::optional<bool> videoInput;
  std::optional<int> promptLimit;       ///< the most characters of the prompt
  std::optional<bool> billedPerMinute;  ///< music is billed by started minute
  std::optional<int> billedEvery;       ///< billing step in seconds
  std::optional<bool> audioInput;
  std::optional<std::vector<TextInput>> texts;
  /// The most bytes of one input picture, where the service names a limit.
  std::optional<qint64> inputByteLimit;
  std::optional<int> minInputs;          ///< the fewest pictures that a list may have when it has any
  std::optional<int> maxInputs;          ///< the most pictures of a list, where the service names fewer than usual
  std::optional<SideBounds> sides;       ///< where the service takes not every size of the composer's table
  std::optional<bool> seedRequired;      ///< each request needs a seed, so one that has none is given a fresh one
  std::optional<bool> endImageRequired;  ///< a request without an end frame is refused

  /// What the composer and the job queue work with.
  ModelOption option() const;
  /// Whether the model would change the shape of an input picture of this many pixels.
  bool reshapes(int width, int height) const;
  /// The setting of a field, or null.
  const Setting* setting(const QString& field) const;
  /// The settings, none when there are none.
  std::vector<Setting> allSettings() const { return settings.value_or(std::vector<Setting>()); }
  /// The sizes of the composer's table that the model can be asked for by size, by ratio or by dimensions.
  QStringList editableSizes() const;

  bool operator==(const FalModel&) const = default;
};

/// The settings to show when one control drives several models at once.
std::vector<Setting> sharedSettings(const std::vector<FalModel>& models);

/// Whether a size value lets the model choose.
bool isFreeChoice(const QString& value);
/// The first value that lets the model choose, if any.
std::optional<QString> freeChoice(const QStringList& values);

/// One row of a recommendation or browse list, identified by `id`.
struct FalListing {
  QString id;
  QString name;
  QString category;
  QString summary;
  QString badge;  ///< empty when there is none
  bool operator==(const FalListing&) const = default;
};

}  // namespace sorvan::catalogue
