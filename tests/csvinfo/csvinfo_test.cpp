// The three lists of field files: which files, in which order, under which names.
#include "tqutil/csvinfo.h"

#include "support/definitions.h"
#include "support/test.h"
#include "support/zeros.h"

namespace {

std::string field_file(int number, int number2) {
  return "FLD:" + std::to_string(number) + "," + std::to_string(number2) + "\nt\nc\n1,0,x\n";
}

struct Folders : DefinitionHome {
  Folders() {
    for (const char* name : {"fields\\1\\B00102-second.FLD", "fields\\1\\B00101-third.one.fld",
                             "fields\\1\\A99999-first.FLD", "fields\\1\\A99999.FLD",
                             "fields\\2a\\m.FLD", "fields\\2b\\a.FLD", "fields\\2b\\z.FLD",
                             "fields\\3\\MASTER.FLD", "fields\\3\\ALSO.FLD"}) {
      write(name, field_file(static_cast<int>(std::string(name).size()), 2));
    }
    write("fields\\1\\C00000-no field file.FLD", "FLD:1\n");
    write("fields\\1\\C00000-other.TXT", field_file(1, 1));
    make_folder("fields\\1\\C00000-folder.FLD");
  }
};

TEST(CsvInfo, List1SortsByKeyAndShowsWhatFollows) {
  Folders home;
  const int32_t list = GetCsvFldInfoInit1();
  ASSERT_NE(list, 0);
  char name[TQ_PATH_SIZE], path[TQ_PATH_SIZE];
  short number = 0, number2 = 0;
  Texts names;
  while (GetCsvFldInfoNext1(&number, &number2, name, path, list) == 0) names.emplace_back(name);
  EXPECT_EQ(names, (Texts{"first", "", "third.one", "second"}))
      << "sorted by the key, seven characters and no more; the last dot begins the extension";
  EXPECT_EQ(path, home.at("fields\\1\\B00102-second.FLD"));
  EXPECT_EQ(number2, 2);
  const std::string last = path;
  EXPECT_EQ(GetCsvFldInfo1(number, name, path, list), 0) << "the walk is at its end";
  EXPECT_EQ(path, last);
  EXPECT_STREQ(name, "second");
  EXPECT_EQ(GetCsvFldInfo1(12345, name, path, list), 1);
  EXPECT_STREQ(name, "");
  EXPECT_STREQ(path, "");
  EXPECT_EQ(GetCsvFldInfoNext2(nullptr, nullptr, path, list), 1) << "another list's walk";
  EXPECT_EQ(GetCsvFldInfoEnd(list), 0);
}

TEST(CsvInfo, Lists2And3SortByName) {
  Folders home;
  char path[TQ_PATH_SIZE], name[TQ_PATH_SIZE];
  short number = 0;
  std::string all;
  const int32_t two = GetCsvFldInfoInit2();
  while (GetCsvFldInfoNext2(&number, nullptr, path, two) == 0) all += std::string(path) + "|";
  EXPECT_EQ(all, home.at("fields\\2b\\a.FLD|") + home.at("fields\\2a\\m.FLD|") +
                     home.at("fields\\2b\\z.FLD|"));
  EXPECT_EQ(path, home.at("fields\\2b\\z.FLD")) << "nothing is copied at the end";
  const int32_t three = GetCsvFldInfoInit3();
  EXPECT_EQ(GetCsvFldInfoNext3(&number, name, path, three), 0);
  EXPECT_STREQ(name, "ALSO.FLD") << "with its extension";
  EXPECT_EQ(number, 17);
  EXPECT_EQ(GetCsvFldInfoNext3(&number, name, path, three), 0);
  EXPECT_EQ(GetCsvFldInfoNext3(&number, name, path, three), 1);
  EXPECT_EQ(GetCsvFldInfoEnd(two), 0);
  EXPECT_EQ(GetCsvFldInfoEnd(three), 0);
}

TEST(CsvInfo, ExchangeSortDecidesAmongEqualKeys) {
  DefinitionHome home;
  for (const char* name : {"fields\\1\\K00001-b.FLD", "fields\\1\\K00002-a.FLD",
                           "fields\\1\\K00002-b.FLD", "fields\\1\\K00001-a.FLD"}) {
    home.write(name, field_file(1, 1));
  }
  CCsvInfoCtl info;
  ASSERT_EQ(info.GetCsvFldInfoInit1(), 0);
  ASSERT_EQ(info.GetCsvFldInfoInit1(), 0) << "again replaces";
  std::string names;
  char name[TQ_PATH_SIZE];
  while (info.GetCsvFldInfoNext1(nullptr, nullptr, name, nullptr) == 0) names += name;
  EXPECT_EQ(names, "abab");
}

TEST(CsvInfo, HandlesAndMissingFolders) {
  DefinitionHome home;
  home.write("tqutil.ini",
             "[folders]\nfields1=none\nfields2a=none\nfields2b=" + std::string(400, 'x') + "\n");
  std::vector<int32_t> handles;
  for (int i = 0; i < 10; ++i) handles.push_back(GetCsvFldInfoInit1());
  EXPECT_EQ(handles.back(), 10);
  EXPECT_EQ(GetCsvFldInfoInit2(), 0) << "all slots are taken";
  EXPECT_EQ(GetCsvFldInfoNext1(nullptr, nullptr, nullptr, nullptr, 1), 1) << "an empty list";
  for (const int32_t handle : handles) EXPECT_EQ(GetCsvFldInfoEnd(handle), 0);
  const int32_t two = GetCsvFldInfoInit2();
  EXPECT_EQ(GetCsvFldInfoNext2(nullptr, nullptr, nullptr, two), 1);
  EXPECT_EQ(GetCsvFldInfoEnd(two), 0);
  EXPECT_EQ(GetCsvFldInfoEnd(0), 1);
  for (const int32_t dead : {0, 1, 99}) {
    expect_answers(dead, -1, GetCsvFldInfoNext1, GetCsvFldInfoNext2, GetCsvFldInfoNext3,
                   GetCsvFldInfo1);
  }
  EXPECT_FALSE(home.exists("none")) << "asking makes no folder";
}

}  // namespace
