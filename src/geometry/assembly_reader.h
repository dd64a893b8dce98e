#pragma once

#include <string>

#include "access/contracts/geometry.h"
#include "geometry/kernel.h"

namespace quintara {

/// What a reader finds out that does not stand in the document which it makes.
struct ReadingNotes {
  std::vector<AssemblyStructure::NameChange> changes;
  double size;
};

/// Reads a STEP file and fills `document` with its tree as the CAD host takes it: one top-level
/// shape for each definition, children before what holds them, all names mended. May crash on
/// damaged data: to be called in a worker.
ReadingNotes ReadAssemblyInto(const Document& document, const std::string& path, const Progress& progress);

/// The notes as bytes that cross a process border, and back.
std::string ToBytes(const ReadingNotes& notes);
ReadingNotes ToNotes(const std::string& bytes);

/// The tree of a document that `ReadAssemblyInto` filled, without the notes.
AssemblyStructure StructureOf(const Document& document);

}  // namespace quintara
