' Makes a work in progress of the product that is selected in the vault.
'
'   cscript //nologo create_wip.vbs PART_NUMBER
'
' A script of the vault gets the selection as its argument. Here it is asked of the control of QuintaraHosts.exe, which
' stands for the vault where there is none.
Option Explicit

Dim control, cad, selection, command
Set control = GetObject(, "QuintaraHosts.Control")
Set cad = GetObject(, "ZORVA.Application")
Set selection = control.SelectedRecords(WScript.Arguments(0))

' The panel opens here, and Run comes back when the user has closed it. What goes wrong is told to the user by Run
' itself; it fails only where another command runs already.
Set command = CreateObject("Quintara.Cls_Application")
command.Run selection

' The work in progress is now the active document of the CAD host, not saved yet.
If cad.Documents.Count = 0 Then
  WScript.Echo "No work in progress was made."
Else
  ListComponents cad.ActiveDocument.Product
End If

Sub ListComponents(root)
  Dim i, component, position(11)
  WScript.Echo root.PartNumber & " has " & root.Products.Count & " components"
  For i = 1 To root.Products.Count
    Set component = root.Products.Item(i)
    ' The array has to have twelve elements; the last three are the origin.
    component.Position.GetComponents position
    WScript.Echo component.Name & " at " & position(9) & ", " & position(10) & ", " & position(11)
  Next
End Sub
