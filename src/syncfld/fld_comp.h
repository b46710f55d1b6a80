// The field comparison control. It holds nothing: making one only lets `fldcom` prepare itself.
#pragma once

namespace tq {

class FieldComparison {
 public:
  FieldComparison();
};

}  // namespace tq
