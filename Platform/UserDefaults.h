#pragma once

#include <string>

#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// Small values that this product's programs keep for the user beside the settings: marks of what
/// has been shown, switches. All its programs share them and see each other's changes. Main thread.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;
  /// None when there is nothing under `key`.
  virtual PropertyList objectForKey(const std::string& key) const = 0;
  /// Stores at once. Setting none removes. What cannot be saved holds until the program ends, and
  /// is saved with the next value that can be; the log says so once.
  virtual void setObject(const PropertyList& value, const std::string& key) = 0;
  bool boolForKey(const std::string& key) const { return objectForKey(key).boolValue(); }

  /// Signalled after a change, by this program or another one.
  ChangeNotice& valuesChanged() { return valuesChanged_; }

 private:
  ChangeNotice valuesChanged_;
};

}  // namespace qb
