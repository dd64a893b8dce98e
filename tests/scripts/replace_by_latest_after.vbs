Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

Dim wip
Set wip = cad.ActiveDocument.Product
Same "the components are the same ones", ChildrenOf(wip), "nut,rod,bolt,plate"
Same "what was ticked is of the latest revision", _
  PropertyOf(wip.Products.Item(1), "OBJECT_ID"), CStr(VaultObject("nut").ObjectId)
Same "it is stamped as light", PropertyOf(wip.Products.Item(1), "TYPE"), "LWT"
SameNumbers "it stands where it stood", NumbersOf(wip.Products.Item(1)), Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 7, 8, 9)
Told "what wasn't ticked is as it was", _
  PropertyOf(wip.Products.Item(3), "OBJECT_ID") <> CStr(VaultObject("bolt").ObjectId), _
  PropertyOf(wip.Products.Item(3), "OBJECT_ID")

EndOfScript
