#include "ScriptDesk.h"

namespace qb::test {

namespace {

/// Nothing but a failure waits that long, however busy the machine is.
constexpr TimeInterval longestWait = 60;
constexpr TimeInterval lookInterval = 0.01;
constexpr int readInterval = 20;

QStringList argumentsOf(const std::string& windowClass) {
  return {QString::fromStdString(windowClass), "50", "50", "300", "200", "808080", "text"};
}

}  // namespace

ScriptClient::ScriptClient(const std::string& windowClass)
    : ScriptClient(SCRIPT_TEST_CLIENT, argumentsOf(windowClass)) {}

ScriptClient::ScriptClient(const QString& program, const QStringList& arguments) {
  process_.start(program, arguments);
  EXPECT_TRUE(process_.waitForStarted());
}

ScriptClient::~ScriptClient() {
  process_.kill();
  process_.waitForFinished();
}

bool ScriptClient::tells(const std::string& line) {
  for (int i = 0; i < static_cast<int>(longestWait * 1000 / readInterval); ++i) {
    told_ += process_.readAllStandardOutput();
    if (told_.split('\n').contains(QByteArray::fromStdString(line))) return true;
    process_.waitForReadyRead(readInterval);
  }
  ADD_FAILURE() << "told: " << told_.toStdString();
  return false;
}

std::string ScriptClient::text() {
  told_ += process_.readAllStandardOutput();
  std::string text;
  for (const QByteArray& line : told_.split('\n')) {
    if (line.startsWith("types ")) text += line.mid(6).toStdString();
  }
  return text;
}

ScriptDesk::ScriptDesk() : processes(catalogue, std::make_shared<ProgramWindows>()) {
  host.setRunLoop(&loop);
  auto created = DesktopInput::create({.wake = [] {},
                                       .currentMode = [this] { return loop.currentMode(); },
                                       .pointerSpace = [] { return PointerSpace(); },
                                       .isOwnWindow = [](std::uint32_t) { return false; },
                                       .isAllowed = [] { return true; },
                                       .deliverKey = {}});
  input = std::get<std::unique_ptr<DesktopInput>>(std::move(created));
  scripts.setTyper(&input->typer());
  scripts.setPatience({longestWait, longestWait, longestWait});
}

ScriptDesk::~ScriptDesk() {
  // One that was started may yet show its window.
  EXPECT_TRUE(waitFor([&] {
    for (const ProcessSerialNumber number : programs()) processes.forceTerminate(number);
    return programs().empty();
  }));
  scripts.setTyper(nullptr);
  input.reset();
  host.finishBackgroundWork();
  host.setRunLoop(nullptr);
}

std::string ScriptDesk::errorOf(const std::string& source) {
  return run(source).error.objectForKey(NSAppleScriptErrorMessage).stringValue();
}

std::unique_ptr<ScriptClient> ScriptDesk::startClient(const std::string& windowClass) {
  auto client = std::make_unique<ScriptClient>(windowClass);
  waitUntilInFront(*client);
  return client;
}

void ScriptDesk::waitUntilInFront(const ScriptClient& client) {
  EXPECT_TRUE(waitFor([&] {
    return processes.activeProcess().lowLongOfPSN == static_cast<std::uint32_t>(client.pid());
  }));
}

bool ScriptDesk::waitFor(const std::function<bool()>& condition) {
  const Moment end = loop.now() + longestWait;
  while (loop.now() < end) {
    processes.update();
    if (condition()) return true;
    loop.runUntilDate(loop.now() + lookInterval);
  }
  return false;
}

std::string ScriptDesk::nameOfFrontProgram() {
  const auto information = processes.processInformation(processes.activeProcess());
  return information ? information->name : "";
}

}  // namespace qb::test
