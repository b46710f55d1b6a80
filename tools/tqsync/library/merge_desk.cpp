#include "library/merge_desk.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <system_error>
#include <utility>

#include "failure.h"
#include "library/home_file.h"
#include "text/library_text.h"
#include "text/unicode.h"
#include "tqutil/ctd.h"
#include "tqutil/host.h"

namespace tqsync {
namespace {

// Fields are numbered past those of the record database, since they are columns of any file.
constexpr std::uint16_t kFirstField = 1000;
constexpr std::size_t kMostFields = 30000;
// Characters of a value; people are shown far less than a line of the file may hold.
constexpr std::size_t kLongestText = 2000;
constexpr std::uint32_t kNoMapping = 0;

[[noreturn]] void fail(const char* what) {
  throw Failure(std::string(what) + " Check the work folder and its disk.");
}

// The first `most` characters of a text, of at most two bytes each, in Shift-JIS; line breaks are
// blanks there, as in the files.
std::string shown_text(std::string_view utf8, std::size_t most = kLongestText) {
  std::u32string codes = to_code_points(utf8.substr(0, 4 * most)).substr(0, most);
  for (char32_t& code : codes) {
    if (code == U'\r' || code == U'\n') code = U' ';
  }
  return to_sjis_or_mark(to_utf8(codes));
}

// A text of a record, with its terminator.
template <std::size_t kSize>
void copy_text(char (&to)[kSize], const std::string& utf8) {
  shown_text(utf8, (kSize - 1) / 2).copy(to, kSize - 1);
}

}  // namespace

// What was laid out; the library's records point into it.
class MergeDesk::LaidOut {
 public:
  LaidOut(const std::vector<DeskRecord>& all, const std::vector<std::size_t>& chosen,
          const std::vector<std::string>& field_names)
      : names_(field_names.size()), records_(chosen.size()) {
    texts_.reserve(field_names.size() * (chosen.size() + 1));
    values_.resize(chosen.size(), std::vector<tSYNC_FLDTBL>(field_names.size()));
    for (std::size_t i = 0; i < field_names.size(); ++i) fill(names_[i], i, field_names[i]);
    for (std::size_t i = 0; i < chosen.size(); ++i) fill(i, all[chosen[i]]);
  }

  void give_to(std::int32_t handle) {
    SetCtdInfo(kNoMapping, static_cast<std::int32_t>(records_.size()), records_.data(),
               static_cast<short>(names_.size()), names_.data(), handle);
  }
  std::size_t records() const { return records_.size(); }
  std::size_t fields() const { return names_.size(); }

 private:
  void fill(tSYNC_FLDTBL& field, std::size_t number, const std::string& utf8) {
    field.fldId = static_cast<std::uint16_t>(kFirstField + number);
    texts_.push_back(shown_text(utf8));
    field.text = texts_.back().data();
  }

  void fill(std::size_t place, const DeskRecord& from) {
    tSYNC_CTDRECINFO& record = records_[place];
    record.dataNo = record.kind = from.kind;
    copy_text(record.syncId, from.sync_id);
    copy_text(record.title, from.title);
    copy_text(record.description, from.description);
    auto& values = values_[place];
    for (std::size_t i = 0; i < values.size(); ++i) fill(values[i], i, from.texts[i]);
    record.fldCnt = static_cast<short>(values.size());
    record.fields = values.data();
  }

