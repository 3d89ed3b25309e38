#pragma once

#include <string>
#include <vector>

#include "Platform/FileViewer.h"

namespace qb {

/// Keeps the paths that it is asked for.
class SimulatedFileViewer : public FileViewer {
 public:
  void selectFile(const std::string& path) override { selectedFiles_.push_back(path); }
  void openInformationWindow(const std::string& path) override {
    informationWindows_.push_back(path);
  }
  void previewFile(const std::string& path) override { previewedFiles_.push_back(path); }

  const std::vector<std::string>& selectedFiles() const { return selectedFiles_; }
  const std::vector<std::string>& informationWindows() const { return informationWindows_; }
  const std::vector<std::string>& previewedFiles() const { return previewedFiles_; }

 private:
  std::vector<std::string> selectedFiles_, informationWindows_, previewedFiles_;
};

}  // namespace qb
