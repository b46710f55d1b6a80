#include "platform/names.h"

#include <set>

#include "support/test.h"

namespace tq::platform {
namespace {

const std::tuple<const char*, std::string, bool, char, std::string> kParseCases[] = {
    {"plain", "Z:\\data\\001.SYG", true, 'Z', "\\data\\001.SYG"},
    {"drive letter in lower case, slashes", "c:/a/b", true, 'C', "\\a\\b"},
    {"root of a drive", "C:\\", true, 'C', ""},
    {"bare drive is its root", "C:", true, 'C', ""},
    {"rooted without a drive", "\\a", true, 0, "\\a"},
    {"separators in a row and at the end", "Z:\\a\\\\b\\", true, 'Z', "\\a\\b"},
    {"dots are resolved", "Z:\\a\\.\\b\\..\\c", true, 'Z', "\\a\\c"},
    {"back to the root", "Z:\\a\\..", true, 'Z', ""},
    {"above the root", "Z:\\a\\..\\..\\etc", false, 0, ""},
    {"dots and spaces at the end of names", "Z:\\a. .\\b.txt ", true, 'Z', "\\a\\b.txt"},
    {"a name of dots", "Z:\\a\\...", false, 0, ""},
    {"a hidden `..`", "Z:\\a\\.. \\b", false, 0, ""},
    {"trail byte 5C is no separator", "Z:\\" + std::string("表\\予定.txt"_sjis), true, 'Z',
     "\\" + std::string("表\\予定.txt"_sjis)},
    {"`..` takes a name with 5C", "Z:\\" + std::string("表"_sjis) + "\\..\\a", true, 'Z', "\\a"},
    {"half a character before a separator", "Z:\\\x95/etc", false, 0, ""},
    {"half a character at the end", "Z:\\a\x95", false, 0, ""},
    {"a code without a character", "Z:\\\x85\x40", false, 0, ""},
    {"control character", "Z:\\a\nb", false, 0, ""},
    {"zero byte", std::string("Z:\\a\0b", 6), false, 0, ""},
    {"pattern", "Z:\\*.SYG", false, 0, ""},
    {"a second stream of a file", "Z:\\a.txt:b", false, 0, ""},
    {"drive's current folder", "C:a", false, 0, ""},
    {"no drive letter", "1:\\a", false, 0, ""},
    {"empty", "", false, 0, ""},
    {"device", "Z:\\a\\nul", false, 0, ""},
    {"device as a folder, with extension", "Z:\\Com1.txt\\b", false, 0, ""},
    {"device with a space before the extension", "Z:\\aux .txt", false, 0, ""},
    {"not quite devices", "Z:\\com0\\null\\lpt10\\xcon", true, 'Z', "\\com0\\null\\lpt10\\xcon"},
    {"device path", "\\\\.\\C:\\a", false, 0, ""},
    {"unparsed path", "\\\\?\\C:\\a", false, 0, ""},
    {"share", "\\\\server\\share\\a", true, 0, "\\server\\share\\a"},
    {"above the share", "\\\\server\\share\\..\\..\\a", false, 0, ""},
    {"server only", "\\\\server\\", false, 0, ""},
    {"a server that would read as a device path", "\\\\\\.a\\share", false, 0, ""},
};

TEST(Names, ParsePath) {
  for (const auto& [why, path, ok, drive, names] : kParseCases) {
    SCOPED_TRACE(why);
    ParsedPath parsed;
    const Status status = parse_path(path, parsed);
    EXPECT_EQ(status.code(), ok ? Code::kOk : Code::kInvalid) << status.text();
    EXPECT_EQ(parsed.drive, drive);
    EXPECT_EQ(parsed.names, names);
  }
}

TEST(Names, PlainNames) {
  for (const char* name : {"a.txt", "表"_sjis, " a", "a b"})
    EXPECT_TRUE(is_plain_name(name)) << name;
  for (const char* name : {"", ".", "..", "a.", "a ", "a\\b", "a\\", "/a", "con", "a:b", "x\x81"}) {
    EXPECT_FALSE(is_plain_name(name)) << name;
  }
}

TEST(Names, UpperCase) {
  EXPECT_EQ(upper_name("a1ｱ{表ｚ"_sjis), std::string("A1ｱ{表Ｚ"_sjis));
  EXPECT_EQ(upper_name("αωабёпя"_sjis), std::string("ΑΩАБЁПЯ"_sjis));
  EXPECT_EQ(upper_name("ⅰⅹ"_sjis), std::string("ⅠⅩ"_sjis));
  // Trail bytes that look like letters: they are part of another character.
  EXPECT_EQ(upper_name("\x83\x61\x83\x7a"), "\x83\x61\x83\x7a");
}

const std::tuple<const char*, std::string, std::string, bool> kMatchCases[] = {
    {"extension, case ignored", "*.SYG", "001.syg", true},
    {"a longer extension is another one", "*.SYG", "001.sygx", false},
    {"the extension must be there", "*.SYG", "SYG", false},
    {"*.* is everything", "*.*", "noext", true},
    {".* is also no extension", "a*.*", "abc", true},
    {"but the stem must match", "a*.*", "bc", false},
    {"? is one character, two bytes", "?.txt", "表.txt"_sjis, true},
    {"? is not two characters", "?.txt", "ab.txt", false},
    {"? is not nothing", "a?", "a", false},
    {"backtracking", "*ab*c", "aabxabyc", true},
    {"no half characters: 0x5C in 表 is no backslash", "*\\", "表"_sjis, false},
    {"no half characters: a star does not stop inside one", "*a", "ア"_sjis, false},
    {"full-width case", "ａ*"_sjis, "Ａ1"_sjis, true},
    {"no wildcard", "A.TXT", "a.txt", true},
};

TEST(Names, Matches) {
  for (const auto& [why, pattern, name, matches] : kMatchCases) {
    SCOPED_TRACE(why);
    EXPECT_EQ(Pattern(pattern).matches(name), matches);
  }
  const std::string stars(40, '*');
  EXPECT_FALSE(
      Pattern("*a*a*a*a*a*a*a*a*a*b" + stars).matches(std::string(2000, 'a')));  // and soon
}

TEST(Names, UniqueNamesDiffer) {
  UniqueNames names("表題だけ"_sjis);
  std::set<std::string> seen;
  for (int i = 0; i < 1000; ++i) seen.insert(names.next());
  EXPECT_EQ(seen.size(), 1000u);
  for (const std::string& name : {*seen.begin(), *seen.rbegin()}) {
    EXPECT_TRUE(name.starts_with("表題だ"_sjis)) << name;
    EXPECT_EQ(name.size(), 6u + 5u + 4u);
  }
}

TEST(Names, PatternParts) {
  const std::string pattern = std::string("Z:\\a\\*").append("表"_sjis);
  EXPECT_EQ(split_pattern(pattern).folder, "Z:\\a\\");
  EXPECT_EQ(split_pattern(pattern).mask, std::string("*").append("表"_sjis));
  EXPECT_EQ(split_pattern("*.*").folder, "");
}

}  // namespace
}  // namespace tq::platform
