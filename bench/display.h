// A display for rows that look at windows.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>

struct _XDisplay;

namespace sorvan::bench {

enum class Picture { nothing, plainWindow, content };

/// A display of its own, without a screen and without a window manager.
class Display {
 public:
  Display();
  ~Display();
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;

  /// False where no server could be started.
  bool works() const { return connection_; }
  QString name() const { return QString::fromLatin1(name_); }
  /// What a line across the screen shows. The empty screen is black, and a window without content has one colour.
  Picture shown() const;

 private:
  QProcess server_;
  QByteArray name_;
  ::_XDisplay* connection_ = nullptr;
};

}  // namespace sorvan::bench
