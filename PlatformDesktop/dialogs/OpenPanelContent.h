#pragma once

#include <QFileDialog>
#include <functional>
#include <string>
#include <vector>

#include "Platform/Dialogs.h"

namespace qb {

/// The toolkit's chooser of files, inside a window of ours.
class OpenPanelContent : public QFileDialog {
 public:
  explicit OpenPanelContent(const OpenPanel& panel);

  std::vector<std::string> paths() const;
  /// Whether all that is selected may be chosen, and there is something.
  bool selectionIsAllowed() const;

 protected:
  void accept() override;

 private:
  std::vector<QString> chosen() const;

  OpenPanel panel_;
};

}  // namespace qb
