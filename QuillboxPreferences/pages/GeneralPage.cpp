#include "QuillboxPreferences/pages/GeneralPage.h"

#include "QuillboxPreferences/controls/Card.h"
#include "QuillboxPreferences/controls/DropDown.h"
#include "QuillboxPreferences/controls/ToggleSwitch.h"

namespace qb {

GeneralPage::GeneralPage(PreferencesModel& model) : model_(model) {
  widget_ = makePage(QStringLiteral("General"), [this](QVBoxLayout& page) {
    QVBoxLayout& clipboard = *addCard(page, QStringLiteral("CLIPBOARD HISTORY"));
    clipboard_ = new DropDown;
    // In the order of the modes' numbers.
    clipboard_->addItem(QStringLiteral("Only for items that use it"));
    clipboard_->addItem(QStringLiteral("Always"));
    QObject::connect(clipboard_, &DropDown::activated, clipboard_, [this](int mode) {
      model_.change(
          [mode](Settings& settings) { settings.setClipboardManagerHistoryCaptureMode(mode); });
    });
    addRow(clipboard, QStringLiteral("Record what is copied"),
           QStringLiteral("What its owner marks as secret is never recorded."), clipboard_);

    QVBoxLayout& applications = *addCard(page, QStringLiteral("APPLICATIONS"));
    launches_ = addSwitch(applications, QStringLiteral("Tell me when it starts an application"),
                          QStringLiteral("As a notification of the desktop."), [this](bool on) {
                            model_.change([on](Settings& settings) {
                              settings.setNotifyUserOfApplicationLaunch(on);
                            });
                          });
    background_ = addSwitch(
        applications, QStringLiteral("Keep background applications hidden"),
        QStringLiteral("Windows of all applications but the one in front go out of sight."),
        [this](bool on) {
          model_.change([on](Settings& settings) {
            settings.setActiveApplicationsProviderHidesAllBackgroundApplications(on);
          });
        });
  });
  refresh();
}

void GeneralPage::refresh() {
  const Settings& settings = model_.settings();
  clipboard_->setCurrentIndex(settings.clipboardManagerHistoryCaptureMode() == 0 ? 0 : 1);
  launches_->setChecked(settings.notifyUserOfApplicationLaunch());
  background_->setChecked(settings.activeApplicationsProviderHidesAllBackgroundApplications());
}

}  // namespace qb
