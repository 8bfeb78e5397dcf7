// See program_fixture.h.
#include "tests/app/program_fixture.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "output/exact_page.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kShortList = 12;

// Of a long list the first and the last lines.
std::string described(const ListBox& list) {
  std::string text = std::to_string(list.ListCount()) + " lines";
  for (std::size_t i = 0; i < list.ListCount(); ++i) {
    if (list.ListCount() > kShortList && i > 1 && i + 1 < list.ListCount()) continue;
    const bool current = list.ListIndex() == static_cast<std::ptrdiff_t>(i);
    text.append(current ? "\n   >" : "\n    ").append(list.Selected(i) ? "*" : "|");
    text.append(toUtf8(list.text(i))) += '|';
  }
  return text;
}

void add(const TreeNode& node, std::string& text) {
  text += '\n' + std::string(2 * node.path().size() + 2, ' ');
  text += toUtf8(node.Text()) + " [" + node.Image() + "/" + node.SelectedImage() + "]";
  if (!node.Children().empty() && !node.Expanded()) text += " +";
  for (const auto& child : node.Children()) add(*child, text);
}

// Exact pages change with their style sheet.
std::string sizeOf(std::string_view html) {
  return isExactPage(html) ? "exact page" : std::to_string(html.size()) + " bytes";
}

std::string yesNo(bool yes) { return yes ? "yes" : "no"; }

// The first piece of each look.
std::string described(const SampleLabel& label) {
  const CodeSample& sample = label.Sample;
  std::ostringstream text;
  text << "\n    " << std::hex << sample.ink << " on " << sample.ground;
  std::vector<TextLooks> seen{{}};
  for (const CodeSample::Line& line : sample.lines)
    for (const auto& [words, looks] : line.pieces) {
      if (std::ranges::find(seen, looks) != seen.end()) continue;
      seen.push_back(looks);
      text << " | " << toUtf8(words) << ": " << looks.color.value_or(sample.ink);
      if (looks.background) text << (line.ground ? " line " : " on ") << *looks.background;
      text << (looks.bold ? " bold" : "") << (looks.italic ? " italic" : "");
    }
  return std::move(text).str();
}

}  // namespace

// The first line that differs; the whole is left below build/.
Transcript::~Transcript() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  const std::string name = std::string(test->test_suite_name()) + "." + test->name() + ".txt";
  std::ifstream file("tests/app/expected/" + name, std::ios::binary);
  const std::string expected{std::istreambuf_iterator<char>(file), {}};
  const fs::path fresh = fs::path("build/transcripts") / name;
  fs::remove(fresh);
  if (written == expected) return;
  fs::create_directories(fresh.parent_path());
  writeText(fresh, written);
  std::istringstream old(expected), now(written);
  std::string before, after;
  do before.clear(), after.clear();
  while (std::getline(old, before) && std::getline(now, after) && before == after);
  ADD_FAILURE() << "expected: " << before << "\n     got: " << after << "\n" << fresh.string();
}

Program::Program(Transcript& transcript, const std::function<void(FakePorts&)>& before)
    : app((before(ports), ports.ports())), form(app.mainWindow), transcript_(transcript) {
  app.splash.makeView = splashWindow.maker();
  app.farbeinstellung.makeView = colorWindow.maker();
  app.prePostCode.makeView = prePostWindow.maker();
  app.prozeduren.makeView = proceduresWindow.maker();
  form.makeView = mainWindow.maker();
  form.setView(&shown_);
  form.Frame1.setView(&shown_);
  form.PopupMenu = [this](std::span<const MenuEntry> entries) {
    for (const MenuEntry& entry : entries)
      transcript_.written += "  menu: " + toUtf8(entry.caption) + "\n";
  };
}

void Program::Shown::refresh(Control&) {
  const frmVBACode& window = program.form;
  if (window.List1.ListCount() <= kShortList)
    program.transcript_.written += "  shows: " + program.readable(window.Label9.Caption()) + " / " +
                                   program.readable(window.Label10.Caption()) +
                                   (window.Topmost ? " topmost\n" : "\n");
}

void Program::step(const std::string& what, const std::function<void()>& work) {
  transcript_.written += what + "\n";
  work();
  noteQuestions();
  State now = state();
  for (const auto& [key, value] : now) {
    const auto old = std::find_if(seen_.begin(), seen_.end(),
                                  [&key = key](const auto& entry) { return entry.first == key; });
    if (old == seen_.end() ? !value.empty() : old->second != value)
      transcript_.written += "  " + key + ": " + value + "\n";
  }
  for (const auto& [key, value] : seen_)
    if (std::none_of(now.begin(), now.end(),
                     [&key = key](const auto& e) { return e.first == key; }))
      transcript_.written += "  " + key + ": gone\n";
  seen_ = std::move(now);
}

