#pragma once

#include <Bnd_Box.hxx>
#include <TDF_Label.hxx>
#include <TopoDS_Shape.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XCAFPrs_IndexedDataMapOfShapeStyle.hxx>
#include <string>

#include "access/contracts/position_matrix.h"
#include "geometry/kernel.h"

namespace quintara {

/// What one part looks like, apart from any document: its shape, and the colours of it or of
/// pieces of it.
struct PartShape {
  TopoDS_Shape shape;
  XCAFPrs_IndexedDataMapOfShapeStyle styles;
};

/// The look of what stands at a label, an assembly as one compound of everything in it.
PartShape PartShapeAt(const TDF_Label& label);
/// That of a document: of its free shapes together. The shape is null when there are none.
PartShape PartShapeOf(const Document& document);

/// The box around a shape; empty for one without geometry.
Bnd_Box BoxOf(const TopoDS_Shape& shape);

/// Builds the tree of a document: every part one shape, every assembly a list of instances.
class ModelBuilder {
 public:
  explicit ModelBuilder(const Document& document);

  TDF_Label AddPart(const PartShape& part, const std::string& partNumber);
  TDF_Label AddAssembly(const std::string& partNumber);
  /// `movement` has no scale and is not mirrored.
  TDF_Label AddInstance(const TDF_Label& assembly, const TDF_Label& definition, const gp_Trsf& movement,
                        const std::string& name);
  /// Gives an instance the colours that another one has of its own.
  void CopyColours(const TDF_Label& from, const TDF_Label& to);
  /// To be called when all is added.
  void Finish();

 private:
  void Paint(const TDF_Label& label, const XCAFPrs_Style& style);

  Handle(XCAFDoc_ShapeTool) shapes_;
  Handle(XCAFDoc_ColorTool) colours_;
};

}  // namespace quintara
