// The bytes of an address file turned into UTF-8 and back.
//
// Rule of detection: a byte order mark or text that is UTF-8 from the first byte to the last is
// UTF-8; everything else is Shift-JIS (code page 932).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tqsync {

enum class Encoding { kDetect, kUtf8, kShiftJis };

// The encoding that a person calls "utf8", "utf-8", "sjis", "shift-jis", "cp932" or "auto", in any
// case; nothing for another word.
std::optional<Encoding> encoding_from_name(std::string_view name);
// "UTF-8", "Shift-JIS", "detected".
const char* encoding_name(Encoding encoding);

struct DecodedText {
  Encoding encoding;  // never kDetect
  std::string utf8;   // without byte order mark
};

// Decodes a whole file. Throws Failure, naming `file` and the line, for bytes that the encoding
// does not have and for text in UTF-16.
DecodedText decode(const std::string& file, std::string bytes, Encoding encoding);

struct EncodedText {
  Encoding encoding;  // never kDetect
  std::string bytes;  // UTF-8 with a byte order mark
};

// The bytes of a whole file. Where Shift-JIS does not have all of its characters it is UTF-8, and
// so it is for kDetect.
EncodedText encode(std::string utf8, Encoding encoding);

}  // namespace tqsync
