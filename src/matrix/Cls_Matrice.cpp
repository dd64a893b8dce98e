#include "matrix/Cls_Matrice.h"

#include <utility>

#include "matrix/guarded.h"

namespace quintara {
namespace {

std::string Quoted(const std::string& path) {
  return "\"" + path + "\"";
}

}  // namespace

Cls_Matrice::Cls_Matrice(MatrixDocumentMaker makeDocument) : makeDocument_(std::move(makeDocument)) {}

void Cls_Matrice::EnsureUtils() {
  if (!utils_) utils_ = std::make_unique<Cls_Utils>();
}

std::unique_ptr<MatrixDocument> Cls_Matrice::NewDocument() const {
  return makeDocument_ ? makeDocument_() : std::make_unique<MatrixDocument>();
}

// Nothing when the file can't be used, which the user has been told then.
std::unique_ptr<MatrixDocument> Cls_Matrice::LoadDocument(const std::string& path) {
  auto document = NewDocument();
  if (!document->Load(path)) {
    ShowCritical("Error in loading XML file " + Quoted(path) + " : " + document->ParseError().reason);
    return nullptr;
  }
  if (const auto error = document->ParseError(); error.code != 0) {
    ShowCritical("Error in reading XML file " + Quoted(path) + " : " + error.reason);
    return nullptr;
  }
  return document;
}

// What both writers do; `walk` is given the document and fills it.
template <class Walk>
bool Cls_Matrice::WriteXMLFile(const std::string& path, Walk&& walk) {
  EnsureUtils();
  const auto document = NewDocument();
  auto instruction = document->Node().append_child(pugi::node_pi);
  instruction.set_name("xml");
  instruction.set_value("version='1.0' encoding='UTF-8'");
  if (!walk(document->Node())) return false;
  if (const auto error = document->ParseError(); error.code != 0) {
    ShowCritical("The XML File contains some errors : " + error.reason);
    return false;
  }
  document->Save(path);
  utils_.reset();
  return true;
}

bool Cls_Matrice::CreateXMLFile(const Ref<zorva::Product>& RootProduct, const std::string& XMLFullPath) {
  return Guarded("Cls_Matrice.CreateXMLFile", [&] {
    return WriteXMLFile(XMLFullPath, [&](XmlNode document) { return ParseZORVATree(RootProduct, document); });
  });
}

bool Cls_Matrice::MergeXMLMatrix(const Ref<zorva::Product>& RootProduct, const std::string& XMLFullPath) {
  return Guarded("Cls_Matrice.MergeXMLMatrix", [&] {
    return WriteXMLFile(XMLFullPath,
                        [&](XmlNode document) { return ParseZORVATreeForMerging(RootProduct, document, {}, {}); });
  });
}

// What both readers begin with: the file, then the children as they stand. `place` is given both.
template <class Place>
bool Cls_Matrice::OnFlatProduct(const Ref<zorva::Product>& root, const std::string& path, Place&& place) {
  EnsureUtils();
  const auto document = LoadDocument(path);
  if (!document) return false;
  FlatProduct product{root, root->Products(), {}, {}};
  product.count = product.children->Count();
  if (product.count <= 0) return true;
  TakeStock(product);
  MatrixIndex index(document->Node());
  return place(product, index);
}

bool Cls_Matrice::ProcessXMLFile(const Ref<zorva::Product>& RootProduct, const std::string& XMLFullPath) {
  return Guarded("Cls_Matrice.ProcessXMLFile", [&] {
    return OnFlatProduct(RootProduct, XMLFullPath,
                         [&](FlatProduct& product, MatrixIndex& index) { return PlaceChildren(product, index); });
  });
}

bool Cls_Matrice::PositionAllInstances(const Ref<zorva::Product>& RootProduct, const std::string& XMLFullPath,
                                       bool AllInstancesChecked, const Ref<zorva::Selection>& MySelection) {
  return Guarded("Cls_Matrice.PositionAllInstances", [&] {
    return OnFlatProduct(RootProduct, XMLFullPath, [&](FlatProduct& product, MatrixIndex& index) {
      ThinOut(product);
      return PlaceAllInstances(product, index, AllInstancesChecked, MySelection);
    });
  });
}

}  // namespace quintara
