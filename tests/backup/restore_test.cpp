// Restoring: what comes back, what is saved before, what is asked, and what is refused.
#include <algorithm>

#include "backup/backup_host.h"
#include "platform/platform.h"
#include "support/test.h"
#include "support/wine.h"

namespace {

namespace platform = tq::platform;

short restore(const char* id) {
  CBackUpCtl object;
  return object.RestoreGrp(bytes(id));
}

TEST(Restore, DamageRestoreAndUndo) {
  BackupHost host;
  host.write("u\\book.dat", "good");
  host.write("u\\locked.dat", "kept");
  const std::string book = host.at("u\\book.dat"), locked = host.at("u\\locked.dat");
  const platform::FileTimes old = {125911584000000000, 125911584000000000, 126911584000000000};
  ASSERT_TRUE(platform::set_file_times(book, old).ok());
  ASSERT_TRUE(platform::set_attributes(book, platform::kHidden).ok());
  ASSERT_TRUE(platform::set_attributes(locked, platform::kReadOnly).ok());
  const auto hidden = platform::attributes(book);
  ASSERT_EQ(host.back_up(1, {{3, "", {"u\\book.dat"}}, {3, "", {"u\\locked.dat"}}}), 0);
  ASSERT_TRUE(platform::set_attributes(book, platform::kNormal).ok());
  host.write("u\\book.dat", "damaged");

  host.log.clear();
  EXPECT_EQ(tqAutoRestoreGrp(1, 1), 0);
  EXPECT_EQ(host.read("u\\book.dat"), "good");
  EXPECT_EQ(host.read("u\\locked.dat"), "kept");
  platform::FileTimes times;
  ASSERT_TRUE(platform::file_times(book, times).ok());
  EXPECT_EQ(times.written, old.written);
  EXPECT_TRUE(times.created == old.created || under_wine());
  EXPECT_EQ(platform::attributes(book), hidden);
  EXPECT_NE(platform::attributes(locked) & platform::kReadOnly, 0u);
  const std::string heading = "ファイルのリストア中です..."_sjis;
  EXPECT_EQ(std::ranges::count(host.log, "open caption/" + heading + "/0"), 1);
  EXPECT_EQ(host.percent, 100);

  EXPECT_EQ(BackupHost::listed(-1), (Texts{"00000 1 2", "00001 4 2"}));
  EXPECT_EQ(restore("00001"), 0) << "the undo";
  EXPECT_EQ(host.read("u\\book.dat"), "damaged");
  EXPECT_EQ(BackupHost::listed(4).size(), 2u) << "which can be undone as well";
}

TEST(Restore, WithoutABackupBefore) {
  BackupHost host;
  host.write("a", "good");
  EXPECT_EQ(tqErrRestoreGrp(1), 1) << "no backup of that kind";
  ASSERT_EQ(host.back_up(1, {{3, "", {"a"}}}), 0);
  host.write("a", "failed");
  EXPECT_EQ(tqErrRestoreGrp(1), 0);
  EXPECT_EQ(host.read("a"), "good");
  EXPECT_EQ(BackupHost::listed(-1), Texts{"00000 1 1"});
  EXPECT_EQ(tqAutoRestoreGrp(1, 2), 1);
  EXPECT_EQ(tqRestoreGrp("00009"), -1);
  EXPECT_EQ(tqRestoreFile("0000900000"), 1);
}

TEST(Restore, SavesAndReplacesTheDataSetAndNotOnlyTheFilesOfTheBackup) {
  BackupHost host;
  host.write("u\\set.dat", "old");
  ASSERT_EQ(host.back_up(0, {{13, "", {"u\\set.dat"}}}), 0);
  const std::string path = host.at("u\\set.dat");
  host.write("u\\set.dat", "new");
  host.write("u\\set.idx", "index of new");
  host.related[path] = {path, host.at("u\\set.idx"), host.at("u\\gone.idx")};
  EXPECT_EQ(restore("00000"), 0);
  EXPECT_FALSE(host.exists("u\\set.idx")) << "it belonged to what was replaced";
  auto saved = host.restorable()["00001"];
  EXPECT_EQ(saved.size(), 2u);
  EXPECT_EQ(saved[host.at("u\\set.idx")], "index of new");

  // Nothing of the set is there: nothing to save.
  host.remove("u\\set.dat");
  EXPECT_EQ(restore("00000"), 0);
  EXPECT_EQ(BackupHost::listed(4).size(), 1u);
  EXPECT_EQ(host.read("u\\set.dat"), "old");
}

TEST(Restore, MissingFolders) {
  // `answers`: other folders, relative to the home; an empty one: the same again; at last: cancel
  // `file`: where the file is afterwards, empty for nowhere
  // `shown`: messages of the error box
  const std::tuple<const char*, Texts, short, const char*, int, std::string> cases[] = {
      {"made again", {""}, 0, "u\\deep\\a", 1, ""},
      {"another folder", {"new\\place\\"}, 0, "new\\place\\a", 1, ""},
      {"cancelled", {}, 1, "", 1, ""},
      {"a file is there; the folder stays", {"full"}, 1, "", 2, "6 @\\full\\a"},
      {"it cannot be made", {"full\\a", "new"}, 0, "new\\a", 2, "4 @\\full\\a"},
      {"among the backups", {"backup\\00000", ""}, 0, "u\\deep\\a", 2, "4 @\\backup\\00000"},
  };
  for (const auto& [why, answers, result, file, asked, shown] : cases) {
    for (const bool single : {false, true}) {
      SCOPED_TRACE(std::string(why) + (single ? ", alone" : ""));
      BackupHost host;
      host.write("u\\deep\\a", "content");
      ASSERT_EQ(host.back_up(0, {{3, "", {"u\\deep\\a"}}}), 0);
      host.remove("u");
      host.write("full\\a", "mine");
      for (const std::string& folder : answers) {
        host.folder_answers.emplace_back(folder.empty() ? TQ_FOLDER_RECREATE : TQ_FOLDER_OTHER,
                                         host.at(folder));
      }
      host.log.clear();
      EXPECT_EQ(single ? tqRestoreFile("0000000000") : restore("00000"), result);
      EXPECT_EQ(host.read("full\\a"), "mine");
      EXPECT_TRUE(*file == '\0' || host.read(file) == "content");
      EXPECT_EQ(std::ranges::count(host.log, "missing @\\u\\deep|a"), asked);
      std::string messages;
      for (const std::string& line : host.log) {
        if (line.starts_with("message 2.")) messages += line.substr(10);
      }
      EXPECT_EQ(messages, shown);
    }
  }
}

TEST(Restore, ASelectionLooksAtEveryFolderButRestoresWhatIsMarked) {
  BackupHost host;
  host.write("x\\a", "a1");
  host.write("y\\b", "b1");
  ASSERT_EQ(host.back_up(0, {{3, "", {"x\\a"}}, {3, "", {"y\\b"}}}), 0);
  host.write("x\\a", "a2");
  host.remove("y");
  CBackUpCtl object;
  EXPECT_EQ(object.RestoreFileSet(bytes("0000000000")), 1) << "nothing loaded";
  ASSERT_EQ(object.RestoreFileInit(bytes("00000")), 0);
  ASSERT_EQ(object.RestoreFileSet(bytes("0000000000")), 0);
  EXPECT_EQ(object.RestoreFileStart(), 1) << "the user cancels over a group that is not marked";
  EXPECT_EQ(host.read("x\\a"), "a2");
  host.folder_answers = {{TQ_FOLDER_RECREATE, ""}};
  EXPECT_EQ(object.RestoreFileStart(), 0);
  EXPECT_EQ(host.read("x\\a"), "a1");
  EXPECT_TRUE(host.exists("y"));
  EXPECT_FALSE(host.exists("y\\b"));
  // A single group does not ask about the others.
  host.remove("y");
  host.write("x\\a", "a3");
  EXPECT_EQ(object.RestoreFile(bytes("0000000000")), 0);
  EXPECT_EQ(host.read("x\\a"), "a1");
  EXPECT_FALSE(host.exists("y"));
}

TEST(Restore, DataSetsThatCannotBeTold) {
  for (const int answered : {0, 1}) {
    SCOPED_TRACE(answered);
    BackupHost host;
    host.write("a", "a1");
    ASSERT_EQ(host.back_up(0, {{3, "", {"a"}}}), 0);
    const auto before = host.read("a");
    // The first question comes from the backup before, the second from the restore.
    host.related_queries_left = answered;
    EXPECT_EQ(restore("00000"), answered == 0 ? 1 : -1);
    host.related_queries_left = answered;
    EXPECT_EQ(tqRestoreFile("0000000000"), answered == 0 ? -1 : 1);
    EXPECT_EQ(host.read("a"), before);
  }
}

TEST(Restore, WholeFolders) {
  BackupHost host;
  host.write("f\\top", "1");
  host.write("f\\sub\\deep\\file", "2");
  host.make_folder("f\\empty");
  host.write("elsewhere\\precious", "3");
  const auto user = [&] {
    auto all = host.contents();
    std::erase_if(all, [](const auto& entry) {
      return entry.first.starts_with("data\\") || entry.first.starts_with("backup\\");
    });
    return all;
  };
  ASSERT_EQ(host.back_up(0, {{64, host.at("f"), {"f\\top", "f\\sub\\deep\\file"}}}), 0);
  const auto before = user();
  host.write("f\\top", "changed");
  host.write("f\\added\\new", "4");
  ASSERT_TRUE(platform::set_attributes(host.at("f\\added\\new"), platform::kReadOnly).ok());
  host.remove("f\\empty");
  std::error_code no_links;
  std::filesystem::create_directory_symlink(host.native("elsewhere"), host.native("f\\link"),
                                            no_links);
  EXPECT_EQ(restore("00000"), 0);
  EXPECT_EQ(host.read("elsewhere\\precious"), "3") << "a link is not followed";
  host.remove("f\\link");
  EXPECT_EQ(user(), before);
  EXPECT_EQ(BackupHost::listed(4), Texts{}) << "whole folders alone are not saved before";

  // Beside another group they are, with all that is in them.
  host.write("a", "a");
  ASSERT_EQ(host.back_up(0, {{64, host.at("f"), {"f\\top"}}, {3, "", {"a"}}}), 0);
  host.write("f\\added", "5");
  EXPECT_EQ(restore("00001"), 0);
  EXPECT_EQ(host.restorable()["00002"].size(), 4u);

  // A folder that is gone altogether is not in the backup before, and comes back.
  host.remove("f");
  host.folder_answers = {{TQ_FOLDER_RECREATE, ""}};
  host.write("a", "b");
  EXPECT_EQ(restore("00001"), 0);
  EXPECT_EQ(host.read("f\\top"), "1");
  EXPECT_EQ(host.restorable()["00003"], (std::map<std::string, std::string>{{host.at("a"), "b"}}));
}

TEST(Restore, TwoFilesOfOneNameDoNotGoToOnePlace) {
  BackupHost host;
  host.write("x\\a", "1");
  host.write("y\\a", "2");
  ASSERT_EQ(host.back_up(0, {{3, "", {"x\\a"}}, {3, "", {"y\\a"}}}), 0);
  host.remove("x");
  host.remove("y");
  const std::string place = host.at("new");
  host.folder_answers = {
      {TQ_FOLDER_OTHER, place}, {TQ_FOLDER_OTHER, place}, {TQ_FOLDER_OTHER, host.at("y")}};
  EXPECT_EQ(restore("00000"), 0);
  EXPECT_EQ(host.read("new\\a"), "1");
  EXPECT_EQ(host.read("y\\a"), "2");
  EXPECT_EQ(std::ranges::count(host.log, "message 2.6 @\\new\\a"), 1);
}

// A backup of "u\file" or of the folder "f", with one text in its history replaced.
TEST(Restore, RefusesWhatAHistoryHasNoBusinessWith) {
  // `from`, `to`: `@` stands for the home
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"a copy from elsewhere", "\n@\\backup\\00000\\~tq", "\n@\\u\\~tq"},
      {"a copy beside the backups", "\n@\\backup\\00000\\~tq", "\n@\\backup\\~tq"},
      {"a copy that climbs", "\n@\\backup\\00000\\~tq", "\n@\\backup\\00000\\..\\..\\u\\~tq"},
      {"onto another backup", "\n@\\u\\file", "\n@\\backup\\00001\\file"},
      {"onto another backup by a detour", "\n@\\u\\file", "\n@\\u\\..\\BACKUP\\.\\00001\\file"},
      {"onto a history", "\n@\\u\\file", "\n@\\data\\00001.bkh"},
      {"onto the settings", "\n@\\u\\file", "\n@\\data\\tq_bkinf.dat"},
      {"to no place at all", "\n@\\u\\file", "\nfile"},
      {"a folder name cut at its comma", ",@\\f\n", ",@\\u\n"},
      {"a folder that holds the backups", ",@\\f\n", ",@\n"},
      {"a truncated history", "\n7\n", "\n"},
  };
  for (const auto& [why, from, to] : cases) {
    for (const bool single : {false, true}) {
      SCOPED_TRACE(std::string(why) + (single ? ", alone" : ""));
      BackupHost host;
      host.write("u\\file", "1");
      host.write("f\\file", "2");
      const bool folder = from[0] == ',';
      const BackupHost::Group file = {3, "", {"u\\file"}}, whole = {64, host.at("f"), {"f\\file"}};
      ASSERT_EQ(host.back_up(0, {folder ? whole : file}), 0);
      ASSERT_EQ(host.back_up(0, {file}), 0);
      host.write("u\\file", "changed");
      std::string text = host.relative(host.read("data\\00000.BKH"));
      const std::size_t at = text.rfind(from);
      ASSERT_NE(at, std::string::npos);
      host.write("data\\00000.BKH", host.filled(text.replace(at, from.size(), to)));
      const auto before = host.contents();
      host.log.clear();
      EXPECT_NE(single ? tqRestoreFile("0000000000") : restore("00000"), 0);
      EXPECT_EQ(host.contents(), before);
      const bool told = !host.log.empty() && host.log.front().starts_with("message 2.7 ");
      EXPECT_EQ(told, from != "\n7\n");
    }
  }
}

