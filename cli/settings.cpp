// What settings files say. See settings.h.
// Tested by tests/cli/run.py.
#include "cli/settings.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "base/resources.h"
#include "base/text.h"
#include "cli/messages.h"
#include "convert/exact.h"
#include "settings/modIniSave.h"

namespace tintline {
namespace {

constexpr std::string_view kKeywordsFile = "vb.ini";
constexpr std::size_t kLargestStyleSheet = std::size_t{1} << 20;

SettingsFile findFirst(const std::string& argument, const std::filesystem::path& fromEnvironment,
                       std::string_view name, const Surroundings& surroundings) {
  if (!argument.empty()) return {.path = argumentPath(argument), .isNamed = true};
  if (!fromEnvironment.empty()) return {.path = fromEnvironment, .isNamed = true};
  std::error_code missing;
  for (const std::filesystem::path& folder : surroundings.settingsFolders)
    if (std::filesystem::exists(folder / name, missing)) return {.path = folder / name};
  return {};
}

// The bytes of a file without which the run makes no sense; "" without a file.
std::string readNeeded(const SettingsFile& file) {
  if (file.path.empty()) return {};
  try {
    return readFile(file.path);
  } catch (const FileError& error) {
    if (!file.isNamed) throw;
    throw UsageError(messages::kAbout(pathText(file.path), reasonText(error.reason())));
  }
}

// Reads what a file says into settings that hold the defaults, and warns of what it does not say.
class Loader {
 public:
  Loader(const SettingsFiles& files, const Surroundings& surroundings)
      : files_(files), surroundings_(surroundings) {}

  void loadKeywords(Settings& settings) const {
    if (files_.keywords.path.empty()) return;
    settings.keywords = readNeeded(files_.keywords);
    const KeywordOutcome outcome = SchluesselworteLaden(*settings.keywords).outcome;
    const auto warnOf = [&](std::wstring_view section) {
      warn(files_.keywords, messages::kSectionEmpty(section));
    };
    if (outcome == KeywordOutcome::Keywords1Missing) warnOf(L"Keywords 1");
    if (outcome == KeywordOutcome::Keywords2Missing) warnOf(L"Keywords 2");
  }

  void loadSettings(Settings& settings) const {
    if (files_.settings.path.empty()) return;
    const std::string content = readNeeded(files_.settings);
    for (std::size_t i = 0; i < kColorCategories; ++i) loadColor(content, i, settings);
    settings.clipboard = {.PreCode = modIniSave::storedText(content, "PreCode"),
                          .PostCode = modIniSave::storedText(content, "PostCode")};
    loadLanguage(content, settings);
    const auto isStored = [&](std::string_view key) {
      return modIniSave::storedValue(content, key).has_value();
    };
    if (!std::ranges::any_of(modIniSave::fkt_FarbSchluessel(), isStored) && !isStored("PreCode") &&
        !isStored("PostCode") && !isStored(modIniSave::kLanguageKey))
      warn(files_.settings, messages::kNoSetting());
  }

  void loadStyleSheet(Settings& settings) const {
    const std::string bytes = readNeeded(files_.css);
    if (bytes.size() > kLargestStyleSheet)
      throw UsageError(messages::kAbout(pathText(files_.css.path),
                                        messages::kTooLarge(kLargestStyleSheet >> 20)));
    settings.css = exactStyleSheet(bytes);
  }

 private:
  // A category that is missing or damaged keeps its default.
  void loadColor(std::string_view content, std::size_t category, Settings& settings) const {
    const std::string_view key = modIniSave::fkt_FarbSchluessel()[category];
    if (!modIniSave::storedValue(content, key)) return;
    const std::wstring name = argumentText(key);
    const std::string value = modIniSave::storedText(content, key);
    const std::vector<std::string_view> fields = Split(value, ',');
    if (fields.size() < kColorFields) return warn(files_.settings, messages::kColorDamaged(name));
    for (std::size_t field = 0; field < kColorFields; ++field)
      settings.colors[category][field] = fields[field];
    settings.colorOrigins[category] = Origin::File;
    for (const std::size_t field : {kTextColor, kBackColor})
      if (!listing::colorFromText(fields[field]))
        warn(files_.settings, messages::kNoColor(name, fromAnsi(fields[field])));
  }

  void loadLanguage(std::string_view content, Settings& settings) const {
    const auto stored = modIniSave::storedValue(content, modIniSave::kLanguageKey);
    if (!stored) return;
    const std::string value(Trim(stored->substr(0, stored->find(','))));  // with or without one
    const bool isEnglish = equalsIgnoreCase(value, "en");
    if (!isEnglish && !equalsIgnoreCase(value, "de"))
      return warn(files_.settings,
                  messages::kNoLanguage(argumentText(modIniSave::kLanguageKey), fromAnsi(value)));
    settings.language = isEnglish ? Language::English : Language::German;
    settings.languageOrigin = Origin::File;
  }

  void warn(const SettingsFile& file, const Message& message) const {
    surroundings_.tell(
        {.severity = Notice::Severity::Warning, .file = pathText(file.path), .message = message});
  }

  const SettingsFiles& files_;
  const Surroundings& surroundings_;
};

}  // namespace

SettingsFiles findSettings(const Options& options, const Surroundings& surroundings) {
  return {.settings = findFirst(options.settings, surroundings.settingsFile,
                                modIniSave::kSettingsFile, surroundings),
          .keywords =
              findFirst(options.keywords, surroundings.keywordsFile, kKeywordsFile, surroundings),
          .css = {.path = argumentPath(options.css), .isNamed = true}};
}

Settings loadSettings(const SettingsFiles& files, const Options& options,
                      const Surroundings& surroundings) {
  Settings settings{.files = files};
  modColor::Farbesetzen(settings.colors);
  const Loader loader(files, surroundings);
  loader.loadKeywords(settings);
  loader.loadSettings(settings);
  loader.loadStyleSheet(settings);
  if (options.language) {
    settings.language = *options.language;
    settings.languageOrigin = Origin::Option;
  }
  for (std::size_t i = 0; i < kColorCategories; ++i)
    if (options.colors[i]) settings.colorOrigins[i] = Origin::Option;
  return settings;
}

KeywordTable classicKeywords(const Settings& settings) {
  if (settings.keywords) return SchluesselworteLaden(*settings.keywords).table;
  return StandardSchluesselworteLaden(programResource(101), programResource(102));
}

vb::WordLists exactKeywords(const Settings& settings) {
  return settings.keywords ? exactWords(*settings.keywords) : vb::WordLists();
}

listing::UserColors userColors(const Settings& settings, const Options& options) {
  listing::UserColors colors = exactColors(settings.colors);
  std::optional<listing::Color>* const chosen[] = {&colors.procedures, &colors.reservedWords,
                                                   &colors.parameters, &colors.comments,
                                                   &colors.strings};
  for (std::size_t i = 0; i < kColorCategories; ++i)
    if (options.colors[i]) *chosen[i] = options.colors[i];
  return colors;
}

}  // namespace tintline
