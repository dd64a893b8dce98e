#pragma once

#include <string>

namespace quintara {

/// One element of a matrix file, as it is read: who the instance is and where it stands in its
/// parent.
struct XMLElement {
  std::string PartNumber;
  std::string InstanceName;
  std::string FullInstanceName;  ///< instance names from the root down, parted by backslashes
  double XX = 0, XY = 0, XZ = 0;
  double YX = 0, YY = 0, YZ = 0;
  double ZX = 0, ZY = 0, ZZ = 0;
  double XO = 0, YO = 0, ZO = 0;
  bool Used = false;  ///< set when the record has been given to a component
};

}  // namespace quintara
