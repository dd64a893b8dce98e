Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

' The work in progress as it stands in the CAD host.
Dim record, wip, matrix, linked
record = control.ReadRecord()
control.DisarmGate
Set wip = cad.ActiveDocument.Product
StartSession
Quintara("Cls_Utils").RetrieveAllObjectsLinked session, VaultObject("as1"), "Document", "Document Link", linked
Set matrix = linked.Item(0)

Same "the name is that of the product of the matrix", wip.PartNumber, "WIP~~as1"
Same "it bears the mark", PropertyOf(wip, "WIP"), "TRUE"
Same "it tells where it comes from", PropertyOf(wip, "From"), "Quintara"
Same "it remembers its matrix", PropertyOf(wip, "DocXMLCID") & "," & PropertyOf(wip, "DocXMLOID"), _
  matrix.ClassId & "," & matrix.ObjectId
Same "it has a component for each instance of what was marked", ChildrenOf(wip), "nut,nut-bolt-assembly,l-bracket,nut," & _
  "nut-bolt-assembly,nut-bolt-assembly,nut-bolt-assembly,nut-bolt-assembly,nut-bolt-assembly,l-bracket"
Same "what was marked light is light", PropertyOf(wip.Products.Item(1), "TYPE"), "LWT"
Same "so is its other instance", PropertyOf(wip.Products.Item(4), "TYPE"), "LWT"
Same "what was marked as a document is one", Quintara("Cls_Utils").ReadStringProperty(wip.Products.Item(2), "TYPE"), ""

' Each component against the true tree: the part below an assembly that came in as a whole isn't placed apart.
Quintara("Cls_Utils").CopyVeldoraObjectToWork VaultObject("as1")
CheckInstances "nut", 2
CheckInstances "nut-bolt-assembly", 6
CheckInstances "l-bracket", 2

Sub CheckInstances(partNumber, count)
  Dim places, i, standing
  Set places = InstancesIn("as1.ZVAProduct", partNumber)
  For i = 1 To count
    Set standing = Component(wip, partNumber, i)
    Told standing.Name & " is an instance", places.Exists(standing.Name), "it isn't"
    If places.Exists(standing.Name) Then SameNumbers standing.Name & " stands in its place", NumbersOf(standing), _
      places.Item(standing.Name)
    places.Remove standing.Name
  Next
End Sub

' The order of the road: panel, positions, macro.
Told "the display was updated by the macro after positioning", _
  InStr(record, "ScriptService.ExecuteScript") > InStrRev(record, "Position.SetComponents") And _
  InStr(record, "Position.SetComponents") > 0, "it wasn't"

EndOfScript