void Program::select(ListBox& list, const std::vector<std::size_t>& lines) {
  std::vector<bool> selection(list.ListCount());
  for (const std::size_t line : lines) selection[line] = true;
  step(&list == &form.List1 ? "select source lines" : "select HTML lines", [&] {
    list.userSelected(selection,
                      lines.empty() ? ListBox::kNone : static_cast<std::ptrdiff_t>(lines.back()));
  });
}

void Program::tryEverything() {
  for (int command = 1; command < static_cast<int>(Command::mnuAbbrechen); ++command)
    if (command != static_cast<int>(Command::mnubeenden))
      form.execute(static_cast<Command>(command));
  for (const CommandButton* button :
       {&form.cmdMakro, &form.cmdAuswahl, &form.cmdHTMClp, &form.cmdExport})
    button->Click();
  form.Check2.Click();
  form.fileDropped(ports.files.folder / "a.bas");
  if (form.List1.ListCount() > 0) form.List1.userSelected(std::vector<bool>(1, true), 0);
  if (form.TreeView1.empty()) return;
  TreeNode& node = *form.TreeView1.roots().front();
  form.TreeView1.userSelected(node);
  form.TreeView1.userRightClicked(node);
}

// In UTF-8, without the name of the test's folder, alike on every platform.
std::string Program::readable(std::wstring_view text) const {
  std::string result = toUtf8(text);
  const std::string version = toUtf8(versionText());
  if (const std::size_t at = result.find(version); at != std::string::npos)
    result.replace(at, version.size(), "<version>");
  const std::string folder = toUtf8(pathText(ports.files.folder.path()));
  const std::size_t first = result.find(folder);
  for (std::size_t at = first; (at = result.find(folder, at)) != std::string::npos;)
    result.replace(at, folder.size(), "<folder>");
  if (first != std::string::npos)
    std::replace(result.begin() + static_cast<std::ptrdiff_t>(first), result.end(), '\\', '/');
  for (std::size_t at = 0; (at = result.find("\r\n", at)) != std::string::npos;)
    result.replace(at, 2, "|");
  return result;
}

Program::State Program::state() {
  State state = {
      {"window", yesNo(mainWindow.open)},
      {"splash", yesNo(splashWindow.open)},
      {"caption", readable(form.Caption())},
      {"Frame1", readable(form.Frame1.Caption())},
      {"Label9", readable(form.Label9.Caption())},
      {"Label10", readable(form.Label10.Caption())},
      {"export path", readable(form.lblExportPfad.ToolTipText())},
      {"cmdMakro", readable(form.cmdMakro.Caption())},
      {"can", buttons()},
      {"pointer", form.MousePointer() == Pointer::Hourglass ? "hourglass" : ""},
      {"topmost", form.Topmost() ? "yes" : ""},
      {"options", std::string(form.Check1.Value ? "numbers " : "") +
                      (form.optStyle.Value ? "style " : "") +
                      (form.optClass.Value ? "class " : "") +
                      (form.optGenau.Value ? "exact " : "") + (form.Check2.Value ? "preview" : "")},
      {"preview", yesNo(form.FrameVorschau.Visible && form.wBrowser.Visible)},
      {"List1", described(form.List1)},
      {"List2", described(form.List2)},
      {"HTML", sizeOf(form.HTMLText)},
      {"table", std::to_string(form.HTMLTabelle.size()) + " bytes"},
      {"page", page()},
      {"preview shows", readable(form.wBrowser.anchor())},
      {"tree", tree()},
      {"dialog", dialog()},
      {"node", form.TreeView1.SelectedItem() == nullptr
                   ? ""
                   : readable(form.TreeView1.SelectedItem()->Text())},
      {"clipboard", readable(ports.clipboard.content)},
      {"clipboard HTML", readable(fromUtf8(ports.clipboard.formats.html))},
      {"clipboard RTF", readable(fromAnsi(ports.clipboard.formats.rtf))},
  };
  std::string colours;
  for (const auto& fields : app.colors) {
    for (const std::string& field : fields) colours += field + ",";
    colours += "|";
  }
  state.emplace_back("colours", colours);
  state.emplace_back("settings", readable(app.splash.lblEinstellungen.Caption()));
  addHost(state, "Word", ports.office.word);
  addHost(state, "Excel", ports.office.excel);
  std::string opened;
  for (const std::wstring& target : ports.shell.opened) opened += " " + readable(target);
  state.emplace_back("opened", opened);
  addFiles(state);
  return state;
}

