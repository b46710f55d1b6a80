// Every text utility on bytes of any kind, against the plain reference. The first byte chooses the
// function, so that one set of seeds serves all.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "target.h"
#include "textutil/call.h"
#include "textutil/reference.h"
#include "tqutil/textutil.h"

namespace {

using namespace tq::test;

void require_none(const std::string& fault) {
  if (fault.empty()) return;
  std::fprintf(stderr, "%s\n", fault.c_str());
  std::abort();
}

void check_dates(const std::string& text, short number) {
  const ReferenceDate want = reference_date(text, number);
  short year = 0;
  short month = 0;
  short day = 0;
  const short form = tqDateFormatCnv3(text.c_str(), &year, &month, &day, number);
  if (form != want.form || year != want.year || month != want.month || day != want.day) {
    require_none("parts of the date " + hex(text));
  }
  tqDateFormatCnv3(text.c_str(), &year, &month, &day, 0);
  const bool compact = form == 1 && tqDateFormatCnv4(text.c_str(), &year, &month, &day) == 0;
  std::string out(text.size() + 21, '\0');
  const short result = tqDateFormatCnv(text.c_str(), out.data(), number, 1);
  if (result != (form == 0 || compact ? 0 : 1)) require_none("whether it is a date " + hex(text));
  if (result == 1 && tq::sjis::cut(text, 1000) != out.c_str()) require_none("no date " + hex(text));
  if (result == 0 && reference_print(year, month, day, number, true) != out.c_str()) {
    require_none("printed date " + hex(text));
  }
}

}  // namespace

void try_input(std::string_view input) {
  if (input.size() < 2) return;
  const auto choice = input[0];
  std::string text(input.substr(1));
  text.resize(std::min(text.find('\0'), text.size()));
  switch (choice) {
    case 'h':
      require_none(conversion_fault(tqStrToHan, text, reference_half(text)));
      break;
    case 'f':
      require_none(conversion_fault(tqStrToZen, text, reference_full(text)));
      break;
    case 's':
      require_none(conversion_fault(tqStrDelSpace, text, reference_without_spaces(text)));
      break;
    case 'k':
      require_none(conversion_fault(tqAddressStrKan2Nrm, text, reference_address(text)));
      break;
    case 'd':
      check_dates(text, static_cast<short>(text.size() % 7));
      break;
    default: {
      const std::string unwanted = text.substr(0, static_cast<unsigned char>(choice) % 8);
      const auto without = [&](const char* src, char* dst) {
        return tqStrDelAnyTok(unwanted.c_str(), src, dst);
      };
      std::string want = text;
      std::erase_if(want, [&](char byte) { return unwanted.find(byte) != std::string::npos; });
      require_none(conversion_fault(without, text, want));
    }
  }
}
