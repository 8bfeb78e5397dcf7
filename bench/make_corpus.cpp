// make_corpus DIR: writes the sets of modules that the benchmarks run over, and
// checks the main set against the shape that real modules have.
//
//   modules/   some 10 MB, sizes log-normal: median 8 KB, 90 % below 50 KB,
//              the largest 470 KB with 650 procedures
//   names500/  some 10 MB: every second one of those modules, with empty procedures
//              behind it so that it has 500
//   large500/  some 10 MB: 28 modules that are as long as 500 procedures are
//   names/N/   eight modules, each with N procedure names that occur nowhere but
//              in their own heads; N is 10, 100, 500 or 1000
//   project/   250, 500 and 1000 modules of 40 KB, in folders called 1, 2 and 4
//   growth/    twenty modules of 100 KB, the same of 200 KB and of 400 KB
//   single/    100.bas (100 lines), longest.bas (close to 32,767 lines)
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "base/file.h"
#include "base/line_list.h"
#include "base/text.h"
#include "bench/corpus.h"

namespace tintline::bench {
namespace {

constexpr std::size_t kModules = 450;
constexpr double kMedian = 8.0 * kKB, kNinth = 50.0 * kKB, kLargest = 470.0 * kKB;
constexpr double kMedianProcedures = 12, kLargestProcedures = 650;

// The value below which that share of a standard normal distribution lies.
double normalQuantile(double share) {
  double low = -10, high = 10;
  for (int step = 0; step < 60; ++step) {
    const double middle = (low + high) / 2;
    (0.5 * std::erfc(-middle / std::sqrt(2.0)) < share ? low : high) = middle;
  }
  return low;
}

std::size_t moduleSize(std::size_t index) {
  if (index + 1 == kModules) return static_cast<std::size_t>(kLargest);
  const double spread = std::log(kNinth / kMedian) / normalQuantile(0.9);
  const double share = (static_cast<double>(index) + 0.5) / static_cast<double>(kModules);
  const double size = kMedian * std::exp(spread * normalQuantile(share));
  return static_cast<std::size_t>(std::clamp(size, 500.0, kLargest));
}

std::size_t procedureCount(std::size_t bytes) {
  const double power =
      std::log(kLargestProcedures / kMedianProcedures) / std::log(kLargest / kMedian);
  const double count = kMedianProcedures * std::pow(static_cast<double>(bytes) / kMedian, power);
  return std::max<std::size_t>(1, static_cast<std::size_t>(std::lround(count)));
}

void save(const std::filesystem::path& file, std::string_view text) {
  std::filesystem::create_directories(file.parent_path());
  AtomicFile target(file);
  target.stream() << text;
  target.commit();
}

std::filesystem::path numbered(const std::filesystem::path& folder, std::size_t number) {
  const std::string digits = std::to_string(number);
  return folder / ("modul" + std::string(4 - digits.size(), '0') + digits + ".bas");
}

struct Measured {
  const char* what;
  double is, from, to;
};

bool report(const std::vector<Measured>& shape) {
  bool good = true;
  for (const Measured& row : shape) {
    const bool within = row.is >= row.from && row.is <= row.to;
    std::printf("%-46s %12.3f   (%g to %g)%s\n", row.what, row.is, row.from, row.to,
                within ? "" : "   WRONG");
    good = good && within;
  }
  return good;
}

bool writeModules(const std::filesystem::path& folder) {
  std::vector<Module> modules;
  for (std::size_t i = 0; i < kModules; ++i) {
    const std::size_t bytes = moduleSize(i);
    modules.push_back(ModuleWriter(bytes, procedureCount(bytes), 1000 + i).write());
    save(numbered(folder, i + 1), modules.back().text);
  }
  Module all;
  for (const Module& module : modules) {
    all.text += module.text;
    all.lines += module.lines;
    all.continuedLines += module.continuedLines;
    all.commentBytes += module.commentBytes;
    all.stringBytes += module.stringBytes;
  }
  std::sort(modules.begin(), modules.end(),
            [](const Module& a, const Module& b) { return a.text.size() < b.text.size(); });
  const Module& median = modules[kModules / 2];
  const auto bytes = static_cast<double>(all.text.size());
  const auto lines = static_cast<double>(all.lines);
  const auto kilobytes = [](const Module& module) {
    return static_cast<double>(module.text.size()) / kKB;
  };
  return report({
      {"modules/: modules", static_cast<double>(kModules), 400, 600},
      {"modules/: megabytes", bytes / 1e6, 9, 11.5},
      {"modules/: lines", lines, 200'000, 400'000},
      {"modules/: KB of the median module", kilobytes(median), 7.5, 8.5},
      {"modules/: KB of the module at 90 %", kilobytes(modules[kModules * 9 / 10]), 47, 54},
      {"modules/: KB of the largest module", kilobytes(modules.back()), 460, 480},
      {"modules/: procedures of the median module", static_cast<double>(median.procedures), 11, 13},
      {"modules/: procedures of the largest module", static_cast<double>(modules.back().procedures),
       650, 650},
      {"modules/: share of bytes in comments", static_cast<double>(all.commentBytes) / bytes, 0.18,
       0.22},
      {"modules/: share of bytes in strings", static_cast<double>(all.stringBytes) / bytes, 0.04,
       0.06},
      {"modules/: share of continued lines", static_cast<double>(all.continuedLines) / lines, 0.017,
       0.023},
  });
}

// `count` names that no made-up module uses.
std::vector<std::string> freshNames(std::size_t count) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < count; ++i)
    names.push_back(std::string(kNouns[i % kNouns.size()]) +
                    std::string(kVerbs[i / kNouns.size() % kVerbs.size()]) + "Neu" +
                    std::to_string(i));
  return names;
}

