' A matrix workbook of the older form, written by hand:
'   row 1  as1
'   row 2    rod-assembly
'   row 3      nut
'   row 4      rod
' The root stands at the origin, the assembly is turned about Z by a right angle and moved, the parts are only moved.

Dim excel
Dim treePositions
treePositions = Array( _
  Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0), _
  Array(0, 1, 0, -1, 0, 0, 0, 0, 1, 100, 0, 0), _
  Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 5, 0, 0), _
  Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 2, 3))

' Where the rod of the last row stands in the frame of the root.
Function RodOfTheWorkbook()
  RodOfTheWorkbook = Array(0, 1, 0, -1, 0, 0, 0, 0, 1, 98, 1, 3)
End Function

Sub StartExcel
  Set excel = CreateObject("Excel.Application")
  excel.Visible = False
End Sub

Sub WriteInstance(row, level, partNumber, name)
  Dim sheets, i
  Set sheets = excel.ActiveWorkbook.Worksheets
  sheets.Item(1).Cells(row, level).Value = partNumber
  For i = 0 To 11
    sheets.Item(1).Cells(row, 15 + i).Value = treePositions(row - 1)(i)
  Next
  sheets.Item(2).Cells(row, 1).Value = partNumber
  sheets.Item(2).Cells(row, 2).Value = row
  sheets.Item(2).Cells(row, 3).Value = level
  If name <> "" Then sheets.Item(2).Cells(row, 4).Value = name
End Sub

' Writes the workbook and stores it as a document linked to the product. Instance names are left out in the oldest form.
Function StoredBook(partNumber, hasNames)
  Dim names
  names = Array("", "", "", "")
  If hasNames Then names = Array("as1", "rod-assembly_1", "nut_1", "rod_1")
  StartExcel
  excel.SheetsInNewWorkbook = 3
  excel.Workbooks.Add
  WriteInstance 1, 1, "as1", names(0)
  WriteInstance 2, 2, "rod-assembly", names(1)
  WriteInstance 3, 3, "nut", names(2)
  WriteInstance 4, 3, "rod", names(3)
  excel.ActiveWorkbook.SaveAs InWork(partNumber & " Matrix.xls")
  excel.ActiveWorkbook.Close False
  excel.Quit
  Set excel = Nothing
  Set StoredBook = StoredMatrix(partNumber, "Microsoft Excel", ".xls")
End Function

Function StoredWorkbook(partNumber)
  Set StoredWorkbook = StoredBook(partNumber, True)
End Function

' The file of the workbook in the work directory, brought there by a command before.
Sub OpenTheWorkbook
  StartExcel
  excel.Workbooks.Open InWork("as1 Matrix.xls")
End Sub

Sub CloseTheWorkbook
  excel.ActiveWorkbook.Close False
  excel.Quit
End Sub
