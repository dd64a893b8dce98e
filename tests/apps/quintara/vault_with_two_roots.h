#pragma once

#include <string>

#include "apps/quintara/vault_with_as1.h"

namespace quintara::test {

/// The same vault, to which another product can be added that holds a part of the assembly.
class VaultWithTwoRoots : public VaultWithAs1 {
 protected:
  explicit VaultWithTwoRoots(const std::string& matrices = "all") : VaultWithAs1(matrices) {}

  /// "hall" holds "rod-assembly", which so has two matrices.
  void AddHall() const {
    work.Write("hall Matrix.xml", StoredMatrix("as1"));
    const auto vault = Open();
    const auto session = vault->Application()->Engine()->Sessions(0);
    const auto matrix = vault->AddObject("Document",
                                         {{"CN_DESCRIPTION", "hall Matrix"},
                                          {"NM_CN_PART_NUMBER", "hall Matrix"},
                                          {"FILE_TYPE", std::to_string(vault->FileTypeId("xml"))}},
                                         work.Path("hall Matrix.xml"));
    const auto hall = vault->AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", "hall"}}, {});
    vault->SetStructure(hall, {{ObjectIn(*vault, vault->FindNewest("rod-assembly").at(0).identity), 1}});
    hall->AddLink(session->MetaInfo()->ClassByName("Document Link")->ClassId(), matrix, nullptr,
                  session->ObjectStore()->DefaultBehavior());
    CheckIn(*vault, hall);
  }
};

}  // namespace quintara::test
