#pragma once

class QWidget;

namespace qb {

/// One page of the window.
class Page {
 public:
  virtual ~Page() = default;
  /// Made once; owned by the window it is put into.
  virtual QWidget* widget() = 0;
  /// Shows what the settings say now, without telling anyone.
  virtual void refresh() = 0;
};

}  // namespace qb
