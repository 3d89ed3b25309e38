#pragma once

#include <QString>
#include <QWidget>
#include <memory>
#include <vector>

#include "QuillboxPreferences/PreferencesModel.h"
#include "QuillboxPreferences/pages/Page.h"

class QLabel;
class QListWidget;

namespace qb {

/// The program's one window: a list of pages, the page, and below them the preview and the access.
class PreferencesWindow : public QWidget {
 public:
  explicit PreferencesWindow(PreferencesModel& model);
  /// "activation", "appearance", "general" or "access"; anything else changes nothing.
  void showPage(const QString& name);
  /// In front of everything, with the keyboard.
  void comeForward();
  void refresh();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* makeFooter();

  PreferencesModel& model_;
  std::vector<std::unique_ptr<Page>> pages_;
  QListWidget* sidebar_;
  QLabel* access_ = nullptr;
};

}  // namespace qb
