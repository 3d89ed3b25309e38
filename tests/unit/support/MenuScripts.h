#pragma once

#include <initializer_list>
#include <string>

namespace qb::test {

/// The two handlers by which the system's scripts walk through menus.
inline const std::string menuHandlers =
    "on menu_click(mList)\r"
    "local appName, topMenu, r\r"
    "set {appName, topMenu} to (items 1 through 2 of mList)\r"
    "set r to (items 3 through (mList's length) of mList)\r"
    "tell application \"System Events\" to my menu_click_recurse(r, ((process appName)'s \u00ac\r"
    "(menu bar 1)'s (menu bar item topMenu)'s (menu topMenu)))\r"
    "end menu_click\r"
    "on menu_click_recurse(mList, parentObject)\r"
    "local f, r\r"
    "set f to item 1 of mList\r"
    "if mList's length > 1 then set r to (items 2 through (mList's length) of mList)\r"
    "tell application \"System Events\"\r"
    "if mList's length is 1 then\r"
    "click parentObject's menu item f\r"
    "else\r"
    "my menu_click_recurse(r, (parentObject's (menu item f)'s (menu f)))\r"
    "end if\r"
    "end tell\r"
    "end menu_click_recurse\r";

/// The line that chooses an entry: the program, the menu and so on inwards.
inline std::string menuClick(std::initializer_list<std::string> path) {
  std::string names;
  for (const std::string& name : path) names += (names.empty() ? "\"" : ", \"") + name + "\"";
  return "menu_click({" + names + "})\r";
}

/// The whole script for one entry of the program in front.
inline std::string menuScript(std::initializer_list<std::string> path) {
  return "\r" + menuHandlers + menuClick(path);
}

}  // namespace qb::test
