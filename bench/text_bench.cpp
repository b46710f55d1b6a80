// What the text utilities cost on 64 MB of address-book text, beside the plain loops, ICU's
// transliterators, memcpy, and the C library for dates.
//
// Every row runs its two sides in turn, several rounds, and compares the best round of each, so
// that a busy machine slows both. Both sides must give the same bytes, ICU excepted (its tables
// differ).
//
//   text_bench [ROUNDS [WORDS]]   default 7; only the rows whose name has these words
//   text_bench --corpus FILE      only writes the text to a file
#include <unicode/ucnv.h>
#include <unicode/utrans.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "address_corpus.h"
#include "plain_loops.h"
#include "tqutil/textutil.h"

namespace tq::bench {
namespace {

constexpr std::size_t kCorpusSize = std::size_t{64} << 20;

using Convert = std::int32_t (*)(const char* src, char* dst);
using Work = std::function<void()>;

int g_rounds = 7;
std::string_view g_wanted;
std::vector<char> g_output(kCorpusSize * 2 + (1 << 20));

double seconds(const Work& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

bool wanted(const char* what) { return std::string_view(what).find(g_wanted) != std::string::npos; }

struct Best {
  double ours;
  double peer;
};

// The best round of each side.
Best race(const Work& ours, const Work& peer) {
  Best best{1e9, 1e9};
  for (int round = 0; round < g_rounds; ++round) {
    best.ours = std::min(best.ours, seconds(ours));
    best.peer = std::min(best.peer, seconds(peer));
  }
  return best;
}

void print_row(const char* what, const char* peer, Best best, double units, const char* unit,
               double goal) {
  char wanted[16] = "-";
  if (goal > 0) std::snprintf(wanted, sizeof wanted, "%.1f", goal);
  std::printf("%-34s %-12s %9.1f %9.1f %-6s %7.2f %6s\n", what, peer, units / best.ours,
              units / best.peer, unit, best.peer / best.ours, wanted);
  std::fflush(stdout);
}

void check_same(const char* what, Convert ours, Convert peer, const std::string& text) {
  std::string a(text.size() * 2 + 1, '\0');
  std::string b(text.size() * 2 + 1, '\0');
  a.resize(static_cast<std::size_t>(ours(text.c_str(), a.data())));
  b.resize(static_cast<std::size_t>(peer(text.c_str(), b.data())));
  if (a == b) return;
  std::fprintf(stderr, "%s: the two sides differ\n", what);
  std::exit(1);
}

void whole_text(const char* what, Convert ours, Convert plain, const std::string& text,
                double goal) {
  if (!wanted(what)) return;
  check_same(what, ours, plain, text);
  char* const out = g_output.data();
  const Best best = race([&] { ours(text.c_str(), out); }, [&] { plain(text.c_str(), out); });
  print_row(what, "plain loop", best, static_cast<double>(text.size()) / 1e6, "MB/s", goal);
}

void beside_memcpy(const char* what, Convert ours, const std::string& text) {
  if (!wanted(what)) return;
  char* const out = g_output.data();
  const Best best = race([&] { ours(text.c_str(), out); },
                         [&] { std::memcpy(out, text.c_str(), std::strlen(text.c_str()) + 1); });
  print_row(what, "memcpy", best, static_cast<double>(text.size()) / 1e6, "MB/s", 0);
}

// Texts one after the other in one block, as an application's records are.
struct Fields {
  std::vector<char> bytes;
  std::vector<std::size_t> starts;

  void add(std::string_view field) {
    starts.push_back(bytes.size());
    bytes.insert(bytes.end(), field.begin(), field.end());
    bytes.push_back('\0');
  }
  void each(auto call) const {
    for (const std::size_t start : starts) call(bytes.data() + start);
  }
};

Fields split(std::string_view text, std::string_view separators, std::size_t shortest,
             std::size_t longest) {
  Fields fields;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(separators), text.size());
    if (end >= shortest && end <= longest) fields.add(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return fields;
}

void field_by_field(const char* what, Convert ours, Convert plain, const Fields& fields,
                    double goal) {
  if (!wanted(what)) return;
  char* const out = g_output.data();
  const auto all = [&](Convert convert) {
    return
        [&fields, out, convert] { fields.each([&](const char* field) { convert(field, out); }); };
  };
  const Best best = race(all(ours), all(plain));
  print_row(what, "plain loop", best, static_cast<double>(fields.starts.size()) / 1e6, "M/s", goal);
}

// ICU needs the text as UTF-16 and the result back in the code page.
class Icu {
 public:
  explicit Icu(const char16_t* id) {
    UErrorCode status = U_ZERO_ERROR;
    converter_ = ucnv_open("ibm-943_P15A-2003", &status);
    transliterator_ = utrans_openU(reinterpret_cast<const UChar*>(id), -1, UTRANS_FORWARD, nullptr,
                                   0, nullptr, &status);
    if (U_FAILURE(status)) {
      std::fprintf(stderr, "ICU: %s\n", u_errorName(status));
      std::exit(1);
    }
  }
  ~Icu() {
    utrans_close(transliterator_);
    ucnv_close(converter_);
  }
  Icu(const Icu&) = delete;
  Icu& operator=(const Icu&) = delete;

  void convert(const char* line, char* out) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t size = ucnv_toUChars(converter_, text_, kMost, line, -1, &status);
    int32_t limit = size;
    utrans_transUChars(transliterator_, text_, &size, kMost, 0, &limit, &status);
    ucnv_fromUChars(converter_, out, kMost, text_, size, &status);
    if (U_FAILURE(status)) std::exit(1);
  }

 private:
  static constexpr int32_t kMost = 4096;
  UConverter* converter_ = nullptr;
  UTransliterator* transliterator_ = nullptr;
  UChar text_[kMost];
};

void line_by_line(const char* what, Convert ours, const char16_t* id, const Fields& lines,
                  double goal) {
  if (!wanted(what)) return;
  Icu icu(id);
  char* const out = g_output.data();
  const Best best = race([&] { lines.each([&](const char* line) { ours(line, out); }); },
                         [&] { lines.each([&](const char* line) { icu.convert(line, out); }); });
  print_row(what, "ICU", best, static_cast<double>(lines.bytes.size()) / 1e6, "MB/s", goal);
}

void dates(const char* what, const char* form, int offset, const std::string& date, double goal) {
  if (!wanted(what)) return;
  constexpr int kTimes = 20000;
  char out[64];
  char other[64];
  tqDateFormatCnv(date.c_str(), out, 0, 1);
  plain_date(form, offset, date.c_str(), other);
  if (std::strcmp(out, other) != 0) {
    std::fprintf(stderr, "%s: %s and %s\n", what, out, other);
    std::exit(1);
  }
  const Best best = race(
      [&] {
        for (int i = 0; i < kTimes; ++i) tqDateFormatCnv(date.c_str(), out, 0, 1);
      },
      [&] {
        for (int i = 0; i < kTimes; ++i) plain_date(form, offset, date.c_str(), other);
      });
  print_row(what, "sscanf", best, kTimes / 1e6, "M/s", goal);
}

std::string converted(Convert convert, const std::string& text) {
  std::string out(text.size() * 2 + 1, '\0');
  out.resize(static_cast<std::size_t>(convert(text.c_str(), out.data())));
  return out;
}

void run() {
  std::printf("%-34s %-12s %9s %9s %-6s %7s %6s\n", "what", "beside", "ours", "peer", "", "ratio",
              "goal");
  const std::string text = AddressCorpus::text(kCorpusSize);
  const std::string half = converted(tqStrToHan, text);
  std::string full = converted(tqStrToZen, text);
  full.resize(kCorpusSize);

  const Fields few_lines = split(std::string_view(text).substr(0, 2 << 20), "\r\n", 1, 1 << 20);
  line_by_line("half width, line by line", tqStrToHan, u"Fullwidth-Halfwidth", few_lines, 20);
  line_by_line("full width, line by line", tqStrToZen, u"Halfwidth-Fullwidth", few_lines, 15);

  whole_text("half width, whole text", tqStrToHan, plain_half, text, 3);
  whole_text("full width, whole text", tqStrToZen, plain_full, text, 1.8);
  whole_text("half width, nothing to change", tqStrToHan, plain_half, half, 7);
  whole_text("full width, nothing to change", tqStrToZen, plain_full, full, 7);
  whole_text("without spaces, whole text", tqStrDelSpace, plain_without_spaces, text, 0);
  beside_memcpy("half width, whole text", tqStrToHan, text);
  beside_memcpy("half width, nothing to change", tqStrToHan, half);

  const Fields fields = split(std::string_view(text).substr(0, 16 << 20), "\t\r\n", 18, 22);
  field_by_field("half width, fields of 20 bytes", tqStrToHan, plain_half, fields, 1.3);
  field_by_field("full width, fields of 20 bytes", tqStrToZen, plain_full, fields, 1.3);
  field_by_field("without spaces, the same", tqStrDelSpace, plain_without_spaces, fields, 0);

  AddressCorpus corpus(2);
  Fields addresses;
  for (int i = 0; i < 200000; ++i) addresses.add(corpus.address());
  field_by_field("kanji numbers, addresses", tqAddressStrKan2Nrm, plain_address, addresses, 1);

  dates("date 2003/4/1", "%d/%d/%d", 0, "2003/4/1", 4);
  dates("date H15.4.1", "H%d.%d.%d", 1988, "H15.4.1", 4);
  dates("date, era and words", "昭和%d年%d月%d日"_sjis, 1925, "昭和50年11月23日"_sjis, 4);
  dates("date, digits only", "%4d%2d%2d", 0, "20030401", 4);
}

}  // namespace
}  // namespace tq::bench

int main(int argc, char** argv) {
  if (argc == 3 && std::string_view(argv[1]) == "--corpus") {
    std::ofstream(argv[2], std::ios::binary)
        << tq::bench::AddressCorpus::text(tq::bench::kCorpusSize);
    return 0;
  }
  if (argc > 1) tq::bench::g_rounds = std::max(1, std::atoi(argv[1]));
  if (argc > 2) tq::bench::g_wanted = argv[2];
  tq::bench::run();
  return 0;
}
