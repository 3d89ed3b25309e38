#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>

#include "Platform/Dialogs.h"

namespace qb {

class KeyRecorderView;

/// What an alert shows: icon, title and text, the accessory's control, and the buttons, with the
/// default button at the right. What is typed goes into the alert's model at once.
class AlertContent : public QWidget {
 public:
  /// `alert` must outlive it. `logo` is for alerts without an icon; `respond` gets the response of
  /// a pressed button.
  AlertContent(Alert& alert, const Image& logo, const std::function<void(std::int32_t)>& respond);

  /// The control that has the keyboard first.
  QWidget* initialFocus() const { return initialFocus_; }
  /// Shows what a recorder looks like now.
  void refreshRecorder();

 private:
  QWidget* makeIcon(const Image& logo) const;
  QWidget* makeText();
  QWidget* makeAccessory();
  QWidget* makeButtons(const std::function<void(std::int32_t)>& respond);
  int textWidth() const;

  Alert& alert_;
  QWidget* initialFocus_ = nullptr;
  KeyRecorderView* recorderView_ = nullptr;
};

}  // namespace qb
