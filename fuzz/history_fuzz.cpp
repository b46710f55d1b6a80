// History files of any content, read back piece by piece beside a plain reading of the same bytes;
// and records of the history store of any content, whose lines must come back as they were copied.
#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "base/sjis.h"
#include "siblings/siblings.h"
#include "support/home.h"
#include "target.h"
#include "tqutil/history.h"
#include "tqutil/siblings.h"

namespace {

// One history with one file, and the file of its Read category.
struct History {
  History() {
    require(history.CreateHistory(1) == 0);
    for (const auto& [name, bytes] : home.contents()) {
      if (name.starts_with("work\\~HR")) read_file = name;
    }
    require(!read_file.empty());
  }

  tq::test::TestHome home;
  CHistoryCtl history;
  std::string read_file;
};

// The text that a call gives of what is left, which it takes from the front. A line end, CR LF too,
// counts as one byte of a piece.
std::string next_text(std::string_view& left) {
  constexpr std::size_t kPiece = 999;
  const std::size_t end = std::min(left.find('\n'), left.size());
  const bool line = end < left.size();
  const std::size_t size = line && end > 0 && left[end - 1] == '\r' ? end - 1 : end;
  const bool whole = size < kPiece || (size == kPiece && !line);
  std::string_view piece = left.substr(0, whole ? size : kPiece);
  left.remove_prefix(whole ? std::min(end + 1, left.size()) : kPiece);
  piece = piece.substr(0, piece.find('\0'));
  return std::string(piece.substr(0, tq::sjis::cut_size(piece, TQ_HISTORY_LINE_SIZE - 1)));
}

void read_back(CHistoryCtl& history, std::string_view bytes) {
  char text[TQ_HISTORY_LINE_SIZE];
  require(history.GetInfo4ReadInit(0) == 0);
  while (!bytes.empty()) {
    require(history.GetInfo4ReadNext(0, text) == 0);
    require(next_text(bytes) == text);
  }
  require(history.GetInfo4ReadNext(0, text) == -1 && text[0] == '\0');
  require(history.GetInfo4ReadEnd(0) == 0);
}

// A record that the application filed, its texts without an end, copied into the file.
void copy_record(History& at, std::string_view bytes) {
  tHSTYTMP_REC record{};
  std::memcpy(&record, bytes.data(), std::min(sizeof record, bytes.size()));
  const tHSTYTMP_API& store = tq::hstytmp();
  require(at.history.HstyBeforApp2Xdb(0) == 0);
  require(store.HstyTmpWrite(store.context, &record) == 0);
  require(at.history.HstyGetApp2Xdb(0) == 0);
  read_back(at.history, at.home.read(at.read_file));
}

}  // namespace

void try_input(std::string_view input) {
  static History at;
  at.home.write(at.read_file, input);
  read_back(at.history, input);
  at.home.write(at.read_file, "");
  copy_record(at, input);
}
