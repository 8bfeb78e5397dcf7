// Fuzzes sources/office_file as a whole: files of several kinds with damage, or the input as it is.
// What is read is exported, too.
#include <cassert>

#include "fuzz/patches.h"
#include "sources/office_file/module_file.h"
#include "sources/office_file/office_file.h"
#include "tests/support/office_fixture.h"

using namespace tintline;
using namespace tintline::office_file;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string kProject = test::projectFile(test::sampleProject());
  static const std::string kFiles[] = {
      kProject, test::macroPackage(kProject, test::Packing::Stored),
      test::presentation(kProject, kProject),
      "<?mso-application?><w:binData>" + test::base64(test::activeMime(kProject)) + "</w:binData>",
      "MIME-Version: 1.0\nContent-Transfer-Encoding: base64\n\n" +
          test::base64(test::activeMime(kProject))};
  if (size == 0) return 0;
  const std::size_t kind = data[0] % (std::size(kFiles) + 1);
  const std::string file = kind < std::size(kFiles)
                               ? patched(kFiles[kind], data + 1, size - 1)
                               : std::string(reinterpret_cast<const char*>(data) + 1, size - 1);
  MemorySource source(file);
  const OfficeFile result = readOfficeFile(source);
  assert(!result.projects.empty() || !result.problems.empty());
  for (const Project& project : result.projects)
    for (const Module& module : project.modules) {
      assert(moduleFile(module).size() <= 2 * module.source.size() + file.size() + 200);
      const auto resource = formResource(module);
      assert(!resource || holdSame(*resource, *resource));
    }
  return 0;
}
