Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

Dim wip
Set wip = cad.ActiveDocument.Product
Same "the name is the one that was typed", wip.PartNumber, "WIP~~bare"
Same "what was marked came in", ChildrenOf(wip), "rod-assembly,plate"
Same "no matrix is remembered", PropertyOf(wip, "DocExcelCID") & "," & PropertyOf(wip, "DocExcelOID"), "0,0"
SameNumbers "nothing was placed", NumbersOf(wip.Products.Item(2)), Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0)

EndOfScript
