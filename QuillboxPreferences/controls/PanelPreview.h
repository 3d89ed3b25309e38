#pragma once

#include <QWidget>

#include "Quillbox/activation/Settings.h"

namespace qb {

/// A desktop in small with the panel on it, in the colours and the measures of the settings.
class PanelPreview : public QWidget {
 public:
  /// They must outlive it.
  explicit PanelPreview(const Settings& settings);
  QSize sizeHint() const override { return {520, 190}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Settings& settings_;
};

}  // namespace qb
