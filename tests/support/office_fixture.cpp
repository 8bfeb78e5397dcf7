// See office_fixture.h.
#include "tests/support/office_fixture.h"

#include <zlib.h>

#include <algorithm>
#include <bit>

#include "sources/office_file/compound_writer.h"

namespace tintline::test {
namespace {

using office_file::Storage;
using vb::ModuleKind;

constexpr std::size_t kChunkText = 4096;

// One chunk: flag bytes, literals, and a token where three characters came before.
std::string chunkOf(std::string_view text) {
  std::string body;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t flagsAt = body.size();
    unsigned flags = 0;
    body += '\0';
    for (unsigned bit = 0; bit < 8 && at < text.size(); ++bit) {
      const int offsetBits = std::max(4, static_cast<int>(std::bit_width(at == 0 ? 0 : at - 1)));
      const std::size_t before = at < 3 || at + 3 > text.size()
                                     ? std::string_view::npos
                                     : text.substr(0, at + 2).rfind(text.substr(at, 3), at - 1);
      if (before == std::string_view::npos) {
        body += text[at++];
        continue;
      }
      std::size_t length = 3;
      const std::size_t most = (0xFFFFU >> offsetBits) + 3U;
      while (length < most && at + length < text.size() &&
             text[before + length] == text[at + length])
        ++length;
      body += number((at - before - 1) << (16 - offsetBits) | (length - 3), 2);
      flags |= 1U << bit;
      at += length;
    }
    body[flagsAt] = static_cast<char>(flags);
  }
  if (body.size() >= kChunkText)  // raw
    return number(0x3FFF, 2) + std::string(text) + std::string(kChunkText - text.size(), ' ');
  return number(0xB000 | (body.size() - 1), 2) + body;
}

std::string utf16(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) bytes += number(unit, 2);
  return bytes;
}

std::string bytesOf(const FixtureModule& module) {
  return module.bytes.empty() ? std::string(module.name.begin(), module.name.end()) : module.bytes;
}

std::string record(std::uint16_t id, std::string_view data) {
  return number(id, 2) + number(data.size(), 4) + std::string(data);
}

std::string dirOf(const FixtureProject& project) {
  std::string dir = record(0x01, number(3, 4)) + record(0x4A, number(1, 4)) +
                    record(0x03, number(project.codePage, 2)) + record(0x04, "Musterprojekt") +
                    number(0x09, 2) + number(4, 4) + number(1, 4) + number(2, 2) +
                    record(0x0F, number(project.modules.size(), 2));
  for (const FixtureModule& module : project.modules) {
    const std::string name = bytesOf(module);
    dir += record(0x19, name);
    if (module.unicode) dir += record(0x47, utf16(module.name));
    dir += record(0x1A, name) + record(0x32, utf16(module.name)) +
           record(0x31, number(module.compiled + module.wrongOffset, 4)) +
           record(module.kind == ModuleKind::Standard ? 0x21 : 0x22, "") + record(0x2B, "");
  }
  return dir + number(0x10, 2) + number(0, 4);
}

std::string sourceOf(const FixtureModule& module) {
  std::string source = "Attribute VB_Name = \"" + bytesOf(module) + "\"\r\n";
  if (module.kind == ModuleKind::Document || module.kind == ModuleKind::Form)
    source += "Attribute VB_Base = \"0{FCFB3D2A-A0FA-1068-A738-08002B3371B5}\"\r\n";
  if (module.kind != ModuleKind::Standard)
    source +=
        "Attribute VB_GlobalNameSpace = False\r\nAttribute VB_Creatable = False\r\n"
        "Attribute VB_PredeclaredId = True\r\nAttribute VB_Exposed = True\r\n"
        "Attribute VB_TemplateDerived = False\r\nAttribute VB_Customizable = True\r\n";
  return source + module.code;
}

std::string propertiesOf(const FixtureProject& project) {
  std::string text = "ID=\"{5DD90D76-4904-47A2-AF0D-D69B4673604E}\"\r\n";
  for (const FixtureModule& module : project.modules) {
    const char* const key = module.kind == ModuleKind::Standard   ? "Module="
                            : module.kind == ModuleKind::Class    ? "Class="
                            : module.kind == ModuleKind::Document ? "Document="
                                                                  : "BaseClass=";
    text +=
        key + bytesOf(module) + (module.kind == ModuleKind::Document ? "/&H00000000\r\n" : "\r\n");
  }
  // Protected by its user, and the value of a project that is not, from [MS-OVBA].
  text += project.locked ? "CMG=\"797BA65EAA5EAA5FAB5FAB\"\r\n"
                         : "CMG=\"0705D8E3D8EDDBF1DBF1DBF1DBF1\"\r\n";
  return text + "Name=\"Musterprojekt\"\r\n\r\n[Workspace]\r\nModul1=0, 0, 0, 0, C\r\n";
}

