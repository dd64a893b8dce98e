' Writes the matrix of the product that is open in the CAD host, as the vault does when the product is checked in.
'
'   cscript //nologo write_matrix.vbs PART_NUMBER
Option Explicit

Dim control, product, session, lifeCycle, utils, command, documents
Set control = GetObject(, "QuintaraHosts.Control")
Set session = GetObject(, "Veldora.VdApplication").Engine.Sessions(0)
Set lifeCycle = session.GetService("VdUtil.VdSessionUtil")
Set product = control.FindObject(WScript.Arguments(0))

' Only a product that can be changed gets a matrix at check in.
lifeCycle.CheckOut product, Nothing, False

' The last argument answers the question whether to write the matrix with Yes. It may be left out, then the user is
' asked.
Set command = CreateObject("Quintara.Cls_GetMatrix")
command.Run "CheckIn", product, True
lifeCycle.CheckIn product, Nothing, False

' The matrix is a document that is linked to the product. The list is a result by reference; it is Nothing when there
' are no such links.
Set utils = CreateObject("Quintara.Cls_Utils")
If Not utils.RetrieveAllObjectsLinked(session, product, "Document", "Document Link", documents) Then WScript.Quit 1
If documents Is Nothing Then
  WScript.Echo "No matrix was written."
Else
  WScript.Echo "Matrix: " & documents.Item(0).Record.ValueAsString("CN_DESCRIPTION")
End If
