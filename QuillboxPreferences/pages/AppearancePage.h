#pragma once

#include "QuillboxPreferences/PreferencesModel.h"
#include "QuillboxPreferences/controls/Card.h"
#include "QuillboxPreferences/pages/Page.h"

class QColor;

namespace qb {

class PanelPreview;
class Swatch;
class SwatchGrid;

/// Colours and measures of the panel, with a small picture of it.
class AppearancePage : public Page {
 public:
  explicit AppearancePage(PreferencesModel& model);
  QWidget* widget() override { return widget_; }
  void refresh() override;

 private:
  void fillRowColors(QVBoxLayout& page);
  void fillBackdrop(QVBoxLayout& page);
  void fillSizes(QVBoxLayout& page);
  void change(PreferencesModel::Change change);
  /// Asks for a colour with its opacity; nothing when the user thinks better of it.
  void chooseColor(const QString& title, const QColor& present,
                   const std::function<void(const QColor&)>& chosen);

  PreferencesModel& model_;
  QWidget* widget_;
  PanelPreview* preview_ = nullptr;
  SwatchGrid* swatches_ = nullptr;
  Swatch* freeColor_ = nullptr;
  Swatch* backdropColor_ = nullptr;
  ValueSlider rowOpacity_, backdropOpacity_, blur_, largest_, smallest_, width_;
};

}  // namespace qb
