// A program with menus by Qt, which tells what is chosen in them. tests/desktop/probe/gtkmenus.py
// has the same by GTK.
#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTimer>
#include <cstdio>

namespace {

void tell(const char* line) {
  std::puts(line);
  std::fflush(stdout);
}

QAction* add(QMenu* menu, const char* title, const char* told) {
  QAction* const action = menu->addAction(QString::fromUtf8(title));
  QObject::connect(action, &QAction::triggered, [told] { tell(told); });
  return action;
}

void makeFileMenu(QMainWindow& window) {
  QMenu* const file = window.menuBar()->addMenu("&File");
  add(file, "&Open\u2026", "chose Open");
  add(file, "Save &As...", "chose Save As");
  file->addSeparator();
  add(file, "&Close", "chose Close")->setEnabled(false);
  QMenu* const recent = file->addMenu("&Recent");
  QObject::connect(recent, &QMenu::aboutToShow, [recent] {
    if (recent->isEmpty()) add(recent, "letter.txt", "chose letter.txt");
  });
  QObject::connect(recent, &QMenu::aboutToHide, [] { tell("closed Recent"); });
  QObject::connect(add(file, "As&k", "chose Ask"), &QAction::triggered, [&window] {
    QMessageBox question(QMessageBox::Question, "Ask", "Well?", QMessageBox::Ok, &window);
    QTimer::singleShot(0, [] { tell("asks"); });
    question.exec();
    tell("answered");
  });
}

void makeViewMenu(QMainWindow& window) {
  QMenu* const view = window.menuBar()->addMenu("&View");
  QMenu* const more = view->addMenu("&Zoom")->addMenu("&More");
  add(more, "&200 %", "chose 200 %");
  QAction* const full = add(view, "&Full Screen\tF11", "chose Full Screen");
  full->setCheckable(true);
}

}  // namespace

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.setWindowTitle("Qt Menus");
  makeFileMenu(window);
  makeViewMenu(window);
  window.resize(300, 200);
  window.show();
  return QApplication::exec();
}
