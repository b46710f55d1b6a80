// Text functions over a stream: line ends, broken lines, and bytes that come in any portions.
#include "text/line_filter.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "support/test.h"
#include "tqutil/textutil.h"

namespace tqsync {
namespace {

using namespace std::string_literals;
using enum LineFilter::Scope;
using Scope = LineFilter::Scope;

std::string call(std::int32_t (*function)(const char*, char*), const std::string& sjis) {
  std::string out(5 * sjis.size() + 1, '\0');
  out.resize(static_cast<std::size_t>(function(sjis.c_str(), out.data())));
  return out;
}

std::string half(const std::string& sjis) { return call(tqStrToHan, sjis); }
std::string address(const std::string& sjis) { return call(tqAddressStrKan2Nrm, sjis); }
std::string without_hyphens(const std::string& sjis) {
  std::string out(sjis.size() + 1, '\0');
  out.resize(static_cast<std::size_t>(tqStrDelAnyTok("-\\", sjis.c_str(), out.data())));
  return out;
}

struct Result {
  std::string out;
  Texts faults;
};

Result filtered(const LineFilter::Convert& convert, Scope scope, bool shift_jis,
                std::string_view input, std::size_t portion) {
  Result result;
  LineFilter filter(convert, scope, shift_jis,
                    [&](const std::string& fault) { result.faults.push_back(fault); });
  for (; !input.empty(); input.remove_prefix(std::min(portion, input.size()))) {
    result.out += filter.feed(input.substr(0, portion));
  }
  result.out += filter.finish();
  EXPECT_EQ(filter.faults(), result.faults.size());
  return result;
}

TEST(LineFilter, KeepsLineEndsAndReportsBrokenLines) {
  // `report`: how the only report begins, empty for none
  const std::tuple<const char*, LineFilter::Convert, Scope, bool, std::string, std::string,
                   std::string>
      rows[] = {
          {"both line ends, and none", half, kManyLines, false, "Ａ\r\nＢ\nＣ", "A\r\nB\nC", ""},
          {"the end of a line ends a number", address, kLine, false, "三\n東\r\n四", "３\n東\r\n４",
           ""},
          {"empty lines", half, kLine, false, "\n\r\n\n", "\n\r\n\n", ""},
          {"nothing at all", half, kManyLines, false, "", "", ""},
          {"zero bytes stay", half, kManyLines, false, "Ａ\0Ｂ\0\n"s, "A\0B\0\n"s, ""},
          {"a byte order mark stays", half, kLine, false, "\uFEFFＡ\n", "\uFEFFA\n", ""},
          {"a line without Shift-JIS", half, kManyLines, false, "Ａ\nＢ😀\r\nＣ\n", "A\nＢ😀\r\nC\n",
           "line 2: Shift-JIS does not have the character \"😀\""},
          {"one line is no UTF-8", half, kLine, false, "Ａ\nＢ\xFF\nＣ", "A\nＢ\xFF\nC",
           "line 2: "},
          {"a byte taken out of a character", without_hyphens, kManyLines, false, "a-b\n表-\n",
           "ab\n表-\n", "line 2: "},
          {"Shift-JIS of any kind passes through", half, kManyLines, true,
           "\x82\x60\n\x82\n\xFF\x82\x61", "A\n\x82\n\xFF\x42", ""},
      };
  for (const auto& [why, convert, scope, shift_jis, input, out, report] : rows) {
    for (const std::size_t portion : {std::size_t{1}, std::size_t{3}, std::size_t{1000}}) {
      SCOPED_TRACE(why);
      const Result result = filtered(convert, scope, shift_jis, input, portion);
      EXPECT_EQ(result.out, out);
      ASSERT_EQ(result.faults.size(), report.empty() ? 0u : 1u);
      for (const std::string& fault : result.faults) {
        EXPECT_TRUE(fault.starts_with(report)) << fault;
      }
    }
  }
}

}  // namespace
}  // namespace tqsync
