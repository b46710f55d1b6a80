// tqsync backup: makes, shows, restores, deletes and checks backups.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commands/command.h"
#include "engine/backup_plan.h"
#include "failure.h"
#include "library/backups.h"
#include "library/groups.h"
#include "terminal/table.h"
#include "text/native_path.h"
#include "text/numbers.h"

namespace tqsync {
namespace {

namespace fs = std::filesystem;

// What the flags of `backup` and its subcommands give.
struct Flags {
  std::string backup, group, note, to;
  std::vector<std::string> files, folders, only;
  int keep = -1;
  bool yes = false, dry_run = false, all = false;
};

std::string kind_name(short kind) {
  switch (kind) {
    case 0:
      return "conversion";
    case 1:
      return "sync";
    case kBeforeRestore:
      return "before restore";
    case kManualBackup:
      return "manual";
    default:
      return std::to_string(kind);
  }
}

void print_backup(const char* what, const BackupSummary& backup) {
  std::cout << what << backup.id << "  " << kind_name(backup.kind) << ", " << backup.time
            << (backup.note.empty() ? "" : "  " + printable(backup.note)) << '\n';
}

// Without the folders, which have no copy.
std::size_t copies_in(const std::vector<BackupFile>& files) {
  return static_cast<std::size_t>(
      std::ranges::count_if(files, [](const BackupFile& file) { return !file.copy.empty(); }));
}

// --- create --------------------------------------------------------------------------------------

// One set a member file, so that each can be restored alone.
std::vector<BackupSet> sets_of(const Flags& flags) {
  std::vector<BackupSet> sets;
  if (!flags.group.empty()) {
    for (const Member& member : open_group(flags.group).members)
      sets.push_back({"", {member.path}});
  }
  for (const std::string& file : flags.files) sets.push_back({"", {whole_path(file)}});
  for (const std::string& folder : flags.folders) {
    if (!fs::is_directory(to_path(folder))) throw Failure(folder + ": there is no such folder.");
    BackupSet set{whole_path(folder), {}};
    // Links to other folders are no part of this one, as in the library.
    for (const auto& entry : fs::recursive_directory_iterator(to_path(set.folder))) {
      if (entry.is_regular_file()) set.files.push_back(from_path(entry.path()));
    }
    std::ranges::sort(set.files);
    sets.push_back(std::move(set));
  }
  if (sets.empty()) throw Failure("name a group, or files or folders with --file and --folder.");
  return sets;
}

void show_backup_plan(const std::vector<BackupSet>& sets, Output output) {
  Table table("copy", {{"size", Table::Kind::kNumber}, {"file"}});
  for (const BackupSet& set : sets) {
    for (const std::string& file : set.files) {
      std::error_code error;
      const auto size = fs::file_size(to_path(file), error);
      table.add({error ? "missing" : std::to_string(size), file});
    }
  }
  table.print(std::cout, {output});
}

void create(const Flags& flags, Output output) {
  const std::vector<BackupSet> sets = sets_of(flags);
  if (flags.dry_run) return show_backup_plan(sets, output);
  const std::string id = make_backup(kManualBackup, flags.note, sets);
  std::cout << "made backup " << id << " of " << counted(copies_in(open_backup(id).files), "file")
            << '\n';
}

// --- list, show ----------------------------------------------------------------------------------

void show_list(Output output) {
  Table table("backup", {{"backup"},
                         {"kind"},
                         {"generation", Table::Kind::kNumber},
                         {"made"},
                         {"groups", Table::Kind::kNumber},
                         {"note"}});
  for (const BackupSummary& backup : list_backups()) {
    table.add({backup.id, kind_name(backup.kind), std::to_string(backup.generation), backup.time,
               std::to_string(backup.groups), backup.note});
  }
  table.print(std::cout,
              {.output = output,
               .when_empty = "There are no backups. \"tqsync backup create\" makes one."});
}

void show_backup(const std::string& name, Output output) {
  const Backup backup = open_backup(name);
  if (output == Output::kPeople) {
    print_backup("Backup ", backup.summary);
    if (!backup.restorable) std::cout << "  its history is damaged: it cannot be restored\n";
  }
  Table table("file", {{"group"},
                       {"size", Table::Kind::kNumber},
                       {"changed"},
                       {"file"},
                       {"copy", Table::Kind::kScriptOnly}});
  for (const BackupFile& file : backup.files) {
    const bool folder = file.copy.empty();
    table.add({file.group, folder ? "folder" : std::to_string(file.size),
               folder ? "" : file.changed, file.path, file.copy});
  }
  table.print(std::cout, {output});
}

// --- restore -------------------------------------------------------------------------------------

// The files of the chosen groups.
std::vector<BackupFile> chosen_files(const Backup& backup, const std::vector<std::string>& groups) {
  std::vector<BackupFile> files = backup.files;
  if (groups.empty()) return files;
  std::erase_if(files, [&](const BackupFile& file) {
    return std::ranges::find(groups, file.group) == groups.end();
  });
  return files;
}

std::optional<std::uint64_t> size_of(const std::string& path) {
  std::error_code error;
  const auto size = fs::file_size(to_path(path), error);
  return error ? std::nullopt : std::optional<std::uint64_t>(size);
}

// What is wrong with the copy of a file, empty when nothing is.
std::string fault_of(const BackupFile& file) {
  if (file.mail_store) return "the mail program keeps the copy";
  if (!is_copy_in(backup_folder(), file.copy)) return "the copy is outside the backup folder";
  return copy_fault({file.size, size_of(file.copy), std::nullopt, false});
}

CopyFacts facts_of(const BackupFile& file) {
  std::error_code error, other;
  const auto copied = fs::last_write_time(to_path(file.copy), error);
  const bool same = fs::last_write_time(to_path(file.path), other) == copied && !error && !other;
  return {file.size, size_of(file.copy), size_of(file.path), same};
}

void show_restore_plan(const std::vector<BackupFile>& files, Output output) {
  Table table("restore", {{"effect"}, {"size", Table::Kind::kNumber}, {"file"}});
  for (const BackupFile& file : files) {
    if (file.copy.empty()) continue;
    const std::string fault = fault_of(file);
    table.add({fault.empty() ? effect_name(effect_of(facts_of(file))) : fault,
               std::to_string(file.size), file.path});
  }
  table.print(std::cout, {output});
}

// Puts copies below another folder; the originals are not touched, and no file there is replaced.
void put_below(const std::string& folder, const std::vector<BackupFile>& files, bool dry_run) {
  std::vector<std::string> paths;
  for (const BackupFile& file : files) paths.push_back(file.path);
  const std::vector<std::string> places = places_below(whole_path(folder), paths);
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (files[i].copy.empty()) continue;
    if (const std::string fault = fault_of(files[i]); !fault.empty()) {
      throw Failure(files[i].path + ": " + fault + ".");
    }
    if (!fs::exists(to_path(places[i]))) continue;
    throw Failure(places[i] + ": this file is there already. Name an empty folder with --to.");
  }
  for (std::size_t i = 0; i < files.size(); ++i) {
    const fs::path place = to_path(places[i]);
    if (!dry_run && files[i].copy.empty()) fs::create_directories(place);
    if (!dry_run && !files[i].copy.empty()) {
      fs::create_directories(place.parent_path());
      fs::copy_file(to_path(files[i].copy), place);
      fs::last_write_time(place, fs::last_write_time(to_path(files[i].copy)));
    }
    std::cout << places[i] << '\n';
  }
}

// The backup that was made before a restore, given those that were there until then; empty when
// there is none.
std::string way_back(const std::vector<BackupSummary>& until_then) {
  const std::vector<BackupSummary> backups = list_backups();
  const auto made = std::ranges::find_if(backups, [&](const BackupSummary& backup) {
    return backup.kind == kBeforeRestore &&
           std::ranges::find(until_then, backup.id, &BackupSummary::id) == until_then.end();
  });
  return made == backups.end() ? "" : made->id;
}

void restore(const Flags& flags, Output output) {
  const Backup backup = open_backup(flags.backup);
  const std::string& id = backup.summary.id;
  if (!backup.restorable) throw Failure("backup " + id + ": its history is damaged.");
  const std::vector<BackupFile> files = chosen_files(backup, flags.only);
  if (files.empty()) throw Failure("backup " + id + " has no files in these groups.");
  if (!flags.to.empty()) return put_below(flags.to, files, flags.dry_run);
  if (flags.dry_run) return show_restore_plan(files, output);
  if (!flags.yes && !confirmed("Restore " + counted(copies_in(files), "file") + " of backup " + id +
                                   "? What is there now is backed up first.",
                               "backup " + id + " is only restored")) {
    std::cout << "nothing restored\n";
    return;
  }
  const std::vector<BackupSummary> before = list_backups();
  if (!restore_backup(id, flags.only, flags.yes)) throw Failure("cancelled; nothing restored");
  std::cout << "restored backup " << id << '\n';
  const std::string undo = way_back(before);
  if (!undo.empty()) std::cout << "\"tqsync backup restore " << undo << "\" undoes it\n";
}

// --- delete, keep --------------------------------------------------------------------------------

// Deletes backups after a question; false when the answer was no.
bool delete_all(const std::vector<BackupSummary>& backups, const Flags& flags) {
  if (flags.dry_run || !flags.yes) {
    for (const BackupSummary& backup : backups) print_backup("would delete ", backup);
  }
  if (flags.dry_run || backups.empty()) return true;
  if (!flags.yes &&
      !confirmed("Delete " + counted(backups.size(), "backup") + "?", "backups are only deleted")) {
    std::cout << "nothing deleted\n";
    return false;
  }
  for (const BackupSummary& backup : backups) {
    delete_backup(backup.id);
    print_backup("deleted ", backup);
  }
  return true;
}

void remove(const Flags& flags) {
  if (flags.all == !flags.backup.empty()) throw Failure("name one backup, or --all.");
  delete_all(flags.all ? list_backups() : std::vector{open_backup(flags.backup).summary}, flags);
}

void print_kept(int count) {
  std::cout << "kept of each kind: " << counted(static_cast<std::size_t>(count), "backup") << '\n';
}

void keep(const Flags& flags) {
  if (flags.keep < 0) {
    print_kept(kept_backups());
    return;
  }
  const std::vector<BackupSummary> backups = list_backups();
  std::vector<int> generations;
  for (const BackupSummary& backup : backups) generations.push_back(backup.generation);
  std::vector<BackupSummary> going;
  for (const std::size_t i : beyond(generations, flags.keep)) going.push_back(backups[i]);
  if (!delete_all(going, flags) || flags.dry_run) return;
  keep_backups(flags.keep);
  print_kept(flags.keep);
}

// --- verify --------------------------------------------------------------------------------------

void verify(Output output) {
  Table table("fault", {{"backup"}, {"fault"}, {"file"}});
  std::size_t copies = 0;
  const std::vector<BackupSummary> backups = list_backups();
  for (const BackupSummary& summary : backups) {
    const Backup backup = open_backup(summary.id);
    if (!backup.restorable) table.add({summary.id, "its history is damaged", ""});
    for (const BackupFile& file : backup.files) {
      if (file.copy.empty() || file.mail_store) continue;
      ++copies;
      const std::string fault = fault_of(file);
      if (!fault.empty()) table.add({summary.id, fault, file.path});
    }
  }
  const std::size_t faults = table.size();
  // Left by a run that was killed, or by a count of 0: not a fault, but room on the disk.
  for (const auto& entry : fs::directory_iterator(to_path(backup_folder()))) {
    const std::string name = from_path(entry.path().filename());
    const auto listed = std::ranges::find(backups, name, &BackupSummary::id);
    if (entry.is_directory() && listed == backups.end()) {
      table.add({name, "no history tells of this folder", from_path(entry.path())});
    }
  }
  if (table.size() != 0 || output == Output::kScript) table.print(std::cout, {output});
  if (output == Output::kPeople) {
    std::cout << counted(backups.size(), "backup") << " with " << counted(copies, "copy") << ", "
              << counted(faults, "fault") << '\n';
  }
  if (faults != 0) throw Failure("not every backup can be restored whole");
}

void add_dry_run(CLI::App& command, Flags& flags) {
  command.add_flag("--dry-run", flags.dry_run, "Show what would be done and do nothing");
}

}  // namespace

