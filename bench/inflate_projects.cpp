// inflate_projects FILE...: inflates the projects of packages by zlib and does nothing else with
// them: the work that reading them cannot do without.
#include <cstdio>
#include <exception>
#include <string>

#include "sources/office_file/zip_archive.h"

using namespace tintline::office_file;

int main(int count, char** arguments) {
  try {
    std::size_t bytes = 0;
    for (int i = 1; i < count; ++i) {
      FileSource source(arguments[i]);
      Fault fault = Fault::None;
      const auto archive = ZipArchive::open(source, fault);
      const auto part = archive ? archive->find("xl/vbaProject.bin") : std::nullopt;
      if (!part) return 1;
      Budget budget;
      bytes += archive->read(*part, budget).bytes.size();
    }
    std::printf("%zu bytes\n", bytes);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "inflate_projects: %s\n", error.what());
    return 1;
  }
}
