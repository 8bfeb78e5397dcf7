// See project_file.h. Tested by tests/unit/site/site_test.cpp.
#include "site/project_file.h"

#include <algorithm>

#include "vb/fold.h"

namespace tintline::site {
namespace {

constexpr std::u8string_view kModuleKeys[] = {u8"Module",      u8"Class",        u8"Form",
                                              u8"UserControl", u8"PropertyPage", u8"UserDocument",
                                              u8"Designer"};
constexpr std::u8string_view kLibraryTypes[] = {u8"OleDll", u8"OleExe", u8"Control"};
constexpr std::u8string_view kExtensions[] = {u8".bas", u8".cls", u8".frm", u8".ctl",
                                              u8".pag", u8".dob", u8".dsr"};

std::u8string_view trimmed(std::u8string_view text) {
  const auto isBlank = [](char8_t c) { return c == u8' ' || c == u8'\t'; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::u8string_view unquoted(std::u8string_view text) {
  text = trimmed(text);
  const bool quoted = text.size() >= 2 && text.front() == u8'"' && text.back() == u8'"';
  return quoted ? text.substr(1, text.size() - 2) : text;
}

constexpr std::size_t kLongestPath = 4096;  // no system has longer ones that matter

// A path of another machine, a drive or a device, also in forms that only some systems know.
bool leadsElsewhere(std::u8string_view path) {
  return path.size() > kLongestPath || path.starts_with(u8'/') ||
         path.find(u8':') != std::u8string_view::npos ||
         path.find(u8'\0') != std::u8string_view::npos;
}

ProjectFile::Entry entryOf(std::u8string_view value) {
  const std::size_t separator = value.find(u8';');  // behind the name of a module
  if (separator != std::u8string_view::npos) value.remove_prefix(separator + 1);
  ProjectFile::Entry entry{.path = std::u8string(unquoted(value))};
  std::ranges::replace(entry.path, u8'\\', u8'/');
  entry.allowed = !leadsElsewhere(entry.path) && isModuleName(entry.path);
  return entry;
}

}  // namespace

bool isModuleName(std::u8string_view file) {
  const std::size_t point = file.rfind(u8'.');
  return point != std::u8string_view::npos && vb::isOneOf(kExtensions, file.substr(point));
}

ProjectFile readProjectFile(std::u8string_view text) {
  ProjectFile project;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(u8"\r\n"), text.size());
    const std::u8string_view line = text.substr(0, end);
    text.remove_prefix(std::min(text.size(), end + 1));
    const std::size_t equals = line.find(u8'=');
    if (equals == std::u8string_view::npos) continue;
    const std::u8string_view key = trimmed(line.substr(0, equals));
    const std::u8string_view value = line.substr(equals + 1);
    if (vb::isOneOf(kModuleKeys, key))
      project.modules.push_back(entryOf(value));
    else if (vb::equalFolded(key, u8"Name"))
      project.name = unquoted(value);
    else if (vb::equalFolded(key, u8"Type"))
      project.isLibrary = vb::isOneOf(kLibraryTypes, trimmed(value));
  }
  return project;
}

}  // namespace tintline::site
