#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "support/test_platform.h"

namespace quintara::test {

/// The path of a fetched STEP file; a failure of the test that says how to get it when it is missing.
std::string DataFile(const std::string& name);

/// The whole bytes of a file.
std::string BytesOf(const std::string& path);

/// `text` with the first `from` made `to`; a failure of the test when there is none.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

/// The description of the failure that `body` ends with; a failure of the test when it doesn't.
std::string FailureOf(const std::function<void()>& body);

/// Everything in one folder that each test gets anew.
class GeometryTest : public testing::Test {
 protected:
  GeometryTest();

  std::unique_ptr<SplitAssembly> Read(const std::string& path);
  /// Writes `text` as a STEP file of the folder and reads it.
  std::unique_ptr<SplitAssembly> ReadText(const std::string& text);
  std::string FailureOfText(const std::string& text);
  std::string Path(const std::string& name) const { return folder_.Path(name); }

  /// Splits an assembly into part and light files in the folder, named by part number.
  void Split(const SplitAssembly& assembly);
  /// The scene of an assembly whose leaves are the split files with this extension.
  SceneNode SceneOf(const SplitAssembly& assembly, const std::string& extension) const;

  TemporaryFolder folder_;
  std::unique_ptr<Geometry> geometry_;

 private:
  SceneNode NodeOf(const AssemblyStructure& structure, std::size_t definition, const std::string& extension) const;
};

/// The index of the definition with this part number.
std::size_t IndexOf(const AssemblyStructure& structure, const std::string& partNumber);

/// The names of an assembly's occurrences with their positions composed out of the structure alone,
/// from the leaf upward.
std::vector<PlacedOccurrence> ComposedOccurrences(const AssemblyStructure& structure);

/// Whether two positions are equal within `tolerance` (axes) and `tolerance` times `size` (origin).
testing::AssertionResult Near(const PositionMatrix& a, const PositionMatrix& b, double tolerance, double size);

/// The names of all real files that hold assemblies, and of those that hold one part.
std::vector<std::string> AssemblyFiles();
std::vector<std::string> SinglePartFiles();
/// Such a name as a piece of a test's name.
std::string NameOfFile(const testing::TestParamInfo<std::string>& file);

}  // namespace quintara::test
