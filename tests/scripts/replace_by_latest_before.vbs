Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

' A work in progress with three light components, two of which have a newer revision in the vault.
Dim wip
control.Import Given("SPLIT_FOLDER")
Set wip = NewWip("as1", "DocXML", StoredMatrix("as1", "xml", ".xml"))
Insert "nut", "LWT"
Insert "rod", "LWT"
Insert "bolt", "LWT"
Insert "plate", "PRODUCT"
wip.Products.Item(1).Position.SetComponents Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 7, 8, 9)
MakeRevision VaultObject("nut")
MakeRevision VaultObject("bolt")
Same "the work in progress stands", ChildrenOf(wip), "nut,rod,bolt,plate"
Same "a newer revision is there", VaultObject("nut").Record.ValueAsString("REVISION"), "B"

Sub MakeRevision(object)
  LifeCycle.Release object, Nothing, False
  LifeCycle.CheckIn LifeCycle.NewRelease(object, Nothing, False), Nothing, False
End Sub

EndOfScript
