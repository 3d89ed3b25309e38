// Another program with a clipboard:
//
//   clipboardclient offer TYPE FILE...   has these until it is ended; says "offered" when it has
//   them clipboardclient read TYPE            writes what is there under that name; fails when
//   there is none
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <cstdio>
#include <memory>

namespace {

int offer(const QStringList& words) {
  auto data = std::make_unique<QMimeData>();
  for (int at = 2; at + 1 < words.size(); at += 2) {
    QFile file(words[at + 1]);
    if (!file.open(QIODevice::ReadOnly)) return 1;
    data->setData(words[at], file.readAll());
  }
  QGuiApplication::clipboard()->setMimeData(data.release());
  std::puts("offered");
  std::fflush(stdout);
  return QGuiApplication::exec();
}

int read(const QString& type) {
  const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
  if (data == nullptr || !data->hasFormat(type)) return 1;
  const QByteArray bytes = data->data(type);
  std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
  return 0;
}

}  // namespace

int main(int argc, char* argv[]) {
  const QGuiApplication application(argc, argv);
  const QStringList words = QGuiApplication::arguments();
  if (words.size() > 3 && words[1] == "offer") return offer(words);
  if (words.size() == 3 && words[1] == "read") return read(words[2]);
  return 2;
}
