// tqsync pair: reads the files of a group, shows which records belong together and has the user
// decide what is open.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>
#include <iterator>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "commands/command.h"
#include "commands/pair_history.h"
#include "commands/pair_report.h"
#include "commands/pair_review.h"
#include "failure.h"
#include "files/address_writer.h"
#include "files/whole_file.h"
#include "library/groups.h"
#include "library/layout.h"
#include "terminal/console.h"
#include "text/native_path.h"
#include "text/numbers.h"

namespace tqsync {
namespace {

struct Flags {
  std::string group;
  Encoding encoding = Encoding::kDetect;
  std::vector<std::string> only;
  std::size_t rows = std::numeric_limits<std::size_t>::max();
  bool ask = false;
  std::string merge, output;  // native paths; empty when they are not wanted

  bool reviewing() const { return ask || !merge.empty(); }
};

// The members in the order of the plan: the master first.
std::vector<Member> ordered_members(const Group& group) {
  std::vector<Member> members = group.members;
  std::stable_partition(members.begin(), members.end(), std::mem_fn(&Member::is_master));
  const auto masters = std::ranges::count_if(members, &Member::is_master);
  const std::string add = "\"tqsync group add " + group.id + " FILE";
  if (masters == 0) {
    throw Failure("group " + group.id + " has no master. " + add + " --master\" adds it.");
  }
  if (masters > 1) {
    throw Failure("group " + group.id +
                  " has several masters. \"tqsync group remove\" takes one out.");
  }
  if (members.size() < 2) {
    throw Failure("group " + group.id + " has no partner file. " + add + "\" adds one.");
  }
  return members;
}

// The files' names; those that occur twice get their member number.
std::vector<std::string> distinct_names(const std::vector<Member>& members) {
  std::vector<std::string> names;
  std::ranges::transform(members, std::back_inserter(names),
                         [](const Member& member) { return file_name(member.path); });
  std::vector<std::string> distinct = names;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (std::ranges::count(names, names[i]) > 1) distinct[i] += " (" + members[i].file_id + ")";
  }
  return distinct;
}

void print_warnings(const AddressFile& file) {
  constexpr std::size_t kMost = 10;
  for (std::size_t i = 0; i < std::min(file.warnings.size(), kMost); ++i) {
    std::cerr << "tqsync: warning: " << printable(file.warnings[i]) << '\n';
  }
  if (file.warnings.size() > kMost) {
    std::cerr << "tqsync: warning: " << file.name << ": "
              << counted(file.warnings.size() - kMost, "further warning")
              << "; \"tqsync history --only read\" shows them\n";
  }
}

// Reads the file of a member, whose people come back.
Book read_book(const Member& member, Encoding forced, AddressFile& file) {
  const Encoding encoding = forced == Encoding::kDetect ? member.encoding : forced;
  file = read_address_file(member.path, encoding);
  const Layout layout = find_layout(file, member.format_application());
  Book book = people_of(file, layout);
  print_warnings(file);
  return book;
}

// What cannot go well is said before anybody is asked.
void check_review(const Flags& flags) {
  if (flags.ask && flags.merge.empty() && !input_is_terminal()) {
    throw Failure(
        "nobody can be asked, since standard input is no terminal. Give the decisions with "
        "--merge FILE.");
  }
  if (!flags.output.empty() && std::filesystem::exists(to_path(flags.output))) {
    throw Failure(flags.output + ": there is such a file already. Name another one, or delete it.");
  }
}

ReviewOutcome reviewed(const Flags& flags, const PairingRun& run,
                       std::span<const AddressFile> files, std::span<const Member> members) {
  ReviewSource source{file_name(flags.merge), {}, flags.ask && input_is_terminal()};
  if (!flags.merge.empty()) {
    source.decisions = read_whole_file(flags.merge, "a file of decisions");
  }
  std::vector<FileColumns> columns;
  for (std::size_t i = 0; i < files.size(); ++i) {
    columns.push_back(find_columns(files[i].headings, members[i].format_application()));
  }
  return review(run, files, columns, source);
}

void write_merged(const std::string& path, const AddressFile& master,
                  const ReviewOutcome& outcome) {
  const MergedBook merged = merge_book(master, outcome.fields, outcome.persons);
  const Encoding used = write_address_file(path, merged.headings, merged.rows, master.encoding);
  std::cerr << "tqsync: " << path << ": " << counted(merged.rows.size(), "record") << " written in "
            << encoding_name(used)
            << (used == master.encoding ? "\n"
                                        : ", since Shift-JIS does not have all characters\n");
}

void print_common_keys(const Plan& plan) {
  for (const CommonKey& common : plan.common_keys) {
    std::cerr << "tqsync: note: " << common.key << " stands in " << common.holders
              << " records; nobody is looked up by it, it only confirms other signs\n";
  }
}

void pair(const Flags& flags, Output output) {
  check_review(flags);
  const Group group = open_group(flags.group);
  const std::vector<Member> members = ordered_members(group);
  std::vector<AddressFile> files(members.size());
  std::vector<Book> books;
  std::vector<std::size_t> sizes;
  std::vector<std::string> file_ids;
  for (std::size_t i = 0; i < members.size(); ++i) {
    books.push_back(read_book(members[i], flags.encoding, files[i]));
    sizes.push_back(books.back().size());
    file_ids.push_back(members[i].file_id);
  }

  const Plan plan = make_plan(books);
  print_common_keys(plan);
  const MatchTables tables(file_ids, sizes, plan);
  const PairingRun run{distinct_names(members), books, plan, tables};
  const Printing printing{output, flags.rows};
  if (output == Output::kPeople)
    std::cout << "Group " << group.id << "  " << printable(group.title) << '\n';
  PairReport report(run, printing, std::cout);
  for (const std::string section : kReportSections) {
    const bool all = flags.only.empty() && !flags.reviewing();
    if (all || std::ranges::count(flags.only, section) > 0) report.print(section);
  }
  ReviewOutcome outcome;
  if (flags.reviewing()) {
    outcome = reviewed(flags, run, files, members);
    print_decisions(outcome, run, printing);
  }
  std::string fault;
  try {
    if (!flags.output.empty()) write_merged(flags.output, files[0], outcome);
  } catch (const Failure& failure) {
    fault = failure.what();
  }
  save_history(group, run, files, outcome, fault);
  if (!fault.empty()) throw Failure(fault);
}

std::string help_on_scores() {
  std::string text =
      "Names are compared without spaces and in full width, old and variant kanji (髙,\n"
      "﨑, 邊) as the common ones; telephones as digits with their leading 0; mail\n"
      "addresses in lower case; addresses without prefecture, with digits for kanji\n"
      "numbers and hyphens between them. Scores:\n";
  for (const SignRule& rule : sign_rules()) {
    text += "  " + std::to_string(rule.score) + "  same " + rule.text + "\n";
  }
  return text +
         "A reading counts where the names differ; 100 is the most, 74 without a name or\n"
         "a reading in common.\n\n" +
         kPairingRule;
}

}  // namespace

