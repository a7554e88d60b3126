// The pieces that the rows of the sound catalogue are put together from.
#pragma once

#include <limits>

#include "catalogue/fal_model.h"

namespace sorvan::catalogue {

/// Where the bounds of a length come from. Only those of `published` were read from the endpoint's own document.
enum class BoundSource {
  published,    ///< the endpoint's document
  summary,      ///< the row's own summary; not confirmed by a document
  unconfirmed,  ///< nothing names one: any length of at least one unit passes, and the service may refuse it
};

/// The length control of a model: `field` in seconds, or in milliseconds for music that is asked for so.
struct LengthBounds {
  qint64 least = 1;
  qint64 most = std::numeric_limits<qint32>::max();
  BoundSource source = BoundSource::unconfirmed;
};

/// A model of sound: one output, no size, a prompt unless the row says otherwise.
FalModel soundRow(const QString& id, const QString& name, const QString& category, const QString& summary);

Setting lengthSetting(const QString& field, const QStringList& values, const QString& start, LengthBounds bounds);
Setting choiceSetting(const QString& field, const QString& label, const QStringList& values,
                      std::optional<QString> start = std::nullopt);
Setting toggleSetting(const QString& field, const QString& label, bool start = false);
TextInput optionalText(const QString& field, const QString& label, const QString& placeholder, int limit);

}  // namespace sorvan::catalogue
