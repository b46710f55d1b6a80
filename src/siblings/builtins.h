// The built-in default of each sibling: one file a table.
#pragma once

#include <cstdint>

#include "tqutil/siblings.h"

namespace tq {

// Folders and captions from `tqutil.ini` in the home folder, field files in their documented form.
tFLDCOM_API builtin_fldcom();
// Its entries for definition files.
void add_definitions(tFLDCOM_API& api);

// Field definitions from "RECDB.DAT". They are read when they are first asked for and kept until
// forgotten.
tRECDB_API builtin_recdb();
void forget_field_definitions();
// Its entries for backups.
void add_backup_entries(tFLDCOM_API& api);

// Converts nothing and has no mail store.
tADRCONV_API builtin_adrconv();

// Message boxes, and the dialogs of the platform: windows, or the terminal.
tERRBOX_API builtin_errbox();
tDIALOG_API builtin_dialog();

// A log of records in the work folder, one a process.
tHSTYTMP_API builtin_hstytmp();

// Under what the built-in store files the records that follow; `fldcom` is told.
struct HistoryFiling {
  std::uint16_t number = 0;
  std::uint16_t app_id = 0;
};
HistoryFiling& history_filing();

}  // namespace tq
