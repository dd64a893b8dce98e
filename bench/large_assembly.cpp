#include "large_assembly.h"

#include <BRepBuilderAPI_Transform.hxx>
#include <Interface_Static.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <array>
#include <gp_Ax1.hxx>
#include <stdexcept>

#include "geometry/kernel.h"
#include "geometry/model.h"
#include "geometry/raw_tree.h"
#include "geometry/step_file.h"

namespace quintara::bench {
namespace {

// The same brackets, plates, rods, bolts and nuts, as different CAD systems wrote them.
const char* const kSources[] = {"as1-oc-214.stp", "as1-tu-203.stp", "as1_pe_203.stp",
                                "dm1-oc-214.stp", "dm1-id-214.stp", "dm1-pe-214.stp"};
constexpr double kSpacing = 400;  // millimetres, more than the largest part is long

std::vector<PartShape> RealParts(const std::string& dataFolder) {
  std::vector<PartShape> parts;
  for (const std::string source : kSources) {
    const Document document;
    ReadStep(dataFolder + "/" + source, document, {});
    const auto tree = RawTreeOf(document, source);
    for (std::size_t i = 0; i < tree.labels.size(); ++i) {
      if (!tree.structure.definitions[i].isAssembly) parts.push_back(PartShapeAt(tree.labels[i]));
    }
  }
  return parts;
}

// A copy with nothing in common with the original.
PartShape Resized(const PartShape& part, double factor) {
  gp_Trsf size;
  size.SetScale(gp_Pnt(), factor);
  BRepBuilderAPI_Transform copy(part.shape, size, Standard_True);
  PartShape resized;
  resized.shape = copy.Shape();
  for (int i = 1; i <= part.styles.Extent(); ++i) {
    resized.styles.Add(copy.ModifiedShape(part.styles.FindKey(i)), part.styles.FindFromIndex(i));
  }
  return resized;
}

// Beside each other in rows, each turned in another way.
gp_Trsf Place(int number, int inARow, double spacing) {
  gp_Trsf turn;
  turn.SetRotation(gp_Ax1(gp_Pnt(), gp_Dir(1, number % 3, number % 7)), 0.1 * number);
  const int row = number / inARow;
  turn.SetTranslationPart({spacing * (number % inARow), spacing * row, 0});
  return turn;
}

std::string Numbered(const std::string& name, int number) {
  return name + "-" + std::to_string(number);
}

class Builder {
 public:
  explicit Builder(const Document& document) : model_(document) {}

  void Build(const std::string& dataFolder) {
    AddParts(RealParts(dataFolder));
    const auto root = model_.AddAssembly("LARGE");
    for (int module = 0; module < LargeAssembly::kModules; ++module) {
      const auto name = Numbered("MODULE", module);
      model_.AddInstance(root, Module(module, name), Place(module, 5, 100 * kSpacing), name + ".1");
    }
    model_.Finish();
  }

 private:
  void AddParts(const std::vector<PartShape>& real) {
    for (int i = 0; i < LargeAssembly::kParts; ++i) {
      const double size = 0.5 + 1.0 * i / LargeAssembly::kParts;
      const auto& part = real[static_cast<std::size_t>(i) % real.size()];
      parts_.push_back(model_.AddPart(Resized(part, size), LargeAssembly::PartNumber(i)));
    }
  }
  TDF_Label Module(int module, const std::string& name) {
    const auto label = model_.AddAssembly(name);
    for (int i = 0; i < LargeAssembly::kGroupsOfEach; ++i) {
      const int group = module * LargeAssembly::kGroupsOfEach + i;
      const auto groupName = Numbered("GROUP", group);
      model_.AddInstance(label, Group(group, groupName), Place(i, 4, 20 * kSpacing), groupName + ".1");
    }
    return label;
  }
  TDF_Label Group(int group, const std::string& name) {
    const auto label = model_.AddAssembly(name);
    constexpr int kPlaces = LargeAssembly::kPartsOfAGroup * LargeAssembly::kTimesInAGroup;
    for (int i = 0; i < kPlaces; ++i) {
      const int part =
          (group * LargeAssembly::kPartsOfAGroup + i % LargeAssembly::kPartsOfAGroup) % LargeAssembly::kParts;
      const auto instance =
          LargeAssembly::PartNumber(part) + "." + std::to_string(1 + i / LargeAssembly::kPartsOfAGroup);
      model_.AddInstance(label, parts_[static_cast<std::size_t>(part)], Place(i, 10, kSpacing), instance);
    }
    return label;
  }

  ModelBuilder model_;
  std::vector<TDF_Label> parts_;
};

void WriteStep(const Document& document, const std::string& path) {
  STEPCAFControl_Writer writer;
  writer.SetNameMode(Standard_True);
  writer.SetColorMode(Standard_True);
  Interface_Static::SetCVal("write.step.schema", "AP214IS");
  if (!writer.Transfer(document.Get(), STEPControl_AsIs) || writer.Write(path.c_str()) != IFSelect_RetDone) {
    throw std::runtime_error(path + ": the assembly can't be written");
  }
}

}  // namespace

std::string LargeAssembly::PartNumber(int part) {
  return Numbered("P", part);
}

void LargeAssembly::Make(const std::string& dataFolder, const std::string& stepFile, const std::string& binaryFile) {
  const Document document;
  Builder(document).Build(dataFolder);
  document.Save(binaryFile);
  WriteStep(document, stepFile);
}

}  // namespace quintara::bench
