// What the main window does before it shows: splash, colours, keyword lists,
// placeholder page. Tested by tests/app/start_test.cpp.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <utility>

#include "app/application.h"
#include "app/frmVBACode/frmVBACode.h"
#include "base/file.h"
#include "base/resources.h"
#include "convert/exact.h"
#include "settings/modIniSave.h"

namespace tintline {
namespace {

constexpr std::chrono::milliseconds kKeywordPause{100};
constexpr std::chrono::milliseconds kWaitStep{10};  // the waits leave the processor to others

// The control file's bytes; one that cannot be read counts as empty.
std::string readControlFile(const std::filesystem::path& file) {
  try {
    return readFile(file);
  } catch (const FileError&) {
    return {};
  }
}

}  // namespace

void frmVBACode::Initialisieren() {
  application_.splash.Load();
  application_.HelpFile = ports_.files.programFolder() / "TINTLINE2.chm::/topic.txt";
  memory.load();
  showBrightness();
  Check2.Value = false;
  clearLists();
  showHints();
  Inilesen();
  showInks();
  application_.splash.Load();  // again: its label tells the version
  Caption =
      L"VB(A)-Code in HTML-Format umwandeln (" + application_.splash.lblVersion.Caption() + L")";
  Toolbar1.changed();
}

void frmVBACode::Inilesen() {
  frmSplash& splash = application_.splash;
  const float start = ports_.clock.timer();
  splash.ProgressBar1.Visible = false;
  splash.Label1.Visible = false;
  splash.Show();
  waitUntil(start, 1);
  splash.Label1.Visible = true;
  splash.Refresh();
  splash.ProgressBar1.Visible = true;
  modIniSave::fkt_FarbenLaden(application_.settingsFile, application_.colors);
  loadMode();
  cmdModul.Enabled = false;
  SchluesselworteLaden(kKeywordsFile);
  gesamtmodul_ = false;
  waitUntil(start, 2);
  showFirstPage();
  wBrowser.Visible = false;
  splash.Unload();
}

// Where no page can be written the program starts all the same.
void frmVBACode::showFirstPage() {
  try {
    DummySeite();
  } catch (const FileError&) {  // the preview stays empty
  }
}

// The timer starts again at midnight: then the wait is over.
void frmVBACode::waitUntil(float start, float seconds) {
  for (float now = start; now >= start && now < start + seconds; now = ports_.clock.timer()) {
    ports_.messageLoop.yield();
    ports_.clock.pause(kWaitStep);
  }
}

void frmVBACode::SchluesselworteLaden(std::string_view fileName) {
  const std::filesystem::path file = ports_.files.programFolder() / fileName;
  std::error_code missing;
  controlFile_ = std::filesystem::exists(file, missing);
  if (!controlFile_) return StandardSchluesselworteLaden();

  const std::string bytes = readControlFile(file);
  exactWords_ = exactWords(bytes);
  KeywordLoad load = tintline::SchluesselworteLaden(bytes);
  keywords_ = std::move(load.table);
  if (load.outcome == KeywordOutcome::Keywords1Missing) {
    ports_.dialogs.message(
        L"Die Steuerdatei mit den Schlüsselworten\r\n"
        L"wurde nicht gefunden!\r\n"
        L"Bitte ins aktuelle Verzeichnis kopieren.",
        MessageIcon::Critical, L"Fehler! Datei fehlt.");
    return;
  }
  showKeywordProgress(load.entries);
  if (load.outcome == KeywordOutcome::Keywords2Missing)
    ports_.dialogs.message(L"Nichts gefunden", MessageIcon::None, {});
  else
    application_.splash.ProgressBar1.Value = static_cast<int>(load.entries);
}

void frmVBACode::StandardSchluesselworteLaden() {
  ProgressBar& progress = application_.splash.ProgressBar1;
  keywords_ = tintline::StandardSchluesselworteLaden(programResource(101), programResource(102));
  const auto entries = std::count(keywords_.Keywords1().begin(), keywords_.Keywords1().end(), '\0');
  showKeywordProgress(static_cast<std::size_t>(entries));
  application_.splash.Refresh();
  ports_.clock.pause(kKeywordPause);
  progress.Value = progress.Max();
}

void frmVBACode::showKeywordProgress(std::size_t entries) {
  ProgressBar& progress = application_.splash.ProgressBar1;
  progress.Max = static_cast<int>(entries) + 5;
  progress.Value = static_cast<int>(entries) / 2;
}

}  // namespace tintline
