// The group file: six header lines, then five lines a member. docs/formats.md describes its bytes.
#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>

#include "base/sjis.h"
#include "common/path.h"
#include "common/text.h"
#include "platform/platform.h"
#include "syncfile/sync_file_state.h"

namespace tq {
namespace {

constexpr std::size_t kTitleReadMax = 128;  // bytes of title and memo that a reader takes
constexpr std::size_t kGroupIdMax = 3;

// Decimal values split at ','; how many there were, at most `count`.
int read_flags(std::string_view line, short* flags, int count) {
  int taken = 0;
  // Nearly every flag is a digit and a comma.
  while (taken < count && line.size() >= 2 && line[0] >= '0' && line[0] <= '9' && line[1] == ',') {
    flags[taken++] = static_cast<short>(line[0] - '0');
    line.remove_prefix(2);
  }
  Tokens tokens(line);
  std::string_view token;
  while (taken < count && tokens.next(',', token)) flags[taken++] = decimal16(token);
  return taken;
}

// The first line of a member block: application type, second number, file id. False without any
// field.
bool read_member_head(std::string_view line, tSYNC_FILE& member) {
  Tokens tokens(line);
  std::string_view token;
  if (!tokens.next(',', token)) return false;
  member.appType = decimal16(token);
  if (tokens.next(',', token)) member.appType2 = decimal16(token);
  if (tokens.next(',', token)) copy_text(member.fileId, token);
  return true;
}

// One member block. False at the end of the file or where reading must stop; a block that is cut
// short does not count.
bool read_member(LineReader& lines, tSYNC_FILE& member) {
  std::string_view line;
  if (!lines.next_data(line) || !read_member_head(line, member)) return false;
  if (!lines.next_data(line)) return false;
  read_flags(line, member.trFlg, TQ_FLG_COUNT);
  if (!lines.next_data(line)) return false;
  copy_text(member.memberText, line);
  if (!lines.next_data(line)) return false;
  copy_text(member.fldFile, line);
  if (!lines.next_data(line)) return false;
  copy_text(member.tmpFileO, line);
  member.tmpFileOFromFile = 1;
  return true;
}

void append_number(std::string& out, int number) {
  char digits[16];
  out.append(digits, std::to_chars(digits, std::end(digits), number).ptr);
}

void append_flags(std::string& out, const short (&flags)[TQ_FLG_COUNT]) {
  char line[TQ_FLG_COUNT * std::size("-32768,") + 1];
  char* end = line;
  for (const short flag : flags) {
    end = std::to_chars(end, std::end(line), flag).ptr;
    *end++ = ',';
  }
  *end++ = '\n';
  out.append(line, end);
}

void append_header(std::string& out, const tSYNC_GRP2& group, int count) {
  append_number(out, group.syncType);
  out += '\n';
  append_line(out, view(group.id));
  append_line(out, view(group.title));
  append_line(out, view(group.memo));
  append_flags(out, group.syncFlg);
  append_number(out, count);
  out += '\n';
}

void append_member(std::string& out, const tSYNC_FILE& member) {
  append_number(out, member.appType);
  out += ',';
  append_number(out, member.appType2);
  out += ',';
  append_line(out, view(member.fileId));
  append_flags(out, member.trFlg);
  append_line(out, view(member.memberText));
  append_line(out, view(member.fldFile));
  append_line(out, view(member.tmpFileO));
}

// An empty value would be no line at all to readers that skip blanks, so it is kept as one blank.
template <std::size_t N>
void fill_empty(char (&text)[N]) {
  if (text[0] == '\0') copy_text(text, " ");
}

}  // namespace

bool read_group_header(LineReader& lines, tSYNC_GRP2& header, std::int32_t& count) {
  std::string_view line;
  if (!lines.next_data(line)) return false;
  header.syncType = decimal16(line);
  if (!lines.next_data(line)) return false;
  copy_text(header.id, sjis::cut(line, kGroupIdMax));
  if (!lines.next_data(line)) return false;
  copy_text(header.title, sjis::cut(line, kTitleReadMax));
  if (!lines.next_data(line)) return false;
  copy_text(header.memo, sjis::cut(line, kTitleReadMax));
  if (!lines.next_data(line)) return false;
  if (read_flags(line, header.syncFlg, TQ_FLG_COUNT) == 0) return false;
  if (!lines.next_data(line)) return false;
  count = decimal(line);
  return true;
}

}  // namespace tq

short CSyncFileCtl::State::read() {
  tq::LineReader lines;
  if (mode == Mode::kNone || !lines.open(tq::view(group.grpPath)).ok())
    return fail(tq::kErrorRead, -1);
  constexpr std::size_t kFirstCapacity = 10;
  if (!members.allocate(kFirstCapacity)) return fail(tq::kErrorMemory, -1);
  csv_heads.clear();
  tSYNC_GRP2 header{};
  std::int32_t announced = 0;
  if (tq::read_group_header(lines, header, announced)) {
    // The count is only a hint for the table's size: what is there decides, and a hint may lie.
    constexpr std::int32_t kHintMax = 4096;
    if (announced > 0)
      static_cast<void>(members.reserve(static_cast<std::size_t>(std::min(announced, kHintMax))));
    for (;;) {
      tq::tSYNC_FILE* member = members.append();
      if (member == nullptr) return fail(tq::kErrorMemory, -1);
      if (tq::read_member(lines, *member)) continue;
      members.erase(members.size() - 1);
      break;
    }
  }
  group = header;
  for (tq::tSYNC_FILE& member : members.records()) {
    if (member.fileId[0] == '\0') tq::copy_text(member.fileId, new_file_id());
  }
  rebuild_paths(group);
  group.fileCnt = static_cast<short>(members.size());
  csv_heads.resize(members.size());
  return group.fileCnt;
}

short CSyncFileCtl::State::write(bool renumber) {
  if (mode == Mode::kReadOnly) return fail(tq::kErrorWrite, 1);
  const bool working = group.syncFlg[tq::kWorkingFlag] == 1;
  const bool known = tq::is_safe_group_id(tq::view(group.id));
  if (!working && renumber &&
      (!known || tq::platform::exists(tq::view(group.grpPath)) ||
       tq::platform::exists(tq::view(group.filePath)))) {
    const std::string id = new_group_id();
    if (id.empty()) return fail(tq::kErrorWrite, 1);
    tq::copy_text(group.id, id);
    rebuild_paths(group);
    renumber_members();
  }
  tq::fill_empty(group.id);
  tq::fill_empty(group.title);
  tq::fill_empty(group.memo);
  std::string bytes;
  tq::append_header(bytes, group, static_cast<int>(members.size()));
  for (const tq::tSYNC_FILE& member : members.records()) tq::append_member(bytes, member);
  const bool written = tq::MakeFolderTree(tq::view(group.filePath)) == 0 &&
                       tq::replace_content(tq::view(group.grpPath), bytes).ok();
  return written ? short{0} : fail(tq::kErrorWrite, 1);
}
