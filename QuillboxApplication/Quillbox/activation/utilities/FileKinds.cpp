#include "Quillbox/activation/utilities/FileKinds.h"

#include <algorithm>
#include <string_view>

#include "Quillbox/Item/FilePaths.h"

namespace qb {

namespace {

constexpr std::string_view imageExtensions[] = {"jpg", "png", "tif", "tiff", "bmp",
                                                "gif", "jpe", "ico", "icns", "jpeg"};
constexpr std::string_view textExtensions[] = {"txt", "rtf", "rtfd", "h", "m", "mm", "c"};
constexpr std::string_view pdfExtensions[] = {"pdf"};
constexpr std::string_view scriptExtensions[] = {"scpt"};

struct Descriptor {
  std::string_view extension, descriptor;
};
constexpr Descriptor descriptors[] = {
    {"rtf", "public.rtf"},
    {"rtfd", "com.apple.flat-rtfd"},
    {"txt", "public.utf8-plain-text"},
    {"h", "public.utf8-plain-text"},
    {"m", "public.utf8-plain-text"},
    {"c", "public.utf8-plain-text"},
    {"mm", "public.utf8-plain-text"},
    {"tiff", "public.tiff"},
    {"png", "public.png"},
    {"jpg", "public.jpg"},
    {"jpeg", "public.jpg"},
    {"pdf", "com.adobe.pdf"},
};
constexpr const char* unknownDescriptor = "unknown";

bool equalsWithoutCase(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return lower(x) == lower(y); });
}

template <class Extensions>
bool isOneOf(const std::string& path, const Extensions& extensions) {
  return std::any_of(std::begin(extensions), std::end(extensions),
                     [extension = pathExtension(path)](std::string_view each) {
                       return equalsWithoutCase(extension, each);
                     });
}

}  // namespace

bool FileKinds::fileAtPathIsImageFile(const std::string& path) {
  return isOneOf(path, imageExtensions);
}

bool FileKinds::fileAtPathIsTextFile(const std::string& path) {
  return isOneOf(path, textExtensions);
}

bool FileKinds::fileAtPathIsPDFFile(const std::string& path) {
  return isOneOf(path, pdfExtensions);
}

bool FileKinds::fileAtPathIsAppleScriptFile(const std::string& path) {
  return isOneOf(path, scriptExtensions);
}

std::string FileKinds::fileTypeDescriptorForPathExtension(const std::string& extension) {
  const auto* const found = std::find_if(
      std::begin(descriptors), std::end(descriptors),
      [&](const Descriptor& each) { return equalsWithoutCase(extension, each.extension); });
  return found == std::end(descriptors) ? unknownDescriptor : std::string(found->descriptor);
}

std::string FileKinds::fileTypeDescriptorForFileAtPath(const std::string& path) {
  return fileTypeDescriptorForPathExtension(pathExtension(path));
}

}  // namespace qb