void add_backup_command(CLI::App& app, Program& program) {
  CLI::App* backup = app.add_subcommand("backup", "Make, show, restore and check backups");
  backup->require_subcommand(1);
  const auto flags = std::make_shared<Flags>();

  CLI::App* command = add_home_command(*backup, program, "create", "Back up address files",
                                       [flags, &program] { create(*flags, program.output); });
  command->add_option("group", flags->group, "A sync group whose files to back up");
  command->add_option("--file", flags->files, "A file; may be repeated")->allow_extra_args(false);
  command->add_option("--folder", flags->folders, "A folder with all in it; may be repeated")
      ->allow_extra_args(false);
  command->add_option("--note", flags->note, "A line of your own");
  add_dry_run(*command, *flags);

  add_home_command(*backup, program, "list", "List the backups",
                   [&program] { show_list(program.output); });

  command = add_home_command(*backup, program, "show", "Show the files of a backup",
                             [flags, &program] { show_backup(flags->backup, program.output); });
  command->add_option("backup", flags->backup, "Its number")->required();

  command = add_home_command(*backup, program, "restore", "Bring the files of a backup back",
                             [flags, &program] { restore(*flags, program.output); });
  command->add_option("backup", flags->backup, "Its number")->required();
  command->add_option("--group", flags->only, "Only this group of it; may be repeated")
      ->allow_extra_args(false);
  command->add_option("--to", flags->to, "Put them below this folder and leave the originals");
  command->add_flag("--yes", flags->yes, "Do not ask, and make folders again that are gone");
  add_dry_run(*command, *flags);

  command =
      add_home_command(*backup, program, "delete", "Delete backups", [flags] { remove(*flags); });
  command->add_option("backup", flags->backup, "Its number");
  command->add_flag("--all", flags->all, "Every backup");
  command->add_flag("--yes", flags->yes, "Do not ask");
  add_dry_run(*command, *flags);

  command = add_home_command(
      *backup, program, "keep",
      "Keep so many backups of each kind and delete older ones; show how many are kept",
      [flags] { keep(*flags); });
  command->add_option("count", flags->keep, "How many")->check(CLI::Range(1, 1000));
  command->add_flag("--yes", flags->yes, "Do not ask");
  add_dry_run(*command, *flags);

  add_home_command(*backup, program, "verify", "Check that every copy is there with its size",
                   [&program] { verify(program.output); });
}

}  // namespace tqsync
