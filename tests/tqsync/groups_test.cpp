// Groups as tqsync keeps them through the library.
#include "library/groups.h"

#include <gtest/gtest.h>

#include <string>

#include "failure.h"
#include "support/home.h"

namespace tqsync {
namespace {

class Groups : public testing::Test {
 protected:
  // A member file that exists, under its native path.
  std::string file(const std::string& name) {
    home_.write(name, "x");
    const std::u8string path = home_.native(name).u8string();
    return {path.begin(), path.end()};
  }
  template <class Call>
  static void expect_failure(Call call, const std::string& says) {
    try {
      call();
      ADD_FAILURE() << "no failure: " << says;
    } catch (const Failure& failure) {
      EXPECT_NE(std::string(failure.what()).find(says), std::string::npos) << failure.what();
    }
  }

  tq::test::TestHome home_;
};

TEST_F(Groups, KeepTheirMembersUntilTheyAreRemoved) {
  EXPECT_TRUE(list_groups().empty());
  const Member master{file("m.csv"), TQ_APP_MASTER, Encoding::kDetect, ""};
  const Member partner{file("p.csv"), 12, Encoding::kShiftJis, ""};
  const Group made = create_group("友人と﨑さん", "", {master});
  EXPECT_EQ(made.id, "000");
  add_members(made, {partner});

  Group group = open_group("0");
  EXPECT_EQ(group.title, "友人と﨑さん");
  EXPECT_EQ(group.memo, "") << "the library's blank is no text";
  ASSERT_EQ(group.members.size(), 2u);
  EXPECT_EQ(group.members[0].path, master.path);
  EXPECT_TRUE(group.members[0].is_master());
  EXPECT_EQ(group.members[1].path, partner.path);
  EXPECT_EQ(group.members[1].application, 12);
  EXPECT_EQ(group.members[1].encoding, Encoding::kShiftJis);
  EXPECT_EQ(group.members[1].file_id, "000001");

  expect_failure([&] { add_members(group, {partner}); }, "has this file already");
  expect_failure(
      [&] {
        add_members(group, {{file("n.csv"), TQ_APP_MASTER, Encoding::kDetect, ""}});
      },
      "has a master already");
  EXPECT_EQ(open_group("友人と﨑さん").members.size(), 2u);

  remove_member(group, 0);
  group = open_group("000");
  ASSERT_EQ(group.members.size(), 1u);
  EXPECT_EQ(group.members[0].file_id, "000001");

  delete_group(group);
  EXPECT_TRUE(list_groups().empty());
  EXPECT_TRUE(home_.exists("m.csv")) << "address files are never deleted";
}

TEST_F(Groups, AreFoundByNumberBeforeTitle) {
  create_group("001", "", {});
  const Group second = create_group("同じ", "memo", {});
  create_group("同じ", "", {});
  EXPECT_EQ(open_group("001").id, second.id);
  EXPECT_EQ(open_group("1").memo, "memo");
  expect_failure([] { open_group("同じ"); }, "2 groups");
  expect_failure([] { open_group("7"); }, "no group \"7\"");
  expect_failure([] { open_group(""); }, "no group");
}

TEST_F(Groups, RefuseTextsThatTheirFileCannotKeep) {
  expect_failure([] { create_group("吉𠮷", "", {}); }, "\"𠮷\"");
  expect_failure([] { create_group(";x", "", {}); }, "semicolon");
  expect_failure([] { create_group("x", "a\nb", {}); }, "one line");
  expect_failure([] { create_group(std::string(129, 'x'), "", {}); }, "too long");
  const Member distant{std::string(300, 'x'), 1, Encoding::kDetect, ""};
  expect_failure([&] { create_group("x", "", {distant}); }, "too long");
  EXPECT_TRUE(list_groups().empty());
}

}  // namespace
}  // namespace tqsync
