#include "Quillbox/managers/PrimaryScreen.h"

namespace qb {

Screen primaryScreen(const Displays& displays) {
  for (const Screen& screen : displays.screens()) {
    if (screen.frame.origin == Point{0, 0}) return screen;
  }
  return {};
}

}  // namespace qb
