// quillbox-preferences [--page=activation|appearance|general|access]

#include <QApplication>
#include <QCommandLineOption>
#include <QCommandLineParser>
#include <clocale>

#include "PlatformDesktop/StandardErrorLog.h"
#include "PlatformDesktop/graphics/ProgramIcon.h"
#include "PlatformDesktop/session/ColorScheme.h"
#include "PlatformDesktop/session/SilentBus.h"
#include "QuillboxPreferences/PreferencesModel.h"
#include "QuillboxPreferences/PreferencesWindow.h"
#include "QuillboxPreferences/SingleInstance.h"
#include "QuillboxPreferences/Theme.h"

int main(int argc, char** argv) {
  const qb::StandardErrorLog log;
  qb::turnSilentSessionBusOff();
  QApplication application(argc, argv);
  // What is written to files must not depend on the user's language.
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setApplicationName(QStringLiteral("quillbox-preferences"));
  QApplication::setApplicationDisplayName(QStringLiteral("Quillbox Preferences"));
  QApplication::setDesktopFileName(QStringLiteral("quillbox-preferences"));
  QApplication::setWindowIcon(qb::programIcon());

  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Changes the settings of Quillbox."));
  parser.addHelpOption();
  const QCommandLineOption pageOption(QStringLiteral("page"), QStringLiteral("The page to show."),
                                      QStringLiteral("name"));
  parser.addOption(pageOption);
  parser.process(application);
  const QString page = parser.value(pageOption);
  if (qb::SingleInstance::handOver(page)) return 0;

  qb::PreferencesModel model;
  qb::ColorScheme scheme(model.bus());
  qb::applyTheme(application, scheme.isDark());
  qb::PreferencesWindow window(model);
  const qb::SingleInstance instance([&window](const QString& wish) {
    window.showPage(wish);
    window.comeForward();
  });
  scheme.setObserver([&application, &window](bool dark) {
    qb::applyTheme(application, dark);
    window.refresh();
  });
  window.showPage(page);
  window.show();
  return QApplication::exec();
}
