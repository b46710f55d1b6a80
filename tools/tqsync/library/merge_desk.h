// One candidate group on its way through the library: its records go to the candidate file, from
// which a merge screen reads what it shows; the user's choice goes to the merge file, is read back
// and splits the group. Both files are in the work folder and go with the desk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tqsync {

// A record as it is laid out.
struct DeskRecord {
  std::string sync_id;  // fifteen digits
  std::int32_t score;
  short kind;  // the number of its file
  std::string title, description;
  std::vector<std::string> texts;  // one for each field
};

// What the merge screen read.
struct DeskSheet {
  std::string title;
  std::vector<std::string> titles, descriptions;  // by record
  std::vector<std::vector<std::string>> texts;    // by record, by field
};

// All texts are UTF-8. Operations throw Failure when a work file cannot be written or read.
class MergeDesk {
 public:
  // The records of one group, what it is called, and the sync id of a master record that they may
  // be.
  MergeDesk(std::vector<DeskRecord> records, const std::string& title,
            const std::string& master_id);
  ~MergeDesk();
  MergeDesk(const MergeDesk&) = delete;
  MergeDesk& operator=(const MergeDesk&) = delete;

  // The records (places in what the constructor got, ascending) of the next group to decide: at
  // first all of them, later those that were left over. Empty when all is decided.
  std::vector<std::size_t> open_records() const;

  // Lays records out, with the names of their fields, and reads them back as a merge screen does.
  // Characters that Shift-JIS does not have are shown as they were given.
  DeskSheet lay_out(const std::vector<std::size_t>& records,
                    const std::vector<std::string>& fields);
  // The records that were laid out last and are one person, by their places among those. The others
  // become a group of their own.
  void choose_records(const std::vector<std::size_t>& places);
  // For each field the place of the record whose value is taken; what the library read back.
  std::vector<std::size_t> choose_fields(const std::vector<std::size_t>& places);
  // The group that is open is decided, or is not to be asked for again.
  void settle();

 private:
  class LaidOut;
  class Handle {
   public:
    Handle();
    ~Handle();
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    std::int32_t value;
  };

  void pass_choice();

  std::vector<DeskRecord> records_;
  Handle groups_, screen_;  // the side that merges, and the side that asks
  std::unique_ptr<LaidOut> laid_out_;
};

}  // namespace tqsync
