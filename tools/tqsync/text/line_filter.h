// A text function of the library over a stream of lines: bytes in, bytes out, line ends kept.
//
// A line that Shift-JIS cannot hold passes unchanged and is reported; the others are not affected.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace tqsync {

class LineFilter {
 public:
  // Shift-JIS without zero bytes to Shift-JIS.
  using Convert = std::function<std::string(const std::string& sjis)>;
  // Takes what is wrong with a line; begins with "line " and its number, counted from 1.
  using Report = std::function<void(const std::string& fault)>;

  // Whether `convert` gives for several lines what it gives for each; then many are converted at
  // once.
  enum class Scope { kLine, kManyLines };

  LineFilter(Convert convert, Scope scope, bool shift_jis, Report report)
      : convert_(std::move(convert)),
        scope_(scope),
        shift_jis_(shift_jis),
        report_(std::move(report)) {}

  // Takes the next bytes; gives the lines that are complete now.
  std::string feed(std::string_view bytes);
  // Gives the last line when it has no line end.
  std::string finish();

  // Lines that passed unchanged because they could not be converted.
  std::size_t faults() const { return faults_; }

 private:
  std::string convert_lines(std::string_view lines);
  bool convert_at_once(std::string_view lines, std::string& out);
  void convert_each(std::string_view lines, std::string& out);
  // Appends the converted text to `out`. These throw Failure, which names `what`.
  void convert_text(const std::string& what, std::string_view text, std::string& out) const;
  std::string convert_piece(const std::string& what, std::string_view text) const;

  Convert convert_;
  Scope scope_;
  bool shift_jis_;
  Report report_;
  std::string unfinished_;
  std::size_t lines_ = 0;
  std::size_t faults_ = 0;
  bool at_start_ = true;
};

}  // namespace tqsync