Storage designerOf(const FixtureModule& module) {
  Storage designer{.name = module.name};
  designer.streams.emplace_back(
      office_file::kFrameStream,
      "VERSION 5.00\r\nBegin {C62A69F0-16DC-11CE-9E98-00AA00574A4F} " + bytesOf(module) +
          " \r\n   Caption         =   \"Eingabe\"\r\n   ClientHeight    =   3015\r\n"
          "   ClientLeft      =   120\r\n   ClientTop       =   465\r\n"
          "   ClientWidth     =   4560\r\n   StartUpPosition =   1  'CenterOwner\r\n"
          "   TypeInfoVer     =   2\r\nEnd\r\n");
  designer.streams.emplace_back(u"f", std::string("\0\4\x14\0", 4) + std::string(60, 'f'));
  designer.streams.emplace_back(u"o", std::string(5000, 'o'));
  Storage frame{.name = u"i04"};
  frame.streams.emplace_back(u"f", "inner");
  designer.storages.push_back(std::move(frame));
  return designer;
}

std::string pptRecord(std::uint16_t instance, std::uint16_t type, std::string_view data) {
  return number(instance << 4, 2) + number(type, 2) + number(data.size(), 4) + std::string(data);
}

std::string deflated(std::string_view bytes, int windowBits) {
  z_stream stream{};
  deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY);
  std::string result(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(result.data());
  stream.avail_out = static_cast<uInt>(result.size());
  deflate(&stream, Z_FINISH);
  result.resize(stream.total_out);
  deflateEnd(&stream);
  return result;
}

}  // namespace

std::string number(std::uint64_t value, std::size_t width) {
  std::string bytes;
  for (; width > 0; --width, value >>= 8) bytes += static_cast<char>(value & 0xFF);
  return bytes;
}

std::string vbaCompressed(std::string_view text, std::size_t chunkText) {
  std::string container = "\x01";
  for (; !text.empty(); text.remove_prefix(std::min(chunkText, text.size())))
    container += chunkOf(text.substr(0, chunkText));
  return container;
}

Storage projectStorage(const FixtureProject& project) {
  Storage root, code{.name = u"VBA"};
  std::string trueNames;
  code.streams.emplace_back(u"_VBA_PROJECT", number(0x61CC, 2) + "\xFF\xFF" + std::string(3, '\0'));
  code.streams.emplace_back(u"dir", vbaCompressed(dirOf(project)));
  for (const FixtureModule& module : project.modules) {
    code.streams.emplace_back(
        module.name, std::string(module.compiled, '\x7F') + vbaCompressed(sourceOf(module)));
    trueNames += bytesOf(module) + '\0' + utf16(module.name) + std::string(2, '\0');
    if (module.kind == ModuleKind::Form) root.storages.push_back(designerOf(module));
  }
  root.streams.emplace_back(u"PROJECT", propertiesOf(project));
  root.streams.emplace_back(u"PROJECTwm", trueNames + std::string(2, '\0'));
  root.storages.push_back(std::move(code));
  return root;
}

std::string projectFile(const FixtureProject& project) {
  return office_file::compoundFileOf(projectStorage(project));
}

Storage holding(std::u16string name, Storage below) {
  Storage root;
  below.name = std::move(name);
  root.storages.push_back(std::move(below));
  return root;
}

