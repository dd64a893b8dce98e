' Matrices and works in progress, made by hand for the scripts that aren't about making them.

' Stores the file of a matrix as a document linked to its product, checked in.
Function StoredMatrix(partNumber, fileType, extension)
  Dim name, document
  name = partNumber & " Matrix" & extension
  If Not files.FileExists(InWork(name)) Then files.CopyFile Given("SPLIT_FOLDER") & "\" & name, InWork(name)
  Set document = store.NewObject(ClassIdOf("Document"))
  document.Record.ValuateFromString "CN_DESCRIPTION", partNumber & " Matrix"
  document.Record.ValuateFromString "NM_CN_PART_NUMBER", partNumber & " Matrix"
  document.Record.ValuateFromString "FILE_TYPE", CStr(FileTypeId(fileType))
  document.Record.ValuateFromString "FILE_NAME", name
  document.Record.ValuateFromString "DIRECTORY", workFolder
  document.AddToVault Behavior
  VaultObject(partNumber).AddLink ClassIdOf("Document Link"), document, Nothing, Behavior
  LifeCycle.CheckIn document, Nothing, False
  files.DeleteFile InWork(name), True
  Set StoredMatrix = store.ObjectById(document.ClassId, document.ObjectId)
  StoredMatrix.Retrieve
End Function

Function FileTypeId(name)
  Dim query
  Set query = store.NewQuery
  query.Definition.From.Add ClassIdOf("FILE_TYPE"), "F"
  query.Definition.Select.Add "OBJECT_ID", "F", True
  query.Definition.Where.Add "", "TDM_NAME", "=", name, 0, "F"
  query.RunClassQuery
  FileTypeId = query.Result.GetRecord(0).ValueAsInteger("OBJECT_ID")
End Function

' A new, empty work in progress that remembers its matrix under "DocXML" or "DocExcel"; it is the active document.
Function NewWip(name, kind, matrix)
  Set NewWip = cad.Documents.Add("ZVAProduct").Product
  NewWip.PartNumber = "WIP~~" & name
  NewWip.UserProperties.CreateString "WIP", "TRUE"
  NewWip.UserProperties.CreateString kind & "CID", CStr(matrix.ClassId)
  NewWip.UserProperties.CreateString kind & "OID", CStr(matrix.ObjectId)
End Function

' Puts an object of the vault into the active work in progress, as "LWT" or as "PRODUCT".
Sub Insert(partNumber, mode)
  Quintara("Cls_InsertLWT").Run VaultObject(partNumber), mode
End Sub

Function PropertyOf(product, name)
  PropertyOf = product.Parameters.Item(name).ValueAsString
End Function

' A component with this part number directly under a root, counted from 1; nothing where there is none.
Function Component(root, partNumber, which)
  Dim i, at
  Set Component = Nothing
  For i = 1 To root.Products.Count
    If root.Products.Item(i).PartNumber = partNumber Then
      at = at + 1
      If at = which Then Set Component = root.Products.Item(i)
    End If
  Next
End Function

' Makes a component of the active document the whole selection.
Sub SelectAlone(component)
  cad.ActiveDocument.Selection.Clear
  cad.ActiveDocument.Selection.Add component
End Sub

' The position of a child as it stands in the frame of its parent's parent.
Function Composed(c, p)
  Dim r(11), row, column
  For row = 0 To 2
    For column = 0 To 2
      r(3 * row + column) = c(3 * row) * p(column) + c(3 * row + 1) * p(3 + column) + c(3 * row + 2) * p(6 + column)
    Next
  Next
  For column = 0 To 2
    r(9 + column) = p(9 + column) + c(9) * p(column) + c(10) * p(3 + column) + c(11) * p(6 + column)
  Next
  Composed = r
End Function

' Where the instances of a part number stand in a whole assembly, in the order of its tree, under "path" the path of
' their names. To be asked with the root, its position and an empty dictionary.
Sub FindInstances(product, position, path, partNumber, found)
  Dim i, child, there
  For i = 1 To product.Products.Count
    Set child = product.Products.Item(i)
    there = Composed(NumbersOf(child), position)
    If child.PartNumber = partNumber Then found.Add path & "\" & child.Name, there
    FindInstances child, there, path & "\" & child.Name, partNumber, found
  Next
End Sub

' The same of the assembly in a file of the work directory, which is closed again.
Function InstancesIn(file, partNumber)
  Dim document, found
  Set found = CreateObject("Scripting.Dictionary")
  Set document = cad.Documents.Open(InWork(file))
  FindInstances document.Product, NumbersOf(document.Product), document.Product.Name, partNumber, found
  document.Close
  Set InstancesIn = found
End Function
