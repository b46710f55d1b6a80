#include "platform/platform.h"

#include <algorithm>

#include "support/faults.h"
#include "support/scoped_variable.h"
#include "support/test.h"
#include "support/wine.h"

namespace tq::platform {
namespace {

// Every file or folder of ours that is left open is a fault of the layer.
class Platform : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(fault::open_handles(), 0); }
  TestFolder folder_{"platform"};
};

std::string read_all(const std::string& path) {
  File file;
  std::string bytes(100, '\0');
  std::size_t got = 0;
  if (!file.open(path, OpenMode::kRead).ok() || !file.read(bytes.data(), 100, got).ok()) return "?";
  return bytes.substr(0, got);
}

Texts names_of(const std::string& pattern) {
  std::vector<FolderEntry> entries;
  EXPECT_TRUE(list_folder(pattern, entries).ok());
  Texts names;
  for (const FolderEntry& entry : entries) names.push_back(entry.name);
  return names;
}

// --- Open files ----------------------------------------------------------------------------------

// `after`: content of "old.txt" after "new" was written; what is read is kept aside
const std::tuple<const char*, const char*, OpenMode, Code, const char*> kOpenCases[] = {
    {"read", "old.txt", OpenMode::kRead, Code::kOk, "0123"},
    {"read nothing", "none.txt", OpenMode::kRead, Code::kNotFound, "0123"},
    {"nothing in a missing folder", "none\\a.txt", OpenMode::kCreate, Code::kNotFound, "0123"},
    {"through a file", "old.txt\\a.txt", OpenMode::kCreate, Code::kNotFound, "0123"},
    {"create empties", "old.txt", OpenMode::kCreate, Code::kOk, "new"},
    {"create finds the other case", "OLD.TXT", OpenMode::kCreate, Code::kOk, "new"},
    {"create new refuses", "old.txt", OpenMode::kCreateNew, Code::kExists, "0123"},
    {"create new refuses the other case", "Old.txt", OpenMode::kCreateNew, Code::kExists, "0123"},
    {"append", "OLD.txt", OpenMode::kAppend, Code::kOk, "0123new"},
    {"update writes in place", "old.txt", OpenMode::kUpdate, Code::kOk, "new3"},
    {"update needs a file", "none.txt", OpenMode::kUpdate, Code::kNotFound, "0123"},
    {"a folder is no file", "sub", OpenMode::kRead, Code::kDenied, "0123"},
    {"a folder cannot be emptied", "sub", OpenMode::kCreate, Code::kDenied, "0123"},
    {"read-only: create", "locked.txt", OpenMode::kCreate, Code::kDenied, "0123"},
    {"read-only: update", "locked.txt", OpenMode::kUpdate, Code::kDenied, "0123"},
    {"read-only: append", "locked.txt", OpenMode::kAppend, Code::kDenied, "0123"},
    {"hidden: create", "hidden.txt", OpenMode::kCreate, Code::kOk, "0123"},
    {"device", "NUL", OpenMode::kCreate, Code::kInvalid, "0123"},
};

TEST_F(Platform, Open) {
  folder_.make_folder("sub");
  folder_.write("locked.txt", "locked");
  folder_.write("hidden.txt", "hidden");
  ASSERT_TRUE(set_attributes(folder_.at("locked.txt"), kReadOnly).ok());
  ASSERT_TRUE(set_attributes(folder_.at("hidden.txt"), kHidden).ok());
  for (const auto& [why, name, mode, code, after] : kOpenCases) {
    SCOPED_TRACE(why);
    folder_.write("old.txt", "0123");
    File file;
    const Status status = file.open(folder_.at(name), mode);
    EXPECT_EQ(status.code(), code) << status.text();
    EXPECT_EQ(file.is_open(), status.ok());
    if (file.is_open() && mode != OpenMode::kRead) {
      EXPECT_TRUE(file.write("new").ok());
    }
    EXPECT_TRUE(file.close().ok());
    EXPECT_TRUE(file.close().ok());
    EXPECT_EQ(folder_.read("old.txt"), after);
    EXPECT_EQ(folder_.read("locked.txt"), "locked");
  }
  EXPECT_EQ(folder_.contents().size(), 4u);
}

