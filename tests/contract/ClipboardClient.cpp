// Another program with a clipboard:
//
//   clipboardclient offer TYPE FILE...   has these until it is ended; says "offered" when it has
//                                        them, and "gives TYPE" whenever it is asked for one
//   clipboardclient hang TYPE FILE...    the same, but is stopped by the first question for one
//   clipboardclient read TYPE            writes what is there under that name; fails when there is
//                                        none
//   clipboardclient field                a window "Field" with a text field; says "has TEXT" when
//                                        that changes, and "ready" when it has the keyboard
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLineEdit>
#include <QMimeData>
#include <csignal>
#include <cstdio>
#include <memory>

namespace {

void say(const QString& line) {
  std::puts(qPrintable(line));
  std::fflush(stdout);
}

class Offer : public QMimeData {
 public:
  explicit Offer(bool hangs) : hangs_(hangs) {}

 private:
  QVariant retrieveData(const QString& type, QMetaType preferred) const override {
    say("gives " + type);
    if (hangs_) std::raise(SIGSTOP);
    return QMimeData::retrieveData(type, preferred);
  }

  bool hangs_;
};

int offer(const QStringList& words, bool hangs) {
  auto data = std::make_unique<Offer>(hangs);
  for (int at = 2; at + 1 < words.size(); at += 2) {
    QFile file(words[at + 1]);
    if (!file.open(QIODevice::ReadOnly)) return 1;
    data->setData(words[at], file.readAll());
  }
  QGuiApplication::clipboard()->setMimeData(data.release());
  say("offered");
  return QGuiApplication::exec();
}

int read(const QString& type) {
  const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
  if (data == nullptr || !data->hasFormat(type)) return 1;
  const QByteArray bytes = data->data(type);
  std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
  return 0;
}

int showField() {
  QGuiApplication::setApplicationName("Field");
  QLineEdit field;
  QObject::connect(&field, &QLineEdit::textChanged,
                   [](const QString& text) { say("has " + text); });
  QObject::connect(qApp, &QApplication::focusChanged, [&field](const QWidget*, const QWidget* now) {
    if (now == &field) say("ready");
  });
  field.setGeometry(20, 540, 300, 200);
  field.show();
  field.setFocus();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char* argv[]) {
  const QApplication application(argc, argv);
  const QStringList words = QGuiApplication::arguments();
  if (words.size() > 3 && words[1] == "offer") return offer(words, false);
  if (words.size() > 3 && words[1] == "hang") return offer(words, true);
  if (words.size() == 3 && words[1] == "read") return read(words[2]);
  if (words.size() == 2 && words[1] == "field") return showField();
  return 2;
}
