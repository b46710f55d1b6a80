// The result of an internal operation: a code that callers branch on and a text that says what was
// being done to which thing. The flat interface maps it once to the family's own failure value;
// tqsync and the error box can still show the text.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace tq {

enum class Code : std::uint8_t {
  kOk,
  kNotFound,        // file or folder is not there
  kExists,          // something of that name is already there
  kDenied,          // access denied, read-only file
  kBusy,            // somebody else holds the file
  kDiskFull,        // no room left on the medium
  kWriteProtected,  // the medium is write-protected
  kNotEmpty,        // folder still holds entries
  kNotReady,        // drive not ready
  kBadDisk,         // not a usable disk
  kWriteFault,      // the medium failed while writing
  kReadFault,       // the medium failed while reading
  kNoMemory,        // allocation failed
  kInvalid,         // argument that cannot be used (bad path, bad text)
  kCorrupt,         // a file's content contradicts itself
  kIo,              // any other system error
};

class [[nodiscard]] Status {
 public:
  Status() = default;
  Status(Code code, std::string text) : code_(code), text_(std::move(text)) {}

  bool ok() const { return code_ == Code::kOk; }
  Code code() const { return code_; }
  // UTF-8, for people: "open Z:\a\b: error 5". Empty when ok.
  const std::string& text() const { return text_; }

 private:
  Code code_ = Code::kOk;
  std::string text_;
};

}  // namespace tq
