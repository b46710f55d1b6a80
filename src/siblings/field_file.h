// The field files of the built-in `fldcom`: a header of two numbers, title and comment, then one
// record a line. docs/formats.md describes them. The files are untrusted: lines that are no records
// are passed over.
#pragma once

#include <string_view>

#include "common/lines.h"
#include "tqutil/records.h"
#include "tqutil/siblings.h"

namespace tq {

struct FieldFileHeader {
  short number = 0;
  short number2 = 0;
  char title[TQ_PATH_SIZE] = {};
  char comment[256] = {};
};

// One field file open for reading. One reader, one thread.
class FieldFile {
 public:
  // False when the file cannot be read or does not begin with a header.
  bool open(std::string_view path);
  const FieldFileHeader& header() const { return header_; }
  // The next record; false at the end.
  bool next(tFLDCOM_FLDREC& record);

 private:
  bool read_header();

  LineReader lines_;
  FieldFileHeader header_;
};

}  // namespace tq
