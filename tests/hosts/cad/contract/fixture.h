#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "access/contracts/zorva.h"
#include "support/test_platform.h"
#include "support/tiny_files.h"

/// What every implementation of the CAD host's contract has to do. A program that runs this suite
/// names its hosts as `CadContractHosts`, a `testing::Types<...>`, and then includes the headers
/// beside this one. A host type is made without arguments and has
///   Ref<zorva::Application> Application();
///   void LoadWithoutDesign(const Ref<zorva::Product>&);  // as if it had been opened so
///   void Unload(const Ref<zorva::Product>&);
namespace quintara::test {

/// The failure that `body` ends with; number 0 and a failed test when it doesn't.
template <class Body>
Failure FailureOf(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure;
  }
  ADD_FAILURE() << "no failure";
  return Failure(0, "none");
}

inline PositionMatrix At(double x) {
  return {1, 0, 0, 0, 1, 0, 0, 0, 1, x, 0, 0};
}

inline PositionMatrix PositionOf(const Ref<zorva::Product>& product) {
  PositionMatrix position{};
  product->Position()->GetComponents(position);
  return position;
}

inline std::vector<std::string> NamesOf(const Ref<zorva::Products>& children) {
  std::vector<std::string> names;
  for (int i = 1; i <= children->Count(); ++i) names.push_back(children->Item(i)->Name());
  return names;
}

inline std::string ValueOf(const Ref<zorva::Parameters>& parameters, const std::string& name) {
  return parameters->Item(name)->ValueAsString();
}

template <class Host>
class CadContract : public testing::Test {
 protected:
  Ref<zorva::Documents> Documents() { return application->Documents(); }
  Ref<zorva::ProductDocument> NewDocument() { return Documents()->Add("ZVAProduct")->AsProductDocument(); }

  /// The path of a new part file, or light file, in the folder.
  std::string Part(const std::string& partNumber) { return Written(partNumber + ".stp", TinyStep(partNumber)); }
  std::string Light(const std::string& partNumber) { return Written(partNumber + ".lwt", TinyLight(partNumber)); }
  std::string Written(const std::string& name, const std::string& bytes) {
    folder.Write(name, bytes);
    return folder.Path(name);
  }

  /// A new component of a new part, added to `parent`.
  Ref<zorva::Product> Added(const Ref<zorva::Product>& parent, const std::string& partNumber) {
    parent->Products()->AddComponentsFromFiles({Part(partNumber)}, "All");
    return parent->Products()->Item(parent->Products()->Count());
  }

  TemporaryFolder folder;
  Host host;
  Ref<zorva::Application> application = host.Application();
};

}  // namespace quintara::test
