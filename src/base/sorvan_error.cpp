#include "base/sorvan_error.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>
#include <system_error>

#include "base/texts.h"

namespace sorvan::base {

SorvanError::SorvanError(QString message) : text(std::move(message)) {
  if (text.trimmed().isEmpty()) text = texts::somethingWentWrong();
  utf8 = text.toUtf8();
}

FileError::FileError(const QString& what, const QString& verb, int number)
    : SorvanError(texts::fileStepFailed(what, verb, systemReason(number))), errorNumber(number) {}

bool FileError::isAbsent() const noexcept { return errorNumber == ENOENT; }

QString systemReason(int number) {
  const char* description = strerrordesc_np(number);
  if (description == nullptr) return QStringLiteral("error %1").arg(number);
  return QString::fromUtf8(description);
}

static QString describeFilesystem(const std::filesystem::filesystem_error& failure) {
  const QString name = QString::fromStdString(failure.path1().filename().string());
  if (name.isEmpty()) return QString::fromStdString(failure.code().message());
  return texts::fileStepFailed(name, QStringLiteral("used"), QString::fromStdString(failure.code().message()));
}

QString describe(const std::exception& failure) {
  if (const auto* own = dynamic_cast<const SorvanError*>(&failure)) return own->message();
  if (const auto* files = dynamic_cast<const std::filesystem::filesystem_error*>(&failure))
    return describeFilesystem(*files);
  if (dynamic_cast<const std::bad_alloc*>(&failure) != nullptr) return texts::outOfMemory();
  const QString text = QString::fromUtf8(failure.what()).trimmed();
  return text.isEmpty() ? texts::somethingWentWrong() : text;
}

QString describe(const std::exception_ptr& failure) {
  if (!failure) return texts::somethingWentWrong();
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& known) {
    return describe(known);
  } catch (...) {
    return texts::somethingWentWrong();
  }
}

bool isCancelled(const std::exception_ptr& failure) {
  if (!failure) return false;
  try {
    std::rethrow_exception(failure);
  } catch (const Cancelled&) {
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace sorvan::base
