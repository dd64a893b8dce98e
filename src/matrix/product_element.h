#pragma once

#include <string>

#include "access/contracts/zorva.h"
#include "base/counter16.h"
#include "base/ref.h"
#include "base/xml.h"

namespace quintara {

inline constexpr auto kProductTag = "PRODUCT";
inline constexpr auto kPartTag = "PART";

/// The texts of an element of the matrix file.
struct ElementTexts {
  std::string partNumber;
  std::string instanceName;
  std::string fullName;
};

/// The full name of an instance below the one of the full name `parent`; empty for the root's.
std::string FullNameUnder(const std::string& parent, const std::string& name);

/// Appends the element of a product with its fifteen attributes, the position read from the product.
/// Failure 5 for a text that holds a NUL, which would end it there.
XmlNode AppendElement(XmlNode parent, const char* tag, const ElementTexts& texts, const Ref<zorva::Product>& product);

/// A product whose element has been written, and the children whose elements belong below it.
struct WrittenProduct {
  XmlNode element;
  std::string fullName;
  Ref<zorva::Products> children;
  Counter16 count;
};

/// Appends the element of a product, "PRODUCT" if it has children and "PART" if it hasn't.
WrittenProduct WriteProduct(XmlNode parent, const std::string& parentFullName, const std::string& partNumber,
                            const Ref<zorva::Product>& product);

}  // namespace quintara
