// The exchanged records of groups and members: allocating, releasing and copying their strings.
#pragma once

#include "tqutil/records.h"

namespace tq {

// Null records are left alone; see tqutil/records.h for what each does.
void alloc_strings(tSYNC_INFO* info);
void free_strings(tSYNC_INFO* info);
void alloc_strings(tSYNC_GRP* grp);
void free_strings(tSYNC_GRP* grp);
void copy_record(const tSYNC_INFO* from, tSYNC_INFO2* to);
void copy_record(const tSYNC_INFO2* from, tSYNC_INFO* to);
void copy_record(const tSYNC_GRP* from, tSYNC_GRP2* to);
void copy_record(const tSYNC_GRP2* from, tSYNC_GRP* to);

}  // namespace tq
