// Tests of app/settings/modIniSave.h.
#include "app/settings/modIniSave.h"

#include <gtest/gtest.h>

#include <map>

#include "base/file.h"
#include "tests/support/default_settings.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/temp_folder.h"

namespace tintline::modIniSave {
namespace {

namespace fs = std::filesystem;
using test::kDefaultSettings;
using test::TempFolder;

void put(const fs::path& path, std::string_view content) {
  AtomicFile file(path);
  file.stream() << content;
  file.commit();
}

ColorScheme defaults() {
  ColorScheme scheme;
  modColor::Farbesetzen(scheme);
  return scheme;
}

// A settings file in which category k holds "k0" to "k5", but for one changed key.
std::string fileWith(std::string_view changedKey, std::string_view value) {
  std::string content = "[TINTLINE]\r\n";
  for (std::size_t k = 0; k < kColorCategories; ++k) {
    const std::string_view key = fkt_FarbSchluessel()[k];
    content.append(key) += '=';
    for (std::size_t j = 0; key != changedKey && j < kColorFields; ++j)
      content += std::to_string(k) + std::to_string(j) + ",";
    if (key == changedKey) content += value;
    content += "\r\n";
  }
  return content;
}

enum class There { Nothing, File, Directory };

void place(const fs::path& path, There what, std::string_view content) {
  if (what == There::Directory) fs::create_directory(path);
  if (what == There::File) put(path, content);
}

// All below a folder, files with their content.
std::map<std::string, std::string> everythingIn(const fs::path& folder) {
  std::map<std::string, std::string> all;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
    all[entry.path().lexically_relative(folder).generic_string()] =
        entry.is_directory() ? "" : readFile(entry.path());
  return all;
}

TEST(Settings, theFileBesideTheProgramIsTakenWhenItCanBeWritten) {
  for (const There own : {There::Nothing, There::File})
    for (const There beside : {There::Nothing, There::File}) {
      const TempFolder folder;
      fs::create_directory(folder / "program");
      place(folder / "program" / kSettingsFile, beside, "shared");
      if (own == There::File) fs::create_directory(folder / "user");
      place(folder / "user" / kSettingsFile, own, "own");
      const auto before = everythingIn(folder.path());
      EXPECT_EQ(chooseSettingsFile(folder / "program", folder / "user"),
                folder / "program" / kSettingsFile);
      EXPECT_EQ(everythingIn(folder.path()), before) << "looking changes nothing";
    }
}

TEST(Settings, theUsersFileIsTakenWhenTheOneBesideTheProgramCannotBeWritten) {
  const struct {
    const char* name;
    There own;
    const char* userFolder;  // "" for a platform without one
    bool taken;
    std::map<std::string, std::string> after;
  } rows[] = {
      {"no file yet", There::Nothing, "user", true, {{"user", ""}}},
      {"no folder above it either",
       There::Nothing,
       "user/roaming",
       true,
       {{"user", ""}, {"user/roaming", ""}}},
      {"a file", There::File, "user", true, {{"user", ""}, {"user/TINTLINE.ini", "own"}}},
      {"a directory in its place, too",
       There::Directory,
       "user",
       false,
       {{"user", ""}, {"user/TINTLINE.ini", ""}}},
      {"a file in the place of the folder", There::Nothing, "program/file/user", false, {}},
      {"no folder for the user", There::Nothing, "", false, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const TempFolder folder;
    const fs::path beside = folder / "program" / kSettingsFile;
    fs::create_directories(beside);
    put(folder / "program" / "file", "");
    const fs::path user = *row.userFolder == 0 ? fs::path() : folder / row.userFolder;
    if (row.own != There::Nothing) {
      fs::create_directory(user);
      place(user / kSettingsFile, row.own, "own");
    }
    EXPECT_EQ(chooseSettingsFile(folder / "program", user),
              row.taken ? user / kSettingsFile : beside);
    auto after = row.after;
    after.insert({{"program", ""}, {"program/TINTLINE.ini", ""}, {"program/file", ""}});
    EXPECT_EQ(everythingIn(folder.path()), after);
  }
}

TEST(Settings, theUsersFileBeginsAsACopy) {
  const TempFolder folder;
  const fs::path program = folder / "program", beside = program / kSettingsFile;
  const fs::path user = folder / "user", own = user / kSettingsFile;
  fs::create_directory(program);
  put(beside, "shared");
  fs::permissions(beside, fs::perms(0444));
  fs::permissions(program, fs::perms(0555));
  fs::permissions(folder.path(), fs::perms::all);
  const auto choose = [&] {
    [[maybe_unused]] const test::OrdinaryUser somebody;
    return chooseSettingsFile(program, user);
  };
  EXPECT_EQ(choose(), own);
  EXPECT_EQ(readFile(own), "shared");
  put(own, "own");
  EXPECT_EQ(choose(), own);
  EXPECT_EQ(readFile(own), "own") << "copied once";
  EXPECT_EQ(readFile(beside), "shared");
  EXPECT_EQ(everythingIn(folder.path()).size(), 4U);
  fs::permissions(program, fs::perms(0755));  // else they cannot be removed everywhere
  fs::permissions(beside, fs::perms(0644));
}

TEST(Settings, aDamagedFileThatCannotBeWrittenGivesTheDefaults) {
  const TempFolder folder;
  const fs::path file = folder / "a.ini";
  put(file, "[TINTLINE]\r\nColProz=,,,,,,\r\n");
  fs::permissions(file, fs::perms(0444));
  fs::permissions(folder.path(), fs::perms(0555));
  ColorScheme scheme;
  {
    [[maybe_unused]] const test::OrdinaryUser somebody;
    FarbenSpeichern(file, scheme);
  }
  EXPECT_EQ(scheme, defaults());
  fs::permissions(folder.path(), fs::perms(0755));  // else they cannot be removed everywhere
  fs::permissions(file, fs::perms(0644));
}

TEST(Settings, readingDropsTheLastCharacter) {
  const TempFolder folder;
  const std::string most(253, 'x');
  const struct {
    std::string stored;
    std::string value;
  } rows[] = {
      {"abc,", "abc"},
      {"abc", "ab"},
      {",", ""},
      {"", ""},
      {" a \"b\" ,", " a \"b\" "},
      {"a=b,c,", "a=b,c"},
      {most + ",", most},
      {most + "yz,", most},
      {std::string(300, 'x') + ",", most},
  };
  for (const auto& row : rows) {
    put(folder / "a.ini", "[TINTLINE]\r\nPreCode=" + row.stored + "\r\n");
    EXPECT_EQ(fkt_IniWertLesen(folder / "a.ini", "PreCode"), row.value) << row.stored;
  }
  EXPECT_EQ(fkt_IniWertLesen(folder / "a.ini", "PostCode"), "");
  EXPECT_EQ(fkt_IniWertLesen(folder / "none.ini", "PreCode"), "");
  EXPECT_EQ(fkt_IniWertLesen(folder.path(), "PreCode"), "");
}

TEST(Settings, writingChangesOneKey) {
  const TempFolder folder;
  const fs::path file = folder / "a.ini";
  IniWertSchreiben(file, "PreCode", "a,");
  EXPECT_EQ(readFile(file), "[TINTLINE]\r\nPreCode=a,\r\n");
  put(file, "; mein\r\n[TINTLINE]\r\nColRem=x\r\nPreCode=alt,\r\n[Rest]\r\nPreCode=r\r\n");
  IniWertSchreiben(file, "PreCode", "neu,");
  EXPECT_EQ(readFile(file),
            "; mein\r\n[TINTLINE]\r\nColRem=x\r\nPreCode=neu,\r\n[Rest]\r\nPreCode=r\r\n");
}

TEST(Settings, aFailedWriteGoesUnreported) {
  const TempFolder folder;
  IniWertSchreiben(folder.path(), "PreCode", "a,");
  IniWertSchreiben(folder / "none" / "a.ini", "PreCode", "a,");
  EXPECT_EQ(folder.entries(), 0);
}

TEST(Settings, theFirstStartWritesTheDefaults) {
  const TempFolder folder;
  ColorScheme scheme;
  EXPECT_FALSE(fkt_FarbenLaden(folder / "a.ini", scheme));
  EXPECT_EQ(scheme, defaults());
  EXPECT_EQ(readFile(folder / "a.ini"), kDefaultSettings);
  EXPECT_EQ(readFile("package/TINTLINE.ini"), kDefaultSettings)
      << "by which removing tells changes";
  EXPECT_TRUE(fkt_FarbenLaden(folder / "a.ini", scheme));
}

TEST(Settings, loadsSixFieldsACategory) {
  const TempFolder folder;
  ColorScheme scheme;
  put(folder / "a.ini", fileWith("ColRem", "a,,c,d,e,f,g,h,"));
  EXPECT_TRUE(fkt_FarbenLaden(folder / "a.ini", scheme));
  EXPECT_EQ(scheme[kProzeduren][0], "00");
  EXPECT_EQ(scheme[kStrings][5], "45");
  const std::array<std::string, kColorFields> fields = {"a", "", "c", "d", "e", "f"};
  EXPECT_EQ(scheme[kKommentare], fields);
}

TEST(Settings, aDamagedCategoryKeepsWhatWasReadBefore) {
  const TempFolder folder;
  const fs::path file = folder / "a.ini";
  const std::string content = fileWith("ColRes", "a,b,");
  put(file, content);
  ColorScheme scheme = defaults();
  EXPECT_FALSE(fkt_FarbenLaden(file, scheme));
  EXPECT_EQ(scheme[kProzeduren][5], "05");
  EXPECT_EQ(scheme[kReservierteWorte][1], "b");
  EXPECT_EQ(scheme[kReservierteWorte][2], "#FFFFFF") << "behind the damage nothing changes";
  EXPECT_EQ(scheme[kStrings], defaults()[kStrings]);

  // Category 0 tells that the table holds a scheme, however empty the others are.
  ColorScheme empty;
  EXPECT_FALSE(fkt_FarbenLaden(file, empty));
  EXPECT_EQ(empty[kProzeduren][5], "05");
  EXPECT_EQ(empty[kStrings][1], "");
  EXPECT_EQ(readFile(file), content) << "nothing is written";
}

TEST(Settings, aDamagedFirstCategoryGivesTheDefaultsOnlyToAnEmptyTable) {
  const TempFolder folder;
  const fs::path file = folder / "a.ini";
  const std::string content = fileWith("ColProz", "a,b,c,d,e,");
  put(file, content);
  ColorScheme scheme = defaults();
  EXPECT_FALSE(fkt_FarbenLaden(file, scheme));
  EXPECT_EQ(scheme[kProzeduren][1], "b");
  EXPECT_EQ(readFile(file), content);

  ColorScheme empty;
  EXPECT_FALSE(fkt_FarbenLaden(file, empty));
  EXPECT_EQ(empty[kProzeduren][1], "#000080");
  EXPECT_EQ(empty[kProzeduren][0], "a") << "field 0 has no default";
  EXPECT_TRUE(readFile(file).starts_with("[TINTLINE]\r\nColProz=a,#000080,"));
}

TEST(Settings, savingKeepsTheCodesAndNothingElse) {
  const TempFolder folder;
  const fs::path file = folder / "a.ini";
  put(file, "; mein\n[Rest]\nx=1\n[TINTLINE]\nNeu=1\nPostCode=</b>,\nPreCode=<b class=\"a,b\">,\n");
  ColorScheme scheme = defaults();
  FarbenSpeichern(file, scheme);
  std::string expected(kDefaultSettings);
  expected.resize(expected.find("PreCode"));
  EXPECT_EQ(readFile(file), expected + "PreCode=<b class=\"a,b\">,\r\nPostCode=</b>,\r\n");
}

TEST(Settings, savingReadsBackWhatTheFileSays) {
  const TempFolder folder;
  ColorScheme scheme = defaults();
  scheme[kProzeduren][0] = "a,b";  // a separator within a field moves the fields behind it
  FarbenSpeichern(folder / "a.ini", scheme);
  EXPECT_EQ(scheme[kProzeduren][1], "b");
  EXPECT_EQ(scheme[kProzeduren][2], "#000080");
}

TEST(Settings, withoutRewriteTheOtherLinesStay) {
  const TempFolder folder;
  const fs::path file = folder / "a.ini";
  put(file, "[TINTLINE]\r\nPreCode=alt,\r\nX=1\r\n");
  EinstellungenSchreiben(file, {"a,", "b,", "c,", "d,", "e,"}, false);
  EXPECT_EQ(readFile(file),
            "[TINTLINE]\r\nPreCode=,\r\nX=1\r\nColProz=a,\r\nColRes=b,\r\nColParms=c,\r\n"
            "ColRem=d,\r\nColString=e,\r\nPostCode=,\r\n");
}

TEST(Settings, aFileThatCannotBeWrittenGivesTheDefaults) {
  const TempFolder folder;
  for (const fs::path& file : {folder.path(), folder / "none" / "a.ini"}) {
    ColorScheme scheme = defaults();
    scheme[kStrings][1] = "#123456";
    FarbenSpeichern(file, scheme);
    EXPECT_EQ(scheme, defaults());
    ColorScheme empty;
    EXPECT_FALSE(fkt_FarbenLaden(file, empty));
    EXPECT_EQ(empty, defaults());
    EXPECT_THROW(EinstellungenSchreiben(file, {}, true), FileError);
  }
}

}  // namespace
}  // namespace tintline::modIniSave
