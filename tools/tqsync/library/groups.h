// Sync groups as values: what the library's handles and records hold, in UTF-8 and native paths.
// Every change is written to the group file before the function returns; what cannot be done throws
// Failure and leaves the group as it was.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "files/encoding.h"
#include "tqutil/records.h"

namespace tqsync {

// The application number of a partner unless another is given.
inline constexpr short kPlainPartner = 1;

struct Member {
  std::string path;       // native
  short application = 0;  // TQ_APP_MASTER for the master
  Encoding encoding = Encoding::kDetect;
  std::string file_id;  // six digits; the library gives it when the member is added

  bool is_master() const { return application == TQ_APP_MASTER; }
  // The application whose format the file has; 0 when it was added without a number.
  short format_application() const {
    return is_master() || application == kPlainPartner ? short{0} : application;
  }
};

struct Group {
  std::string id;  // three digits
  std::string title, memo;
  std::string group_file;  // library form
  std::vector<Member> members;
};

// All groups by title; without their members, but with how many there are.
struct GroupSummary {
  std::string id, title, memo;
  short members;
};
std::vector<GroupSummary> list_groups();

// The group that a person calls by its id ("7" is "007") or by its exact title. Throws Failure when
// there is none, or several of that title.
Group open_group(const std::string& name);

// Makes a group with its members; the one that comes back has its ids.
Group create_group(const std::string& title, const std::string& memo,
                   const std::vector<Member>& members);
// Adds members at the end. One that the group has already, and a second master, are refused.
void add_members(const Group& group, const std::vector<Member>& members);
// `member` is an index into group.members.
void remove_member(const Group& group, std::size_t member);
// The group and its bookkeeping; the members' own files stay.
void delete_group(const Group& group);

}  // namespace tqsync
