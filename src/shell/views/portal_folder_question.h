// One question for a folder, for picture files or for a file to write, to the desktop's own chooser, over the desktop portal.
#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>

#include "shell/folder_chooser.h"
#include "shell/views/room.h"

class QDBusPendingCallWatcher;

namespace sorvan::views {

// Main thread; nothing here waits. After `ask` exactly one of the two signals follows, unless the question goes first.
// Deleting it takes the answer away, not the desktop's dialog.
class PortalFolderQuestion final : public QObject {
  Q_OBJECT

 public:
  // `bus` is the session bus, but in tests.
  PortalFolderQuestion(QDBusConnection bus, FolderQuestion question, QObject* parent = nullptr);

  // Before `ask`: for picture files, several at once, in place of a folder.
  void setAsksForPictures(bool pictures) { pictures_ = pictures; }
  // Before `ask`: for a file to be written, offered under this name, in place of a folder.
  void setAsksForFile(const QString& name) { fileName_ = name; }
  // `parentWindow` as the portal names windows: "x11:" and the number in hexadecimal, or empty. Once.
  void ask(const QString& parentWindow);

 Q_SIGNALS:
  // The absolute path of a folder on this machine, or those of picture files; none when the person gave up or the
  // portal ended.
  void answered(const QStringList& paths);
  // There is no portal, or it cannot choose folders; the person was asked nothing.
  void unavailable();

 private Q_SLOTS:
  void receive(uint code, const QVariantMap& results);

 private:
  void askVersion();
  void open();
  void expectAnswerAt(const QString& request);
  void finish(const QStringList& paths);
  void giveUp();
  bool asksForFolder() const { return !pictures_ && fileName_.isEmpty(); }
  QVariantMap options() const;

  QDBusConnection bus_;
  FolderQuestion question_;
  QString token_;
  QString parentWindow_;
  QString request_;  // path of the object that will answer
  bool pictures_ = false;
  QString fileName_;
  bool done_ = false;
};

// How the portal names a window of this program; empty where the platform has no such names.
QString portalNameOf(const QWidget& window);

}  // namespace sorvan::views
