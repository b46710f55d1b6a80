// What the Linux half does beyond the twins' common promises.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "platform/platform.h"
#include "support/scoped_variable.h"
#include "support/test.h"

namespace tq::platform {
namespace {

std::string write_new(const std::string& path) {
  File file;
  const bool written = file.open(path, OpenMode::kCreateNew).ok() && file.write(path).ok();
  return written && file.close().ok() ? path : "";
}

TEST(Posix, Drives) {
  const TestFolder folder("drives");
  folder.make_folder("drives\\c");
  folder.make_folder("disk");
  std::filesystem::create_symlink(folder.native("disk"), folder.native("drives\\D"));
  const ScopedVariable set("TQUTIL_DRIVES", folder.native("drives").native() + "/");
  EXPECT_NE(write_new("c:\\a.txt"), "");
  EXPECT_NE(write_new("D:b.txt"), "D:b.txt");
  EXPECT_NE(write_new("d:/b.txt"), "");
  EXPECT_TRUE(folder.exists("drives\\c\\a.txt"));
  EXPECT_TRUE(folder.exists("disk\\b.txt"));
  File file;
  EXPECT_EQ(file.open("E:\\a.txt", OpenMode::kCreate).code(), Code::kNotFound);
  EXPECT_EQ(create_folder("E:\\a").code(), Code::kNotFound);

  const std::tuple<const char*, std::string> cases[] = {
      {"drives\\c\\A.txt", "C:\\A.txt"},
      {"drives\\D", "D:\\"},
      {"disk\\sub\\b.txt", "D:\\sub\\b.txt"},  // through the link's target
      {"diskette", folder.at("diskette")},
  };
  for (const auto& [name, wanted] : cases) {
    std::string path;
    EXPECT_TRUE(path_from_native(folder.native(name).native(), path).ok());
    EXPECT_EQ(path, wanted);
  }
}

TEST(Posix, NamesThatWindowsCannotHaveAreLeftOut) {
  const TestFolder folder("names");
  for (const char* name : {"a?b", "end.", "con", "tab\t", "\xea\xb0\x80", "\xff", "back\\slash"}) {
    ASSERT_EQ(::close(::creat((folder.native() / name).c_str(), 0600)), 0) << name;
  }
  ASSERT_EQ(::symlink("nowhere", (folder.native() / "dangling").c_str()), 0);
  // The wave dash of other systems is the full-width tilde of the code page.
  std::ofstream(folder.native() / "10〜20.txt") << "wave";
  std::vector<FolderEntry> entries;
  ASSERT_TRUE(list_folder(folder.at("*"), entries).ok());
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].name, "10～20.txt"_sjis);
  std::uint64_t size = 0;
  EXPECT_TRUE(file_size(folder.at(entries[0].name), size).ok());
  EXPECT_EQ(size, 4u);
  std::string path;
  for (const char* name : {"a?b", "end.", "back\\slash"}) {
    EXPECT_EQ(path_from_native((folder.native() / name).native(), path).code(), Code::kInvalid);
  }
}

TEST(Posix, AnExactNameWinsOverAnotherCase) {
  const TestFolder folder("case");
  for (const char* name : {"aB", "Ab", "AB"}) folder.write(name, name);
  for (const char* name : {"aB", "Ab", "AB", "ab"}) {
    File file;
    char text[3] = {};
    std::size_t got = 0;
    ASSERT_TRUE(file.open(folder.at(name), OpenMode::kRead).ok());
    ASSERT_TRUE(file.read(text, 2, got).ok());
    EXPECT_STREQ(text, std::string(name) == "ab" ? "AB" : name);
  }
}

TEST(Posix, APipeIsNoFileAndDoesNotBlock) {
  const TestFolder folder("pipe");
  ASSERT_EQ(::mkfifo(folder.native("pipe").c_str(), 0600), 0);
  File file;
  EXPECT_EQ(file.open(folder.at("pipe"), OpenMode::kRead).code(), Code::kDenied);
  EXPECT_FALSE(file.open(folder.at("pipe"), OpenMode::kUpdate).ok());
  EXPECT_FALSE(copy_file(folder.at("pipe"), folder.at("copy")).ok());
  EXPECT_FALSE(folder.exists("copy"));
}

TEST(Posix, CopiesKeepPermissions) {
  const TestFolder folder("mode");
  const auto mode = [&](const char* name) {
    struct stat info {};
    ::stat(folder.native(name).c_str(), &info);
    return info.st_mode & 0777u;
  };
  folder.write("private", "x");
  folder.write("old", "x");
  ::chmod(folder.native("private").c_str(), 0600);
  ::chmod(folder.native("old").c_str(), 0664);
  EXPECT_TRUE(copy_file(folder.at("private"), folder.at("new")).ok());
  EXPECT_TRUE(copy_file(folder.at("private"), folder.at("old")).ok());
  EXPECT_EQ(mode("new"), 0600u);
  EXPECT_EQ(mode("old"), 0664u);
  EXPECT_TRUE(set_attributes(folder.at("private"), kReadOnly).ok());
  EXPECT_TRUE(copy_file(folder.at("private"), folder.at("old")).ok());
  EXPECT_EQ(mode("old"), 0444u);
}

TEST(Posix, AttributesAreTheTextThatOthersKeep) {
  const TestFolder folder("xattr");
  folder.write("a", "x");
  const std::string native = folder.native("a").native();
  ASSERT_TRUE(set_attributes(folder.at("a"), kHidden | kArchive).ok());
  char text[16] = {};
  if (::getxattr(native.c_str(), "user.DOSATTRIB", text, sizeof text) < 0 && errno == ENOTSUP) {
    GTEST_SKIP() << "no extended attributes in the temporary folder";
  }
  EXPECT_STREQ(text, "0x22");
  for (const std::string& foreign : {std::string("0x6\0more", 8), std::string("0x6")}) {
    ASSERT_EQ(::setxattr(native.c_str(), "user.DOSATTRIB", foreign.data(), foreign.size(), 0), 0);
    EXPECT_EQ(attributes(folder.at("a")), kHidden | kSystem);
  }
}

}  // namespace
}  // namespace tq::platform