void add_pair_command(CLI::App& app, Program& program) {
  CLI::App* command = app.add_subcommand(
      "pair", "Show which records of a group's files belong together; nothing is changed");
  const auto flags = std::make_shared<Flags>();
  command->add_option("group", flags->group, "Number or title of the group")->required();
  add_encoding_option(*command, flags->encoding, "Encoding of all files, instead of the detected");
  command->add_option("--only", flags->only, "Print only this table; may be repeated")
      ->allow_extra_args(false)
      ->check(CLI::IsMember(
          std::vector<std::string>(std::begin(kReportSections), std::end(kReportSections))));
  command
      ->add_option("--rows", flags->rows, "Print at most so many rows of a table (not with --tsv)")
      ->check(CLI::PositiveNumber);
  command->add_flag("--review", flags->ask,
                    "Show the groups to decide one by one and ask who is who");
  command
      ->add_option("--merge", flags->merge,
                   "Take decisions from FILE, a table \"decisions\" as --tsv prints it")
      ->type_name("FILE");
  command
      ->add_option("--output", flags->output,
                   "Write the master with the decisions applied to FILE, which must be new")
      ->type_name("FILE");
  command->footer(help_on_scores());
  command->callback([flags, &program] {
    if (!flags->output.empty() && !flags->reviewing()) {
      throw CLI::RequiresError("--output", "--review or --merge");
    }
    program.action = [flags, &program] {
      require_home();
      pair(*flags, program.output);
    };
  });
}

}  // namespace tqsync
