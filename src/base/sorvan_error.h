// The one error type that users may meet, and how any failure becomes one sentence.
#pragma once

#include <exception>

#include <QByteArray>
#include <QString>

namespace sorvan::base {

// A failure whose message is the final sentence for the user, shown unchanged. Thrown before anything has changed,
// unless the thrower says otherwise.
class SorvanError : public std::exception {
 public:
  explicit SorvanError(QString message);
  const QString& message() const noexcept { return text; }
  const char* what() const noexcept override { return utf8.constData(); }

 private:
  QString text;
  QByteArray utf8;
};

// A failed step on a file: "{what} could not be {verb}: {reason of the system}". Keeps the number, so that a reader can
// tell "absent" (ENOENT) from every other failure.
class FileError final : public SorvanError {
 public:
  FileError(const QString& what, const QString& verb, int number);
  int number() const noexcept { return errorNumber; }
  bool isAbsent() const noexcept;

 private:
  int errorNumber;
};

// Thrown by a task whose stop was requested. Never shown to anyone, so it is no SorvanError.
struct Cancelled final : std::exception {
  const char* what() const noexcept override { return "cancelled"; }
};

// One sentence for any failure, never empty: the message of a SorvanError, the text of any other exception, and a
// general sentence for what carries none.
QString describe(const std::exception& failure);
QString describe(const std::exception_ptr& failure);
bool isCancelled(const std::exception_ptr& failure);

// The system's own text for an errno, in English whatever the locale.
QString systemReason(int number);

}  // namespace sorvan::base
