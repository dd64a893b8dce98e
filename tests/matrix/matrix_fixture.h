#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"
#include "matrix/Cls_Matrice.h"
#include "support/test_platform.h"

namespace quintara::test {

/// A position moved to `x`, `y`, `z` and not turned.
PositionMatrix At(double x, double y = 0, double z = 0);

/// The composition written out, one line for each number, to hold the arithmetic against.
PositionMatrix WrittenOut(const PositionMatrix& c, const PositionMatrix& p);

/// A node of a product tree or of a matrix: part number, instance name, position, children.
struct Node {
  std::string partNumber;
  std::string name;
  PositionMatrix position = kIdentityPosition;
  std::vector<Node> children;
};

/// A structure with a definition of its own for each node.
AssemblyStructure StructureOf(const Node& root);

/// The text of the matrix file of a tree, written independently of the writer under test.
std::string MatrixText(const Node& root);

/// What can be seen of one component of a flat product.
struct Component {
  std::string partNumber;
  std::string name;
  PositionMatrix position;

  bool operator==(const Component& other) const;
};
std::ostream& operator<<(std::ostream& stream, const Component& component);

/// Equal in every bit, the sign of a zero included.
bool SameBits(const PositionMatrix& left, const PositionMatrix& right);
MATCHER_P(HasBitsOf, expected, "") {
  return SameBits(arg, expected);
}

/// An embedded CAD host on a platform of its own, with one product open.
class Stage {
 public:
  /// Opens a product made of `tree` and takes it as the one to work on.
  void GivenProduct(const Node& tree);
  /// Opens a flat product whose children have these part numbers, all at the origin.
  void GivenFlat(const std::vector<std::string>& partNumbers);

  Ref<zorva::Product> Child(int index) { return root->Products()->Item(index); }
  std::vector<Component> Components();
  std::vector<PositionMatrix> Positions();
  std::vector<std::string> Names();
  Gate& TheGate() { return *platform.TheGate(); }

  TestPlatform platform;
  CadHost host{{platform.TheGate(), std::make_shared<NativeContents>(platform.TheGate()), {}}};
  Ref<zorva::ProductDocument> document;
  Ref<zorva::Product> root;
};

/// A stage with the file "matrix.xml" in a folder of its own.
class MatrixBench : public Stage {
 public:
  void GivenMatrix(const Node& tree) { folder.Write("matrix.xml", MatrixText(tree)); }
  void GivenMatrixText(const std::string& text) { folder.Write("matrix.xml", text); }
  std::string MatrixPath() const { return folder.Path("matrix.xml"); }

  bool Create() { return matrice.CreateXMLFile(root, MatrixPath()); }
  bool Process() { return matrice.ProcessXMLFile(root, MatrixPath()); }
  bool PositionAll(bool all) { return matrice.PositionAllInstances(root, MatrixPath(), all, document->Selection()); }

  TemporaryFolder folder;
  Cls_Matrice matrice;
};

/// The critical box of the matrix operations.
Box MatrixBox(const std::string& text);
/// The box of an unexpected error in `operation`.
Box UnexpectedError(const std::string& operation, const std::string& description);

class MatrixTest : public ::testing::Test, protected MatrixBench {};

}  // namespace quintara::test
