// See print_settings.h. Tested by tests/cli/run.py.
#include "cli/print_settings.h"

#include <string>
#include <string_view>

#include "base/codepage.h"
#include "cli/messages.h"
#include "settings/modIniSave.h"

namespace tintline {
namespace {

class Printer {
 public:
  Printer(const Settings& settings, const Options& options, const Surroundings& surroundings)
      : settings_(settings),
        options_(options),
        out_(surroundings.output),
        language_(surroundings.language) {}

  void print() {
    tellFiles();
    out_ << "[TINTLINE]\n";
    for (std::size_t i = 0; i < kColorCategories; ++i) printColor(i);
    const Origin texts = settings_.files.settings.path.empty() ? Origin::Default : Origin::File;
    printValue("PreCode", settings_.clipboard.PreCode, texts, L"");
    printValue("PostCode", settings_.clipboard.PostCode, texts, L"");
    printValue(modIniSave::kLanguageKey, settings_.language == Language::German ? "de" : "en",
               settings_.languageOrigin, L"--lang");
    out_.flush();
  }

 private:
  void tell(const Message& message) { out_ << toUtf8(message.in(language_)); }

  void tellFiles() {
    const SettingsFiles& files = settings_.files;
    const auto nameOf = [](const SettingsFile& file, const Text<0>& none) {
      return file.path.empty() ? none() : valueOf(pathText(file.path));
    };
    tell(messages::kSettingsFrom(nameOf(files.settings, messages::kNoSettingsFile)));
    tell(messages::kKeywordsFrom(nameOf(files.keywords, messages::kBuiltIn)));
    if (!files.css.path.empty()) tell(messages::kStyleSheetFrom(pathText(files.css.path)));
    tell(messages::kExactDefaults());
  }

  void printColor(std::size_t category) {
    std::array<std::string, kColorFields> fields = settings_.colors[category];
    if (const auto& color = options_.colors[category]) {
      const std::uint32_t value = *color >> 16 | (*color & 0xFF00) | (*color & 0xFF) << 16;
      fields[kTextColor] = modColor::fkt_FarbText(value, {});
      fields[kTextNumber] = std::to_string(value);
    }
    std::string value;
    for (std::size_t i = 0; i < kColorFields; ++i) (value += i == 0 ? "" : ",") += fields[i];
    printValue(modIniSave::fkt_FarbSchluessel()[category], value, settings_.colorOrigins[category],
               L"--color");
  }

  // The comma is what reading drops.
  void printValue(std::string_view key, std::string_view value, Origin origin,
                  std::wstring_view option) {
    if (origin == Origin::Default) tell(messages::kDefault());
    if (origin == Origin::Option) tell(messages::kFromOption(option));
    out_ << key << '=' << value << ",\n";
  }

  const Settings& settings_;
  const Options& options_;
  std::ostream& out_;
  const Language language_;
};

}  // namespace

void printSettings(const Settings& settings, const Options& options,
                   const Surroundings& surroundings) {
  Printer(settings, options, surroundings).print();
}

}  // namespace tintline