  std::vector<std::string> texts_;  // never moved: the room is reserved
  std::vector<tSYNC_FLDTBL> names_;
  std::vector<std::vector<tSYNC_FLDTBL>> values_;
  std::vector<tSYNC_CTDRECINFO> records_;
};

MergeDesk::Handle::Handle() : value(CreateSyncCtdCtl()) {
  if (value == 0) throw std::bad_alloc();
}
MergeDesk::Handle::~Handle() { FreeSyncCtdCtl(value); }

MergeDesk::MergeDesk(std::vector<DeskRecord> records, const std::string& title,
                     const std::string& master_id)
    : records_(std::move(records)) {
  SetCtdTitle(shown_text(title, (TQ_CTD_TITLE_SIZE - 1) / 2).c_str(), groups_.value);
  for (const DeskRecord& record : records_) {
    const short added =
        AddCtdData(record.sync_id.c_str(), record.score, master_id.c_str(), nullptr, groups_.value);
    if (added != 0) throw std::bad_alloc();
  }
}

MergeDesk::~MergeDesk() {
  for (const char* name : {"~CTDINFO.TMP", "~MRGINFO.TMP"}) {
    try {
      std::error_code error;  // what cannot be deleted stays
      std::filesystem::remove(home_file(TQ_FOLDER_WORK, name), error);
    } catch (...) {  // no such folder any more
    }
  }
}

std::vector<std::size_t> MergeDesk::open_records() const {
  std::vector<std::size_t> open;
  const std::int32_t group = CtdSchNext(groups_.value);
  if (group < 0 || group > std::numeric_limits<short>::max()) return open;
  tSYNC_SCHINFO cursor{};
  char id[TQ_SYNC_ID_SIZE] = "";
  while (FindCtdOrgSyncID2(static_cast<short>(group), id, &cursor, groups_.value) == 0) {
    const auto found = std::ranges::find(records_, id, &DeskRecord::sync_id);
    open.push_back(static_cast<std::size_t>(found - records_.begin()));
  }
  std::ranges::sort(open);
  return open;
}

DeskSheet MergeDesk::lay_out(const std::vector<std::size_t>& records,
                             const std::vector<std::string>& fields) {
  if (fields.size() > kMostFields || records.size() > kMostFields) {
    throw Failure("a group has too many records or columns to be shown.");
  }
  laid_out_ = std::make_unique<LaidOut>(records_, records, fields);
  laid_out_->give_to(groups_.value);
  if (WriteCtdFile(groups_.value) != 0) fail("the candidate file cannot be written.");
  if (ReadCtdFile(screen_.value) != 0) fail("the candidate file cannot be read.");

  DeskSheet sheet;
  std::string text(TQ_CTD_TEXT_SIZE, '\0');
  char title[TQ_CTD_TITLE_SIZE], description[TQ_CTD_DESCRIPTION_SIZE];
  short kind = 0;
  GetCtdTitle(title, screen_.value);
  sheet.title = from_sjis(title);
  // What the screen read, with the characters that Shift-JIS does not have.
  const auto whole = [](const char* read, const std::string& given) {
    return read == shown_text(given) ? given : from_sjis(read);
  };
  for (std::size_t i = 0; i < records.size(); ++i) {
    const DeskRecord& record = records_[records[i]];
    const auto place = static_cast<std::int32_t>(i);
    if (GetCtdRecInfo(place, title, description, &kind, screen_.value) != 0) {
      fail("the candidate file is not what was written.");
    }
    sheet.titles.push_back(whole(title, record.title));
    sheet.descriptions.push_back(whole(description, record.description));
    auto& texts = sheet.texts.emplace_back();
    for (std::size_t field = 0; field < fields.size(); ++field) {
      if (GetCtdFldStr(place, static_cast<std::int32_t>(field), text.data(), screen_.value) != 0) {
        fail("the candidate file is not what was written.");
      }
      texts.push_back(whole(text.c_str(), record.texts[field]));
    }
  }
  return sheet;
}

// The screen's choice on its way to the side that merges.
void MergeDesk::pass_choice() {
  if (WriteMargFile(screen_.value) != 0) fail("the merge file cannot be written.");
  if (ReadMargFile(groups_.value) != 0) fail("the merge file cannot be read.");
}

void MergeDesk::choose_records(const std::vector<std::size_t>& places) {
  SetMargSts(TQ_MERGE_RECORDS, 0, screen_.value);
  for (const std::size_t place : places) SetMargPer(static_cast<short>(place), screen_.value);
  pass_choice();
}

std::vector<std::size_t> MergeDesk::choose_fields(const std::vector<std::size_t>& places) {
  SetMargSts(TQ_MERGE_FIELDS, 0, screen_.value);
  for (std::size_t i = 0; i < places.size(); ++i) {
    SetMargInfo(static_cast<short>(i), static_cast<short>(places[i]), screen_.value);
  }
  pass_choice();
  std::vector<std::size_t> read;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const short place = GetMargInfo(static_cast<short>(i), groups_.value);
    if (place < 0 || static_cast<std::size_t>(place) >= laid_out_->records()) {
      fail("the merge file is not what was written.");
    }
    read.push_back(static_cast<std::size_t>(place));
  }
  return read;
}

void MergeDesk::settle() {
  CtdSchFlgSet(CtdSchNext(groups_.value), groups_.value);
  ClrCtdInfo(groups_.value);
  laid_out_.reset();
}

}  // namespace tqsync
