// The notification daemon of the session: says "ready", and of each notification the title, the
// text and the sound, each on a line of its own.
#include <QCoreApplication>
#include <QDBusArgument>
#include <QVariantMap>
#include <iostream>

#include "NotificationDaemon.h"

namespace {

enum Argument { Title = 3, Text = 4, Hints = 6, argumentCount = 8 };

void tell(const QList<QVariant>& notification) {
  if (notification.size() != argumentCount) {
    std::cout << "not a notification" << std::endl;
    return;
  }
  const auto hints = qdbus_cast<QVariantMap>(notification[Hints]);
  std::cout << "title " << notification[Title].toString().toStdString() << "\ntext "
            << notification[Text].toString().toStdString() << "\nsound "
            << hints.value("sound-name").toString().toStdString() << std::endl;
}

}  // namespace

int main(int argc, char* argv[]) {
  const QCoreApplication application(argc, argv);
  QDBusConnection bus = QDBusConnection::sessionBus();
  qb::test::NotificationDaemon daemon(tell);
  if (!daemon.serve(bus)) return 1;
  std::cout << "ready" << std::endl;
  return QCoreApplication::exec();
}
