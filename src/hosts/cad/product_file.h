#pragma once

#include <optional>
#include <string>
#include <vector>

#include "access/contracts/position_matrix.h"
#include "hosts/cad/properties.h"

namespace quintara::cad {

/// What a `.ZVAProduct` file holds.
struct ProductFile {
  struct Component {
    std::string name;  ///< empty when it is to be mended
    std::string file;  ///< relative to the folder of the product file, or absolute
    PositionMatrix position = kIdentityPosition;
    PropertyList properties;
  };
  /// The properties of a component's file that can't hold any itself.
  struct Reference {
    std::string file;  ///< as the components spell it
    PropertyList properties;
  };

  std::string partNumber;
  std::optional<std::string> name;  ///< where the root's name isn't its part number
  PositionMatrix position = kIdentityPosition;
  PropertyList properties;
  std::vector<Component> components;
  std::vector<Reference> references;
};

/// Fails with 321, naming `path` and the element at fault, for whatever isn't exactly such a file.
ProductFile ParseProductFile(const std::string& bytes, const std::string& path);

/// The bytes of such a file. Fails, naming it, for a text that a file can't hold.
std::string ProductFileText(const ProductFile& product);

}  // namespace quintara::cad
