#include "QuillboxPreferences/pages/AccessPage.h"

#include <QLabel>

#include "QuillboxPreferences/Theme.h"
#include "QuillboxPreferences/controls/Card.h"
#include "QuillboxPreferences/controls/ToggleSwitch.h"

namespace qb {

AccessPage::AccessPage(PreferencesModel& model) : model_(model) {
  widget_ = makePage(QStringLiteral("Access"), [this](QVBoxLayout& page) {
    QVBoxLayout& state = *addCard(page, QStringLiteral("STATE"));
    state_ = new QLabel;
    state_->setWordWrap(false);
    addRow(state, QStringLiteral("Access to keys and pointer"),
           QStringLiteral("As Quillbox has found it on this display."), state_);

    QVBoxLayout& grant = *addCard(page, QStringLiteral("PERMISSION"));
    allowed_ = addSwitch(
        grant, QStringLiteral("Allow Quillbox to see and take keys"),
        QStringLiteral("Super-Tab, the keys of the open panel, item hot keys and abbreviations "
                       "need it. Without it Alt-Tab and the screen corners still work. Quillbox "
                       "starts itself anew when you grant it."),
        [this](bool on) { model_.setInputIsAllowed(on); });
    followsDesktop_ = addSwitch(
        grant, QStringLiteral("Heed the desktop's accessibility switch"),
        QStringLiteral("Then the access is withheld also while the desktop has its assistive "
                       "technologies switched off."),
        [this](bool on) { model_.setInputFollowsDesktop(on); });
  });
  refresh();
}

void AccessPage::refresh() {
  allowed_->setChecked(model_.inputIsAllowed());
  followsDesktop_->setChecked(model_.inputFollowsDesktop());
  const auto access = model_.publishedAccess();
  const Theme& theme = Theme::current();
  state_->setText(!access   ? QStringLiteral("Not known: Quillbox has not run yet")
                  : *access ? QStringLiteral("Granted")
                            : QStringLiteral("Not granted"));
  const QColor color = !access ? theme.secondaryText : *access ? theme.good : theme.bad;
  state_->setStyleSheet(QStringLiteral("color: %1; font-weight: 600;").arg(color.name()));
}

}  // namespace qb
