#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

#include "matrix/literal_matrice.h"
#include "matrix/matrix_fixture.h"

namespace quintara::test {
namespace {

// Random documents with everything that may go wrong in one: missing and prefixed attributes,
// doubled full names, empty part numbers, texts that aren't numbers.
class RandomCase {
 public:
  explicit RandomCase(unsigned seed) : random_(seed) {
    text_ = Chance(10) ? "<?xml version='1.0' encoding='UTF-8'?><!-- made -->" : "";
    AppendElement(0, "");
    const int children = Number(0, 6);
    for (int i = 0; i < children; ++i) children_.push_back(Chance(6) ? PartNumber() : standing_[Standing()]);
    notInDesign_ = Chance(4) ? Number(1, 6) : 0;
    unloaded_ = Chance(20) ? Number(1, 6) : 0;
    failingCall_ = Chance(12) ? Number(1, 120) : 0;
  }

  const std::string& Text() const { return text_; }
  const std::vector<std::string>& Children() const { return children_; }
  int NotInDesign() const { return notInDesign_; }
  int Unloaded() const { return unloaded_; }
  int FailingCall() const { return failingCall_; }

 private:
  int Number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
  bool Chance(int oneIn) { return Number(1, oneIn) == 1; }
  std::string PartNumber() { return Chance(15) ? "" : std::string(1, static_cast<char>('A' + Number(0, 4))); }

  std::string NumberText() {
    if (Chance(600)) return std::vector<std::string>{"nan", "0,5", " ", "x"}[static_cast<std::size_t>(Number(0, 3))];
    return std::to_string(std::uniform_real_distribution<double>(-2, 2)(random_));
  }

  std::size_t Standing() { return static_cast<std::size_t>(Number(0, static_cast<int>(standing_.size()) - 1)); }

  // What a second attribute of the same base name says.
  std::string SecondValue(const std::string& name, const std::string& value) {
    if (name.size() == 2) return Chance(20) ? value + "B" : NumberText();
    if (name == "FULL_INSTANCE_NAME" && Chance(2))
      return fullNames_[static_cast<std::size_t>(Number(0, static_cast<int>(fullNames_.size()) - 1))];
    return Chance(2) ? "" : value + "B";
  }

  void AppendAttribute(const std::string& name, const std::string& value) {
    if (Chance(40)) return;
    text_ += " " + std::string(Chance(30) ? "p:" : "") + name + "='" + value + "'";
    if (Chance(40)) text_ += " q:" + name + "='" + SecondValue(name, value) + "'";
  }

  void AppendElement(int depth, const std::string& above) {
    const auto partNumber = PartNumber();
    standing_.push_back(partNumber);
    const auto name = partNumber + "." + std::to_string(Number(1, 4));
    const auto fullName = Chance(30) ? "" : above.empty() ? name : above + "\\" + name;
    fullNames_.push_back(fullName);
    text_ += "<E";
    if (Chance(5)) text_ += " other='1'";
    AppendAttribute("PART_NUMBER", partNumber);
    AppendAttribute("INSTANCE_NAME", name);
    AppendAttribute("FULL_INSTANCE_NAME", fullName);
    for (const char* number : {"XX", "XY", "XZ", "YX", "YY", "YZ", "ZX", "ZY", "ZZ", "XO", "YO", "ZO"}) {
      AppendAttribute(number, NumberText());
    }
    text_ += ">";
    if (Chance(5)) text_ += "text<!-- c -->";
    const int children = depth < 4 ? Number(0, 4 - depth) : 0;
    for (int i = 0; i < children; ++i) AppendElement(depth + 1, fullName);
    text_ += "</E>";
  }

