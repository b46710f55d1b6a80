#include "files/address_writer.h"

#include "failure.h"
#include "files/whole_file.h"
#include "text/native_path.h"

namespace tqsync {
namespace {

void append_row(std::string& text, const std::vector<std::string>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const bool quoted = cells[i].find_first_of(",\"\r\n") != std::string::npos;
    if (i > 0) text += ',';
    if (!quoted) {
      text += cells[i];
      continue;
    }
    text += '"';
    for (const char c : cells[i]) text.append(c == '"' ? 2 : 1, c);
    text += '"';
  }
  text += "\r\n";
}

}  // namespace

Encoding write_address_file(const std::string& native_path,
                            const std::vector<std::string>& headings,
                            const std::vector<std::vector<std::string>>& rows, Encoding encoding) {
  std::string text;
  append_row(text, headings);
  for (const auto& row : rows) append_row(text, row);
  const EncodedText encoded = encode(std::move(text), encoding);
  if (!save_whole_file(to_path(native_path), encoded.bytes)) {
    throw Failure(
        native_path +
        ": the file cannot be written. Check that its folder is there, that you may write "
        "to it and that the disk has room.");
  }
  return encoded.encoding;
}

}  // namespace tqsync
