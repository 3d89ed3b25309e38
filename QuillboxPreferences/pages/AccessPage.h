#pragma once

#include "QuillboxPreferences/PreferencesModel.h"
#include "QuillboxPreferences/pages/Page.h"

class QLabel;

namespace qb {

class ToggleSwitch;

/// Whether the resident program may see and take the desktop's keys, and the switches for that.
class AccessPage : public Page {
 public:
  explicit AccessPage(PreferencesModel& model);
  QWidget* widget() override { return widget_; }
  void refresh() override;

 private:
  PreferencesModel& model_;
  QWidget* widget_;
  QLabel* state_ = nullptr;
  ToggleSwitch* allowed_ = nullptr;
  ToggleSwitch* followsDesktop_ = nullptr;
};

}  // namespace qb
