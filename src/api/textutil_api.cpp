// Flat functions of the text and date utilities.
#include "tqutil/textutil.h"

#include "textutil/dates.h"
#include "textutil/kanji_numbers.h"
#include "textutil/width.h"

namespace {

void give(const tq::textutil::Date& date, short* year, short* month, short* day) {
  if (year != nullptr) *year = date.year;
  if (month != nullptr) *month = date.month;
  if (day != nullptr) *day = date.day;
}

}  // namespace

int32_t TQ_CALL tqStrToHan(const char* src, char* dst) noexcept {
  return tq::textutil::to_half(src, dst);
}

int32_t TQ_CALL tqStrToZen(const char* src, char* dst) noexcept {
  return tq::textutil::to_full(src, dst);
}

int32_t TQ_CALL tqStrDelSpace(const char* src, char* dst) noexcept {
  return tq::textutil::without_spaces(src, dst);
}

int32_t TQ_CALL tqStrDelAnyTok(const char* delims, const char* src, char* dst) noexcept {
  return tq::textutil::without_bytes(delims, src, dst);
}

int32_t TQ_CALL tqAddressStrKan2Nrm(const char* src, char* dst) noexcept {
  return tq::textutil::kanji_numbers_to_digits(src, dst);
}

int32_t TQ_CALL tqDateFormatZH(const char* src, char* dst, short toFull) noexcept {
  return tq::textutil::date_width(src, dst, toFull != 0);
}

short TQ_CALL tqDateFormatCnv(const char* src, char* dst, short mode, short pad) noexcept {
  return tq::textutil::normalise_date(src, dst, mode, pad != 0) ? 0 : 1;
}

int32_t TQ_CALL tqDateFormatCnv2(short era, short year, short month, short day, char* dst,
                                 short sep, short pad) noexcept {
  return tq::textutil::print_date(era, {year, month, day}, dst, sep, pad != 0);
}

short TQ_CALL tqDateFormatCnv3(const char* src, short* year, short* month, short* day,
                               short outEra) noexcept {
  tq::textutil::Date date;
  const tq::textutil::DateForm form = tq::textutil::parse_date(src, outEra, date);
  give(date, year, month, day);
  return static_cast<short>(form);
}

short TQ_CALL tqDateFormatCnv4(const char* src, short* year, short* month, short* day) noexcept {
  tq::textutil::Date date;
  const bool parsed = tq::textutil::parse_compact_date(src, date);
  give(date, year, month, day);
  return parsed ? 0 : 1;
}
