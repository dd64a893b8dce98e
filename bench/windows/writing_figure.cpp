#include <cstdio>
#include <cstring>
#include <memory>

#include "access/session/the_platform.h"
#include "base/xml.h"
#include "bench_tree.h"
#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"
#include "matrix/Cls_Matrice.h"
#include "windows/dom_writer.h"
#include "windows/figures.h"

namespace quintara::bench {
namespace {

constexpr int kElements = 4'096;
constexpr int kBranches = 2;
constexpr unsigned kSeed = 20'26;
constexpr int kRepetitions = 7;
constexpr double kBound = 1.0;

void DemandSameElements(XmlNode left, XmlNode right) {
  Demand(std::strcmp(left.name(), right.name()) == 0, "the two documents differ in an element");
  auto other = right.first_attribute();
  for (auto attribute = left.first_attribute(); attribute; attribute = attribute.next_attribute()) {
    Demand(std::strcmp(attribute.name(), other.name()) == 0 && std::strcmp(attribute.value(), other.value()) == 0,
           "the two documents differ in an attribute");
    other = other.next_attribute();
  }
  auto child = right.first_child();
  for (auto own = left.first_child(); own; own = own.next_sibling()) {
    DemandSameElements(own, child);
    child = child.next_sibling();
  }
  Demand(!other && !child, "one document has more than the other");
}

void DemandSameDocuments(const std::string& left, const std::string& right) {
  auto& contents = ThePlatform().Contents();
  XmlDocument first;
  XmlDocument second;
  Demand(first.Parse(contents.Read(left)) && second.Parse(contents.Read(right)), "a document can't be read");
  DemandSameElements(first.Root(), second.Root());
}

}  // namespace

bool WritingFigure() {
  const Folder folder;
  const auto gate = std::make_shared<Gate>();
  CadHost host({gate, std::make_shared<NativeContents>(gate), {}});
  const auto tree = MakeTree(kElements, kBranches, LeafParts::kMany, kSeed);
  const auto root = host.Build(tree.structure)->Product();
  const auto own = folder.PathOf("own.xml");
  const auto dom = folder.PathOf("dom.xml");

  std::vector<double> ofOwn;
  std::vector<double> ofDom;
  for (int i = 0; i < kRepetitions; ++i) {
    auto start = Clock::now();
    Demand(Cls_Matrice().CreateXMLFile(root, own), "no matrix was written");
    ofOwn.push_back(SecondsSince(start));
    start = Clock::now();
    WriteWithTheDom(root, dom);
    ofDom.push_back(SecondsSince(start));
  }
  DemandSameDocuments(own, dom);

  std::printf("matrix of %d elements: %.1f ms, with the system's document object model %.1f ms (medians of %d)\n",
              kElements, Median(ofOwn) * 1000, Median(ofDom) * 1000, kRepetitions);
  return PrintFigure("CreateXMLFile against the system's document object model", Median(ofOwn) / Median(ofDom), kBound);
}

}  // namespace quintara::bench
