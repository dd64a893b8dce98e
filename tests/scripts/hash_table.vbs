Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

Const kTitle = "QNTR"

' A workbook as the matrix command leaves it: its flat list is the second worksheet, instance names in column 4.
Dim excel, sheet, table
Set excel = CreateObject("Excel.Application")
excel.SheetsInNewWorkbook = 3
excel.Workbooks.Add
Set sheet = excel.ActiveWorkbook.Worksheets(2)
Set table = Quintara("Cls_HashTable")

' A script has no records, so each couple is an array of part number, instance name and row.
Dim couples
couples = Array(Array("bolt", "bolt.1", 1), Array("nut", "nut.1", 2), Array("bolt", "bolt.1", 3), Array("nut", "bolt.1", 4))
sheet.Cells(1, 4).Value = "bolt.1"
sheet.Cells(2, 4).Value = "nut.1"
sheet.Cells(3, 4).Value = "bolt.1"
sheet.Cells(4, 4).Value = "bolt.1"

IsTrue "RenameDoublesWithHashTable succeeds", table.RenameDoublesWithHashTable(couples, 4, excel)
Same "RenameDoublesWithHashTable leaves the first of a pair", sheet.Cells(1, 4).Value, "bolt.1"
Same "RenameDoublesWithHashTable leaves what is alone", sheet.Cells(2, 4).Value, "nut.1"
Told "RenameDoublesWithHashTable adds a number to the second", _
  Left(sheet.Cells(3, 4).Value, 6) = "bolt.1" And IsNumeric(Mid(sheet.Cells(3, 4).Value, 7)), sheet.Cells(3, 4).Value
Same "RenameDoublesWithHashTable leaves another part of that name", sheet.Cells(4, 4).Value, "bolt.1"

Dim couple, after
For Each couple In couples
  after = after & couple(0) & "|" & couple(1) & "|" & couple(2) & ";"
Next
Same "the couples come back as they went in", after, "bolt|bolt.1|1;nut|nut.1|2;bolt|bolt.1|3;nut|bolt.1|4;"

sheet.Cells(3, 4).Value = "bolt.1"
IsTrue "RenameDoublesWithHashTable looks at as many as it is told", table.RenameDoublesWithHashTable(couples, 2, excel)
Same "RenameDoublesWithHashTable leaves the rest", sheet.Cells(3, 4).Value, "bolt.1"
NoBox "RenameDoublesWithHashTable shows nothing"

' Failures are shown by the class itself.
IsFalse "RenameDoublesWithHashTable without a spreadsheet program", table.RenameDoublesWithHashTable(couples, 4, Nothing)
BoxTitled "RenameDoublesWithHashTable reports it", kTitle, _
  "Unexpected error in function Cls_HashTable.RenameDoublesWithHashTable : " & _
  "Object variable or With block variable not set", 16
IsFalse "RenameDoublesWithHashTable of fewer couples than it is told", table.RenameDoublesWithHashTable(couples, 5, excel)
BoxTitled "RenameDoublesWithHashTable reports that too", kTitle, _
  "Unexpected error in function Cls_HashTable.RenameDoublesWithHashTable : Subscript out of range", 16

Sub CouplesOfAnotherKind
  Dim result
  On Error Resume Next
  result = table.RenameDoublesWithHashTable(Array("bolt"), 1, excel)
  FailsNaming "couples that aren't of three values are refused", 13, "", "Quintara.Cls_HashTable"
End Sub
CouplesOfAnotherKind

excel.ActiveWorkbook.Close False
excel.Quit
EndOfScript
