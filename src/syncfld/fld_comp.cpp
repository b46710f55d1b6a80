#include "syncfld/fld_comp.h"

#include <memory>

#include "siblings/siblings.h"

namespace tq {

FieldComparison::FieldComparison() {
  constexpr std::size_t kWorkBuffer = 260;
  const auto buffer = std::make_unique<char[]>(kWorkBuffer);
  const tFLDCOM_API& api = fldcom();
  api.FldComFldCompInit(api.context, 0, buffer.get());
}

}  // namespace tq