TEST(Restore, ACopyThatIsMissingOrShortIsFoundBeforeAnythingIsChanged) {
  for (const bool missing : {false, true}) {
    BackupHost host;
    host.write("a", "a1");
    host.write("b", "b1");
    ASSERT_EQ(host.back_up(0, {{3, "", {"a"}}, {3, "", {"b"}}}), 0);
    CBackUpCtl object;
    for (const auto& entry : std::filesystem::directory_iterator(host.native("backup\\00000"))) {
      const auto content = read_file(entry.path());
      if (content == "b1" && missing) std::filesystem::remove(entry.path());
      if (content == "b1" && !missing) std::filesystem::resize_file(entry.path(), 1);
    }
    host.write("a", "a2");
    const auto before = host.contents();
    EXPECT_EQ(object.RestoreGrp(bytes("00000")), -1);
    EXPECT_EQ(object.ErrorCause(), missing ? TQ_BKUP_CAUSE_FILE : TQ_BKUP_CAUSE_OTHER);
    char path[TQ_PATH_SIZE];
    object.ErrorPath(path);
    EXPECT_TRUE(std::string(path).starts_with(host.at("backup\\00000\\~tq"))) << path;
    EXPECT_EQ(host.contents(), before);
    EXPECT_EQ(tqRestoreFile("0000000000"), 0) << "the other group is whole";
    EXPECT_EQ(host.read("a"), "a1");
  }
}

