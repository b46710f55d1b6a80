// Path helpers: separators inside two-byte characters, drive roots, names that climb; and the
// whole-file replacement that every writer of settings and tables uses.
#include "common/path.h"

#include "support/faults.h"
#include "support/test.h"

namespace {

// Its second byte is 0x5C, the backslash.
const std::string kHyo = "表"_sjis;

TEST(Backslash, AddedAndRemoved) {
  const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
      {"empty stays empty", "", "", ""},
      {"drive root keeps its own", "C:\\", "C:\\", "C:\\"},
      {"bare drive gets one either way", "C:", "C:\\", "C:\\"},
      {"folder", "C:\\data\\", "C:\\data\\", "C:\\data"},
      {"second byte 5C is none", "C:\\" + kHyo, "C:\\" + kHyo + "\\", "C:\\" + kHyo},
      {"one behind such a character is", kHyo + "\\", kHyo + "\\", kHyo},
  };
  for (const auto& [why, text, with, without] : cases) {
    SCOPED_TRACE(why);
    std::string added = text;
    std::string removed = text;
    tq::AddBackslash(added);
    tq::RemoveBackslash(removed);
    EXPECT_EQ(added, with);
    EXPECT_EQ(removed, without);
  }
}

TEST(PathParts, NameFolderAndExtension) {
  const std::tuple<const char*, std::string, std::string, std::string, std::string> cases[] = {
      {"plain", "Z:\\a\\b.txt", "Z:\\a", "b.txt", ".txt"},
      {"dots in folders do not count", "Z:\\a.b\\c", "Z:\\a.b", "c", ""},
      {"last dot of the name", "Z:\\a.b.c", "Z:\\", "a.b.c", ".c"},
      {"slash and colon separate too", "Z:a/b", "Z:a/", "b", ""},
      {"second byte 5C and 2E", "Z:\\" + kHyo + "x", "Z:\\", kHyo + "x", ""},
      {"no folder", "name.", "", "name.", "."},
  };
  for (const auto& [why, path, folder, name, extension] : cases) {
    SCOPED_TRACE(why);
    EXPECT_EQ(tq::PathFileName(path), name);
    EXPECT_EQ(tq::PathFolder(path), folder);
    EXPECT_EQ(path.substr(tq::PathExtension(path)), extension);
  }
}

TEST(LiesIn, OnlyDirectChildrenCount) {
  EXPECT_TRUE(tq::lies_in("Z:\\A\\b.tmp", "z:\\a"));
  EXPECT_TRUE(tq::lies_in("Z:\\a\\*.tmp", "Z:\\a\\"));
  EXPECT_TRUE(tq::lies_in("Z:\\" + kHyo + "\\x", "Z:\\" + kHyo));
  EXPECT_FALSE(tq::lies_in("Z:\\a\\b\\c", "Z:\\a")) << "deeper";
  EXPECT_FALSE(tq::lies_in("Z:\\a\\..\\b", "Z:\\a")) << "climbs";
  EXPECT_FALSE(tq::lies_in("Z:\\a\\..", "Z:\\a")) << "names the parent";
  EXPECT_FALSE(tq::lies_in("Z:\\ab", "Z:\\a")) << "beside";
  EXPECT_FALSE(tq::lies_in("b.tmp", "")) << "no folder at all";
  EXPECT_FALSE(tq::lies_in("Z:\\x\x81\x5C\x79", "Z:\\x\x81"))
      << "half a character separates nothing";
}

TEST(MakeFolderTree, MakesWhatIsMissing) {
  TestFolder folder;
  EXPECT_EQ(tq::MakeFolderTree(folder.at("a\\" + kHyo + "\\c\\")), 0);
  EXPECT_TRUE(folder.exists("a\\" + kHyo + "\\c"));
  EXPECT_EQ(tq::MakeFolderTree(folder.at("a\\" + kHyo + "\\c")), 0) << "there already";
  folder.write("file", "x");
  EXPECT_EQ(tq::MakeFolderTree(folder.at("file")), 1) << "a file of that name";
  EXPECT_EQ(tq::MakeFolderTree(folder.at("file\\below")), 1) << "a file in the way";
  EXPECT_EQ(tq::MakeFolderTree("Q:\\"), 0) << "a drive root is not looked at";
  EXPECT_EQ(tq::MakeFolderTree("Q"), 1) << "too short to be a folder";
}

TEST(CountUniqueName, TakesTheFirstFreeNumber) {
  TestFolder folder;
  folder.write("abc00000.tmp", "");
  folder.write("abc00002.tmp", "");
  std::string path;
  ASSERT_TRUE(tq::count_unique_name(folder.path(), "abc", path));
  EXPECT_EQ(path, folder.at("abc00001.tmp"));
  EXPECT_FALSE(folder.exists("abc00001.tmp"));
}

TEST(ReplaceContent, EveryFailureLeavesTheOldFileOrTheNew) {
  using Kind = fault::Kind;
  each_fault({Kind::kFail, Kind::kDiskFull, Kind::kCrash}, [](int nth, Kind kind) {
    TestFolder folder;
    folder.write("target", "old");
    const fault::FailNth failing(nth, kind);
    const bool ok = tq::replace_content(folder.at("target"), std::string(5000, 'n')).ok();
    EXPECT_EQ(folder.read("target"), ok ? std::string(5000, 'n') : "old");
    // Only a killed process may leave its temporary file behind.
    EXPECT_TRUE(kind == Kind::kCrash || folder.contents().size() == 1);
    EXPECT_TRUE(ok || failing.hit());
    return failing.hit();
  });
}

}  // namespace
