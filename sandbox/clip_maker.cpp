#include "clip_maker.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <cmath>
#include <stdexcept>

#include "media_reader.h"
#include "media_writer.h"
#include "picture_maker.h"
#include "randomness.h"
#include "scene.h"
#include "sound_maker.h"
#include "wish.h"

namespace sandbox {

namespace {

constexpr int picturesASecond = 24;
// Pictures are painted no wider than this and scaled up, so that a clip is made quickly at any resolution.
constexpr int widestPainting = 640;
constexpr int longestClipSide = 3840;

MadeFile clipFile(const QByteArray& bytes, QSize size, std::int64_t pictures, int rate) {
  MadeFile file;
  file.field = QStringLiteral("video");
  file.bytes = bytes;
  file.extension = QStringLiteral("mp4");
  file.facts = {{QStringLiteral("width"), size.width()},
                {QStringLiteral("height"), size.height()},
                {QStringLiteral("fps"), rate},
                {QStringLiteral("num_frames"), qint64(pictures)},
                {QStringLiteral("duration"), double(pictures) / rate}};
  return file;
}

std::optional<QImage> endPicture(const WorkOrder& order, const MediaShelf& shelf) {
  const QList<QUrl> addresses =
      addressesOf(order.input, {QStringLiteral("end_image_url"), QStringLiteral("last_frame_url"),
                                QStringLiteral("tail_image_url"), QStringLiteral("last_image_url")});
  if (addresses.isEmpty()) return std::nullopt;
  WorkOrder asInput = order;
  asInput.input = {{QStringLiteral("image_url"), addresses.first().toString()}};
  return inputPicture(asInput, shelf);
}

// In a large clip each picture stands for a few: it is made in about the time of a small one.
int picturesHeld(QSize size) {
  const double times = double(size.width()) * size.height() / (640.0 * 360.0);
  return qMax(1, int(std::lround(std::sqrt(times))));
}

// A slow move over a picture, from a wider to a closer view.
void paintMove(QPainter& painter, const QImage& picture, QSize size, double progress, double opacity) {
  const double zoom = 1 + 0.18 * progress;
  const QSizeF covering = QSizeF(picture.size()).scaled(size, Qt::KeepAspectRatioByExpanding) * zoom;
  const QPointF corner((size.width() - covering.width()) * (0.3 + 0.4 * progress),
                       (size.height() - covering.height()) / 2);
  painter.setOpacity(opacity);
  painter.drawImage(QRectF(corner, covering), picture);
}

// The pictures of one clip, by their moment.
class Footage {
 public:
  Footage(const WorkOrder& order, const MediaShelf& shelf, QSize size)
      : words_(wordsOf(order.input)),
        seed_(order.seed),
        size_(size),
        pictures_(inputPictures(order, shelf)),
        end_(endPicture(order, shelf)) {}
  const QList<QImage>& pictures() const { return pictures_; }
  void setSize(QSize size) { size_ = size; }

  QImage at(double seconds, double progress) const {
    if (pictures_.isEmpty()) return paintScene({words_, seed_, seconds}, size_);
    QImage picture(size_, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    paintPictures(painter, progress);
    if (end_) paintMove(painter, *end_, size_, 1 - progress, qBound(0.0, (progress - 0.35) / 0.5, 1.0));
    painter.setOpacity(1);
    paintDust(painter, seconds);
    return picture;
  }

 private:
  // One picture after the other, each for the same time, from the first on.
  void paintPictures(QPainter& painter, double progress) const {
    constexpr double fading = 0.15;
    const double turn = progress * double(pictures_.size());
    const qsizetype shown = qMin(qsizetype(turn), pictures_.size() - 1);
    const double within = turn - double(shown);
    paintMove(painter, pictures_[shown], size_, progress, 1);
    if (shown + 1 < pictures_.size() && within > 1 - fading)
      paintMove(painter, pictures_[shown + 1], size_, progress, (within - 1 + fading) / fading);
  }

  // Specks that drift over the picture, so that every frame moves.
  void paintDust(QPainter& painter, double seconds) const {
    Randomness chance(mixed(hashOf(words_), quint64(seed_)));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 40; ++i) {
      const double x = std::fmod(chance.unit() + seconds * chance.between(0.02, 0.09), 1.0) * size_.width();
      const double y = (chance.unit() + 0.02 * std::sin(seconds * 2 + i)) * size_.height();
      const double radius = chance.between(0.002, 0.006) * size_.height();
      painter.setBrush(QColor(255, 250, 230, 60 + chance.below(120)));
      painter.drawEllipse(QPointF(x, y), radius, radius);
    }
  }