// What the preview has to show.
std::string Program::page() {
  std::error_code none;
  const fs::path file = form.wBrowser.page();
  if (!fs::is_regular_file(file, none)) return {};
  const std::string text = readFile(file);
  const bool body = text.find("<pre>\r\n" + form.HTMLText + "\r\n</pre>") != std::string::npos;
  const bool dummy = text.find("In diesem Bereich") != std::string::npos;
  return std::string(text == form.HTMLText ? "exact result"
                     : isExactPage(text)   ? "exact result with ids"
                     : body                ? "result"
                     : dummy               ? "placeholder"
                                           : "other") +
         " in " + readable(pathText(file)) + (form.wBrowser.keepsPlace() ? ", place kept" : "") +
         (form.wBrowser.navigations() > 1 ? "" : " first");
}

// What can be started.
std::string Program::buttons() const {
  const std::pair<Command, const char*> commands[] = {{Command::mnudatei, "open"},
                                                      {Command::mnuModul, "Modul"},
                                                      {Command::mnuMakro, "Makro"},
                                                      {Command::mnuAuswahl, "Auswahl"},
                                                      {Command::mnuAlleModule, "all"},
                                                      {Command::cmdVBAClp, "copy-source"},
                                                      {Command::cmdExport, "export"},
                                                      {Command::mnu2word, "word"},
                                                      {Command::mnuCopy, "copy"},
                                                      {Command::mnuFormat, "indent"},
                                                      {Command::mnuFormat2, "outdent"},
                                                      {Command::mnuUmbruch, "wrap"},
                                                      {Command::mnutrennen, "part-word"},
                                                      {Command::mnutrennen2, "part-excel"},
                                                      {Command::mnuexport, "module-export"},
                                                      {Command::mnuSchluesselworte, "keywords"}};
  std::string text;
  for (const auto& [command, name] : commands)
    if (form.isEnabled(command)) text.append(name) += ' ';
  if (form.cmdHTMClp.Enabled) text += "copy-html ";
  if (form.optStyle.Enabled && form.optClass.Enabled && form.Check1.Enabled) text += "options";
  return text;
}

std::string Program::tree() const {
  std::string text;
  for (const auto& root : form.TreeView1.roots()) add(*root, text);
  return text;
}

// What the dialog shows that is open.
std::string Program::dialog() const {
  const frmPrePostCode& codes = app.prePostCode;
  if (codes.isShown())
    return readable(codes.txtPreCode.Text()) + " / " + readable(codes.txtPostCode.Text());
  const frmProzeduren& procedures = app.prozeduren;
  if (procedures.isShown())
    return toUtf8(procedures.lblAnzahl.Caption()) + " " + described(procedures.lstProzeduren);
  const frmFarbeinstellung& colours = app.farbeinstellung;
  if (!colours.isShown()) return {};
  std::string text =
      toUtf8(colours.txtFarbe.Text() + L" / " + colours.txtHintergrund.Text()) +
      (colours.chkTransparent.Value ? " transparent " : " ") +
      (colours.cmdSpeichern.Enabled ? "" : "not to be saved ") +
      toUtf8(colours.lblHinweis.Caption()) + "\n    " +
      toUtf8(colours.lblFarbe.Caption() + L", " + colours.lblHintergrundfarbe.Caption());
  return text + described(colours.lblMusterKlassisch) + described(colours.lblMusterGenau);
}

void Program::addHost(State& state, const char* name, const FakeHost& host) const {
  std::string text;
  if (host.running || host.quits + host.starts + host.living > 0)
    text = std::string(host.running ? "running" : "ended") + (host.visible ? ", visible" : "") +
           ", " + std::to_string(host.living) + " objects held, " + std::to_string(host.starts) +
           " starts, " + std::to_string(host.quits) + " quits";
  for (const auto& document : host.documents) {
    text += "\n    document" + std::string(document->closed ? " (closed)" : "");
    for (const auto& [property, value] : document->properties)
      text += " " + toUtf8(property) + "=" + toUtf8(value);
    const std::size_t begin = std::min(document->inserted.find("<pre>"), document->inserted.size());
    text += "\n    " + readable(fromAnsi(document->inserted.substr(begin)));
  }
  state.emplace_back(name, text);
}

// The files in the test's folder but for the preview's page: short ones whole.
void Program::addFiles(State& state) {
  constexpr std::size_t kShown = 400;
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(ports.files.folder.path())) {
    if (!entry.is_regular_file() || entry.path().filename() == "dummy.html") continue;
    const std::string text = readFile(entry.path());
    files[readable(pathText(entry.path()))] =
        text.size() <= kShown
            ? readable(fromAnsi(text))
            : sizeOf(text) + (text.find(form.HTMLText) == std::string::npos ? "" : ", the result");
  }
  state.insert(state.end(), files.begin(), files.end());
}

void Program::noteQuestions() {
  for (; asked_ < ports.dialogs.asked.size(); ++asked_)
    transcript_.written += "  " + readable(ports.dialogs.asked[asked_]) + '\n';
}

}  // namespace tintline::test