  std::mt19937 random_;
  std::string text_;
  std::vector<std::string> standing_;
  std::vector<std::string> fullNames_;
  std::vector<std::string> children_;
  int notInDesign_ = 0;
  int unloaded_ = 0;
  int failingCall_ = 0;
};

struct Outcome {
  bool result = false;
  std::vector<Box> boxes;
  std::vector<std::string> record;
  std::vector<std::pair<std::string, PositionMatrix>> children;
};

std::vector<std::pair<std::string, PositionMatrix>> NamesAndPositions(const Ref<zorva::Product>& root) {
  std::vector<std::pair<std::string, PositionMatrix>> children;
  for (int i = 1; i <= root->Products()->Count(); ++i) {
    const auto child = root->Products()->Item(i);
    children.emplace_back(child->Name(), PositionMatrix{});
    child->Position()->GetComponents(children.back().second);
  }
  return children;
}

class InMemory : public MatrixDocument {
 public:
  explicit InMemory(const std::string& text) : text_(text) {}
  bool Load(const std::string&) override { return LoadBytes(text_); }

 private:
  const std::string& text_;
};

template <class Matrice>
Outcome RunCase(const RandomCase& random, std::optional<bool> allInstances) {
  Stage bench;
  bench.GivenFlat(random.Children());
  const auto setForm = [&](int child, ComponentForm form) {
    if (child >= 1 && child <= bench.root->Products()->Count()) bench.host.SetForm(bench.Child(child), form);
  };
  setForm(random.NotInDesign(), ComponentForm::kWithoutDesign);
  setForm(random.Unloaded(), ComponentForm::kUnloaded);
  const auto selection = bench.document->Selection();
  bench.TheGate().StartRecording();
  if (random.FailingCall() > 0) bench.TheGate().FailCall(random.FailingCall());
  Outcome outcome;
  Matrice matrice([&] { return std::make_unique<InMemory>(random.Text()); });
  outcome.result = allInstances ? matrice.PositionAllInstances(bench.root, "m.xml", *allInstances, selection)
                                : matrice.ProcessXMLFile(bench.root, "m.xml");
  outcome.record = bench.TheGate().Record();
  bench.TheGate().Reset();
  outcome.boxes = bench.platform.Boxes();
  outcome.children = NamesAndPositions(bench.root);
  return outcome;
}

void ExpectEqual(const Outcome& indexed, const Outcome& literal) {
  ASSERT_EQ(indexed.result, literal.result);
  ASSERT_EQ(indexed.record, literal.record);
  ASSERT_EQ(indexed.boxes.size(), literal.boxes.size());
  for (std::size_t i = 0; i < literal.boxes.size(); ++i) ASSERT_EQ(indexed.boxes[i].text, literal.boxes[i].text);
  ASSERT_EQ(indexed.children.size(), literal.children.size());
  for (std::size_t i = 0; i < literal.children.size(); ++i) {
    ASSERT_EQ(indexed.children[i].first, literal.children[i].first);
    ASSERT_THAT(indexed.children[i].second, HasBitsOf(literal.children[i].second));
  }
}

void ExpectOneMeaning(std::optional<bool> allInstances, unsigned firstSeed) {
  constexpr unsigned kCases = 2'000;
  int placed = 0;
  for (unsigned seed = firstSeed; seed < firstSeed + kCases; ++seed) {
    const RandomCase random(seed);

    const auto literal = RunCase<LiteralMatrice>(random, allInstances);
    const auto indexed = RunCase<Cls_Matrice>(random, allInstances);

    SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + random.Text());
    ASSERT_NO_FATAL_FAILURE(ExpectEqual(indexed, literal));
    placed += literal.result && !literal.children.empty() ? 1 : 0;
  }
  EXPECT_GT(placed, static_cast<int>(kCases / 10)) << "the cases must not all end in a box";
}

TEST(IndexedPositioning, MeansWhatTheScansOfProcessXMLFileMean) {
  ExpectOneMeaning({}, 1);
}
TEST(IndexedPositioning, MeansWhatTheScansOfPositionAllInstancesMean) {
  ExpectOneMeaning(true, 100'001);
}
TEST(IndexedPositioning, MeansWhatTheScansOfThePlacingOfFirstInstancesMean) {
  ExpectOneMeaning(false, 200'001);
}

}  // namespace
}  // namespace quintara::test