TEST(Restore, ABackupThatIsBeingReadIsNotRotatedAway) {
  BackupHost host;
  host.make_folder("data");
  setBkupGeneration(0, 1);
  host.write("a", "first");
  ASSERT_EQ(host.back_up(4, {{3, "", {"a"}}}), 0);
  host.write("a", "second");
  EXPECT_EQ(restore("00000"), 0);
  EXPECT_EQ(host.read("a"), "first");
  EXPECT_EQ(BackupHost::listed(4).size(), 2u) << "one more than may stay, until next time";
  EXPECT_EQ(restore("00001"), 0);
  EXPECT_EQ(host.read("a"), "second");
  EXPECT_EQ(BackupHost::listed(4).size(), 2u);
  EXPECT_FALSE(host.exists("data\\00000.BKH")) << "nobody reads it now";
}

TEST(Restore, DoesNotDisturbTheListThatIsServed) {
  BackupHost host;
  host.write("a", "a");
  for (int i = 0; i < 3; ++i) ASSERT_EQ(host.back_up(0, {{3, "", {"a"}}}), 0);
  CBackUpCtl object;
  ASSERT_EQ(object.ReadBackUpFileList(0), 3);
  const auto next = [&] {
    return object.GetBackUpFileListNext(nullptr, nullptr, nullptr, nullptr, nullptr);
  };
  ASSERT_EQ(next(), 0);
  ASSERT_EQ(object.RestoreGrp(bytes("00001")), 0);
  ASSERT_EQ(object.DeleteBkupGrp(bytes("00003")), 0);
  EXPECT_EQ(next() + next(), 0);
  EXPECT_EQ(next(), 1);
}

}  // namespace
