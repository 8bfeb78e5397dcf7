// What settings files say. See settings.h.
// Tested by tests/cli/run.py.
#include "cli/settings.h"

#include <filesystem>
#include <system_error>

#include "base/codepage.h"
#include "base/file.h"
#include "base/resources.h"
#include "cli/messages.h"
#include "convert/exact.h"
#include "settings/modIniSave.h"

namespace tintline {
namespace {

constexpr std::string_view kKeywordsFile = "vb.ini";

// The file that an option names, else the one beside the program; empty when
// there is none.
std::filesystem::path settingsPath(const std::string& argument, std::string_view name,
                                   const Surroundings& surroundings) {
  if (!argument.empty()) return argumentPath(argument);
  std::error_code missing;
  const std::filesystem::path path = surroundings.programFolder / name;
  return std::filesystem::exists(path, missing) ? path : std::filesystem::path();
}

// The bytes of a file without which the run makes no sense. To name one that cannot be read is
// wrong usage; one beside the program throws FileError.
std::string readNeeded(const std::filesystem::path& path, const std::string& argument) {
  try {
    return readFile(path);
  } catch (const FileError& error) {
    if (argument.empty()) throw;
    throw UsageError(messages::kAbout(pathText(path), reasonText(error.reason())));
  }
}

std::optional<std::string> loadKeywords(const Options& options, const Surroundings& surroundings) {
  const auto path = settingsPath(options.keywords, kKeywordsFile, surroundings);
  if (path.empty()) return {};
  std::string bytes = readNeeded(path, options.keywords);
  const auto warn = [&](std::wstring_view section) {
    surroundings.tell({.severity = Notice::Severity::Warning,
                       .file = pathText(path),
                       .message = messages::kSectionEmpty(section)});
  };
  const KeywordOutcome outcome = SchluesselworteLaden(bytes).outcome;
  if (outcome == KeywordOutcome::Keywords1Missing) warn(L"Keywords 1");
  if (outcome == KeywordOutcome::Keywords2Missing) warn(L"Keywords 2");
  return bytes;
}

// As at the start of the program, but nothing is ever written.
ColorScheme loadColors(const std::filesystem::path& path) {
  ColorScheme scheme;
  const bool complete = !path.empty() && modIniSave::readColors(path, scheme);
  if (!complete) modIniSave::setMissingColors(scheme);
  return scheme;
}

}  // namespace

Settings loadSettings(const Options& options, const Surroundings& surroundings) {
  const auto settings = settingsPath(options.settings, modIniSave::kSettingsFile, surroundings);
  if (!settings.empty())
    readNeeded(settings, options.settings);  // else it would silently count as empty
  const auto stored = [&settings](std::string_view key) {
    return settings.empty() ? std::string() : modIniSave::fkt_IniWertLesen(settings, key);
  };
  return {.keywords = loadKeywords(options, surroundings),
          .colors = loadColors(settings),
          .clipboard = {.PreCode = stored("PreCode"), .PostCode = stored("PostCode")}};
}

KeywordTable classicKeywords(const Settings& settings) {
  if (settings.keywords) return SchluesselworteLaden(*settings.keywords).table;
  return StandardSchluesselworteLaden(programResource(101), programResource(102));
}

vb::WordLists exactKeywords(const Settings& settings) {
  return settings.keywords ? exactWords(*settings.keywords) : vb::WordLists();
}

}  // namespace tintline
