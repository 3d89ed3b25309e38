#include "Quillbox/activation/LoginItem.h"

#include <string>

#include "Platform/ApplicationControl.h"
#include "Platform/LoginItems.h"
#include "Platform/Platform.h"

namespace qb {

void addQuillboxAsLoginItem(Platform& platform) {
  platform.loginItems().insertItemLast(platform.applicationControl().bundlePath());
}

void removeQuillboxFromLoginItems(Platform& platform) {
  const std::string path = platform.applicationControl().bundlePath();
  for (const LoginItems::LoginItem& item : platform.loginItems().snapshot()) {
    if (item.path == path) platform.loginItems().remove(item);
  }
}

}  // namespace qb
