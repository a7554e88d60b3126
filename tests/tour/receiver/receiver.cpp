// Another program on the desktop, for the tour: takes what is dropped on it and asks for it to be moved. Writes what it
// was offered and what it took to the file that it is given, a line each.
#include <QApplication>
#include <QDropEvent>
#include <QFile>
#include <QImage>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace {

QByteArray actionsText(Qt::DropActions actions) {
  QByteArray text;
  if (actions & Qt::CopyAction) text += " copy";
  if (actions & Qt::MoveAction) text += " move";
  if (actions & Qt::LinkAction) text += " link";
  return text;
}

class Receiver final : public QWidget {
 public:
  explicit Receiver(const QString& report) : QWidget(nullptr, Qt::X11BypassWindowManagerHint), report_(report) {
    setAcceptDrops(true);
    setAutoFillBackground(true);
    setPalette(QPalette(Qt::darkYellow));
  }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override { askToMove(*event); }
  void dragMoveEvent(QDragMoveEvent* event) override { askToMove(*event); }

  void dropEvent(QDropEvent* event) override {
    QByteArray said = "offered" + actionsText(event->possibleActions()) + '\n';
    for (const QUrl& url : event->mimeData()->urls()) said += "file " + url.toLocalFile().toUtf8() + '\n';
    said += "gnome " + event->mimeData()->data(QStringLiteral("x-special/gnome-copied-files")).split('\n').first() + '\n';
    said += "kde " + event->mimeData()->data(QStringLiteral("application/x-kde-cutselection")) + '\n';
    const QImage picture = qvariant_cast<QImage>(event->mimeData()->imageData());
    said += "picture " + QByteArray::number(picture.width()) + '\n';
    askToMove(*event);
    QFile file(report_);
    if (file.open(QIODevice::WriteOnly)) file.write(said + "done\n");
  }

 private:
  static void askToMove(QDropEvent& event) {
    event.setDropAction(Qt::MoveAction);
    event.accept();
  }

  QString report_;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 4) return 2;
  Receiver receiver(arguments[1]);
  receiver.setGeometry(arguments[2].toInt(), arguments[3].toInt(), 200, 120);
  receiver.show();
  receiver.raise();
  return QApplication::exec();
}
