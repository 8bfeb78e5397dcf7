// See module_export.h. Tested by tests/unit/sources/sources_test.cpp.
#include "sources/module_export.h"

#include <algorithm>
#include <system_error>

#include "base/codepage.h"
#include "base/file.h"
#include "base/text.h"
#include "sources/office_project.h"

namespace tintline {
namespace {

const std::filesystem::path& existingFolder(const std::filesystem::path& folder) {
  std::error_code reason;
  std::filesystem::create_directory(folder, reason);
  if (reason) throw FileError(folder, reason);
  return folder;
}

std::wstring_view extensionOf(std::int32_t type) {
  switch (type) {
    case kStandardModule:
      return L".bas";
    case kClassModule:
    case kDocumentModule:
      return L".cls";
    case kFormModule:
      return L".frm";
    default:
      return L".txt";
  }
}

bool isForbidden(wchar_t c) {
  constexpr std::wstring_view kForbidden = L"<>:\"/\\|?*";
  return c < L' ' || kForbidden.find(c) != std::wstring_view::npos;
}

std::wstring_view withoutBlanks(std::wstring_view text) {
  while (text.starts_with(L' ')) text.remove_prefix(1);
  while (text.ends_with(L' ')) text.remove_suffix(1);
  return text;
}

// Whether the system takes the name for a device: by what stands before the first ".".
bool isDeviceName(std::wstring_view name) {
  const std::wstring_view stem = withoutBlanks(name.substr(0, name.find(L'.')));
  for (const std::string_view device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"})
    if (equalsIgnoreCase(toAnsi(stem), device)) return true;
  constexpr std::wstring_view kNumbers = L"123456789\u00B9\u00B2\u00B3";
  if (stem.size() != 4 || kNumbers.find(stem[3]) == std::wstring_view::npos) return false;
  const std::string kind = toAnsi(stem.substr(0, 3));
  return equalsIgnoreCase(kind, "COM") || equalsIgnoreCase(kind, "LPT");
}

std::wstring safeName(std::wstring_view name) {
  std::wstring safe(name);
  std::replace_if(safe.begin(), safe.end(), isForbidden, L'_');
  for (std::size_t i = safe.size(); i > 0 && (safe[i - 1] == L'.' || safe[i - 1] == L' '); --i)
    safe[i - 1] = L'_';
  return safe.empty() || isDeviceName(safe) ? L"_" + safe : safe;
}

// The last `count` decimal digits, zeros in front.
std::wstring digits(unsigned number, std::size_t count) {
  const std::wstring text = std::wstring(count, L'0') + std::to_wstring(number);
  return text.substr(text.size() - count);
}

}  // namespace

std::filesystem::path fkt_DatumsOrdner(const std::filesystem::path& base,
                                       std::chrono::year_month_day today) {
  return existingFolder(fkt_PfadVerbinden(
      base, L"VBA-" + digits(static_cast<unsigned>(static_cast<int>(today.year())), 4) +
                digits(static_cast<unsigned>(today.month()), 2) +
                digits(static_cast<unsigned>(today.day()), 2)));
}

std::filesystem::path fkt_ExportPfad(const std::filesystem::path& base,
                                     std::wstring_view documentName,
                                     std::wstring_view componentName, std::int32_t type) {
  return fkt_PfadVerbinden(existingFolder(fkt_PfadVerbinden(base, withoutBlanks(documentName))),
                           std::wstring(componentName).append(extensionOf(type)));
}

std::filesystem::path fkt_PfadVerbinden(const std::filesystem::path& folder,
                                        std::wstring_view name) {
  return folder / pathFromText(safeName(fkt_NullAbschneiden(name)));
}

std::wstring_view fkt_NullAbschneiden(std::wstring_view text) {
  return text.substr(0, text.find(L'\0'));
}

}  // namespace tintline
