#pragma once

namespace quintara::help {

// What stands below the options in the help text of the program and of each verb.

inline constexpr auto kProgram = R"(A product is named by its file, or by its part number in the work directory; a
work in progress also without the WIP~~ in front. A STEP file is named by itself.

Exit code: 0 done; 1 something failed or a failure was shown; 2 wrong use,
nothing was changed.

Example, from a STEP assembly to a flat product with every part in its place:
  quintara import as1-oc-214.stp
  quintara matrix as1
  quintara flatten as1
  quintara position as1 --matrix "as1 Matrix.xml" --all-instances
  quintara compare as1 --with as1-oc-214.stp

'quintara VERB --help' tells more about one verb.
)";

inline constexpr auto kCommonOptions =
    "\nEvery verb also has --work FOLDER, --yes and --no; 'quintara --help' tells them.\n";

inline constexpr auto kImport = R"(Every part becomes 'PART NUMBER.stp', every assembly 'PART NUMBER.ZVAProduct',
and both get a light representation, 'PART NUMBER.lwt'. Names that can't be used
are changed, always in the same way, and listed. Either all files are put in
place or none.

Examples:
  quintara import as1-oc-214.stp
  quintara import gearbox.stp --work gearbox --replace
)";

inline constexpr auto kTree = R"(Examples:
  quintara tree as1
  quintara tree as1.ZVAProduct --depth 1
  quintara tree as1-oc-214.stp
)";

inline constexpr auto kMatrix = R"(The matrix is an XML file that holds the whole tree, with the position of each
instance in its parent.

Examples:
  quintara matrix as1
  quintara matrix as1 -o old.xml --replace
)";

inline constexpr auto kFlatten = R"(The flat product is called WIP~~NAME. Each chosen part number is one component
of it, at the origin; 'quintara position' puts them where they belong.

Without a pattern every part is taken as a document. With patterns only what
they choose is taken; they are applied from left to right. Below a component
that is taken nothing else can be chosen.

A pattern (*, ?; capitals are ignored) is compared with the part number, the
instance name, and the path of part numbers, such as as1/rod-assembly/nut. In
front of it 'part:' or 'product:' restricts it to components without or with
children.

Examples:
  quintara flatten as1
  quintara flatten as1 --document 'part:*' --light nut --light bolt
  quintara flatten as1 --name rods --light rod-assembly --document nut
  quintara flatten as1 --light '*' --none '*bracket*'
)";

inline constexpr auto kPosition = R"(Three ways:
  --all-instances    one component for each instance in the matrix, named with
                     its full path; copies are made as needed. For a product
                     fresh from 'quintara flatten'.
  --first-instances  one component for each part number, at its first instance,
                     named with its full path. Likewise for a fresh one.
  neither            the components that are there are put back in place, those
                     of one part number in the order of the matrix.
The product is saved only when every component could be placed.

Examples:
  quintara position as1 --matrix "as1 Matrix.xml" --all-instances
  quintara position "WIP~~as1.ZVAProduct" --matrix "as1 Matrix.xml"
)";

inline constexpr auto kScatter = R"(The order of the components stays. The same seed gives the same positions.

Examples:
  quintara scatter as1
  quintara scatter as1 --seed 7 --distance 200
)";

inline constexpr auto kCompare = R"(Components are told apart by the full path that 'quintara position' gave them as
names. Each position is compared with the one that the geometry kernel itself
computes for that instance of the original; the deviation is how far a point of
the assembly may be off, at most 1e-9 of the assembly's size. Exit code 1 when a
component is out of place, missing or surplus.

Example:
  quintara compare as1 --with as1-oc-214.stp
)";

inline constexpr auto kExport = R"(Light components become facets in STEP.

Examples:
  quintara export WIP~~as1 flat.stp
  quintara export as1 as1.glb --replace
)";

inline constexpr auto kRender = R"(Examples:
  quintara render as1 -o as1.png
  quintara render as1-oc-214.stp WIP~~as1 -o both.png --caption original --caption flat
)";

}  // namespace quintara::help
