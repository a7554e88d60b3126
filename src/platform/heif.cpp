#include "platform/heif.h"

#include <memory>

#include <libheif/heif.h>
#include <QColorSpace>

namespace sorvan::platform {
namespace {

template <auto release>
struct Release {
  template <class T>
  void operator()(T* object) const {
    release(object);
  }
};
using Context = std::unique_ptr<heif_context, Release<heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Release<heif_image_handle_release>>;
using Image = std::unique_ptr<heif_image, Release<heif_image_release>>;

/// The primary picture with the context that owns its data; the bytes must outlive it.
struct Primary {
  Context context;
  Handle handle;
};

Primary openPrimary(const QByteArray& bytes) {
  Primary primary{Context(heif_context_alloc()), nullptr};
  if (!primary.context) return primary;
  const heif_error read = heif_context_read_from_memory_without_copy(primary.context.get(), bytes.constData(),
                                                                     size_t(bytes.size()), nullptr);
  heif_image_handle* handle = nullptr;
  if (read.code == heif_error_Ok &&
      heif_context_get_primary_image_handle(primary.context.get(), &handle).code == heif_error_Ok)
    primary.handle.reset(handle);
  return primary;
}

QColorSpace profileOf(const heif_image_handle* handle) {
  const size_t size = heif_image_handle_get_raw_color_profile_size(handle);
  if (size == 0 || size > (16U << 20)) return {};
  QByteArray profile(qsizetype(size), Qt::Uninitialized);
  if (heif_image_handle_get_raw_color_profile(handle, profile.data()).code != heif_error_Ok) return {};
  return QColorSpace::fromIccProfile(profile);
}

QImage copied(const heif_image* image, bool alpha) {
  int stride = 0;
  const uint8_t* pixels = heif_image_get_plane_readonly(image, heif_channel_interleaved, &stride);
  if (pixels == nullptr) return {};
  return QImage(pixels, heif_image_get_primary_width(image), heif_image_get_primary_height(image), stride,
                alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888)
      .copy();
}

}  // namespace

HeifFacts probeHeif(const QByteArray& bytes) {
  const Primary primary = openPrimary(bytes);
  if (!primary.handle) return {};
  const heif_image_handle* handle = primary.handle.get();
  return {QSize(heif_image_handle_get_width(handle), heif_image_handle_get_height(handle)),
          heif_image_handle_has_alpha_channel(handle) != 0};
}

QImage decodeHeif(const QByteArray& bytes) {
  const Primary primary = openPrimary(bytes);
  if (!primary.handle) return {};
  const bool alpha = heif_image_handle_has_alpha_channel(primary.handle.get()) != 0;
  heif_image* decoded = nullptr;
  const heif_error error =
      heif_decode_image(primary.handle.get(), &decoded, heif_colorspace_RGB,
                        alpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, nullptr);
  const Image image(decoded);
  if (error.code != heif_error_Ok || !image) return {};
  QImage result = copied(image.get(), alpha);
  if (const QColorSpace profile = profileOf(primary.handle.get()); profile.isValid()) result.setColorSpace(profile);
  return result;
}

}  // namespace sorvan::platform
