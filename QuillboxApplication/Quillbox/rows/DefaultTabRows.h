#pragma once

namespace qb {

class HostView;
class TabRow;

/// Which row opens as the active one on Command-Tab and which on Option-Tab, as the user chooses it
/// in the rows' menus. Each is one row, and both may be the same. Main thread.
class DefaultTabRows {
 public:
  explicit DefaultTabRows(HostView& host) : host_(host) {}

  /// From now on this row is the one. Offers to make the key work where it does not.
  void setAsCommandTabDefaultSelected(TabRow& tabRow);
  void setAsOptionTabDefaultSelected(TabRow& tabRow);
  /// The row of running applications takes the default back. Without one nothing changes, and a
  /// message says so.
  void setAsCommandTabDefaultDeselected();
  void setAsOptionTabDefaultDeselected();

 private:
  /// What tells the two keys apart.
  struct Key;
  static const Key commandTab, optionTab;

  void setDefault(const Key& key, const TabRow& tabRow);
  void setBackToActiveApplications(const Key& key);
  void offerAccess() const;
  void offerActivation(const Key& key) const;

  HostView& host_;
};

}  // namespace qb
