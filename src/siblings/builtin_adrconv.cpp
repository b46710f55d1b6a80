// The built-in address conversion: every value is in the master's form already, and there is no
// mail store to transfer.
#include "siblings/builtins.h"

namespace tq {
namespace {

short TQ_CALL is_conv_field(void*, short) { return 0; }

short TQ_CALL convert(void*, const char*, short, short, short, char*, int32_t) { return 1; }

void TQ_CALL start_transfer(void*, short) {}

short TQ_CALL is_busy(void*) { return 0; }

}  // namespace

tADRCONV_API builtin_adrconv() {
  return {sizeof(tADRCONV_API), nullptr, is_conv_field, convert, start_transfer, is_busy};
}

}  // namespace tq
