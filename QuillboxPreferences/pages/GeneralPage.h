#pragma once

#include "QuillboxPreferences/PreferencesModel.h"
#include "QuillboxPreferences/pages/Page.h"

namespace qb {

class DropDown;
class ToggleSwitch;

/// The clipboard, notifications and running applications.
class GeneralPage : public Page {
 public:
  explicit GeneralPage(PreferencesModel& model);
  QWidget* widget() override { return widget_; }
  void refresh() override;

 private:
  PreferencesModel& model_;
  QWidget* widget_;
  DropDown* clipboard_ = nullptr;
  ToggleSwitch* launches_ = nullptr;
  ToggleSwitch* background_ = nullptr;
};

}  // namespace qb
