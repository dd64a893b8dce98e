' The two systems that a script works with, and what it makes in them.

Dim control, vault, session, store, cad, files, workFolder
Set control = GetObject(, "QuintaraHosts.Control")
Set vault = GetObject(, "Veldora.VdApplication")
Set cad = GetObject(, "ZORVA.Application")
Set session = vault.Engine.Sessions(0)
Set store = session.ObjectStore
Set files = CreateObject("Scripting.FileSystemObject")
workFolder = WorkFolderOf(session)

Function WorkFolderOf(vaultSession)
  Dim paths
  Set paths = vaultSession.GetService("VeldoraClientContextService.VdClientContextService").Context.Paths
  WorkFolderOf = paths.WorkDirectoryOf(paths.CurrentKey)
End Function

' An object of one of Quintara's classes.
Function Quintara(className)
  Set Quintara = CreateObject("Quintara." & className)
End Function

Function InWork(name)
  InWork = workFolder & "\" & name
End Function

' A setting that the harness gives: a folder or a file. Wine leaves the closing zero in the text.
Function Given(name)
  Given = Replace(CreateObject("WScript.Shell").ExpandEnvironmentStrings("%" & name & "%"), Chr(0), "")
End Function

Function Service(name)
  Set Service = session.GetService(name)
End Function

Function LifeCycle()
  Set LifeCycle = Service("VdUtil.VdSessionUtil")
End Function

Function Behavior()
  Set Behavior = store.DefaultBehavior.Clone
End Function

Function ClassIdOf(className)
  ClassIdOf = session.MetaInfo.ClassByName(className).ClassId
End Function

' The newest revision of a product or part.
Function VaultObject(partNumber)
  Set VaultObject = control.FindObject(partNumber)
  VaultObject.Retrieve
End Function

Function TextOf(vaultObject, attribute)
  Dim again
  Set again = store.ObjectById(vaultObject.ClassId, vaultObject.ObjectId)
  again.Retrieve
  TextOf = again.Record.ValueAsString(attribute)
End Function

Function StateOf(vaultObject)
  StateOf = CInt(TextOf(vaultObject, "STATE"))
End Function

Function IsSame(one, other)
  IsSame = one.ClassId = other.ClassId And one.ObjectId = other.ObjectId
End Function

' The part numbers of a list of the vault, in its order.
Function PartNumbersOf(objects)
  Dim i
  For i = 0 To objects.Count - 1
    If i > 0 Then PartNumbersOf = PartNumbersOf & ","
    PartNumbersOf = PartNumbersOf & objects.Item(i).Record.ValueAsString("NM_CN_PART_NUMBER")
  Next
End Function

' A new object of a class, stored with a part number.
Function NewObject(className, partNumber)
  Set NewObject = store.NewObject(ClassIdOf(className))
  NewObject.Record.ValuateFromString "NM_CN_PART_NUMBER", partNumber
  NewObject.AddToVault Behavior
End Function

' The twelve numbers of a position.
Function NumbersOf(product)
  Dim numbers(11)
  product.Position.GetComponents numbers
  NumbersOf = numbers
End Function

' The child of a product with this instance name; nothing where there is none.
Function ChildNamed(root, name)
  Dim i
  Set ChildNamed = Nothing
  For i = 1 To root.Products.Count
    If root.Products.Item(i).Name = name Then Set ChildNamed = root.Products.Item(i)
  Next
End Function

' The part numbers of a product's children, in their order.
Function ChildrenOf(root)
  Dim i
  For i = 1 To root.Products.Count
    If i > 1 Then ChildrenOf = ChildrenOf & ","
    ChildrenOf = ChildrenOf & root.Products.Item(i).PartNumber
  Next
End Function

' Until none is active any more; files that were only read stay.
Sub CloseAllDocuments
  On Error Resume Next
  Do While Err.Number = 0
    cad.ActiveDocument.Close
  Loop
  Err.Clear
End Sub

' A session of Quintara in this process. It ends with the object that started it, so that is held.
Dim starter
Sub StartSession
  Set starter = Quintara("Cls_Init")
  IsTrue "a session starts", starter.Init
End Sub

' Reads all texts anew: those that were shown have their parameters in them for good.
Sub RenewTexts
  Same "the texts are read anew", starter.InitiateNLSVariable, CInt(0)
End Sub
