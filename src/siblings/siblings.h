// What the families ask of the application's other libraries, through the tables that are in force:
// the built-in ones, or those of the application entry by entry. Set and asked on one thread.
#pragma once

#include <string>

#include "tqutil/siblings.h"

namespace tq {

// The tables in force; every entry is callable.
const tFLDCOM_API& fldcom();
const tRECDB_API& recdb();
const tADRCONV_API& adrconv();
const tHSTYTMP_API& hstytmp();
const tERRBOX_API& errbox();
const tDIALOG_API& dialog();

// A folder query's answer with its trailing backslash; empty when the sibling names none. Ask as
// `sibling_folder(&tFLDCOM_API::FldComGetWorkFolder)`.
using FolderQuery = decltype(&tFLDCOM_API::FldComGetWorkFolder);
std::string sibling_folder(FolderQuery query);

// See tqSetSiblings and tqGetSiblings.
bool set_siblings(const tTQ_SIBLINGS* siblings);
bool get_siblings(tTQ_SIBLINGS* siblings);

}  // namespace tq
