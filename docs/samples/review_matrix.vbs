' Looks whether a product has a matrix, and brings the matrix to the work directory.
'
'   cscript //nologo review_matrix.vbs PART_NUMBER
Option Explicit

Const kXml = 1

Dim session, product, start, utils, cad, exists, toUpdate, matrix
Set session = GetObject(, "Veldora.VdApplication").Engine.Sessions(0)
Set cad = GetObject(, "ZORVA.Application")
Set product = GetObject(, "QuintaraHosts.Control").FindObject(WScript.Arguments(0))
Set start = CreateObject("Quintara.Cls_Init")
If Not start.Init Then WScript.Quit 1
Set utils = CreateObject("Quintara.Cls_Utils")

' Three results come back in the arguments; the function's own is always False. The last argument answers for the user.
utils.IsMatrixAlreadyExist cad.ActiveDocument.Product, product, exists, toUpdate, matrix, kXml, True
WScript.Echo "exists: " & exists & ", to be updated: " & toUpdate
If exists Then
  If utils.CopyMatrixFromDocument(session, matrix, kXml) = 1 Then
    WScript.Echo "copied: " & matrix.Record.ValueAsString("CN_DESCRIPTION") & ".xml"
  End If
End If
