Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"
'#include "lib/workbooks.vbs"

Const kOwn = "Quintara.Cls_AllInstances"

Dim command, wip, matrix, nuts, keys
control.Import Given("SPLIT_FOLDER")
StartSession
Set command = Quintara("Cls_AllInstances")
Set matrix = StoredMatrix("as1", "xml", ".xml")
Quintara("Cls_Utils").CopyVeldoraObjectToWork VaultObject("as1")
Set nuts = InstancesIn("as1.ZVAProduct", "nut")
keys = nuts.Keys

' Run -------------------------------------------------------------------------------------------------------------

' Whether all instances are wanted is the panel's to say; without it each component gets its first one.
command.Run
NextBoxHolds "Run without a document shows a failure", "Cls_AllInstances.Run"
RenewSession
Set wip = NewWip("as1", "DocXML", matrix)
Insert "nut", "LWT"
Insert "plate", "PRODUCT"
command.Run
SameNumbers "Run puts a component to where the tree has its first instance", _
  NumbersOf(wip.Products.Item(1)), nuts.Item(keys(0))
Same "Run gives it the name of that instance", wip.Products.Item(1).Name, "as1\rod-assembly_1\nut_1"
Same "Run gives the other its own", wip.Products.Item(2).Name, "as1\plate_1"
Same "Run adds no component", wip.Products.Count, CLng(2)
NoBox "Run says nothing"

wip.Parameters.Item("WIP").ValuateFromString "FALSE"
command.Run
BoxShown "Run wants a work in progress", CatalogueText("QD.ALLINSTANCES.RETRIEVE_MATRIX_ONLY_AVAILABLE_FOR_WIP", Array()), 4160
wip.Parameters.Item("WIP").ValuateFromString "TRUE"
wip.Parameters.Item("DocXMLOID").ValuateFromString "99999"
command.Run
BoxShown "Run wants a matrix in the vault", CatalogueText("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", Array()), 4160

Sub RenewSession
  StartSession
End Sub

' A workbook ------------------------------------------------------------------------------------------------------

CloseAllDocuments
Set wip = NewWip("book", "DocExcel", StoredBook("as1", True))
Insert "rod", "LWT"
command.Run
SameNumbers "Run reads a workbook too", NumbersOf(wip.Products.Item(1)), RodOfTheWorkbook
Same "Run takes the name from its flat list", wip.Products.Item(1).Name, "rod_1"
NoBox "Run says nothing of it"

' getLineColumn ---------------------------------------------------------------------------------------------------

Dim list, tree, line
OpenTheWorkbook
Set tree = excel.ActiveWorkbook.Worksheets(1)
Set list = excel.ActiveWorkbook.Worksheets(2)
line = 1
IsTrue "getLineColumn finds an instance", command.getLineColumn(list, "nut", "nut_1", line)
Same "getLineColumn leaves the line at its row", CInt(line), CInt(3)
line = 4
IsFalse "getLineColumn doesn't look above the line", command.getLineColumn(list, "nut", "nut_1", line)
line = 1
IsFalse "getLineColumn compares the name too", command.getLineColumn(list, "nut", "nut_2", line)

Sub LinesFail
  Dim result
  On Error Resume Next
  line = 0
  result = command.getLineColumn(list, "nut", "nut_1", line)
  FailsNaming "getLineColumn fails in row 0", 1004, "", kOwn
  line = 1
  result = command.getLineColumn(Nothing, "nut", "nut_1", line)
  FailsWith "getLineColumn fails without a worksheet", 91, "Object variable or With block variable not set", kOwn
End Sub
LinesFail

' recherche_Ligne_produit_Pere, Positionner, Operation_Matrice ----------------------------------------------------

Dim row
row = CInt(3)
Same "recherche_Ligne_produit_Pere finds the parent's row", command.recherche_Ligne_produit_Pere(tree, row, 3), CInt(2)
Same "recherche_Ligne_produit_Pere leaves it in the row", row, CInt(2)

Sub TheOthersFail
  Dim result
  On Error Resume Next
  result = command.recherche_Ligne_produit_Pere(tree, row, 1)
  FailsNaming "recherche_Ligne_produit_Pere fails in column 0", 1004, "", kOwn
  control.ClearRecord
  command.Positionner tree, 4, 3
  NoFailure "Positionner of an instance succeeds"
  Told "Positionner reads its row and those above", InStr(control.ReadRecord(), "Worksheet.Cells(4, 15)") > 0 And _
    InStr(control.ReadRecord(), "Worksheet.Cells(2, 15)") > 0 And _
    InStr(control.ReadRecord(), "Worksheet.Cells(1, 15)") > 0, control.ReadRecord()
  command.Positionner tree, 0, 2
  FailsNaming "Positionner fails for row 0", 1004, "", kOwn
  command.Operation_Matrice treePositions(3), treePositions(1)
  NoFailure "Operation_Matrice takes two positions"
  command.Operation_Matrice treePositions(3), Array()
  FailsWith "Operation_Matrice fails for an array without numbers", 9, "Subscript out of range", kOwn
End Sub
TheOthersFail

CloseTheWorkbook
EndOfScript