TEST_F(Platform, ReadWriteSeek) {
  File file;
  ASSERT_TRUE(file.open(folder_.at("a.bin"), OpenMode::kCreate).ok());
  EXPECT_TRUE(file.write(std::string("a\r\n\x1a\0b", 6)).ok());
  // The last place is beyond 32 bits, without using the room.
  const std::tuple<std::uint64_t, std::size_t, std::string> reads[] = {
      {1, 2, "\r\n"}, {3, 8, std::string("\x1a\0b", 3)}, {5'000'000'000, 8, ""}};
  for (const auto& [from, most, bytes] : reads) {
    char buffer[8];
    std::size_t got = 99;
    EXPECT_TRUE(file.seek(from).ok() && file.read(buffer, most, got).ok());
    EXPECT_EQ(std::string(buffer, got), bytes);
  }
  EXPECT_TRUE(file.sync().ok());
  std::uint64_t size = 0;
  EXPECT_TRUE(file.size(size).ok());
  EXPECT_EQ(size, 6u);
  File moved = std::move(file);
  EXPECT_TRUE(File().open(folder_.at("A.BIN"), OpenMode::kReadShared).ok());
  EXPECT_EQ(fault::open_handles(), 1);
}

TEST_F(Platform, AppendGoesToTheEndWhateverWasRead) {
  folder_.write("a.txt", "one");
  File file;
  ASSERT_TRUE(file.open(folder_.at("a.txt"), OpenMode::kAppend).ok());
  for (const char* text : {"two", "three"}) {
    char first = 0;
    std::size_t got = 0;
    EXPECT_TRUE(file.seek(0).ok() && file.read(&first, 1, got).ok());
    EXPECT_EQ(first, 'o');
    EXPECT_TRUE(file.write(text).ok());
  }
  EXPECT_TRUE(file.close().ok());
  EXPECT_EQ(folder_.read("a.txt"), "onetwothree");
}

// --- Names --------------------

TEST_F(Platform, NamesAreFoundInAnyCase) {
  folder_.write("Sub\\表計算ａ.Txt"_sjis, "x");
  EXPECT_EQ(read_all(folder_.at("SUB\\表計算Ａ.TXT"_sjis)), "x");
  EXPECT_EQ(read_all(folder_.at("sub/../sub/./表計算ａ.txt "_sjis)), "x");
  // A new file goes to the folder that is there.
  EXPECT_TRUE(File().open(folder_.at("sUB\\New.txt"), OpenMode::kCreateNew).ok());
  EXPECT_TRUE(folder_.exists("Sub\\New.txt"));
  EXPECT_EQ(create_folder(folder_.at("SUB")).code(), Code::kExists);
  EXPECT_EQ(create_folder(folder_.at("sub\\new.TXT")).code(), Code::kExists);
  std::string temporary;
  EXPECT_TRUE(unique_file(folder_.at("SUB"), "fld", temporary).ok());
  EXPECT_EQ(names_of(folder_.at("sUb\\*.TMP")).size(), 1u);
  EXPECT_TRUE(copy_file(folder_.at("SUB\\NEW.TXT"), folder_.at("SUB\\COPY.TXT")).ok());
  EXPECT_TRUE(folder_.exists("Sub\\COPY.TXT"));
  EXPECT_TRUE(replace_file(folder_.at("SUB\\copy.txt"), folder_.at("SUB\\NEW.txt")).ok());
  EXPECT_TRUE(folder_.exists("Sub\\New.txt"));
  EXPECT_TRUE(delete_file(folder_.at("sub\\NEW.TXT")).ok());
  EXPECT_EQ(names_of(folder_.at("sub\\*.txt")), Texts{"表計算ａ.Txt"_sjis});
}

TEST_F(Platform, HostilePathsTouchNothing) {
  folder_.write("keep.txt", "keep");
  folder_.write("sub\\keep.txt", "keep");
  const auto before = folder_.contents();
  const std::string up =
      folder_.at("sub") + "\\..\\..\\..\\..\\..\\..\\..\\..\\..\\..\\..\\..\\etc\\x";
  std::string unused;
  const std::string paths[] = {up,
                               folder_.at(std::string("keep.txt\0.bak", 13)),
                               folder_.at("keep.txt:stream"),
                               folder_.at("\x95"),
                               folder_.at("con"),
                               "\\\\.\\" + folder_.at("keep.txt"),
                               ""};
  for (const std::string& path : paths) {
    SCOPED_TRACE(path);
    File file;
    EXPECT_EQ(attributes(path), kNoAttributes);
    for (const Status& status :
         {file.open(path, OpenMode::kCreate), delete_file(path), create_folder(path),
          copy_file(folder_.at("keep.txt"), path), replace_file(folder_.at("keep.txt"), path),
          unique_file(path, "a", unused), set_attributes(path, kHidden)}) {
      EXPECT_EQ(status.code(), Code::kInvalid) << status.text();
    }
  }
  EXPECT_EQ(unique_file(folder_.path(), "..\\", unused).code(), Code::kInvalid);
  EXPECT_EQ(folder_.contents(), before);
}

// --- Folders --------------------

TEST_F(Platform, ListingIsInNameOrder) {
  for (const char* name : {"b.syg", "A.SYG", "_.syg", "Z.txt", "表.syg"_sjis, "ｱ.syg"_sjis}) {
    folder_.write(name, "");
  }
  folder_.make_folder("d.syg");
  std::vector<FolderEntry> entries;
  ASSERT_TRUE(list_folder(folder_.at("*.Syg"), entries).ok());
  std::string names;
  for (const FolderEntry& entry : entries) names += entry.name + (entry.folder ? "\\ " : " ");
  EXPECT_EQ(names, "A.SYG b.syg d.syg\\ _.syg 表.syg ｱ.syg "_sjis);
  EXPECT_EQ(names_of(folder_.at("*.*")).size(), 7u);
  EXPECT_TRUE(names_of(folder_.at("*.fld")).empty());
  EXPECT_EQ(list_folder(folder_.at("none\\*"), entries).code(), Code::kNotFound);
  EXPECT_EQ(list_folder(folder_.at("A.SYG\\*"), entries).code(), Code::kNotFound);
  EXPECT_EQ(list_folder(folder_.path() + "\\", entries).code(), Code::kInvalid);
}

TEST_F(Platform, FoldersAndDeleting) {
  const std::string sub = folder_.at("sub");
  const std::string file = folder_.at("sub\\a.txt");
  EXPECT_EQ(create_folder(folder_.at("none\\sub")).code(), Code::kNotFound);
  EXPECT_TRUE(create_folder(sub + "\\").ok());
  EXPECT_EQ(delete_file(sub).code(), Code::kDenied);
  folder_.write("sub\\a.txt", "a");
  EXPECT_EQ(remove_folder(sub).code(), Code::kNotEmpty);
  EXPECT_EQ(remove_folder(file).code(), Code::kNotFound);
  EXPECT_TRUE(sync_folder(sub).ok());
  ASSERT_TRUE(set_attributes(file, kReadOnly).ok());
  EXPECT_EQ(delete_file(file).code(), Code::kDenied);
  EXPECT_EQ(folder_.read("sub\\a.txt"), "a");
  ASSERT_TRUE(set_attributes(file, kNormal).ok());
  EXPECT_TRUE(delete_file(file).ok());
  EXPECT_EQ(delete_file(file).code(), Code::kNotFound);
  EXPECT_TRUE(remove_folder(sub).ok());
  EXPECT_EQ(remove_folder(sub).code(), Code::kNotFound);
  EXPECT_EQ(sync_folder(sub).code(), Code::kNotFound);
}

TEST_F(Platform, SyncFiles) {
  Texts paths;
  for (int i = 0; i < 40; ++i) {
    const std::string name = "sub" + std::to_string(i % 3) + "\\" + std::to_string(i);
    folder_.write(name, name);
    paths.push_back(folder_.at(name));
  }
  ASSERT_TRUE(set_attributes(paths.front(), kReadOnly).ok());
  EXPECT_TRUE(sync_files(paths).ok());
  EXPECT_NE(attributes(paths.front()) & kReadOnly, 0u);
  EXPECT_TRUE(sync_files({}).ok());
  EXPECT_EQ(sync_files({paths[0], folder_.at("none")}).code(), Code::kNotFound);
  paths.push_back(folder_.at("none"));
  EXPECT_EQ(sync_files(paths).code(), Code::kNotFound);
}

TEST_F(Platform, UniqueFiles) {
  std::string first, second;
  ASSERT_TRUE(unique_file(folder_.path(), "CSHX", first).ok());
  ASSERT_TRUE(unique_file(folder_.path() + "\\", "CSHX", second).ok());
  EXPECT_NE(first, second);
  EXPECT_TRUE(second.starts_with(folder_.at("CSH"))) << second;
  EXPECT_EQ(read_all(second), "");
  EXPECT_EQ(unique_file(folder_.at("none"), "a", first).code(), Code::kNotFound);
}

// --- Attributes and times --------------------

TEST_F(Platform, Attributes) {
  folder_.write("a.txt", "a");
  folder_.make_folder("sub");
  const std::string path = folder_.at("a.txt");
  EXPECT_TRUE(attributes(path) == kArchive || attributes(path) == kNormal);
  EXPECT_EQ(attributes(folder_.at("none\\a")), kNoAttributes);
  EXPECT_EQ(attributes(folder_.at("sub")) & (kFolder | kReadOnly), kFolder);
  // Wine always says archive, and does not keep a folder's read-only bit for the superuser.
  const std::uint32_t unkept = under_wine() ? kArchive | kNormal : 0;
  for (const std::uint32_t bits : {kReadOnly | kHidden, kSystem | kArchive, kNormal}) {
    EXPECT_TRUE(set_attributes(path, bits).ok());
    EXPECT_EQ(attributes(path) | unkept, bits | unkept);
  }
  EXPECT_TRUE(set_attributes(folder_.at("sub"), kHidden | kReadOnly).ok());
  EXPECT_TRUE(attributes(folder_.at("sub")) == (kHidden | kReadOnly | kFolder) || under_wine());
  EXPECT_TRUE(File().open(folder_.at("sub\\a.txt"), OpenMode::kCreateNew).ok())
      << "a folder's read-only bit protects nothing in it";
  EXPECT_EQ(set_attributes(folder_.at("none"), kHidden).code(), Code::kNotFound);
}

constexpr FileTime kSecond = 10'000'000;
constexpr FileTime kIn2001 = 126'227'808'000'000'000;  // 2001-01-01 00:00 UTC
constexpr FileTime kIn1995 = kIn2001 - 6 * 365 * 86'400 * kSecond;
constexpr FileTime kIn2040 = kIn2001 + 39ull * 365 * 86'400 * kSecond;

TEST_F(Platform, FileTimes) {
  folder_.write("a.txt", "a");
  const std::string path = folder_.at("a.txt");
  FileTimes times;
  ASSERT_TRUE(file_times(path, times).ok());
  EXPECT_LT(times.created, utc_now() + 5 * kSecond);
  EXPECT_GT(times.created, utc_now() - 600 * kSecond);
  // A creation time after the writing one, as a copied file has, and moments beyond 2038.
  const FileTimes wanted{kIn2040, kIn2001 + 7, kIn1995};
  for (const std::uint32_t bits : {kNormal, kReadOnly}) {
    ASSERT_TRUE(set_attributes(path, bits).ok());
    ASSERT_TRUE(set_file_times(path, wanted).ok());
    ASSERT_TRUE(file_times(path, times).ok());
    EXPECT_TRUE(times.created == wanted.created || under_wine()) << "Wine cannot set it";
    EXPECT_EQ(times.accessed, wanted.accessed);
    EXPECT_EQ(times.written, wanted.written);
  }
  ASSERT_TRUE(set_attributes(path, kNormal).ok());
  File file;
  ASSERT_TRUE(file.open(path, OpenMode::kUpdate).ok());
  ASSERT_TRUE(file.set_times({kIn1995, 0, kIn2001}).ok());
  ASSERT_TRUE(file.times(times).ok());
  EXPECT_TRUE(times.accessed == wanted.accessed || under_wine()) << "0 leaves it alone";
  EXPECT_EQ(times.written, kIn2001);
  EXPECT_EQ(file_times(folder_.at("none"), times).code(), Code::kNotFound);
}

TEST_F(Platform, Clock) {
  DateTime local;
  ASSERT_TRUE(to_local(utc_now(), local));
  EXPECT_EQ(local_now().year, local.year);
  // Whatever the time zone, noon of a Monday is in this year's first two days.
  ASSERT_TRUE(to_local(kIn2001 + 12 * 3600 * kSecond + 1'230'000, local));
  EXPECT_EQ(local.year * 100 + local.month, 200101);
  EXPECT_EQ(local.day, local.day_of_week);
  EXPECT_EQ(local.milliseconds, 123);
  EXPECT_FALSE(to_local(0xFFFFFFFFFFFFFFFF, local));
  EXPECT_EQ(local.year, 0);
}

// --- Copying and replacing --------------------

// `target_bits`: kNoAttributes: no target before
const std::tuple<const char*, const char*, const char*, std::uint32_t, Code> kCopyCases[] = {
    {"new file", "from.txt", "to.txt", kNoAttributes, Code::kOk},
    {"over a longer file", "from.txt", "to.txt", kNormal, Code::kOk},
    {"over a hidden file", "from.txt", "to.txt", kHidden, Code::kOk},
    {"over a read-only file", "from.txt", "to.txt", kReadOnly, Code::kDenied},
    {"missing source", "none.txt", "to.txt", kNormal, Code::kNotFound},
    {"missing folder", "from.txt", "none\\to.txt", kNormal, Code::kNotFound},
    {"onto a folder", "from.txt", "sub", kNormal, Code::kDenied},
    {"a folder", "sub", "to.txt", kNormal, Code::kDenied},
    {"onto itself", "to.txt", "TO.TXT", kNormal, Code::kBusy},
};

TEST_F(Platform, Copy) {
  folder_.make_folder("sub");
  folder_.write("from.txt", "content");
  const std::string from = folder_.at("from.txt");
  const std::string to = folder_.at("to.txt");
  ASSERT_TRUE(set_file_times(from, {kIn1995, kIn1995, kIn2001 + 5}).ok());
  ASSERT_TRUE(set_attributes(from, kHidden | kReadOnly).ok());
  for (const auto& [why, source, target, target_bits, code] : kCopyCases) {
    SCOPED_TRACE(why);
    if (target_bits != kNoAttributes) {
      folder_.write("to.txt", "something longer");
      ASSERT_TRUE(set_attributes(to, target_bits).ok());
    }
    const auto before = folder_.contents();
    const Status status = copy_file(folder_.at(source), folder_.at(target));
    EXPECT_EQ(status.code(), code) << status.text();
    if (status.ok()) {
      EXPECT_EQ(folder_.read("to.txt"), "content");
      EXPECT_EQ(attributes(to) & (kHidden | kReadOnly), kHidden | kReadOnly);
      FileTimes times;
      ASSERT_TRUE(file_times(to, times).ok());
      EXPECT_EQ(times.written, kIn2001 + 5);
    } else {
      EXPECT_EQ(folder_.contents(), before);
    }
    if (exists(to)) {
      EXPECT_TRUE(set_attributes(to, kNormal).ok());
      EXPECT_TRUE(delete_file(to).ok());
    }
  }
}

TEST_F(Platform, CopiesOfEverySize) {
  for (const std::size_t size : {0u, 1u, 4095u, 4096u, 4097u, 1u << 20, (3u << 20) + 7}) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 31 >> 3);
    folder_.write("from.bin", bytes);
    EXPECT_TRUE(copy_file(folder_.at("from.bin"), folder_.at("to.bin")).ok());
    EXPECT_TRUE(folder_.read("to.bin") == bytes) << size;
  }
}

