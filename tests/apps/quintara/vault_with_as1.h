#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "apps/quintara/vault_cli_fixture.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/xml.h"
#include "hosts/cad/cad_host.h"

namespace quintara::test {

/// One element of a matrix file.
struct MatrixElement {
  std::string tag;
  std::string partNumber;
  std::string name;
  std::string fullName;
  std::vector<std::string> numbers;

  bool operator==(const MatrixElement&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const MatrixElement& element) {
  return out << element.tag << ' ' << element.partNumber << ' ' << element.fullName << ' '
             << ::testing::PrintToString(element.numbers);
}

/// The elements of a matrix in the order of the document, which the names tell the tree of.
inline std::vector<MatrixElement> ElementsOf(const std::string& bytes) {
  XmlDocument document;
  if (!document.Parse(bytes)) throw std::runtime_error("no matrix: " + document.ParseError().reason);
  std::vector<MatrixElement> elements;
  const auto add = [&](const auto& self, XmlNode node) -> void {
    auto& element = elements.emplace_back(MatrixElement{node.name(),
                                                        node.attribute("PART_NUMBER").value(),
                                                        node.attribute("INSTANCE_NAME").value(),
                                                        node.attribute("FULL_INSTANCE_NAME").value(),
                                                        {}});
    for (const auto* number : {"XX", "XY", "XZ", "YX", "YY", "YZ", "ZX", "ZY", "ZZ", "XO", "YO", "ZO"}) {
      element.numbers.emplace_back(node.attribute(number).value());
    }
    for (auto child : node.children()) self(self, child);
  };
  add(add, document.Root());
  return elements;
}

/// The program on a vault into which `as1-oc-214.stp` was imported, with a matrix for each of its four assemblies.
/// The vault is made once and then copied.
class VaultWithAs1 : public VaultCli {
 protected:
  /// `matrices` is what the import is told about them.
  explicit VaultWithAs1(const std::string& matrices = "all") { UseCopyOf(Imported(matrices)); }

  void UseCopyOf(const TemporaryFolder& folder) const {
    std::filesystem::remove_all(ToPath(Folder()));
    std::filesystem::copy(ToPath(folder.Path("quintara.vault")), ToPath(Folder()),
                          std::filesystem::copy_options::recursive);
  }
  void RunWell(const std::vector<std::string>& arguments) {
    const auto outcome = Run(arguments);
    if (outcome.exitCode != kDone) throw std::runtime_error("preparing the vault failed: " + outcome.errors);
  }

  /// "B1": the newest revision and its state.
  std::string RevisionAndState(const std::string& partNumber) const {
    const auto found = Open()->FindNewest(partNumber);
    return found.size() == 1 ? found[0].revision + std::to_string(found[0].state) : std::to_string(found.size());
  }
  /// The same of the matrix of a product; empty where it has none.
  std::string RevisionAndStateOfMatrix(const std::string& partNumber) const {
    const auto vault = Open();
    const auto revisions = MatrixRevisions(*vault, partNumber);
    return revisions.empty() ? "" : revisions.back().revision + std::to_string(revisions.back().state);
  }
  /// The bytes of the newest revision of the matrix of a product; empty where it has none.
  std::string StoredMatrix(const std::string& partNumber) const {
    const auto vault = Open();
    const auto revisions = MatrixRevisions(*vault, partNumber);
    return revisions.empty() ? "" : vault->FileOf(ObjectIn(*vault, revisions.back().identity));
  }
  /// The same of a part or product itself.
  std::string StoredFile(const std::string& partNumber) const {
    const auto vault = Open();
    return vault->FileOf(ObjectIn(*vault, vault->FindNewest(partNumber).at(0).identity));
  }
  std::string StoredLight(const std::string& partNumber) const {
    const auto vault = Open();
    return vault->LightFileOf(ObjectIn(*vault, vault->FindNewest(partNumber).at(0).identity));
  }

  /// What is in the work directory of the vault's first user.
  std::string ReadWork(const std::string& name) const { return elsewhere.Read(WorkName(name)); }
  bool HasWork(const std::string& name) const { return std::filesystem::exists(ToPath(AdminPath(name))); }
  void WriteWork(const std::string& name, const std::string& bytes) const { elsewhere.Write(WorkName(name), bytes); }
  /// Moves a child of a product file there by `distance` along X, as a user of the CAD host does.
  void Move(const std::string& file, const std::string& child, double distance) const {
    const auto own = std::make_shared<Gate>();
    CadHost host({own, std::make_shared<NativeContents>(own), {}});
    const auto document = host.Application()->Documents()->Open(AdminPath(file));
    const auto children = document->AsProductDocument()->Product()->Products();
    for (int i = 1, count = children->Count(); i <= count; ++i) {
      if (children->Item(i)->Name() != child) continue;
      const auto position = children->Item(i)->Position();
      PositionMatrix numbers{};
      position->GetComponents(numbers);
      numbers[9] += distance;
      position->SetComponents(numbers);
    }
    host.Save(document, AdminPath(file));
  }

  static Object ObjectIn(EmbeddedVault& vault, const IntegrationVault::Identity& identity) {
    return vault.Application()->Engine()->Sessions(0)->ObjectStore()->ObjectById(identity.classId, identity.objectId);
  }

 private:
  /// Of a file in the work directory of the vault's first user, from `elsewhere`.
  static std::string WorkName(const std::string& name) {
    return FromPath(ToPath("quintara.vault") / "work" / "admin" / ToPath(name));
  }
  static const TemporaryFolder& Imported(const std::string& matrices) {
    static std::map<std::string, std::unique_ptr<TemporaryFolder>> made;
    auto& folder = made[matrices];
    if (folder) return *folder;
    auto fresh = std::make_unique<TemporaryFolder>();
    const auto vault = fresh->Path("quintara.vault");
    RunQuietly({"vault", "init", vault});
    RunQuietly({"import", Data("as1-oc-214.stp"), "--matrix", matrices, "--vault", vault});
    std::filesystem::remove_all(ToPath(vault) / "work");
    folder = std::move(fresh);
    return *folder;
  }
  static void RunQuietly(const std::vector<std::string>& arguments) {
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream errors;
    if (RunQuintara(arguments, {in, out, errors, {}, std::make_shared<Gate>(), {}}) == kDone) return;
    throw std::runtime_error("preparing the vault failed: " + errors.str());
  }
  static std::vector<EmbeddedVault::Listed> MatrixRevisions(EmbeddedVault& vault, const std::string& partNumber) {
    const auto found = vault.FindNewest(partNumber);
    if (found.empty()) return {};
    for (const auto& link : vault.Links(ObjectIn(vault, found[0].identity))) {
      if (!link.isStructure && link.goesOut) return vault.Revisions(ObjectIn(vault, link.object.identity));
    }
    return {};
  }
};

}  // namespace quintara::test
