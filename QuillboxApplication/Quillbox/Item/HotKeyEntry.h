#pragma once

#include <memory>
#include <string>

#include "QuillboxCommon/views/Menu.h"

namespace qb {

/// The entry of an item's menu by which its hot key is set; and, once it has one, a submenu that
/// shows the keys, changes them with a click on them, and clears them. Main thread.
std::shared_ptr<MenuItem> createHotKeyEntry(const std::string& hotKeyIdentifier,
                                            const MenuItem::Action& set,
                                            const MenuItem::Action& clear);

}  // namespace qb
