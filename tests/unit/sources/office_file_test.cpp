// Tests of sources/office_file: every way to hold a project, and damage of every kind. What a
// project is read as is written as one line a module, so that a row of a table tells all of it.
#include "sources/office_file/office_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>

#include "base/file.h"
#include "base/text.h"
#include "sources/office_file/compound_writer.h"
#include "sources/office_file/module_file.h"
#include "sources/office_file/module_text.h"
#include "sources/office_file/vba_compression.h"
#include "tests/support/office_fixture.h"
#include "tests/support/temp_folder.h"

namespace tintline::test {
namespace {

using namespace office_file;
using vb::ModuleKind;

OfficeFile read(std::string_view bytes) {
  MemorySource source(bytes);
  return readOfficeFile(source);
}

std::string ascii(std::u8string_view text) { return {text.begin(), text.end()}; }

std::string summary(const OfficeFile& file) {
  constexpr const char* kKinds[] = {"bas", "cls", "frm", "", "", "", "", "doc"};
  constexpr const char* kFaults[] = {
      "none",        "unknown",   "no project", "encrypted", "rights",   "excel 95",
      "visio",       "access",    "truncated",  "damaged",   "checksum", "method",
      "part locked", "too large", "too deep",   "no stream", "no list",  "compiled only"};
  std::string text;
  for (const Project& project : file.projects) {
    text += "[" + ascii(project.place) + (project.locked ? " locked" : "") +
            (project.isSigned ? " signed" : "") + "]";
    for (const office_file::Module& module : project.modules)
      text += " " + ascii(module.name) + "." + kKinds[static_cast<int>(module.kind)] + ":" +
              std::to_string(editorLines(module.source));
  }
  for (const Problem& problem : file.problems)
    text += " !" + ascii(problem.place) + ":" + ascii(problem.module) + " " +
            kFaults[static_cast<int>(problem.fault)];
  return text;
}
std::string summary(std::string_view bytes) { return summary(read(bytes)); }

// What is read of the sample project, behind its place.
const std::string kSample =
    "] DieseArbeitsmappe.doc:0 Tabelle1.doc:3 Modul1.bas:7 Kunde.cls:1 Eingabe.frm:3";

Storage streams(std::vector<std::pair<std::u16string, std::string>> streams) {
  Storage storage;
  storage.streams = std::move(streams);
  return storage;
}

std::string nested(std::string inner, int times) {
  for (; times > 0; --times) inner = package({{"word/embeddings/a.docm", inner}});
  return inner;
}

TEST(officeFile, finds_projects_wherever_they_are) {
  const std::string project = projectFile(sampleProject());
  FixtureProject small{.modules = {{.name = u"Alt", .code = "x\r\n"}}};
  const std::string native = number(0, 4) + number(2, 2) + "a.xls" + '\0' + "C:\\a.xls" + '\0' +
                             number(0, 8) + "a.xls" + '\0' + number(project.size(), 4) + project;
  const auto documentSignedBy = [](std::string signature, std::size_t property = 0x18) {
    Storage document = holding(u"Macros", projectStorage(sampleProject()));
    document.streams.emplace_back(
        u"\x05"
        u"DocumentSummaryInformation",
        std::string(44, '\0') + number(48, 4) + number(40, 4) + number(1, 4) + number(property, 4) +
            number(16, 4) + number(0x41, 4) + number(signature.size(), 4) + signature);
    return compoundFileOf(document);
  };
  Storage pool = holding(u"ObjectPool", holding(u"_1", projectStorage(small)));
  pool.storages.push_back(
      holding(u"_VBA_PROJECT_CUR", projectStorage(sampleProject())).storages[0]);
  const std::string mso = base64(activeMime(project));
  const struct {
    const char* what;
    std::string file;
    std::string expected;
  } kRows[] = {
      {"bare", project, "[" + kSample},
      {"package", macroPackage(project), "[xl/vbaProject.bin" + kSample},
      {"stored package with bytes in front",
       "PK\x03\x04" + std::string(9, 'x') + macroPackage(project, Packing::Stored),
       "[xl/vbaProject.bin" + kSample},
      {"with values of 64 bits", macroPackage(project, Packing::Zip64),
       "[xl/vbaProject.bin" + kSample},
      {"by extension",
       package({{"[Content_Types].xml",
                 "<Default Extension=\"bin\" "
                 "ContentType=\"application/vnd.ms-office.vbaProject\"/>"},
                {"ppt/other.BIN", project}}),
       "[ppt/other.BIN" + kSample},
      {"without types, signed",
       package({{"xl/odd.dat", project}, {"xl/vbaProjectSignature.bin", "s"}}),
       "[xl/odd.dat signed" + kSample},
      {"embedded package", nested(macroPackage(project), 1),
       "[word/embeddings/a.docm/xl/vbaProject.bin" + kSample},
      {"document", documentSignedBy("s"), "[Macros signed" + kSample},
      {"document without a signature", documentSignedBy(""), "[Macros" + kSample},
      {"document with something else", documentSignedBy("s", 0x17), "[Macros" + kSample},
      {"workbook with an object", compoundFileOf(pool),
       "[_VBA_PROJECT_CUR" + kSample + "[ObjectPool/_1] Alt.bas:1"},
      {"object as package", compoundFileOf(streams({{u"Package", macroPackage(project)}})),
       "[Package/xl/vbaProject.bin" + kSample},
      {"object as file",
       compoundFileOf(streams({{u"\x01"
                                u"Ole10Native",
                                native}})),
       "[\x01"
       "Ole10Native" +
           kSample},
      {"presentation", presentation(project, projectFile(small)), "[object 1" + kSample},
      {"flat package",
       "<?xml version=\"1.0\"?><?mso-application progid=\"Word.Document\"?><pkg:part "
       "pkg:name=\"/word/vbaProject.bin\"><pkg:binaryData>" +
           base64(project) + "</pkg:binaryData>",
       "[/word/vbaProject.bin" + kSample},
      {"2003 XML",
       "<?mso-application progid=\"Word.Document\"?><w:binData w:name=\"editdata.mso\">" + mso +
           "</w:binData>",
       "[editdata.mso" + kSample},
      {"web archive",
       "From: <Saved>\r\nMIME-Version: 1.0\r\n\r\n--=_1\r\nContent-Location: "
       "file:///C:/editdata.mso\r\nContent-Transfer-Encoding: base64\r\n\r\n" +
           mso + "\r\n--=_1--",
       "[file:///C:/editdata.mso" + kSample},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(summary(row.file), row.expected) << row.what;
    EXPECT_TRUE(isOfficeFile(row.file.substr(0, kBeginning))) << row.what;
  }
  for (const char* const text : {"Attribute VB_Name = \"PK\"", "' MIME-Version: 1.0", "<x/>", ""})
    EXPECT_FALSE(isOfficeFile(text)) << text;
}

TEST(officeFile, says_why_there_is_nothing_to_read) {
  const auto compound = [](std::u16string name) { return compoundFileOf(streams({{name, "x"}})); };
  const std::string project = projectFile(sampleProject());
  const struct {
    std::string file, expected;
  } kRows[] = {
      {"Sub A()", " !: unknown"},
      {package({{"xl/workbook.xml", "<x/>"}}), " !: no project"},
      {compound(u"Workbook"), " !: no project"},
      {compound(u"EncryptedPackage"), " !: encrypted"},
      {compound(u"\x09"
                u"DRMContent"),
       " !: rights"},
      {compound(u"Book"), " !: excel 95"},
      {compound(u"VisioDocument"), " !: visio"},
      {std::string("\0\1\0\0Standard Jet DB", 19), " !: access"},
      {"PK\x03\x04 and no directory", " !: truncated"},
      {project.substr(0, 1024), " !: truncated"},  // where its directory would begin
      {[&] {
         std::string cut = macroPackage(project);
         cut[cut.rfind("PK\x01\x02")] = 'p';  // the last part of the directory
         return cut;
       }(),
       " !: damaged"},
      {package({{"word/embeddings/a.bin", compound(u"EncryptedPackage")}}),
       " !word/embeddings/a.bin: encrypted"},
      {nested(macroPackage(project), 2),
       "[word/embeddings/a.docm/word/embeddings/a.docm"
       "/xl/vbaProject.bin" +
           kSample},
      {nested(macroPackage(project), 3),
       " !word/embeddings/a.docm/word/embeddings/a.docm/word/embeddings/a.docm/xl/vbaProject.bin:"
       " too deep"},
  };
  for (const auto& row : kRows) EXPECT_EQ(summary(row.file), row.expected);
}

TEST(officeFile, reads_modules_of_odd_projects) {
  const std::string ja = "\x83\x82\x83W\x83\x85\x81[\x83\x8B";
  const struct {
    const char* what;
    FixtureProject project;
    std::string expected;
  } kRows[] = {
      {"locked", {.modules = {{.name = u"A"}}, .locked = true}, "[ locked] A.bas:0"},
      {"names in another code page",
       {.modules = {{.name = u"モジュール", .kind = ModuleKind::Document, .bytes = ja}},
        .codePage = 1252},
       "[] モジュール.doc:0"},
      {"no Unicode name",
       {.modules =
            {{.name = u"モジュール", .kind = ModuleKind::Class, .bytes = ja, .unicode = false}},
        .codePage = 932},
       "[] モジュール.cls:0"},
      {"code page 0",
       {.modules = {{.name = u"\u00C4", .bytes = "\xC4", .unicode = false}}, .codePage = 0},
       "[] Ä.bas:0"},
      {"wrong offset",
       {.modules = {{.name = u"A", .code = "x\n", .compiled = 99, .wrongOffset = 7}}},
       "[] A.bas:1"},
      {"offset behind the end",
       {.modules = {{.name = u"A", .code = "x\n", .wrongOffset = 1 << 30}}},
       "[] A.bas:1"},
      {"compiled only",
       {.modules = {{.name = u"A", .compiled = 8192},
                    {.name = u"B", .compiled = 8191},
                    {.name = u"C", .code = "x", .compiled = 9000}}},
       "[] A.bas:0 B.bas:0 C.bas:1 !:A compiled only"},
  };
  for (const auto& row : kRows)
    EXPECT_EQ(summary(projectFile(row.project)), row.expected) << row.what;
}

TEST(officeFile, one_damaged_module_never_loses_the_others) {
  const auto damaged = [](const std::function<void(Storage & code)>& damage) {
    Storage root = projectStorage(sampleProject());
    for (Storage& storage : root.storages)
      if (storage.name == u"VBA") damage(storage);
    return summary(compoundFileOf(root));
  };
  const auto stream = [](Storage& code, std::u16string_view name) -> std::string& {
    for (auto& [known, bytes] : code.streams)
      if (known == name) return bytes;
    throw std::logic_error("no such stream");
  };
  const std::string others = "] DieseArbeitsmappe.doc:0 Tabelle1.doc:3";
  EXPECT_EQ(damaged([&](Storage& code) { stream(code, u"Kunde").resize(20); }),
            "[" + others + " Modul1.bas:7 Kunde.cls:0 Eingabe.frm:3 !:Kunde truncated");
  EXPECT_EQ(damaged([&](Storage& code) { stream(code, u"Kunde")[2] = '\x7F'; }),
            "[" + others + " Modul1.bas:7 Kunde.cls:0 Eingabe.frm:3 !:Kunde damaged");
  EXPECT_EQ(damaged([&](Storage& code) {
              std::erase_if(code.streams, [](const auto& s) { return s.first == u"Kunde"; });
            }),
            "[" + others + " Modul1.bas:7 Eingabe.frm:3 !:Kunde no stream");
  EXPECT_EQ(damaged([&](Storage& code) { stream(code, u"dir") = "nonsense"; }),
            "[] Kunde.cls:1 Modul1.bas:7 Eingabe.frm:3 Tabelle1.doc:3 DieseArbeitsmappe.doc:0"
            " !: no list");
  std::string file = macroPackage(projectFile(sampleProject()));
  const std::size_t entry = file.rfind("PK\x01\x02");
  file[entry + 16] ^= 1;
  EXPECT_EQ(summary(file), "[xl/vbaProject.bin" + kSample + " !xl/vbaProject.bin: checksum");
  file[entry + 10] = 12;
  EXPECT_EQ(summary(file), " !xl/vbaProject.bin: method");
  file[entry + 8] |= 1;
  EXPECT_EQ(summary(file), " !xl/vbaProject.bin: part locked");
}

// The kinds of files whose every byte may be damaged.
std::vector<std::string> smallFiles() {
  const std::string project = projectFile({.modules = {{.name = u"A", .code = "x = 1\r\n"}}});
  return {project, macroPackage(project), presentation(project, project),
          "<?mso-application?><w:binData>" + base64(activeMime(project)) + "</w:binData>"};
}

TEST(officeFile, ends_in_time_and_says_something_for_every_damage) {
  for (const std::string& file : smallFiles()) {
    for (std::size_t size = 0; size < file.size(); ++size) {
      const OfficeFile result = read(std::string_view(file).substr(0, size));
      ASSERT_FALSE(result.projects.empty() && result.problems.empty()) << size;
      if (file.starts_with(kCompoundSignature) && result.projects.empty()) {
        for (const Problem& problem : result.problems)  // what is cut off may have been one
          ASSERT_NE(problem.fault, Fault::NoProject) << size;
      }
    }
    for (std::size_t at = 0; at < file.size(); at += at < 4096 ? 1 : 7)
      for (const char value : {'\0', '\xFF', static_cast<char>(file[at] + 1)}) {
        std::string damaged = file;
        damaged[at] = value;
        const OfficeFile result = read(damaged);
        ASSERT_FALSE(result.projects.empty() && result.problems.empty()) << at;
      }
  }
}

TEST(officeFile, loops_lying_sizes_and_bombs_end) {
  const std::string project = projectFile(sampleProject());
  constexpr std::size_t kSector = 512, kTable = kSector, kDirectory = 2 * kSector;
  const auto readChanged = [&](std::size_t at, std::uint64_t value) {
    std::string file = project;
    const OfficeFile result = read(file.replace(at, 4, number(value, 4)));
    EXPECT_FALSE(result.projects.empty() && result.problems.empty()) << at;
  };
  for (std::size_t sector = 0; sector < kSector / 4; ++sector)  // chains that bite their tails
    readChanged(kTable + 4 * sector, sector);
  for (std::size_t entry = 0; entry < 16; ++entry) {
    for (const std::size_t link : {68U, 72U, 76U})
      readChanged(kDirectory + entry * 128 + link, entry);
    readChanged(kDirectory + entry * 128 + 120, 0xFFFFFFFF);
  }
  const std::string bomb = [] {
    std::string container = "\x01";
    for (int i = 0; i < 300; ++i)
      container += number(0xB003, 2) +
                   "\x02"
                   "a" +
                   number(0xFFF, 2);
    return container;
  }();
  EXPECT_EQ(decompressed(bomb, 2 * kMebibyte).bytes, std::string(300 * 4096, 'a'));
  const Bytes cut = decompressed(bomb, kMebibyte);
  EXPECT_EQ(cut.bytes.size(), kMebibyte);
  EXPECT_EQ(cut.fault, Fault::TooLarge);
}

TEST(officeFile, compressed_text_comes_back_whole) {
  std::string text;
  for (int i = 0; text.size() < 20000; ++i) text += "Zeile " + std::to_string(i * i) + "\r\n";
  const std::string noise = [] {
    std::string bytes;
    for (std::uint32_t i = 1; bytes.size() < 8192; i = i * 1664525 + 1013904223)
      bytes += static_cast<char>(i >> 24);
    return bytes;
  }();
  const struct {
    const char* what;
    std::string container, text;
    Fault fault;
  } kRows[] = {
      {"chunks", vbaCompressed(text), text, Fault::None},
      {"raw chunks", vbaCompressed(noise), noise, Fault::None},
      {"short chunks", vbaCompressed(text, 100), text, Fault::None},
      {"zeros behind", vbaCompressed(text) + std::string(9, '\0'), text, Fault::None},
      {"bytes behind", vbaCompressed("abc") + "\x11\x22\x33", "abc", Fault::None},
      {"text beyond a chunk",
       "\x01" + number(0xB004, 2) +
           "\x06"
           "a" +
           number(0xFFF, 2) + number(0, 2),
       std::string(4096, 'a'), Fault::None},
      {"offset in front of the start",
       "\x01" + number(0xB003, 2) +
           "\x02"
           "a" +
           number(0x1000, 2),
       "a", Fault::Damaged},
      {"nothing", "", "", Fault::Truncated},
  };
  for (const auto& row : kRows) {
    const Bytes result = decompressed(row.container, kMebibyte);
    EXPECT_TRUE(result.bytes == row.text) << row.what;
    EXPECT_EQ(result.fault, row.fault) << row.what;
  }
}

TEST(officeFile, exports_modules_as_the_editor_does) {
  const OfficeFile file = read(projectFile(sampleProject()));
  const auto& modules = file.projects.at(0).modules;
  const auto lines = [](const std::string& text) { return Replace(text, "\r\n", "|"); };
  EXPECT_EQ(lines(moduleFile(modules[1])),
            "VERSION 1.0 CLASS|BEGIN|  MultiUse = -1  'True|END|Attribute VB_Name = \"Tabelle1\"|"
            "Attribute VB_GlobalNameSpace = False|Attribute VB_Creatable = False|"
            "Attribute VB_PredeclaredId = True|Attribute VB_Exposed = True|"
            "Private Sub Worksheet_Activate()|  Gruessen|End Sub|");
  EXPECT_EQ(moduleFile(modules[2]), modules[2].source);
  const std::string form = lines(moduleFile(modules[4]));
  EXPECT_EQ(form.substr(0, form.find("Attribute")),
            "VERSION 5.00|Begin {C62A69F0-16DC-11CE-9E98-00AA00574A4F} Eingabe |"
            "   Caption         =   \"Eingabe\"|   ClientHeight    =   3015|"
            "   ClientLeft      =   120|   ClientTop       =   465|   ClientWidth     =   4560|"
            "   OleObjectBlob   =   \"Eingabe.frx\":0000|"
            "   StartUpPosition =   1  'CenterOwner|End|");
  office_file::Module mac = modules[3];
  mac.source = "Attribute VB_Name = \"K\"\nPublic a\r\nPublic b\rPublic c";
  EXPECT_EQ(lines(moduleFile(mac)).substr(51),
            "Attribute VB_Name = \"K\"|Public a|Public b|Public c|");
}

TEST(officeFile, writes_the_resource_of_a_form) {
  const OfficeFile file = read(projectFile(sampleProject()));
  const office_file::Module& form = file.projects.at(0).modules.at(4);
  const std::string resource = formResource(form).value();
  EXPECT_EQ(resource.substr(0, 24), number(0x0008424C, 4) + number(resource.size() - 24, 4) +
                                        number(120, 4) + number(465, 4) + number(4800, 4) +
                                        number(3600, 4));
  MemorySource source(std::string_view(resource).substr(24));
  Fault fault{};
  const auto compound = CompoundFile::open(source, fault);
  ASSERT_TRUE(compound);
  EXPECT_EQ(compound->entries()[0].classId[0], '\xF0');
  Budget budget;
  EXPECT_EQ(compound->read(*compound->child(0, u"o"), budget).bytes, std::string(5000, 'o'));
  EXPECT_EQ(compound
                ->read(*compound->child(0,
                                        u"\x01"
                                        u"CompObj"),
                       budget)
                .bytes.size(),
            110U);
  EXPECT_FALSE(compound->child(0, kFrameStream));
  office_file::Module changed = form;
  EXPECT_TRUE(holdSame(resource, formResource(changed).value() + std::string(512, '\0')));
  changed.designer->storages.at(0).streams.at(0).second += "!";
  EXPECT_FALSE(holdSame(resource, formResource(changed).value()));
}

TEST(officeFile, sample_of_the_golden_cases_is_what_our_writers_make) {
  EXPECT_TRUE(readFile("tests/golden/office/Mappe.xlsm") ==
              macroPackage(projectFile(sampleProject()), Packing::Stored));
}

TEST(officeFile, long_compound_files_come_back_whole) {
  Storage root;
  for (int i = 0; i < 40; ++i)
    root.streams.emplace_back(
        u"s" + std::u16string(1, static_cast<char16_t>(u'a' + i % 26)) +
            std::u16string(static_cast<std::size_t>(i / 26), u'x'),
        std::string(static_cast<std::size_t>(i * i * i), static_cast<char>(i)));
  root.streams.emplace_back(u"long", std::string(9 * kMebibyte, 'x'));  // its table needs a list
  const TempFolder folder;
  std::ofstream(folder / "a.bin", std::ios::binary) << compoundFileOf(root);
  FileSource source(folder / "a.bin");
  Fault fault{};
  const auto file = CompoundFile::open(source, fault);
  ASSERT_TRUE(file);
  Budget budget;
  for (const auto& [name, bytes] : root.streams)
    EXPECT_TRUE(file->read(file->child(0, name).value(), budget).bytes == bytes);
}

}  // namespace
}  // namespace tintline::test