std::string package(const Parts& parts, Packing packing) {
  const bool stored = packing == Packing::Stored, wide = packing == Packing::Zip64;
  const auto narrow = [wide](std::size_t value) { return number(wide ? 0xFFFFFFFF : value, 4); };
  std::string file, directory;
  for (const auto& [name, bytes] : parts) {
    const std::string data = stored ? bytes : deflated(bytes, -MAX_WBITS);
    const auto crc =
        crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size()));
    const std::string common = number(20, 2) + number(0, 2) + number(stored ? 0 : 8, 2) +
                               number(0, 4) + number(crc, 4) + narrow(data.size()) +
                               narrow(bytes.size()) + number(name.size(), 2);
    const std::string extra = "pu" + number(3, 2) + "abc" + number(1, 2) + number(24, 2) +
                              number(bytes.size(), 8) + number(data.size(), 8) +
                              number(file.size(), 8);
    directory += "PK\x01\x02" + number(20, 2) + common + number(wide ? extra.size() : 0, 2) +
                 number(0, 6) + number(0, 4) + narrow(file.size()) + name + (wide ? extra : "");
    file += "PK\x03\x04" + common + number(0, 2) + name + data;
  }
  const std::string end64 = "PK\x06\x06" + number(44, 8) + number(0, 12) + number(parts.size(), 8) +
                            number(parts.size(), 8) + number(directory.size(), 8) +
                            number(file.size(), 8) + "PK\x06\x07" + number(0, 4) +
                            number(file.size() + directory.size(), 8) + number(1, 4);
  return file + directory + (wide ? end64 : "") + "PK\x05\x06" + number(0, 4) +
         number(parts.size(), 2) + number(parts.size(), 2) + narrow(directory.size()) +
         narrow(file.size()) + number(0, 2);
}

std::string macroPackage(const std::string& project, Packing packing) {
  return package({{"[Content_Types].xml",
                   "<Types><Override PartName=\"/xl/vbaProject.bin\" "
                   "ContentType=\"application/vnd.ms-office.vbaProject\"/></Types>"},
                  {"xl/media/image1.png", std::string(3000, 'x')},
                  {"xl/vbaProject.bin", project}},
                 packing);
}

std::string zlibStream(std::string_view bytes) { return deflated(bytes, MAX_WBITS); }

std::string base64(std::string_view bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < 3; ++k)
      bits = bits << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
    for (std::size_t k = 0; k < 4; ++k)
      text += i + k > bytes.size() ? '=' : kDigits[bits >> (18 - 6 * k) & 63];
    if (i % 57 == 54) text += "\r\n";
  }
  return text;
}

std::string activeMime(std::string_view content) {
  std::string part = "ActiveMime" + std::string(20, '\0') + number(4, 2);
  part.resize(0x32, '\0');
  return part + zlibStream(content) + "a tail that means nothing";
}

std::string presentation(std::string_view project, std::string_view replaced) {
  std::string document;
  const auto append = [&](const std::string& bytes) {
    const std::size_t place = document.size();
    document += bytes;
    return place;
  };
  const auto edit = [&](const std::string& places, std::size_t before) {
    const std::size_t directory = append(pptRecord(0, 0x1772, places));
    return append(pptRecord(
        0, 0x0FF5, number(0, 8) + number(before, 4) + number(directory, 4) + number(0, 12)));
  };
  const std::size_t slides = append(pptRecord(0, 0x03E8, ""));
  const std::size_t old = append(pptRecord(0, 0x1011, replaced));
  const std::size_t first =
      edit(number(2U << 20 | 6, 4) + number(slides, 4) + number(old, 4), 0);  // 6 and 7
  const std::size_t object =
      append(pptRecord(1, 0x1011, number(project.size(), 4) + zlibStream(project)));
  const std::size_t last = edit(number(1U << 20 | 7, 4) + number(object, 4), first);
  Storage root;
  root.streams.emplace_back(u"PowerPoint Document", document);
  root.streams.emplace_back(
      u"Current User",
      pptRecord(0, 0x0FF6, number(20, 4) + number(0xE391C05F, 4) + number(last, 4) + number(0, 8)));
  return office_file::compoundFileOf(root);
}

FixtureProject sampleProject() {
  return {.modules = {
              {.name = u"DieseArbeitsmappe", .kind = ModuleKind::Document},
              {.name = u"Tabelle1",
               .kind = ModuleKind::Document,
               .code = "Private Sub Worksheet_Activate()\r\n  Gruessen\r\nEnd Sub\r\n"},
              {.name = u"Modul1",
               .code = "Option Explicit\r\n\r\nPublic Sub Gruessen()\r\n"
                       "Attribute Gruessen.VB_Description = \"Sagt etwas\"\r\n"
                       "  Dim k As New Kunde\r\n  k.Name = \"M\xFCller\"\r\n"
                       "  Eingabe.Show\r\nEnd Sub\r\n"},
              {.name = u"Kunde", .kind = ModuleKind::Class, .code = "Public Name As String\r\n"},
              {.name = u"Eingabe",
               .kind = ModuleKind::Form,
               .code = "Private Sub UserForm_Click()\r\n  Modul1.Gruessen\r\nEnd Sub\r\n"}}};
}

}  // namespace tintline::test
