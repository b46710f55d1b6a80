// Text conversion on bytes of any kind: both Unicode forms must agree, what was converted must come
// back, and a refusal must name the place of the fault.
#include "base/cp932.h"

#include <string>
#include <string_view>

#include "target.h"

namespace {

using tq::cp932::Accept;

void from_shift_jis(std::string_view sjis) {
  const std::u16string utf16 = tq::cp932::to_utf16(sjis);
  const std::string utf8 = tq::cp932::to_utf8(sjis);
  require(utf16.size() <= sjis.size());

  // Codes that Windows folds come back as another code, but never as another character.
  std::string from16;
  std::string from8;
  const bool known = tq::cp932::from_utf16(utf16, from16);
  require(tq::cp932::from_utf8(utf8, from8) == known);
  require(from16 == from8);
  if (known) require(tq::cp932::to_utf8(from8) == utf8);
}

void to_shift_jis(std::string_view utf8, Accept accept) {
  std::string sjis;
  const std::size_t taken = tq::cp932::convert_utf8(utf8, sjis, accept);
  require(taken <= utf8.size());
  require(tq::cp932::from_utf8(utf8, sjis, accept) == (taken == utf8.size()));

  std::string again;
  require(tq::cp932::convert_utf8(utf8.substr(0, taken), again, accept) == taken);
  require(again == sjis);
  if (accept == Accept::kExact) require(tq::cp932::to_utf8(sjis) == utf8.substr(0, taken));
}

}  // namespace

void try_input(std::string_view input) {
  from_shift_jis(input);
  to_shift_jis(input, Accept::kExact);
  to_shift_jis(input, Accept::kJisSpellings);
}
