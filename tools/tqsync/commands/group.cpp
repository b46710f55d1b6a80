// tqsync group: makes, shows and changes sync groups.
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "commands/command.h"
#include "failure.h"
#include "library/groups.h"
#include "text/native_path.h"
#include "text/numbers.h"

namespace tqsync {
namespace {

// What the flags of `group` and its subcommands give.
struct Flags {
  std::string group, title, memo, master, file;
  std::vector<std::string> partners;
  short application = kPlainPartner;
  Encoding encoding = Encoding::kDetect;
  bool as_master = false, yes = false;
};

// A member file must be there when it is added; afterwards it may come and go.
std::string existing_file(const std::string& native) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(to_path(native), error)) {
    throw Failure(native + ": there is no such file. Give the CSV file with its path.");
  }
  return whole_path(native);
}

std::string role(const Member& member) { return member.is_master() ? "master" : "partner"; }

void make_group(const Flags& flags) {
  std::vector<Member> members;
  if (!flags.master.empty()) {
    members.push_back({existing_file(flags.master), TQ_APP_MASTER, Encoding::kDetect, ""});
  }
  for (const std::string& partner : flags.partners) {
    members.push_back({existing_file(partner), kPlainPartner, Encoding::kDetect, ""});
  }
  const Group group = create_group(flags.title, flags.memo, members);
  std::cout << "made group " << group.id << "  " << group.title << '\n';
}

void show_list(Output output) {
  Table table("group", {{"group"}, {"members", Table::Kind::kNumber}, {"title"}, {"memo"}});
  for (const GroupSummary& group : list_groups()) {
    table.add({group.id, std::to_string(group.members), group.title, group.memo});
  }
  table.print(std::cout, {.output = output,
                          .when_empty = "There are no groups. \"tqsync group new\" makes one."});
}

void show_group(const std::string& name, Output output) {
  const Group group = open_group(name);
  if (output == Output::kPeople) {
    std::cout << "Group " << group.id << "  " << printable(group.title) << '\n';
    if (!group.memo.empty()) std::cout << "  " << printable(group.memo) << '\n';
  }
  Table table("member",
              {{"member"}, {"role"}, {"app", Table::Kind::kNumber}, {"encoding"}, {"file"}});
  for (const Member& member : group.members) {
    table.add({member.file_id, role(member), std::to_string(member.application),
               encoding_name(member.encoding), member.path});
  }
  table.print(std::cout, {output});
}

void add_file(const Flags& flags) {
  const Group group = open_group(flags.group);
  const short application = flags.as_master ? short{TQ_APP_MASTER} : flags.application;
  const Member member{existing_file(flags.file), application, flags.encoding, ""};
  add_members(group, {member});
  std::cout << "added " << member.path << " as " << role(member) << " to group " << group.id
            << '\n';
}

// The member that a person calls by its id, its path or its file name.
std::size_t find_member(const Group& group, const std::string& name) {
  const std::filesystem::path wanted = to_path(name), whole = to_path(whole_path(name));
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < group.members.size(); ++i) {
    const Member& member = group.members[i];
    if (member.file_id == name || member.path == name) return i;
    const std::filesystem::path path = to_path(member.path);
    if (path == whole || path.filename() == wanted) found.push_back(i);
  }
  if (found.size() == 1) return found.front();
  throw Failure("group " + group.id + (found.empty() ? " has no" : " has several members") +
                (found.empty() ? " member \"" : " \"") + name + "\". \"tqsync group show " +
                group.id + "\" shows them with their numbers.");
}

void remove_file(const Flags& flags) {
  const Group group = open_group(flags.group);
  const std::size_t index = find_member(group, flags.file);
  remove_member(group, index);
  std::cout << "removed " << printable(group.members[index].path) << " from group " << group.id
            << "; the file itself stays\n";
}

bool confirmed_deletion(const Group& group) {
  return confirmed("Delete group " + group.id + " \"" + printable(group.title) + "\" with " +
                       counted(group.members.size(), "member") + "? The address files stay.",
                   "group " + group.id + " is only deleted");
}

void remove_group(const Flags& flags) {
  const Group group = open_group(flags.group);
  if (!flags.yes && !confirmed_deletion(group)) {
    std::cout << "nothing deleted\n";
    return;
  }
  delete_group(group);
  std::cout << "deleted group " << group.id << "  " << printable(group.title) << '\n';
}

}  // namespace

void add_group_command(CLI::App& app, Program& program) {
  CLI::App* group = app.add_subcommand("group", "Make, show and change sync groups");
  group->require_subcommand(1);
  const auto flags = std::make_shared<Flags>();
  const auto add_group_argument = [&](CLI::App* command) {
    command->add_option("group", flags->group, "Number or title of the group")->required();
  };

  CLI::App* command =
      add_home_command(*group, program, "new", "Make a group", [flags] { make_group(*flags); });
  command->add_option("title", flags->title, "Its title, at most 64 kanji")->required();
  command->add_option("--master", flags->master, "The address file to compare the others with");
  command->add_option("--partner", flags->partners, "An address file to compare; may be repeated")
      ->allow_extra_args(false);
  command->add_option("--memo", flags->memo, "A line of your own");

  add_home_command(*group, program, "list", "List the groups",
                   [&program] { show_list(program.output); });

  command = add_home_command(*group, program, "show", "Show a group and its address files",
                             [flags, &program] { show_group(flags->group, program.output); });
  add_group_argument(command);

  command = add_home_command(*group, program, "add", "Add an address file to a group",
                             [flags] { add_file(*flags); });
  add_group_argument(command);
  command->add_option("file", flags->file, "The CSV file")->required();
  CLI::Option* master = command->add_flag("--master", flags->as_master, "Add it as the master");
  command->add_option("--app", flags->application, "Application number of the partner")
      ->check(CLI::Range(0, 999))
      ->excludes(master)
      ->capture_default_str();
  add_encoding_option(*command, flags->encoding, "Its encoding, kept with the group");

  command = add_home_command(*group, program, "remove", "Take an address file out of a group",
                             [flags] { remove_file(*flags); });
  add_group_argument(command);
  command->add_option("member", flags->file, "Its number, path or file name")->required();

  command = add_home_command(*group, program, "delete", "Delete a group; its address files stay",
                             [flags] { remove_group(*flags); });
  add_group_argument(command);
  command->add_flag("--yes", flags->yes, "Do not ask");
}

}  // namespace tqsync
