#include "Quillbox/managers/ImageManager.h"

#include <utility>

#include "Platform/Graphics.h"

namespace qb {

Image ImageManager::iconForFile(const std::string& path, UpdateBlock updateBlock) {
  return graphics_.iconForFile(path, std::move(updateBlock));
}

}  // namespace qb
