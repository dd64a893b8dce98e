' Replaces the first component of the active work in progress by its light representation, and back.
Option Explicit

Dim document, root, utils
Set document = GetObject(, "ZORVA.Application").ActiveDocument
Set root = document.Product
Set utils = CreateObject("Quintara.Cls_Utils")

If Not utils.TestWIP(root) Then
  WScript.Echo "The active document is no work in progress."
  WScript.Quit 1
End If

' Both commands work on what is selected.
SelectFirst
CreateObject("Quintara.Cls_SwitchToLWT").Run
WScript.Echo "form: " & FormOfFirst()

SelectFirst
CreateObject("Quintara.Cls_SwitchToProduct").Run
WScript.Echo "form: " & FormOfFirst()

Sub SelectFirst
  document.Selection.Clear
  document.Selection.Add root.Products.Item(1)
End Sub

Function FormOfFirst()
  ' The stamp "TYPE" is "LWT" for a light representation; a document has none.
  FormOfFirst = utils.ReadStringProperty(root.Products.Item(1), "TYPE", "String")
  If FormOfFirst = "" Then FormOfFirst = "document"
End Function
