// Entry of the command line `tintline`.
// Tested by tests/cli/run.py.
#include <cerrno>
#include <exception>
#include <string>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "cli/options.h"
#include "cli/platform.h"
#include "cli/run.h"
#include "cli/standard_stream.h"

namespace tintline {
namespace {

void tell(std::wstring_view text) { writeText(StandardStream::Error, text); }

// Nothing half-written stays, not even under another name.
void breakOff() {
  removeUnfinishedFiles();
  const bool counterShown = errorIsTerminal();
  tell(counterShown ? L"\ntintline: abgebrochen\n" : L"tintline: abgebrochen\n");
}

int print(std::wstring_view text) {
  if (writeText(StandardStream::Output, text)) return kAllConverted;
  if (errno == EPIPE) endAsUnread();
  tell(L"tintline: die Standardausgabe kann nicht geschrieben werden\n");
  return kSomeFailed;
}

int commandLine(const std::vector<std::string>& arguments) {
  prepareStandardStreams();
  keepFreedMemory();
  try {
    const Options options = parseOptions(arguments);
    if (options.help) return print(helpText());
    if (options.version) return print(L"tintline " + fromUtf8(TINTLINE_VERSION) + L'\n');
    onInterruption(breakOff);
    StandardOutput output;
    return run(options, {.programFolder = programFolder(),
                         .readInput = readStandardInput,
                         .output = output,
                         .tell = tell,
                         .terminal = errorIsTerminal()});
  } catch (const UsageError& error) {
    tell(L"tintline: " + error.message() + L"\n\"tintline --help\" zeigt, was möglich ist.\n");
    return kWrongUsage;
  } catch (const FileError& error) {
    tell(L"tintline: " + fromUtf8(error.what()) + L'\n');
    return kSomeFailed;
  } catch (const std::exception& error) {
    tell(L"tintline: unerwarteter Fehler: " + fromUtf8(error.what()) + L'\n');
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