bool writeManyNames(const std::filesystem::path& padded, const std::filesystem::path& large) {
  const std::vector<std::string> names = freshNames(500);
  std::size_t paddedBytes = 0, largeBytes = 0;
  for (std::size_t i = 0; i < kModules; i += 2) {
    const std::size_t bytes = moduleSize(i);
    Module module = ModuleWriter(bytes, procedureCount(bytes), 1000 + i).write();
    for (std::size_t p = module.procedures; p < names.size(); ++p)
      module.text.append("Private Sub ").append(names[p]).append("()\r\nEnd Sub\r\n");
    paddedBytes += module.text.size();
    save(numbered(padded, i + 1), module.text);
  }
  for (std::size_t i = 0; i < 28; ++i) {
    const Module module = ModuleWriter(360 * kKB, 500, 5000 + i).write();
    largeBytes += module.text.size();
    save(numbered(large, i + 1), module.text);
  }
  return report({{"names500/: megabytes", static_cast<double>(paddedBytes) / 1e6, 9, 11.5},
                 {"large500/: megabytes", static_cast<double>(largeBytes) / 1e6, 9, 11.5}});
}

// Of a thousand heads, `names` are those of procedures that calls can be linked
// to, the others those of properties; everything else is the same.
std::string withNames(const std::string& body, std::size_t names) {
  std::string text;
  std::size_t done = 0;
  for (const std::string& name : freshNames(1000))
    text.append(done++ < names ? "Private Sub " : "Property Get ").append(name).append("()\r\n");
  return text + body;
}

void writeNames(const std::filesystem::path& folder) {
  for (std::size_t i = 0; i < 8; ++i) {
    std::string body = ModuleWriter(400 * kKB, 560, 7000 + i).write().text;
    body = Replace(Replace(body, " Sub ", " Property Get "), " Function ", " Property Get ");
    for (const std::size_t names : {10U, 100U, 500U, 1000U})
      save(numbered(folder / std::to_string(names), i + 1), withNames(body, names));
  }
}

bool writeSingles(const std::filesystem::path& folder) {
  const std::string text = ModuleWriter(40 * kKB, 60, 8000).write().text;
  std::size_t end = 0;
  for (int lines = 0; lines < 100; ++lines) end = text.find('\n', end) + 1;
  save(folder / "100.bas", text.substr(0, end));
  const Module longest = ModuleWriter(1290 * kKB, 1800, 9000).write();
  save(folder / "longest.bas", longest.text);
  return report({{"single/: lines of the longest module", static_cast<double>(longest.lines),
                  31'000, static_cast<double>(kMaxLines)}});
}

int run(const std::filesystem::path& folder) {
  bool good = writeModules(folder / "modules");
  good = writeManyNames(folder / "names500", folder / "large500") && good;
  good = writeSingles(folder / "single") && good;
  writeNames(folder / "names");
  for (const std::size_t factor : {1U, 2U, 4U})
    for (std::size_t i = 0; i < 20; ++i)
      save(numbered(folder / "growth" / std::to_string(factor), i + 1),
           ModuleWriter(factor * 100 * kKB, factor * 140, 6000 + i).write().text);
  for (const std::size_t factor : {1U, 2U, 4U})
    for (std::size_t i = 0; i < factor * 250; ++i)
      save(numbered(folder / "project" / std::to_string(factor), i + 1),
           ModuleWriter(40 * kKB, 58, 20000 + i).write().text);
  return good ? 0 : 1;
}

}  // namespace
}  // namespace tintline::bench

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: make_corpus DIR\n", stderr);
    return 2;
  }
  try {
    return tintline::bench::run(argv[1]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_corpus: %s\n", error.what());
    return 1;
  }
}
