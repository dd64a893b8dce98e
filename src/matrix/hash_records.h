#pragma once

#include <string>

#include "base/counter16.h"

namespace quintara {

/// One row of a matrix workbook, as it was written: who the instance is and where it stands.
struct PN_IN_Couple {
  std::string PartNumber;
  std::string InstanceName;
  Counter16 Row;
};

/// A slot of the hash table. It is free while its part number is empty.
struct HashElementType {
  std::string PartNumber;
  std::string InstanceName;
  Counter16 Row;
  Counter16 NextIndex;  ///< the next slot of the chain, -1 at its end; 0 in a slot never used
};

}  // namespace quintara
