/* Text and date utilities: half-width and full-width forms, removal of spaces and of single bytes,
 * kanji numbers in addresses, dates in any form.
 *
 * All texts are zero-terminated Shift-JIS (code page 932); a null text counts as empty. An output
 * `dst` may be null, which only asks for the result value, and may be the input itself. A byte pair
 * is one character when a lead byte is followed by a trail byte; any other byte stands for itself.
 * No function keeps anything between calls: two threads may convert at once.
 */
#ifndef TQUTIL_TEXTUTIL_H_
#define TQUTIL_TEXTUTIL_H_

#include <stdint.h>
#include <tqutil/config.h>

TQ_BEGIN_DECLS

/* The first five return the length of the result in bytes, without the zero byte, which is written
 * too. Nothing behind it is touched. They take a text of any length; -1, with `dst` as it was, when
 * the result might pass 2^31-1 bytes or memory for it is out. */

/* To half width: symbols, letters, digits and katakana that have a half-width form; a voiced kana
 * becomes kana and mark. `dst` needs strlen(src) + 1 bytes. */
int32_t TQ_CALL tqStrToHan(const char* src, char* dst) TQ_NOEXCEPT;

/* To full width: ASCII, half-width kana and their punctuation; a kana and its voicing mark become
 * one character, a mark behind any other character is dropped. `dst` needs 2 * strlen(src) + 1
 * bytes. */
int32_t TQ_CALL tqStrToZen(const char* src, char* dst) TQ_NOEXCEPT;

/* Without half-width and full-width spaces. `dst` needs strlen(src) + 1 bytes. */
int32_t TQ_CALL tqStrDelSpace(const char* src, char* dst) TQ_NOEXCEPT;

/* Without every byte that occurs in `delims`. It goes by bytes: a letter in `delims` also takes
 * away the second half of a two-byte character that has this code. `dst` needs strlen(src) + 1
 * bytes. */
int32_t TQ_CALL tqStrDelAnyTok(const char* delims, const char* src, char* dst) TQ_NOEXCEPT;

/* An address without spaces and with its kanji numbers as full-width digits, where a word such as
 * 丁目, 番 or 号, a separator, a space or the end follows; elsewhere they belong to a name and
 * stay. `dst` needs 5 * strlen(src) + 1 bytes; addresses that people write do not get longer. */
int32_t TQ_CALL tqAddressStrKan2Nrm(const char* src, char* dst) TQ_NOEXCEPT;

/* The date functions look at the first 1000 bytes of a text, cut at a character. They do not check
 * month and day. Numbers that do not fit into 16 bits keep their low 16 bits. Eras: 1 Meiji,
 * 2 Taisho, 3 Showa, 4 Heisei; any other value means Western years. Separators: -1 none, 0 "/",
 * 1 "-", 2 ".", 3 ":", 4 ";", 5 ","; any other value "/". */

/* Digits, era letters, separators and spaces of a date to half width (`toFull` 0) or to full width;
 * other characters are copied. To half width a lead byte without trail byte is dropped together
 * with the byte behind it. `dst` needs min(strlen(src), 1000) + 1 bytes, twice the text plus 1 to
 * full width. The length of the result. */
int32_t TQ_CALL tqDateFormatZH(const char* src, char* dst, short toFull) TQ_NOEXCEPT;

/* Rewrites a date as year, month and day with Western year. `mode` is the separator; 200 to 299
 * also turn years 20 to 99 into 1920 to 1999 and 0 to 19 into 2000 to 2019 and separate with "/".
 * `pad` not 0: month and day have two digits. 0; or 1 when the text is no date, `dst` then holds
 * the text. `dst` needs 21 bytes, or min(strlen(src), 1000) + 1 when that is more. */
short TQ_CALL tqDateFormatCnv(const char* src, char* dst, short mode, short pad) TQ_NOEXCEPT;

/* Prints a date of the given era with Western year. `dst` needs 21 bytes. The length of the
 * result. */
int32_t TQ_CALL tqDateFormatCnv2(short era, short year, short month, short day, char* dst,
                                 short sep, short pad) TQ_NOEXCEPT;

/* Finds year, month and day: an era mark or none, then three numbers with anything between them.
 * The year is given in the era `outEra`. 0; or 1 when the text is nothing but digits (see
 * tqDateFormatCnv4), -1 when it is no date; the three are 0 then. Any of them may be null. */
short TQ_CALL tqDateFormatCnv3(const char* src, short* year, short* month, short* day,
                               short outEra) TQ_NOEXCEPT;

/* Takes a text of 5 to 8 bytes (in half width) apart: the last two are the day, the two before them
 * the month, the others the year. 0; or 1 for any other length, the three are 0 then. Any of them
 * may be null. */
short TQ_CALL tqDateFormatCnv4(const char* src, short* year, short* month, short* day) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_TEXTUTIL_H_ */
