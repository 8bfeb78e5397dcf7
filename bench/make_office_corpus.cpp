// make_office_corpus FOLDER MODULE...: makes workbooks of modules, as real ones are: 250 of them
// with some 15 MB of source, compiled code in front of each, and pictures that fill them up to 50
// MB. One more, start.xlsm, has 14 KB.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "base/file.h"
#include "tests/support/office_fixture.h"

namespace tintline::bench {
namespace {

constexpr std::size_t kBooks = 250, kSource = 15'000'000, kFiles = 50'000'000;
constexpr std::size_t kKinds = 25;  // different projects: compressing them takes its time

// Bytes that cannot be compressed.
std::string picture(std::size_t size) {
  std::string bytes;
  for (std::uint64_t state = size + 1; bytes.size() < size;) {
    state = state * 6364136223846793005 + 1442695040888963407;
    bytes += static_cast<char>(state >> 56);
  }
  return bytes;
}

// Modules of the texts from number `next` on until they have the size that a project shall have.
std::string project(const std::vector<std::string>& texts, std::size_t& next, std::size_t size) {
  test::FixtureProject result;
  for (std::size_t bytes = 0; bytes < size; ++next) {
    const std::string text = texts[next % texts.size()].substr(0, size - bytes);
    const std::u16string name =
        u"Modul" + std::u16string(1, static_cast<char16_t>(u'A' + result.modules.size() % 26)) +
        std::u16string(result.modules.size() / 26, u'x');
    result.modules.push_back({.name = name, .code = text, .compiled = text.size()});
    bytes += text.size();
  }
  return test::projectFile(result);
}

void save(const std::filesystem::path& file, const std::string& bytes) {
  AtomicFile target(file);
  target.stream() << bytes;
  target.commit();
}

void make(const std::filesystem::path& folder, const std::vector<std::string>& texts) {
  std::filesystem::create_directories(folder / "books");
  std::size_t next = 0;
  std::vector<std::string> projects;
  for (std::size_t i = 0; i < kKinds; ++i)
    projects.push_back(project(texts, next, kSource / kBooks));
  for (std::size_t i = 0; i < kBooks; ++i) {
    const std::string bare = test::macroPackage(projects[i % kKinds]);
    const std::size_t room = kFiles / kBooks - std::min(bare.size(), kFiles / kBooks);
    save(folder / "books" / ("book" + std::to_string(1000 + i) + ".xlsm"),
         test::package({{"xl/media/image1.png", picture(room)},
                        {"xl/vbaProject.bin", projects[i % kKinds]}}));
  }
  save(folder / "start.xlsm", test::package({{"xl/media/image1.png", picture(10'000)},
                                             {"xl/vbaProject.bin", project(texts, next, 5'000)}}));
}

}  // namespace
}  // namespace tintline::bench

int main(int count, char** arguments) {
  try {
    std::vector<std::string> texts;
    for (int i = 2; i < count; ++i) texts.push_back(tintline::readFile(arguments[i]));
    if (texts.empty()) return 2;
    tintline::bench::make(arguments[1], texts);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_office_corpus: %s\n", error.what());
    return 1;
  }
}
