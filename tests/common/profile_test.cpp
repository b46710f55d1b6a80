// Settings files: what others wrote in them stays as it was.
#include "common/profile.h"

#include "support/test.h"

namespace {

TEST(Profile, ReadsAsThePlatformsOwnReaderDoes) {
  TestFolder folder;
  folder.write("f.ini",
               "stray=1\r\n; comment\r\n[Other]\r\nkey=other\r\n[ Main ]\r\nKey = value one \r\n"
               "quoted=\"  kept  \"\r\nnumber=-9x\r\nempty=\r\nkey=second\r\n");
  tq::Profile profile;
  ASSERT_TRUE(profile.load(folder.at("f.ini")).ok());
  const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
      {"names ignore case, the first one counts", "MAIN", "KEY", "value one"},
      {"quotes keep spaces", "main", "quoted", "  kept  "},
      {"no such key", "main", "missing", "none"},
      {"an empty one", "main", "empty", ""},
      {"no such section", "nowhere", "key", "none"},
      {"lines before any section belong to none", "main", "stray", "none"},
  };
  for (const auto& [why, section, key, value] : cases)
    EXPECT_EQ(profile.text(section, key, "none"), value) << why;
  EXPECT_EQ(profile.number("main", "number", 5), -9);
  EXPECT_EQ(profile.number("main", "missing", 5), 5);
  EXPECT_EQ(profile.number("main", "empty", 5), 0);
}

TEST(Profile, ChangesOneLineAndKeepsTheRest) {
  // `before`, `after`: after setting [main] key=new
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"no file content", "", "[main]\r\nkey=new\r\n"},
      {"changed in place", "[main]\nkey=old\nz=1\n", "[main]\nkey=new\nz=1\n"},
      {"before the blank line", ";c\r\n[MAIN]\r\na=1\r\n\r\n[b]\r\nkey=b\r\n",
       ";c\r\n[MAIN]\r\na=1\r\nkey=new\r\n\r\n[b]\r\nkey=b\r\n"},
      {"section added", "[b]\nkey=b\nnonsense\n", "[b]\nkey=b\nnonsense\n[main]\nkey=new\n"},
  };
  for (const auto& [why, before, after] : cases) {
    SCOPED_TRACE(why);
    TestFolder folder;
    folder.write("f.ini", before);
    tq::Profile profile;
    ASSERT_TRUE(profile.load(folder.at("f.ini")).ok());
    ASSERT_TRUE(profile.set("main", "key", "new").ok());
    ASSERT_TRUE(profile.save().ok());
    EXPECT_EQ(folder.read("f.ini"), after);
  }
}

TEST(Profile, RefusesWhatWouldBecomeAnotherLine) {
  tq::Profile profile;
  EXPECT_FALSE(profile.set("main", "key", "a\nother=b").ok());
  EXPECT_EQ(profile.text("main", "other", "none"), "none");
}

}  // namespace
