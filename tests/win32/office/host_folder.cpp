// See host_folder.h. Tested by tests/win32/office/office_test.cpp.
#include "tests/win32/office/host_folder.h"

#include <fstream>
#include <sstream>
#include <utility>

#include "base/codepage.h"
#include "base/file.h"

namespace tintline::test {
namespace {

// The words of a line, and all that is left of it.
class Words {
 public:
  explicit Words(const std::wstring& line) : stream_(line) {}

  std::wstring next() {
    std::wstring word;
    stream_ >> word;
    return word;
  }
  long number(int base = 10) { return static_cast<long>(std::stoul(next(), nullptr, base)); }
  std::wstring rest() {
    std::wstring text;
    std::getline(stream_ >> std::ws, text);
    return text;
  }

 private:
  std::wistringstream stream_;
};

bool isBlankOrComment(const std::wstring& line) {
  const std::size_t start = line.find_first_not_of(L" \t");
  return start == std::wstring::npos || line[start] == L'\'';
}

// Name and kind of the procedure whose head this is.
std::optional<std::pair<std::wstring, long>> headOf(const std::wstring& line) {
  Words words(line);
  std::wstring word = words.next();
  while (word == L"Public" || word == L"Private" || word == L"Friend" || word == L"Static")
    word = words.next();
  long kind = 0;
  if (word == L"Property") {
    word = words.next();
    kind = word == L"Let" ? 1 : word == L"Set" ? 2 : 3;
  } else if (word != L"Sub" && word != L"Function") {
    return std::nullopt;
  }
  const std::wstring name = words.next();
  return std::pair{name.substr(0, name.find(L'(')), kind};
}

bool isEnd(const std::wstring& line) {
  Words words(line);
  if (words.next() != L"End") return false;
  const std::wstring what = words.next();
  return what == L"Sub" || what == L"Function" || what == L"Property";
}

// What stands in front of a head belongs to its procedure, as far as it says nothing; behind
// the last end, everything does.
void findProcedures(Component& component) {
  const auto& lines = component.lines;
  const long count = static_cast<long>(lines.size());
  long next = 1;  // the first line that belongs to nothing yet
  for (long line = 1; line <= count; ++line) {
    const auto head = headOf(lines[static_cast<std::size_t>(line - 1)]);
    if (!head) continue;
    long start = line;
    while (start > next && isBlankOrComment(lines[static_cast<std::size_t>(start - 2)])) --start;
    if (component.procedures.empty()) component.declarationLines = start - 1;
    while (line < count && !isEnd(lines[static_cast<std::size_t>(line - 1)])) ++line;
    component.procedures.push_back({head->first, head->second, start, line - start + 1});
    next = line + 1;
  }
  if (component.procedures.empty()) {
    component.declarationLines = count;
  } else {
    Procedure& last = component.procedures.back();
    last.count = count - last.start + 1;
  }
}

std::vector<Project> readProjects(const std::filesystem::path& folder) {
  std::vector<Project> projects;
  for (const std::wstring& line : readLines(folder / L"projects.txt", true)) {
    Words words(line);
    const std::wstring what = words.next();
    if (what == L"project") {
      projects.push_back({.name = words.rest(), .file = {}, .components = {}});
    } else if (what == L"file") {
      projects.back().file = words.rest();
    } else if (what == L"protection") {
      projects.back().protection = words.number();
    } else if (what == L"component") {
      Component component;
      component.type = words.number();
      component.lines = readLines(folder / words.next(), false);
      component.name = words.rest();
      findProcedures(component);
      projects.back().components.push_back(std::move(component));
    }
  }
  return projects;
}

}  // namespace

std::vector<std::wstring> readLines(const std::filesystem::path& file, bool utf8) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  std::string bytes = readFile(file);
  const bool marked = bytes.starts_with(kMark);
  if (marked) bytes.erase(0, kMark.size());
  std::wistringstream text(utf8 || marked ? fromUtf8(bytes) : fromAnsi(bytes));
  std::vector<std::wstring> lines;
  for (std::wstring line; std::getline(text, line);) {
    if (line.ends_with(L'\r')) line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

HostFolder::HostFolder(std::filesystem::path path)
    : path_(std::move(path)), projects_(readProjects(path_)) {
  readCommands();
}

HRESULT HostFolder::beginCall(std::wstring_view object, std::wstring_view member) {
  readCommands();
  if (commands_.delay != 0) Sleep(commands_.delay);
  if (commands_.busyCalls > 0) {
    --commands_.busyCalls;
    ++rejected_;
    return commands_.busyCode;
  }
  if (member.empty()) {
    ++names_;
    return S_OK;
  }
  ++allCalls_;
  ++calls_[std::wstring(member)];
  if (member == commands_.deadlyMember && --commands_.deadlyCount == 0) onDeath();
  for (const auto& [failing, of, error] : commands_.failures)
    if (member == failing && (of == L"*" || of == object)) throw error;
  return S_OK;
}

void HostFolder::readCommands() {
  const auto taken = path_ / L"taken.txt";
  std::error_code notYet;  // not there, or still in the writer's hands
  rename(path_ / L"commands.txt", taken, notYet);
  if (notYet) return;
  commands_ = {};
  for (const std::wstring& line : readLines(taken, true)) obey(line);
}

void HostFolder::obey(const std::wstring& line) {
  Words words(line);
  const std::wstring what = words.next();
  if (what == L"refuse") {
    commands_.refuse = true;
  } else if (what == L"quit") {
    commands_.quit = true;
  } else if (what == L"busy") {
    commands_.busyCalls = words.number();
    commands_.busyCode = static_cast<HRESULT>(words.number(16));
  } else if (what == L"slow") {
    commands_.delay = static_cast<DWORD>(words.number());
  } else if (what == L"die") {
    commands_.deadlyMember = words.next();
    commands_.deadlyCount = words.number();
  } else if (what == L"fail") {
    Failure failure{words.next(), words.next(), {}};
    failure.error.number = static_cast<std::uint16_t>(words.number());
    failure.error.description = words.rest();
    commands_.failures.push_back(std::move(failure));
  } else if (!what.empty()) {
    log(L"unknown command: " + line);
  }
}

void HostFolder::log(std::wstring_view line) const {
  std::ofstream(path_ / L"log.txt", std::ios::binary | std::ios::app) << toUtf8(line) << '\n';
}

bool HostFolder::isAsked() const {
  std::error_code notYet;  // still in the writer's hands: next time
  return exists(path_ / L"ask", notYet);
}

void HostFolder::answer() const {
  std::error_code notYet;
  remove(path_ / L"ask", notYet);
}

void HostFolder::writeStatus(std::string_view state, long references, bool visible) const {
  std::ostringstream text;
  text << "state " << state << "\nprocess " << GetCurrentProcessId() << "\nvisible " << visible
       << "\nreferences " << references << "\ncalls " << allCalls_ << "\nnames " << names_
       << "\nrejected " << rejected_ << '\n';
  for (const auto& [member, count] : calls_)
    text << "calls." << toUtf8(member) << ' ' << count << '\n';
  for (int attempt = 0; attempt < 100; ++attempt, Sleep(5)) {
    try {
      AtomicFile file(path_ / L"status.txt");
      file.stream() << text.str();
      return file.commit();
    } catch (const FileError&) {  // somebody is reading it
    }
  }
}

}  // namespace tintline::test