TEST_F(Platform, Replace) {
  for (const char* name : {"new.txt", "old.txt", "locked.txt", "sub\\x"}) folder_.write(name, name);
  ASSERT_TRUE(set_attributes(folder_.at("locked.txt"), kReadOnly).ok());
  const auto before = folder_.contents();
  EXPECT_EQ(replace_file(folder_.at("none.txt"), folder_.at("old.txt")).code(), Code::kNotFound);
  EXPECT_EQ(replace_file(folder_.at("new.txt"), folder_.at("none\\a")).code(), Code::kNotFound);
  EXPECT_EQ(replace_file(folder_.at("new.txt"), folder_.at("locked.txt")).code(), Code::kDenied);
  EXPECT_EQ(replace_file(folder_.at("new.txt"), folder_.at("sub")).code(), Code::kDenied);
  EXPECT_EQ(folder_.contents(), before);
  EXPECT_TRUE(replace_file(folder_.at("new.txt"), folder_.at("OLD.TXT")).ok());
  EXPECT_TRUE(replace_file(folder_.at("old.txt"), folder_.at("sub\\fresh.txt")).ok());
  EXPECT_EQ(folder_.read("sub\\fresh.txt"), "new.txt");
}

// --- Faults --------------------

TEST_F(Platform, EveryOperationPassesTheGate) {
  std::string temporary;
  File file;
  fault::arm(0, fault::Kind::kFail);
  EXPECT_TRUE(unique_file(folder_.path(), "sav", temporary).ok() &&
              file.open(temporary, OpenMode::kCreate).ok() && file.write("new content").ok() &&
              file.sync().ok() && file.close().ok() &&
              replace_file(temporary, folder_.at("a.txt")).ok() &&
              sync_folder(folder_.path()).ok() && sync_files({folder_.at("a.txt")}).ok());
  EXPECT_EQ(fault::count(), 8);
  const fault::FailNth fail(1);
  EXPECT_EQ(sync_files({folder_.at("a.txt")}).code(), Code::kIo);
}

