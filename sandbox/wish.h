// What a job's input asks for, read from the fields that models use for it.
#pragma once
#include <QJsonObject>
#include <QSize>
#include <QStringList>
#include <QUrl>
#include <optional>

#include "endpoints.h"

namespace sandbox {

// The words of the input: prompt, text, lines of a dialogue. Empty when there are none.
QString wordsOf(const QJsonObject& input);
std::optional<qint64> seedOf(const QJsonObject& input);
// Number of pictures, 1 to 6.
int countOf(const QJsonObject& input);
// "png", "jpeg" or "webp".
QByteArray pictureFormatOf(const QJsonObject& input, const QByteArray& usual);
// "mp3" or "wav".
QByteArray soundFormatOf(const QJsonObject& input);
// Pixels of a picture; `shape` stands in where the input leaves the shape to the model. At most 4096 a side.
QSize pictureSizeOf(const QJsonObject& input, QSize shape);
// Pixels of a clip, both even; 640 × 360 where no resolution is asked for.
QSize clipSizeOf(const QJsonObject& input, QSize shape);
// The size, in its shape, with no side above `longestSide` and both even; as it is for 0.
QSize limited(QSize size, int longestSide);
// Length in seconds, between 0.5 and 190; for speech it follows the words.
double secondsOf(const QJsonObject& input, Product product);
// The addresses under the first of these fields that holds any: a text or an array of texts.
QList<QUrl> addressesOf(const QJsonObject& input, const QStringList& fields);
// The pictures that the input gives to start from, in their order: of the first of the usual fields that holds any,
// else of any field that is named like them. End frames and masks are not among them.
QList<QUrl> pictureAddressesOf(const QJsonObject& input);
// The size that the input asks for, where it does; without, a picture that is worked on keeps its own.
std::optional<QSize> askedPictureSize(const QJsonObject& input, QSize shape);
// How many files of the same sound.
int soundCountOf(const QJsonObject& input);
// How much larger; `size` is what is enlarged.
double upscaleOf(const QJsonObject& input, QSize size);
// How many units of this name the job is charged for.
double unitsOf(const QJsonObject& input, Product product, const QString& unit);

}  // namespace sandbox
