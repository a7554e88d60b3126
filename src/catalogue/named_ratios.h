// The shape that a size of a model's own list stands for.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace sorvan::catalogue {

/// The ratio of a size such as "1024x1024", "1280*720", "16:9", "square_hd" or "portrait_4_3", when it is one of the
/// composer's; else nothing.
std::optional<QString> ratioOfSize(const QString& size);
/// The first of the sizes with this ratio.
std::optional<QString> firstWithRatio(const QStringList& sizes, const QString& ratio);
/// The ratios that the sizes stand for, in their order, each once.
QStringList ratiosOfSizes(const QStringList& sizes);

/// Whether a ratio of the composer, or the model's own choice, is among the values: without either there is nothing to
/// choose.
bool canChooseRatio(const QStringList& values);

}  // namespace sorvan::catalogue
