#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "matrix/matrix_fixture.h"
#include "positioning/Cls_AllInstances.h"
#include "positioning/Cls_RetrieveMatrix.h"
#include "services/running_hosts.h"
#include "support/fake_spreadsheet.h"

namespace quintara::test {

/// What can be seen of the components of a flat product: all of it, which needs their design form, or a part.
std::vector<Component> ComponentsOf(const Ref<zorva::Product>& root);
std::vector<PositionMatrix> PositionsOf(const Ref<zorva::Product>& root);
std::vector<std::string> NamesOf(const Ref<zorva::Product>& root);

/// Running hosts with a work in progress open, and its matrix in the vault.
class WipBench : public RunningHosts {
 public:
  WipBench();

  /// Opens a flat product with these components at the origin, named "child 1" and so on.
  void GivenProduct(const std::vector<std::string>& partNumbers);
  /// The same with the mark of a work in progress.
  void GivenWip(const std::vector<std::string>& partNumbers);
  void Mark(const std::string& property, const std::string& value);

  /// Stores the matrix of a tree in the vault, as "PLANT Matrix", and lets the root remember it.
  void GivenXmlMatrix(const Node& tree);
  void GivenWorkbook(const Node& tree);
  /// What the spreadsheet finds in whatever workbook it opens.
  void GivenWorkbookCells(const Node& tree);
  Ref<veldora::VdObject> AddMatrix(const std::string& ending, const std::string& bytes);
  void Remember(const std::string& prefix, const Ref<veldora::VdObject>& document);

  /// From the next start on commands find no file.
  void GivenBlindFileSystem();

  void Retrieve() { Cls_RetrieveMatrix().Run(); }
  void PlaceAll() { Cls_AllInstances().Run(); }
  /// What a run showed.
  template <class Command>
  std::vector<Box> BoxesOf(Command&& command) {
    const auto before = static_cast<std::ptrdiff_t>(platform.Boxes().size());
    command();
    return {platform.Boxes().begin() + before, platform.Boxes().end()};
  }
  std::vector<Box> BoxesOfRetrieve() {
    return BoxesOf([&] { Retrieve(); });
  }
  std::vector<Box> BoxesOfPlaceAll() {
    return BoxesOf([&] { PlaceAll(); });
  }
  /// The calls of `command` that come after the start which each command makes, but for those of the vault's
  /// objects and of the files.
  template <class Command>
  std::vector<std::string> CallsOfHosts(Command&& command) {
    return WithoutStart(WholeRecord(std::forward<Command>(command)));
  }
  /// All calls of `command`. Failures asked for before come up in it.
  template <class Command>
  std::vector<std::string> WholeRecord(Command&& command) {
    gate->StartRecording();
    command();
    const auto record = gate->Record();
    gate->Reset();
    return record;
  }

  Ref<zorva::Product> Child(int index) { return root->Products()->Item(index); }
  SheetCells& Tree() { return spreadsheet->sheets[0]; }
  SheetCells& List() { return spreadsheet->sheets[1]; }

  FakeSpreadsheet spreadsheet;
  Ref<zorva::ProductDocument> document;
  Ref<zorva::Product> root;

 private:
  static std::vector<std::string> WithoutStart(const std::vector<std::string>& calls);
};

/// Calls that are expected of the hosts.
struct ExpectedCalls {
  void Add(std::initializer_list<const char*> more) { calls.insert(calls.end(), more.begin(), more.end()); }
  void Read(int sheet, int row, int column);
  /// The twelve cells of a position.
  void ReadPosition(int row);
  /// A column of the tree from a row up to the first one.
  void ReadUpward(int row, int column);

  std::vector<std::string> calls;
};

class WipTest : public testing::Test, protected WipBench {};

/// A bolt at the top, two in the sub-assembly "GROUP", a plate; the root isn't at the origin.
Node Plant();

}  // namespace quintara::test
