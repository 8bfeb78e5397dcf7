// What settings files say, and options in their place: words, colours, texts around a copy, the
// language of pages, a style sheet. The files are only read.
//
// Tested by tests/cli/run.py.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>

#include "base/message.h"
#include "cli/options.h"
#include "cli/run.h"
#include "convert/classic.h"
#include "engine/color_scheme.h"
#include "engine/keyword_table.h"
#include "listing/palette.h"
#include "vb/word.h"

namespace tintline {

struct SettingsFile {
  std::filesystem::path path{};  // empty: there is none
  bool isNamed = false;          // by an option or the environment, not just found
};

struct SettingsFiles {
  SettingsFile settings, keywords, css;
};

// Where the settings come from: the first that there is of what an option names, what the
// environment names, and the files in the folders of the surroundings.
SettingsFiles findSettings(const Options& options, const Surroundings& surroundings);

// Where a setting comes from.
enum class Origin : std::uint8_t { Default, File, Option };

struct Settings {
  SettingsFiles files;
  std::optional<std::string> keywords{};  // the bytes of the vb.ini, if there is one
  ColorScheme colors{};
  std::array<Origin, kColorCategories> colorOrigins{};
  ClipboardFrame clipboard{};
  Language language = Language::German;  // of the words on pages
  Origin languageOrigin = Origin::Default;
  std::u8string css{};
};

// Throws UsageError when a file that somebody named cannot be read, FileError for one that was
// found. Warns of what a file should have and has not.
Settings loadSettings(const SettingsFiles& files, const Options& options,
                      const Surroundings& surroundings);

// The words of both modes.
KeywordTable classicKeywords(const Settings& settings);
vb::WordLists exactKeywords(const Settings& settings);

// The colours of exact pages.
listing::UserColors userColors(const Settings& settings, const Options& options);

}  // namespace tintline
