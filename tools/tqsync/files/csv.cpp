#include "files/csv.h"

#include <algorithm>
#include <utility>

#include "files/place.h"

namespace tqsync {
namespace {

class CsvParser {
 public:
  CsvParser(const std::string& file, std::string_view text) : file_(file), text_(text) {}

  std::vector<CsvRow> rows() {
    std::vector<CsvRow> rows;
    while (at_ < text_.size()) {
      CsvRow row{line_, {}};
      do {
        row.cells.push_back(next_is('"') ? quoted_cell() : plain_cell());
      } while (take_comma());
      take_line_end();
      const bool empty_line = row.cells.size() == 1 && row.cells[0].empty();
      if (!empty_line) rows.push_back(std::move(row));
    }
    return rows;
  }

 private:
  bool next_is(char c) const { return at_ < text_.size() && text_[at_] == c; }

  // A quote inside a plain cell stands for itself: other programs write such cells, and what they
  // mean is clear.
  std::string plain_cell() {
    const std::size_t end = std::min(text_.find_first_of(",\r\n", at_), text_.size());
    std::string cell(text_.substr(at_, end - at_));
    at_ = end;
    return cell;
  }

  std::string quoted_cell() {
    const std::size_t first_line = line_;
    std::string cell;
    for (++at_;;) {
      const std::size_t end = text_.find('"', at_);
      if (end == std::string_view::npos) {
        fail_at(file_, first_line,
                "the quoted cell that begins here is never closed. Add the missing \".");
      }
      const std::string_view piece = text_.substr(at_, end - at_);
      cell += piece;
      line_ += line_of(piece, piece.size()) - 1;
      at_ = end + 1;
      if (!next_is('"')) break;
      cell += '"';
      ++at_;
    }
    if (at_ < text_.size() && text_.find_first_of(",\r\n", at_) != at_) {
      fail_at(file_, line_,
              "there is text behind a closing quote. Write a quote inside a cell twice (\"\").");
    }
    return cell;
  }

  // After a comma at the very end one more cell follows, an empty one.
  bool take_comma() {
    if (!next_is(',')) return false;
    ++at_;
    return true;
  }

  void take_line_end() {
    if (at_ == text_.size()) return;
    at_ += text_.substr(at_, 2) == "\r\n" ? 2 : 1;
    ++line_;
  }

  const std::string& file_;
  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
};

}  // namespace

std::vector<CsvRow> parse_csv(const std::string& file, std::string_view text) {
  return CsvParser(file, text).rows();
}

}  // namespace tqsync
