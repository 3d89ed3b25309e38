#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "QuillboxPreferences/PreferencesModel.h"
#include "QuillboxPreferences/pages/Page.h"

class QVBoxLayout;

namespace qb {

class ScreenPlaces;

/// How the panel comes up and how long it stays.
class ActivationPage : public Page {
 public:
  explicit ActivationPage(PreferencesModel& model);
  QWidget* widget() override { return widget_; }
  void refresh() override;

 private:
  using Getter = bool (Settings::*)() const;
  using Setter = void (Settings::*)(bool);
  void addSetting(QVBoxLayout& card, const QString& title, const QString& caption, Getter getter,
                  Setter setter);

  PreferencesModel& model_;
  QWidget* widget_;
  ScreenPlaces* places_ = nullptr;
  std::vector<std::function<void()>> refreshers_;
};

}  // namespace qb
