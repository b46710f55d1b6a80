// The mail store: one file group type whose files the address-conversion library copies, asked
// through the backup settings.
#pragma once

#include <string_view>

#include "backup/settings.h"

namespace tq {

struct Site;

// Asks for a transfer and waits until it is over, without a time limit. `destination` is the copy
// to make (kBackUp) or the original to bring back (kRestore), `source` the original or the copy; a
// copy is known by its file name without extension. 0 for success, also when the application has no
// mail store at all, in which case nothing is asked and nothing written. Other values are failures,
// kTransferAsked when the transfer never reported or could not be asked for.
short mBkupPstTr(const Site& site, std::string_view destination, std::string_view source,
                 Transfer mode);

// Whether the next backup of that kind will rotate one away that holds a mail store. False when the
// backups cannot be read.
bool needs_mail_client(Site& site, short kind);

}  // namespace tq