TEST_F(Platform, AFailedCopyLeavesNoHalfFile) {
  using Kind = fault::Kind;
  folder_.write("from.txt", "0123456789");
  each_fault({Kind::kFail, Kind::kDiskFull, Kind::kCrash}, [&](int nth, Kind kind) {
    folder_.remove("to.txt");
    const fault::FailNth fail(nth, kind);
    const bool copied = copy_file(folder_.at("from.txt"), folder_.at("to.txt")).ok();
    EXPECT_EQ(copied, !fail.hit());
    // Killed in the middle of the bytes, nobody can clean up any more.
    const bool stays = copied || (kind == Kind::kCrash && nth >= 2);
    EXPECT_EQ(folder_.exists("to.txt"), stays);
    EXPECT_TRUE(!stays || nth != 2 || folder_.read("to.txt") == "01234");
    return fail.hit();
  });
}

// --- Memory and host --------------------

TEST_F(Platform, MovableMemoryIsZeroed) {
  for (const std::size_t size : {0u, 1u, 100'000u}) {
    auto* block = static_cast<char*>(alloc_movable(size));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::count(block, block + size, '\0'), static_cast<std::ptrdiff_t>(size));
    free_movable(block);
  }
  free_movable(nullptr);
}

TEST_F(Platform, Host) {
  {
    const ScopedVariable set("TQUTIL_TEST_VARIABLE", "住所");
    EXPECT_EQ(environment("TQUTIL_TEST_VARIABLE"), "住所");
  }
  EXPECT_EQ(environment("TQUTIL_TEST_VARIABLE"), "");
  EXPECT_TRUE(user_data_folder().ends_with("\\tqutil")) << user_data_folder();
  EXPECT_TRUE(is_folder(module_folder())) << module_folder();
}

}  // namespace
}  // namespace tq::platform
