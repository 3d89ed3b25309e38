#include "Quillbox/Item/FilePaths.h"

#include <string_view>

namespace qb {

std::string lastPathComponent(const std::string& path) {
  const std::size_t last = path.find_last_not_of('/');
  if (last == std::string::npos) return path.empty() ? "" : "/";
  const std::size_t slash = path.find_last_of('/', last);
  const std::size_t first = slash == std::string::npos ? 0 : slash + 1;
  return path.substr(first, last - first + 1);
}

std::string pathOfParentFolder(const std::string& path) {
  const std::size_t last = path.find_last_not_of('/');
  if (last == std::string::npos) return path.empty() ? "" : "/";
  const std::size_t slash = path.find_last_of('/', last);
  if (slash == std::string::npos) return "";
  const std::size_t end = path.find_last_not_of('/', slash);
  return end == std::string::npos ? "/" : path.substr(0, end + 1);
}

std::string pathExtension(const std::string& path) {
  const std::string name = lastPathComponent(path);
  const std::size_t dot = name.find_last_of('.');
  return dot == std::string::npos || dot == 0 ? "" : name.substr(dot + 1);
}

std::string lastPathComponentWithoutExtension(const std::string& path) {
  std::string name = lastPathComponent(path);
  const std::string extension = pathExtension(path);
  if (!extension.empty()) name.resize(name.size() - extension.size() - 1);
  return name;
}

std::string fileNameFromFullPath(const std::string& path, bool withPathExtension) {
  constexpr std::string_view escapedBlank = "%20";
  std::string name =
      withPathExtension ? lastPathComponent(path) : lastPathComponentWithoutExtension(path);
  for (std::size_t at = 0; (at = name.find(escapedBlank, at)) != std::string::npos; ++at) {
    name.replace(at, escapedBlank.size(), " ");
  }
  return name;
}

}  // namespace qb
