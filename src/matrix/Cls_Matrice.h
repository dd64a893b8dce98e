#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "access/contracts/position_matrix.h"
#include "access/contracts/zorva.h"
#include "access/utils/Cls_Utils.h"
#include "base/counter16.h"
#include "base/ref.h"
#include "matrix/child_part_numbers.h"
#include "matrix/matrix_document.h"
#include "matrix/matrix_index.h"
#include "matrix/xml_element.h"

namespace quintara {

/// Writes the matrix of a product, and places the components of a flat product from one.
///
/// The matrix is an XML file: the processing instruction, then one element for each node of the
/// product tree, "PRODUCT" with children and "PART" without, nested as the tree is. Fifteen
/// attributes each: PART_NUMBER, INSTANCE_NAME, FULL_INSTANCE_NAME and the twelve numbers of the
/// position in the parent, XX, XY, XZ, YX ... ZO. Numbers have "." as separator and read back to
/// the same bits.
///
/// A failure is shown in a critical box, titled "QNTR", that names the operation, except in the
/// walk of `CreateXMLFile`; the result is False, and nothing is thrown. More than 32,767 children
/// of one product overflow the counter of the writer; more than that many elements, attributes of
/// one element or children overflow those of the readers.
class Cls_Matrice {
 public:
  /// Uses documents on the platform's files unless told otherwise.
  explicit Cls_Matrice(MatrixDocumentMaker makeDocument = {});

  /// Writes the matrix of `RootProduct` to `XMLFullPath`, in place of a file of that name. False
  /// without a box, and without a file, when the walk of the tree fails, above all at a product
  /// without part number.
  bool CreateXMLFile(const Ref<zorva::Product>& RootProduct, const std::string& XMLFullPath);

  /// The same for a product whose sub-assemblies aren't loaded: in the place of each child that is an
  /// assembly in the vault stands the root element of its own matrix, as it is in that matrix document,
  /// with the full instance names continued; a child that is a part there has one element. False without
  /// a box where a child has no object in the vault, or a sub-assembly no matrix there. A matrix whose
  /// root isn't its second node, behind the processing instruction, is a failure, as is one with more
  /// than 32,767 elements.
  bool MergeXMLMatrix(const Ref<zorva::Product>& RootProduct, const std::string& XMLFullPath);

  /// Places each child of `RootProduct` at the next free element of its part number, in the frame
  /// of the matrix's root. An element below one whose part number is itself a child's is left out.
  /// A child more than there are elements repeats the position given last, of whatever part number.
  /// False when a child's part number has no element; the children before it keep their place.
  bool ProcessXMLFile(const Ref<zorva::Product>& RootProduct, const std::string& XMLFullPath);

  /// First removes, behind each child whose part number stood more than once at the start, the
  /// following child, whatever it is; False when there is none behind it. Then places one child of
  /// each part number at its first element and, with `AllInstancesChecked`, makes a copy for every
  /// further element through `MySelection`, the selection of the active document. Children get the
  /// full instance name of their element. False when a part number has no element. What was done
  /// before a failure stays.
  bool PositionAllInstances(const Ref<zorva::Product>& RootProduct, const std::string& XMLFullPath,
                            bool AllInstancesChecked, const Ref<zorva::Selection>& MySelection);

 private:
  friend class MatriceInternals;  // the tests' way to the private operations

  // One product and its children on their way through an operation.
  struct FlatProduct {
    Ref<zorva::Product> root;
    Ref<zorva::Products> children;
    Counter16 count;
    ChildPartNumbers partNumbers;
  };
  // The records of one part number, as numbers of elements in document order.
  struct PNInstances {
    std::vector<int> elements;
    std::size_t used = 0;  // how many of them have been given away
    bool isSearched = false;
  };

  void EnsureUtils();
  std::unique_ptr<MatrixDocument> NewDocument() const;
  std::unique_ptr<MatrixDocument> LoadDocument(const std::string& path);

  template <class Walk>
  bool WriteXMLFile(const std::string& path, Walk&& walk);
  template <class Place>
  bool OnFlatProduct(const Ref<zorva::Product>& root, const std::string& path, Place&& place);

  bool ParseZORVATree(const Ref<zorva::Product>& Product, XmlNode Document);
  bool ParseZORVATreeForMerging(const Ref<zorva::Product>& Product, XmlNode Document, XmlNode ParentElement,
                                const std::string& ParentFullName);
  bool MergeRoot(const Ref<zorva::Product>& root, XmlNode document);
  bool MergeChild(const Ref<zorva::Product>& child, XmlNode parent, const std::string& parentFullName);
  bool GraftMatrixOf(const Ref<veldora::VdObject>& assembly, XmlNode parent, const std::string& parentFullName);

  bool ConvertNodeToXMLElement(XmlNode Node, XMLElement& Element);
  bool ConvertOnce(MatrixIndex& Document, int element);
  bool ConvertXMLElementToMatrix(const XMLElement& Element, std::span<double> Matrix);
  bool MultiplicateMatrixes(std::span<const double> MatriceFils, std::span<const double> MatricePere,
                            std::span<double> Result);

  bool CheckPN(std::string_view PartNumber, const ChildPartNumbers& Children, bool& Found);
  bool CheckIfParentsAreUsed(MatrixIndex& Document, int Node, const ChildPartNumbers& Children, bool& Used);
  bool GetInstancesFromPN(MatrixIndex& Document, const std::string& PartNumber, const ChildPartNumbers& Children,
                          std::vector<int>& Instances);
  bool PositionnerXML(MatrixIndex& Document, int Element, PositionMatrix& OutMatrix);

  void TakeStock(FlatProduct& product);
  bool PlaceChildren(FlatProduct& product, MatrixIndex& document);
  static PNInstances& InstancesOf(std::vector<PNInstances>& cache, int kind);
  void ThinOut(FlatProduct& product);
  bool PlaceAllInstances(const FlatProduct& product, MatrixIndex& document, bool allInstances,
                         const Ref<zorva::Selection>& selection);
  bool PlaceEachInstance(const FlatProduct& product, MatrixIndex& document, const Ref<zorva::Product>& source,
                         const std::vector<int>& elements, const Ref<zorva::Selection>& selection,
                         Counter16& lastIndex);

  MatrixDocumentMaker makeDocument_;
  std::unique_ptr<Cls_Utils> utils_;
};

}  // namespace quintara
