Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

Const kTitle = "QNTR"

Dim matrice, root, path, wip, places, keys, i, selection
control.Import Given("SPLIT_FOLDER")
StartSession
Set matrice = Quintara("Cls_Matrice")
Quintara("Cls_Utils").CopyVeldoraObjectToWork VaultObject("as1")
path = InWork("out Matrix.xml")

Function ContentOf(file)
  Dim stream
  Set stream = files.OpenTextFile(file, 1)
  ContentOf = stream.ReadAll
  stream.Close
End Function

' CreateXMLFile ---------------------------------------------------------------------------------------------------

Set root = cad.Documents.Open(InWork("as1.ZVAProduct")).Product
IsTrue "CreateXMLFile writes a matrix", matrice.CreateXMLFile(root, path)
Same "CreateXMLFile writes the same as the command line on another system", ContentOf(path), _
  ContentOf(Given("SPLIT_FOLDER") & "\as1 Matrix.xml")
control.SetForm ChildNamed(root, "plate_1"), 2
IsFalse "CreateXMLFile writes nothing where a part number can't be read", matrice.CreateXMLFile(root, InWork("none.xml"))
IsFalse "CreateXMLFile has written nothing", files.FileExists(InWork("none.xml"))
NoBox "CreateXMLFile shows nothing then"
IsFalse "CreateXMLFile of nothing", matrice.CreateXMLFile(Nothing, InWork("none.xml"))
NoBox "CreateXMLFile of nothing has no part number either"
control.SetForm ChildNamed(root, "plate_1"), 0
IsFalse "CreateXMLFile into a folder that isn't there", matrice.CreateXMLFile(root, InWork("none\none.xml"))
NextBoxHolds "CreateXMLFile reports it", """QNTR"" 16 ""Unexpected error in function Cls_Matrice.CreateXMLFile : "

' MergeXMLMatrix --------------------------------------------------------------------------------------------------

IsFalse "MergeXMLMatrix where an assembly has no matrix", matrice.MergeXMLMatrix(root, InWork("merged.xml"))
NoBox "MergeXMLMatrix shows nothing then"
IsFalse "MergeXMLMatrix has written nothing", files.FileExists(InWork("merged.xml"))
StoredMatrix "rod-assembly", "xml", ".xml"
StoredMatrix "l-bracket-assembly", "xml", ".xml"
IsTrue "MergeXMLMatrix puts the matrices together", matrice.MergeXMLMatrix(root, InWork("merged.xml"))
Told "MergeXMLMatrix has grafted an assembly under its own name", InStr(ContentOf(InWork("merged.xml")), _
  "FULL_INSTANCE_NAME=""as1\l-bracket-assembly\nut-bolt-assembly_2\bolt_1""") > 0, ContentOf(InWork("merged.xml"))
control.ArmOperation "Product.Position", 1
IsFalse "MergeXMLMatrix after a failure", matrice.MergeXMLMatrix(root, InWork("merged.xml"))
control.DisarmGate
NextBoxHolds "MergeXMLMatrix reports it", """QNTR"" 16 ""Unexpected error in function Cls_Matrice."
CloseAllDocuments

' ProcessXMLFile --------------------------------------------------------------------------------------------------

Dim matrix
Set matrix = StoredMatrix("as1", "xml", ".xml")
Set wip = NewWip("as1", "DocXML", matrix)
IsTrue "ProcessXMLFile of a product without components", matrice.ProcessXMLFile(wip, path)
Insert "nut", "LWT"
Insert "plate", "PRODUCT"
Insert "nut", "LWT"
IsTrue "ProcessXMLFile places the components", matrice.ProcessXMLFile(wip, path)
CheckPlaces

Sub CheckPlaces
  Set places = InstancesIn("as1.ZVAProduct", "nut")
  keys = places.Keys
  SameNumbers "ProcessXMLFile puts the first one where the tree has its first instance", _
    NumbersOf(Component(wip, "nut", 1)), places.Item(keys(0))
  SameNumbers "ProcessXMLFile puts the next one where the tree has the next", _
    NumbersOf(Component(wip, "nut", 2)), places.Item(keys(1))
  Set places = InstancesIn("as1.ZVAProduct", "plate")
  keys = places.Keys
  SameNumbers "ProcessXMLFile puts the other part there too", NumbersOf(Component(wip, "plate", 1)), places.Item(keys(0))
End Sub

IsFalse "ProcessXMLFile of a file that isn't there", matrice.ProcessXMLFile(wip, InWork("none.xml"))
NextBoxHolds "ProcessXMLFile reports it", _
  Quoted(kTitle) & " 16 " & Replace(Quoted("Error in loading XML file """ & InWork("none.xml") & """ : "), " : """, " : ")
control.ArmOperation "Position.SetComponents", 1
IsFalse "ProcessXMLFile after a failure", matrice.ProcessXMLFile(wip, path)
control.DisarmGate
BoxTitled "ProcessXMLFile reports that too", kTitle, "Unexpected error in function Cls_Matrice.ProcessXMLFile : " & _
  "Position.SetComponents: Injected failure", 16
CloseAllDocuments

' PositionAllInstances --------------------------------------------------------------------------------------------

Set wip = NewWip("all", "DocXML", matrix)
Insert "nut", "LWT"
Insert "rod", "LWT"
Set selection = cad.ActiveDocument.Selection
IsTrue "PositionAllInstances of the first instances", matrice.PositionAllInstances(wip, path, False, selection)
Same "PositionAllInstances adds none then", ChildrenOf(wip), "nut,rod"
Same "PositionAllInstances names a component after its instance", wip.Products.Item(1).Name, "as1\rod-assembly_1\nut_1"
IsTrue "PositionAllInstances of all", matrice.PositionAllInstances(wip, path, True, selection)
Same "PositionAllInstances makes one for each instance", ChildrenOf(wip), "nut,rod,nut,nut,nut,nut,nut,nut,nut"
Same "PositionAllInstances leaves the selection empty", selection.Count, CLng(0)
CheckAllNuts

Sub CheckAllNuts
  Dim child
  Set places = InstancesIn("as1.ZVAProduct", "nut")
  For i = 1 To wip.Products.Count
    Set child = wip.Products.Item(i)
    If child.PartNumber = "nut" Then
      If places.Exists(child.Name) Then
        SameNumbers "PositionAllInstances places " & child.Name, NumbersOf(child), places.Item(child.Name)
        places.Remove child.Name
      Else
        Told "PositionAllInstances gives " & child.Name & " the name of an instance", False, child.Name
      End If
    End If
  Next
  Same "PositionAllInstances has left out none", places.Count, CLng(0)
End Sub

NoBox "PositionAllInstances shows nothing"
CloseAllDocuments
Set wip = NewWip("covered", "DocXML", matrix)
Insert "nut-bolt-assembly", "PRODUCT"
Insert "bolt", "LWT"
IsFalse "PositionAllInstances of what stands in another component already", _
  matrice.PositionAllInstances(wip, path, True, cad.ActiveDocument.Selection)
BoxTitled "PositionAllInstances reports it", kTitle, _
  "Unexpected error in function Cls_Matrice.PositionAllInstances : Subscript out of range", 16

EndOfScript
