// Entry of the command line `tintline`.
// Tested by tests/cli/run.py.
#include <cerrno>
#include <exception>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "cli/help.h"
#include "cli/language.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/platform.h"
#include "cli/run.h"
#include "cli/standard_stream.h"

namespace tintline {
namespace {

Language language() {
  static const Language known = userLanguage();
  return known;
}

void write(std::wstring_view text) { writeText(StandardStream::Error, text); }

NoticeFormat format = NoticeFormat::Text;  // of what is told

void tell(const Message& message, std::wstring file = {}) {
  const Notice notice{
      .severity = Notice::Severity::Error, .file = std::move(file), .message = message};
  write(noticeText(notice, format, language()));
}

// Nothing half-written stays, not even under another name.
void breakOff() {
  removeUnfinishedFiles();
  if (errorIsTerminal() && format == NoticeFormat::Text) write(L"\n");  // behind the counter
  tell(messages::kInterrupted());
}

int print(std::wstring_view text) {
  if (writeText(StandardStream::Output, text)) return kAllConverted;
  const std::error_code reason(errno, std::generic_category());
  if (reason == std::errc::broken_pipe) endAsUnread();
  tell(messages::kUnwritable(messages::kStandardOutput(), reasonText(reason)));
  return kSomeFailed;
}

int commandLine(const std::vector<std::string>& arguments) {
  prepareStandardStreams();
  keepFreedMemory();
  format = noticeFormat(arguments);
  try {
    Options options = parseOptions(arguments);
    if (options.help) return print(helpText(language()));
    if (options.version) return print(L"tintline " + fromUtf8(TINTLINE_VERSION) + L'\n');
    if (options.inputs.empty() && options.outputDir.empty() && !options.printSettings &&
        !inputIsTerminal())
      options.inputs.emplace_back(kStandardStream);
    onInterruption(breakOff);
    StandardOutput output;
    return run(options, {.settingsFolders = settingsFolders(),
                         .settingsFile = environmentPath("TINTLINE_SETTINGS"),
                         .keywordsFile = environmentPath("TINTLINE_KEYWORDS"),
                         .readInput = readStandardInput,
                         .output = output,
                         .write = write,
                         .terminal = errorIsTerminal(),
                         .language = language(),
                         .format = format});
  } catch (const UsageError& error) {
    Message message = error.message();
    if (message.code.empty()) message.code = "wrong-usage";
    tell(message);
    if (format == NoticeFormat::Text) write(messages::kSeeHelp().in(language()));
    return kWrongUsage;
  } catch (const FileError& error) {
    if (error.path().empty())
      tell(messages::kUnwritable(messages::kStandardOutput(), reasonText(error.reason())));
    else
      tell(reasonText(error.reason()), pathText(error.path()));
    return kSomeFailed;
  } catch (const std::exception& error) {
    tell(messages::kUnexpected(fromUtf8(error.what())));
    return kSomeFailed;
  }
}

}  // namespace
}  // namespace tintline

#ifdef _WIN32

extern "C" {
int _dowildcard = -1;  // the start-up code expands *.bas
}

int wmain(int count, wchar_t** arguments) {
  std::vector<std::string> utf8;
  for (int i = 1; i < count; ++i) utf8.push_back(tintline::toUtf8(arguments[i]));
  return tintline::commandLine(utf8);
}

#else

int main(int count, char** arguments) {
  return tintline::commandLine({arguments + (count > 0 ? 1 : 0), arguments + count});
}

#endif
