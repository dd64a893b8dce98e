Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"
'#include "lib/workbooks.vbs"

Const kOwn = "Quintara.Cls_RetrieveMatrix"

Dim command, wip, matrix, nuts, keys
control.Import Given("SPLIT_FOLDER")
StartSession
Set command = Quintara("Cls_RetrieveMatrix")
Set matrix = StoredMatrix("as1", "xml", ".xml")
Quintara("Cls_Utils").CopyVeldoraObjectToWork VaultObject("as1")
Set nuts = InstancesIn("as1.ZVAProduct", "nut")
keys = nuts.Keys

' Run -------------------------------------------------------------------------------------------------------------

command.Run
BoxShown "Run wants a work in progress", CatalogueText("QD.RETRIEVEMATRIX.ONLY_AVAILABLE_FOR_WIP", Array()), 4160

Set wip = NewWip("as1", "DocXML", matrix)
Insert "nut", "LWT"
Insert "nut", "LWT"
wip.Products.Item(2).Position.SetComponents Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 7, 8, 9)
control.ClearRecord
command.Run
SameNumbers "Run puts a component to where the tree has it", NumbersOf(wip.Products.Item(1)), nuts.Item(keys(0))
SameNumbers "Run puts the next one to where the tree has the next", NumbersOf(wip.Products.Item(2)), nuts.Item(keys(1))
Told "Run refreshes the view at its end", InStr(control.ReadRecord(), "Viewer.RefreshView") > 0, "it doesn't"
NoBox "Run says nothing"

control.ArmOperation "Position.SetComponents", 1
command.Run
control.DisarmGate
BoxTitled "Run shows what goes wrong", "QNTR", "Unexpected error in function Cls_Matrice.ProcessXMLFile : " & _
  "Position.SetComponents: Injected failure", 16
wip.Parameters.Item("DocXMLOID").ValuateFromString "99999"
command.Run
BoxShown "Run wants a matrix in the vault", _
  CatalogueText("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", Array()), 4112

' A workbook ------------------------------------------------------------------------------------------------------

' With one, the components are placed through the spreadsheet program.
Dim workbook
CloseAllDocuments
Set workbook = StoredWorkbook("as1")
Set wip = NewWip("book", "DocExcel", workbook)
Insert "rod", "LWT"
command.Run
SameNumbers "Run reads a workbook too", NumbersOf(wip.Products.Item(1)), RodOfTheWorkbook
NoBox "Run says nothing of it"

' recherche_Ligne_produit_Pere ------------------------------------------------------------------------------------

Dim row, column, tree
OpenTheWorkbook
Set tree = excel.ActiveWorkbook.Worksheets(1)
row = CInt(4)
column = CInt(3)
Same "recherche_Ligne_produit_Pere finds the parent's row", _
  command.recherche_Ligne_produit_Pere(tree, row, column), CInt(2)
Same "recherche_Ligne_produit_Pere leaves it in the row", row, CInt(2)
Same "recherche_Ligne_produit_Pere leaves the column alone", column, CInt(3)
column = 2
Same "recherche_Ligne_produit_Pere finds the root", command.recherche_Ligne_produit_Pere(tree, row, column), CInt(1)
Same "recherche_Ligne_produit_Pere leaves the root's row", row, CInt(1)

Sub RowsFail
  Dim result
  On Error Resume Next
  row = 4
  result = command.recherche_Ligne_produit_Pere(tree, row, 1)
  FailsNaming "recherche_Ligne_produit_Pere fails in column 0", 1004, "", kOwn
  Same "recherche_Ligne_produit_Pere keeps the row then", CInt(row), CInt(4)
  result = command.recherche_Ligne_produit_Pere(Nothing, row, column)
  FailsWith "recherche_Ligne_produit_Pere fails without a worksheet", 91, _
    "Object variable or With block variable not set", kOwn
End Sub
RowsFail

' Positionner -----------------------------------------------------------------------------------------------------

' The result stays in the object; what can be seen is that it reads the row, and the rows of all that is above.
Sub PositionnerReadsAndFails
  On Error Resume Next
  control.ClearRecord
  command.Positionner tree, 4, 3
  NoFailure "Positionner of an instance succeeds"
  Told "Positionner reads the instance's own row", _
    InStr(control.ReadRecord(), "Worksheet.Cells(4, 15)") > 0, control.ReadRecord()
  Told "Positionner reads its parent's row", _
    InStr(control.ReadRecord(), "Worksheet.Cells(2, 26)") > 0, control.ReadRecord()
  Told "Positionner reads the root's row", _
    InStr(control.ReadRecord(), "Worksheet.Cells(1, 15)") > 0, control.ReadRecord()
  Told "Positionner doesn't read its sister's row", _
    InStr(control.ReadRecord(), "Worksheet.Cells(3, 15)") = 0, control.ReadRecord()
  command.Positionner tree, 0, 2
  FailsNaming "Positionner fails for row 0", 1004, "", kOwn
  command.Positionner Nothing, 1, 1
  FailsWith "Positionner fails without a worksheet", 91, "Object variable or With block variable not set", kOwn
End Sub
PositionnerReadsAndFails

' Operation_Matrice -----------------------------------------------------------------------------------------------

Sub OperationMatrice
  Dim child, parent, twelfth
  child = Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 2, 3)
  parent = Array(0, 1, 0, -1, 0, 0, 0, 0, 1, 10, 20, 30)
  On Error Resume Next
  command.Operation_Matrice child, parent
  NoFailure "Operation_Matrice takes two positions"
  Same "Operation_Matrice leaves them alone", Listed(child) & Listed(parent), _
    " 1 0 0 0 1 0 0 0 1 1 2 3 0 1 0 -1 0 0 0 0 1 10 20 30"
  command.Operation_Matrice child, Array(1, 2)
  FailsWith "Operation_Matrice fails for fewer than twelve numbers", 9, "Subscript out of range", kOwn
  child(11) = "no number"
  command.Operation_Matrice child, parent
  FailsWith "Operation_Matrice fails for what is no number", 13, "Type mismatch: ""no number"" is not a number", kOwn
End Sub
OperationMatrice

CloseTheWorkbook
EndOfScript
