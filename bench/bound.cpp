// bound escape OUTDIR FILE…
// bound same OUTDIR REFDIR FILE…
//
// What a conversion cannot be faster than: reads every file, escapes "<" and ">",
// writes the result under the same name with ".htm" in OUTDIR, by the program's
// own file layer. `same` goes on writing the escaped text again and again until
// the file is as long as the one of that name in REFDIR, the program's result;
// a text that is longer already is cut there.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/file.h"

namespace tintline::bench {
namespace {

void escape(std::string_view text, std::string& html) {
  html.clear();
  std::size_t done = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '<' && text[i] != '>') continue;
    html.append(text.substr(done, i - done)).append(text[i] == '<' ? "&lt;" : "&gt;");
    done = i + 1;
  }
  html.append(text.substr(done));
}

void write(const std::filesystem::path& target, std::string_view html, std::size_t length) {
  AtomicFile file(target);
  for (std::size_t left = html.empty() ? 0 : length; left > 0;) {
    const std::string_view piece = html.substr(0, left);
    file.stream().write(piece.data(), static_cast<std::streamsize>(piece.size()));
    left -= piece.size();
  }
  file.commit();
}

void run(int argc, char** argv) {
  const bool same = std::strcmp(argv[1], "same") == 0;
  std::string html;
  for (int i = same ? 4 : 3; i < argc; ++i) {
    const std::filesystem::path name =
        std::filesystem::path(argv[i]).filename().replace_extension(".htm");
    escape(readFile(argv[i]), html);
    write(std::filesystem::path(argv[2]) / name, html,
          same ? std::filesystem::file_size(std::filesystem::path(argv[3]) / name) : html.size());
  }
}

}  // namespace
}  // namespace tintline::bench

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fputs("usage: bound escape OUTDIR FILE...\n       bound same OUTDIR REFDIR FILE...\n",
               stderr);
    return 2;
  }
  try {
    tintline::bench::run(argc, argv);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bound: %s\n", error.what());
    return 1;
  }
}
