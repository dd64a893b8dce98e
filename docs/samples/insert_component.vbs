' Adds an object of the vault to the active work in progress, as its light representation.
'
'   cscript //nologo insert_component.vbs PART_NUMBER
Option Explicit

Dim root, before
Set root = GetObject(, "ZORVA.Application").ActiveDocument.Product
before = root.Products.Count
CreateObject("Quintara.Cls_InsertLWT").Run GetObject(, "QuintaraHosts.Control").FindObject(WScript.Arguments(0)), "LWT"
WScript.Echo root.Products.Count - before & " component inserted: " & root.Products.Item(root.Products.Count).PartNumber
