' Puts the components of the active work in progress back to where its matrix in the vault has them.
Option Explicit

Dim root, component, numbers(11)
Set root = GetObject(, "ZORVA.Application").ActiveDocument.Product
Set component = root.Products.Item(1)

' A user has moved it.
component.Position.SetComponents Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 1000, 1000, 1000)
CreateObject("Quintara.Cls_RetrieveMatrix").Run
component.Position.GetComponents numbers
WScript.Echo component.Name & " at " & numbers(9) & ", " & numbers(10) & ", " & numbers(11)
