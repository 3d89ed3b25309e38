#pragma once

#include <string>

#include "Platform/LoginItems.h"

namespace qb {

/// Login items as entries in the user's autostart folder. An entry's identifier is its file.
class DesktopLoginItems : public LoginItems {
 public:
  explicit DesktopLoginItems(std::string folder = autostartFolder());

  std::vector<LoginItem> snapshot() const override;
  bool insertItemLast(const std::string& path) override;
  bool remove(const LoginItem& item) override;

  /// By the environment.
  static std::string autostartFolder();

 private:
  std::string folder_;
};

}  // namespace qb
