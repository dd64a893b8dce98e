#pragma once

#include <TopoDS_Face.hxx>
#include <XCAFPrs_Style.hxx>
#include <vector>

#include "geometry/model.h"

namespace quintara {

/// A face with the colours that it has of its own or from what holds it.
struct ColouredFace {
  TopoDS_Face face;
  XCAFPrs_Style style;
};

std::vector<ColouredFace> FacesOf(const PartShape& part);

/// A part without the curves and points that belong to no face.
PartShape WithoutCurves(const PartShape& part);

/// One part of many pieces, those of one style together in one compound or, for `kShell`, one shell.
enum class Grouping { kCompound, kShell };
PartShape PartOfFaces(const std::vector<ColouredFace>& faces, Grouping grouping);

}  // namespace quintara
