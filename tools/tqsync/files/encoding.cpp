#include "files/encoding.h"

#include <cctype>
#include <cstdint>
#include <limits>
#include <utility>

#include "files/place.h"
#include "text/library_text.h"
#include "text/unicode.h"
#include "tqutil/host.h"

namespace tqsync {
namespace {

constexpr std::string_view kUtf16Marks[] = {"\xFF\xFE", "\xFE\xFF"};

void refuse_binary(const std::string& file, std::string_view bytes) {
  for (const std::string_view mark : kUtf16Marks) {
    if (bytes.starts_with(mark)) {
      throw Failure(file +
                    ": the text is in UTF-16. Save it as \"CSV UTF-8\" or as CSV in Shift-JIS.");
    }
  }
  const std::size_t zero = bytes.find('\0');
  if (zero != std::string_view::npos) {
    fail_at(file, line_of(bytes, zero),
            "there is a zero byte, so this is no text file. Export the addresses as CSV.");
  }
}

// `text` is the file up to the fault, in whichever encoding: both break lines alike.
[[noreturn]] void refuse_text(const std::string& file, std::string_view text, Encoding encoding) {
  fail_at(file, line_of(text, text.size()),
          std::string("there is a character that is no ") + encoding_name(encoding) +
              ". Save the file anew in UTF-8 or Shift-JIS, or name its encoding with --encoding.");
}

std::string sjis_to_utf8(const std::string& file, std::string_view bytes) {
  std::string utf8 = from_sjis(bytes);
  const std::size_t fault = utf8.find(kReplacement);
  if (fault != std::string::npos) {
    refuse_text(file, std::string_view(utf8).substr(0, fault), Encoding::kShiftJis);
  }
  return utf8;
}

}  // namespace

std::optional<Encoding> encoding_from_name(std::string_view name) {
  std::string plain;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (c != '-' && c != '_') plain.push_back(static_cast<char>(std::tolower(byte)));
  }
  if (plain == "auto") return Encoding::kDetect;
  if (plain == "utf8") return Encoding::kUtf8;
  if (plain == "sjis" || plain == "shiftjis" || plain == "cp932") return Encoding::kShiftJis;
  return std::nullopt;
}

const char* encoding_name(Encoding encoding) {
  switch (encoding) {
    case Encoding::kUtf8:
      return "UTF-8";
    case Encoding::kShiftJis:
      return "Shift-JIS";
    case Encoding::kDetect:
      break;
  }
  return "detected";
}

DecodedText decode(const std::string& file, std::string bytes, Encoding encoding) {
  refuse_binary(file, bytes);
  const bool marked = bytes.starts_with(kByteOrderMark);
  if (marked && encoding != Encoding::kShiftJis) {
    bytes.erase(0, kByteOrderMark.size());
    encoding = Encoding::kUtf8;
  }
  if (encoding != Encoding::kShiftJis) {
    const std::size_t malformed = find_malformed(bytes);
    if (malformed == std::string::npos) return {Encoding::kUtf8, std::move(bytes)};
    if (encoding == Encoding::kUtf8) {
      refuse_text(file, std::string_view(bytes).substr(0, malformed), encoding);
    }
  }
  return {Encoding::kShiftJis, sjis_to_utf8(file, bytes)};
}

EncodedText encode(std::string utf8, Encoding encoding) {
  constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()) - 1;
  if (encoding == Encoding::kShiftJis && utf8.size() <= kMost) {
    std::string sjis(utf8.size() + 1, '\0');  // Shift-JIS never takes more bytes than UTF-8
    const auto size = static_cast<std::int32_t>(utf8.size());
    const std::int32_t used = tqUtf8ToSjis(utf8.data(), size, sjis.data(), size + 1);
    if (used >= 0) {
      sjis.resize(static_cast<std::size_t>(used));
      return {Encoding::kShiftJis, std::move(sjis)};
    }
  }
  return {Encoding::kUtf8, utf8.insert(0, kByteOrderMark)};
}

}  // namespace tqsync
