#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/zorva.h"
#include "access/utils/Cls_Utils.h"
#include "matrix/matrix_document.h"
#include "matrix/xml_element.h"

namespace quintara::test {

/// The positioning read word by word: every search scans the whole document, every chain converts
/// every element anew, nothing is indexed or kept. What `Cls_Matrice` is measured against.
class LiteralMatrice {
 public:
  explicit LiteralMatrice(MatrixDocumentMaker makeDocument) : makeDocument_(std::move(makeDocument)) {}

  bool ProcessXMLFile(const Ref<zorva::Product>& root, const std::string& path);
  bool PositionAllInstances(const Ref<zorva::Product>& root, const std::string& path, bool allInstances,
                            const Ref<zorva::Selection>& selection);

 private:
  using Texts = std::vector<std::string>;
  using Elements = std::vector<XMLElement>;
  struct PNInstances {
    std::string PartNumber;
    Elements Instances;
  };

  std::vector<XmlNode> AllElements(XmlNode document);
  bool Convert(XmlNode node, XMLElement& element);
  bool CheckPN(const std::string& partNumber, const Texts& children, bool& found);
  bool CheckIfParentsAreUsed(XmlNode node, const Texts& children, bool& used);
  bool GetInstancesFromPN(XmlNode document, const std::string& partNumber, const Texts& children, Elements& instances);
  bool PositionnerXML(XmlNode document, const XMLElement& element, const PositionMatrix& matrix, XmlNode node,
                      PositionMatrix& out);
  bool Process(const Ref<zorva::Product>& root, XmlNode document);
  bool PositionAll(const Ref<zorva::Product>& root, XmlNode document, bool allInstances,
                   const Ref<zorva::Selection>& selection);

  bool WithDocument(const std::string& path, const std::function<bool(XmlNode)>& body);

  MatrixDocumentMaker makeDocument_;
  Cls_Utils utils_;
};

}  // namespace quintara::test
