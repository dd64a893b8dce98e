#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "access/contracts/veldora.h"
#include "base/failure.h"
#include "support/test_platform.h"

/// What every implementation of the vault's contract has to do. A program that runs this suite names
/// its hosts as `VaultContractHosts`, a `testing::Types<...>`, and then includes the headers beside
/// this one. A host type is made without arguments, with an empty vault of its own, in which the user
/// "admin" is logged on with the password "secret", and has
///   static constexpr auto kName = "...";
///   Ref<veldora::VdApplication> Application();
///   const TemporaryFolder& Folder();  // with "work", the user's work directory, and "source"
///   std::string Dump();  // all that the vault holds: equal texts are equal vaults
namespace quintara::test {

using veldora::VdObject;

/// The failure that `body` ends with; number 0 when it doesn't.
template <class Body>
Failure FailureOf(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure;
  }
  return Failure(0, "no failure");
}

MATCHER_P(FailsWith, number, "") {
  *result_listener << "fails with " << arg.Number() << ", " << arg.Description();
  return arg.Number() == number;
}

struct VaultHostName {
  template <class Host>
  static std::string GetName(int) {
    return Host::kName;
  }
};

template <class Host>
class VaultContract : public testing::Test {
 protected:
  using Attributes = std::map<std::string, std::string>;

  Ref<veldora::VdSession> Session() const { return application->Engine()->Sessions(0); }
  Ref<veldora::VdObjectStore> Store() const { return Session()->ObjectStore(); }
  Ref<veldora::VdBehavior> Behavior() const { return Store()->DefaultBehavior()->Clone(); }
  Ref<veldora::VdSessionUtil> Util() const { return Session()->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil(); }
  std::int16_t ClassId(const std::string& name) const { return Session()->MetaInfo()->ClassByName(name)->ClassId(); }
  Ref<veldora::VdOperation> Operation(const std::string& name) const {
    return Session()->MetaInfo()->OperationByName(name);
  }

  Ref<VdObject> Add(const std::string& className, const Attributes& attributes) const {
    const auto object = Store()->NewObject(ClassId(className));
    for (const auto& [name, text] : attributes) object->Record()->ValuateFromString(name, text);
    object->AddToVault(Behavior());
    return object;
  }
  Ref<VdObject> AddPart(const std::string& partNumber) const {
    return Add("ZORVA Part", {{"NM_CN_PART_NUMBER", partNumber}});
  }
  /// With a file of these bytes, and a light one, taken from outside the work directory.
  Ref<VdObject> AddPart(const std::string& partNumber, const std::string& bytes, const std::string& light = {}) const {
    if (!light.empty()) folder.Write("source/" + partNumber + ".stp.lwt", light);
    return AddWithFile("ZORVA Part", partNumber, partNumber + ".stp", bytes);
  }
  Ref<VdObject> AddProduct(const std::string& partNumber, const std::vector<Ref<VdObject>>& children = {}) const {
    const auto product = AddWithFile("ZORVA Product", partNumber, partNumber + ".ZVAProduct", "product " + partNumber);
    for (const auto& child : children) Link(product, child, "Structure Link");
    return product;
  }
  Ref<VdObject> AddDocument(const std::string& description) const {
    return Add("Document", {{"CN_DESCRIPTION", description}});
  }
  void Link(const Ref<VdObject>& from, const Ref<VdObject>& to, const std::string& linkClass) const {
    from->AddLink(ClassId(linkClass), to, nullptr, Behavior());
  }
  void CheckIn(const Ref<VdObject>& object) const { Util()->CheckIn(object, nullptr, false); }
  void Release(const Ref<VdObject>& object) const { Util()->Release(object, nullptr, false); }
  void CheckOut(const Ref<VdObject>& object) const { Util()->CheckOut(object, nullptr, false); }

  /// The same object, read afresh.
  Ref<VdObject> Again(const Ref<VdObject>& object) const {
    return Store()->ObjectById(object->ClassId(), object->ObjectId());
  }
  int StateOf(const Ref<VdObject>& object) const { return Again(object)->Record()->ValueAsInteger("STATE"); }
  std::string TextOf(const Ref<VdObject>& object, const std::string& attribute) const {
    return Again(object)->Record()->ValueAsString(attribute);
  }
  std::vector<std::string> PartNumbers(const Ref<veldora::VdObjects>& objects) const {
    std::vector<std::string> numbers;
    for (int i = 0; i < objects->Count(); ++i)
      numbers.push_back(objects->Item(i)->Record()->ValueAsString("NM_CN_PART_NUMBER"));
    return numbers;
  }

  std::string WorkPath(const std::string& name) const { return folder.Path("work/" + name); }
  void WriteWork(const std::string& name, const std::string& bytes) const { folder.Write("work/" + name, bytes); }
  std::string ReadWork(const std::string& name) const { return folder.Read("work/" + name); }
  bool WorkHas(const std::string& name) const { return folder.Has("work/" + name); }
  std::string Dump() { return host.Dump(); }

  Host host;
  Ref<veldora::VdApplication> application = host.Application();
  const TemporaryFolder& folder = host.Folder();

 private:
  Ref<VdObject> AddWithFile(const std::string& className, const std::string& partNumber, const std::string& name,
                            const std::string& bytes) const {
    folder.Write("source/" + name, bytes);
    return Add(className,
               {{"NM_CN_PART_NUMBER", partNumber}, {"FILE_NAME", name}, {"DIRECTORY", folder.Path("source")}});
  }
};

}  // namespace quintara::test
