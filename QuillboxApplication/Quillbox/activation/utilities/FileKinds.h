#pragma once

#include <string>

namespace qb {

/// What kind a file is of, by the extension of its name in any case. Nobody looks into the file.
class FileKinds {
 public:
  static bool fileAtPathIsImageFile(const std::string& path);
  static bool fileAtPathIsTextFile(const std::string& path);
  static bool fileAtPathIsPDFFile(const std::string& path);
  static bool fileAtPathIsAppleScriptFile(const std::string& path);

  /// The type under which what is in such a file goes to a pasteboard. Intended: not every kind has
  /// one; all others are "unknown".
  static std::string fileTypeDescriptorForPathExtension(const std::string& extension);
  static std::string fileTypeDescriptorForFileAtPath(const std::string& path);
};

}  // namespace qb