  QString words_;
  qint64 seed_;
  QSize size_;
  QList<QImage> pictures_;
  std::optional<QImage> end_;
};

std::optional<Sound> soundOf(const WorkOrder& order, double seconds) {
  for (const char16_t* field : {u"generate_audio", u"audio"})
    if (!order.input.value(QString::fromUtf16(field)).toBool(true)) return std::nullopt;
  return playMusic({wordsOf(order.input), order.seed, seconds, {}});
}

QByteArray inputClip(const WorkOrder& order, const MediaShelf& shelf) {
  const QString field = QStringLiteral("video_url");
  const QList<QUrl> addresses = addressesOf(order.input, {field, QStringLiteral("video_urls")});
  if (addresses.isEmpty()) throw refusal(QStringLiteral("missing"), field, QStringLiteral("Field required"));
  if (const auto bytes = shelf.read(addresses.first())) return *bytes;
  throw refusal(QStringLiteral("file_download_error"), field,
                QStringLiteral("Failed to download the file. Please check if the URL is accessible and try again."));
}

// Writes the input clip again, each picture changed, at another size.
Made rewritten(const QByteArray& clip, double factor, const std::function<QImage(const QImage&)>& change) {
  try {
    const ClipFacts facts = factsOfClip(clip);
    const QSize larger = (QSizeF(facts.size) * factor).toSize();
    const QSize bounded = qMax(larger.width(), larger.height()) > longestClipSide
                              ? larger.scaled(longestClipSide, longestClipSide, Qt::KeepAspectRatio)
                              : larger;
    const QSize size(bounded.width() / 2 * 2, bounded.height() / 2 * 2);
    ClipWriter writer(size, facts.picturesASecond, readSound(clip));
    std::int64_t pictures = 0;
    forEachPicture(clip, [&](const QImage& picture) {
      writer.add(change(picture));
      ++pictures;
    });
    return {{clipFile(writer.finish(), size, pictures, facts.picturesASecond)}, {}};
  } catch (const std::runtime_error&) {
    throw refusal(QStringLiteral("unsupported_video_format"), QStringLiteral("video_url"),
                  QStringLiteral("Unsupported video format."));
  }
}

}  // namespace

Made makeClip(const WorkOrder& order, const MediaShelf& shelf) {
  // 1. What is shown, and in which shape.
  Footage footage(order, shelf, {});
  if (footage.pictures().isEmpty() && wordsOf(order.input).isEmpty())
    throw refusal(QStringLiteral("missing"), QStringLiteral("prompt"), QStringLiteral("Field required"));
  const QSize shape = footage.pictures().isEmpty() ? QSize(16, 9) : footage.pictures().first().size();
  const QSize size = limited(clipSizeOf(order.input, shape), order.longestSide);
  footage.setSize(size.width() > widestPainting
                      ? QSize(widestPainting, qMax(1, widestPainting * size.height() / size.width()))
                      : size);

  // 2. Picture after picture, with the sound beside them.
  const auto pictures = std::int64_t(std::llround(secondsOf(order.input, order.product) * picturesASecond));
  ClipWriter writer(size, picturesASecond, soundOf(order, double(pictures) / picturesASecond));
  const int held = picturesHeld(size);
  for (std::int64_t i = 0; i < pictures; ++i) {
    const double progress = double(i) / double(qMax<std::int64_t>(1, pictures - 1));
    if (i % held == 0 || i + 1 == pictures)
      writer.add(footage.at(double(i) / picturesASecond, progress));
    else
      writer.addAgain();
  }
  return {{clipFile(writer.finish(), size, pictures, picturesASecond)}, {{QStringLiteral("seed"), order.seed}}};
}

Made editClip(const WorkOrder& order, const MediaShelf& shelf) {
  const Palette palette = paletteFor(wordsOf(order.input), quint64(order.seed));
  return rewritten(inputClip(order, shelf), 1, [&palette](const QImage& picture) {
    QImage changed = picture;
    QPainter painter(&changed);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.fillRect(changed.rect(), palette.accent);
    return changed;
  });
}

Made upscaleClip(const WorkOrder& order, const MediaShelf& shelf) {
  const double factor = order.input.value(QStringLiteral("upscale_factor")).toDouble(2);
  return rewritten(inputClip(order, shelf), qBound(1.0, factor, 4.0), [](const QImage& picture) { return picture; });
}

}  // namespace sandbox
