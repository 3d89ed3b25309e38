#include "PlatformDesktop/dialogs/OpenPanelContent.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <algorithm>

#include "PlatformDesktop/graphics/QtConversions.h"

namespace qb {

namespace {

/// What an application's file is here.
constexpr char applicationPattern[] = "*.desktop";

QString nameFilter(const std::vector<std::string>& types) {
  QStringList patterns;
  for (const std::string& type : types) {
    patterns += type == "app" ? QString(applicationPattern) : "*." + qtString(type);
  }
  return patterns.join(u' ');
}

}  // namespace

OpenPanelContent::OpenPanelContent(const OpenPanel& panel) : panel_(panel) {
  setWindowFlags(Qt::Widget);
  setOption(QFileDialog::DontUseNativeDialog);
  setOption(QFileDialog::ReadOnly);
  setFileMode(panel.allowsMultipleSelection ? QFileDialog::ExistingFiles
                                            : QFileDialog::ExistingFile);
  QDir::Filters filter = QDir::AllDirs | QDir::Drives | QDir::NoDotAndDotDot;
  if (panel.canChooseFiles) filter |= QDir::Files;
  setFilter(filter);
  if (!panel.allowedFileTypes.empty()) setNameFilter(nameFilter(panel.allowedFileTypes));
  if (!panel.directory.empty()) setDirectory(qtString(panel.directory));
  // By itself it would keep the keys, and do nothing with them.
  setFocusProxy(findChild<QLineEdit*>(QStringLiteral("fileNameEdit")));
  setSizeGripEnabled(false);
  setMinimumSize(760, 480);
  if (auto* const list = findChild<QTreeView*>(QStringLiteral("treeView"))) {
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  }
  for (QPushButton* const button : findChildren<QPushButton*>()) button->setIcon({});
}

std::vector<QString> OpenPanelContent::chosen() const {
  const QStringList files = selectedFiles();
  return {files.begin(), files.end()};
}

bool OpenPanelContent::selectionIsAllowed() const {
  const auto files = chosen();
  return !files.empty() && std::all_of(files.begin(), files.end(), [this](const QString& path) {
    const QFileInfo file(path);
    return file.isDir() ? panel_.canChooseDirectories : file.exists() && panel_.canChooseFiles;
  });
}

std::vector<std::string> OpenPanelContent::paths() const {
  std::vector<std::string> paths;
  for (const QString& path : chosen()) paths.push_back(path.toStdString());
  return paths;
}

void OpenPanelContent::accept() {
  // Folders, where they may be chosen, would only be entered otherwise. A name that does not exist
  // is not worth a message: the panel stays.
  if (selectionIsAllowed()) {
    done(QDialog::Accepted);
    return;
  }
  const auto files = chosen();
  if (files.size() == 1 && QFileInfo(files.front()).isDir()) setDirectory(files.front());
}

}  // namespace qb
