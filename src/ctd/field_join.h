// The text that is shown for a field: several stored fields may stand behind one that is shown, as
// the parts of a name or the lines of an address. docs/candidates.md tells which.
#pragma once

#include <span>
#include <string>

#include "tqutil/ctd.h"

namespace tq {

// Joins the text of field `fld_id` from a record's fields. Every field whose text is looked at gets
// `mark` as its used mark, unless that is negative. False with an empty text when there is none.
bool join_field(short fld_id, std::span<tSYNC_FLDTBL> fields, short mark, std::string& text);

}  // namespace tq
