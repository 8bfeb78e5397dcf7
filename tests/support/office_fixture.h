// Small writers for Office files: projects, compound files, packages and the forms as text. They
// write what a test names and leave everything else out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sources/office_file/designer.h"
#include "vb/module.h"

namespace tintline::test {

struct FixtureModule {
  std::u16string name;
  vb::ModuleKind kind = vb::ModuleKind::Standard;
  std::string code{};              // behind the attributes, in the project's code page
  std::string bytes{};             // its name in the code page; "": the same as ASCII
  std::size_t compiled = 0;        // bytes in front of the source
  std::ptrdiff_t wrongOffset = 0;  // what the project says too much
  bool unicode = true;             // the project has its Unicode name
};

struct FixtureProject {
  std::vector<FixtureModule> modules;
  std::uint16_t codePage = 1252;
  bool locked = false;
};

std::string number(std::uint64_t value, std::size_t width);  // little-endian

// As [MS-OVBA] compresses; `chunkText` characters of the text go into each chunk.
std::string vbaCompressed(std::string_view text, std::size_t chunkText = 4096);

// The storage with PROJECT, PROJECTwm, VBA and the designers; and the same as vbaProject.bin.
office_file::Storage projectStorage(const FixtureProject& project);
std::string projectFile(const FixtureProject& project);

// The storage with that one below it.
office_file::Storage holding(std::u16string name, office_file::Storage below);

enum class Packing : std::uint8_t { Stored, Deflated, Zip64 };
using Parts = std::vector<std::pair<std::string, std::string>>;
std::string package(const Parts& parts, Packing packing = Packing::Deflated);
// With its list of types, which names the project.
std::string macroPackage(const std::string& project, Packing packing = Packing::Deflated);

std::string zlibStream(std::string_view bytes);
std::string base64(std::string_view bytes);
std::string activeMime(std::string_view content);
// A presentation: the compressed project and the object of a state before it.
std::string presentation(std::string_view project, std::string_view replaced);

// The project that most tests read: a module of each kind, an empty document among them.
FixtureProject sampleProject();

}  // namespace tintline::test
