// See controlled_server.h.
#include "tests/win32/office/controlled_server.h"

#include "base/file.h"
#include "bench/win32/driver.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

fs::path serverProgram() {
  wchar_t self[MAX_PATH];
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  return fs::path(self).replace_filename(L"tintline_office_server.exe");
}

bool comesTrue(const std::function<bool()>& condition) {
  for (int attempt = 0; attempt < 1000; ++attempt, Sleep(10))
    if (condition()) return true;
  return false;
}

}  // namespace

ControlledServer::ControlledServer(const fs::path& folder, const std::wstring& program)
    : name_(program), folder_(folder / program) {
  remove_all(folder_);
  create_directories(folder_);
}

ControlledServer::~ControlledServer() {
  try {
    if (running()) command(L"quit");
  } catch (const Failure&) {  // it has just ended
  }
}

void ControlledServer::write(const std::wstring& file, std::string_view text) const {
  AtomicFile stream(folder_ / file);
  stream.stream() << text;
  stream.commit();
}

void ControlledServer::registerAt(const fs::path& folder) {
  runToEnd(serverProgram(), L"--register \"" + folder.wstring() + L'"');
}

void ControlledServer::unregister() { runToEnd(serverProgram(), L"--unregister"); }

void ControlledServer::start() const {
  startAlone(serverProgram(), name_ + L" \"" + folder_.parent_path().wstring() + L'"');
  if (!comesTrue([this] { return running(); })) throw Failure("the server does not start");
}

bool ControlledServer::running() const { return FindWindowW(name_.c_str(), nullptr) != nullptr; }

void ControlledServer::command(const std::wstring& lines) const {
  Window(FindWindowW(name_.c_str(), nullptr)).setText(lines);
  if (lines == L"quit" && !ends()) throw Failure("the server does not end");
}

std::wstring ControlledServer::status() const {
  return Window(FindWindowW(name_.c_str(), nullptr)).text();
}

long ControlledServer::count(std::wstring_view key) const {
  const std::wstring text = status();
  return std::stol(text.substr(text.find(key) + key.size()));
}

bool ControlledServer::ends() const {
  return comesTrue([this] { return !running(); });
}

}  // namespace tintline::test
