Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

Dim command, as1
control.Import Given("SPLIT_FOLDER")
Set command = Quintara("Cls_GetMatrix")
Set as1 = VaultObject("as1")

Function Matrix()
  Dim found
  Set Matrix = Nothing
  Quintara("Cls_Utils").RetrieveAllObjectsLinked session, as1, "Document", "Document Link", found
  If Not (found Is Nothing) Then Set Matrix = Quintara("Cls_Utils").LastVersion(found.Item(0))
End Function

Function ContentOf(file)
  Dim stream
  Set stream = files.OpenTextFile(file, 1)
  ContentOf = stream.ReadAll
  stream.Close
End Function

' What is refused -------------------------------------------------------------------------------------------------

command.Run "checkin", as1
BoxShown "Run knows two operations", CatalogueText("QD.GETMATRIX.INCORRECT_OPERATION", Array()), 4112
command.Run "CheckIn", VaultObject("nut")
NoBox "Run passes over what something holds"
command.Run "CheckIn", as1
BoxShown "Run wants an active product", CatalogueText("QD.GETMATRIX.CANT_RETRIEVE_ZORVA_ACTIVEDOCUMENT", Array()), 4112
Quintara("Cls_Utils").CopyVeldoraObjectToWork as1
cad.Documents.Open InWork("as1.ZVAProduct")
command.Run "CheckIn", as1
BoxShown "Run doesn't check in what isn't checked out", CatalogueText("QD.GETMATRIX.OBJECT_NOT_CHECKOUT", Array()), 4112
GivesNothing "Run has made no matrix", Matrix()

' Check in --------------------------------------------------------------------------------------------------------

LifeCycle.CheckOut as1, Nothing, False
NextAnswer "No"
command.Run "CheckIn", as1
BoxShown "Run asks", CatalogueText("QD.UTILS.QUESTION_RECORD_POSITIONS", Array("as1")), 4132
GivesNothing "Run takes No for an answer", Matrix()
command.Run "CheckIn", as1, True
NoBox "Run doesn't ask when it is told to"
Same "Run has stored the matrix", TextOf(Matrix(), "CN_DESCRIPTION"), "as1 Matrix"
Same "Run has checked it in", StateOf(Matrix()), CInt(1)
Same "Run has written what the command line writes on another system", ContentOf(InWork("as1 Matrix.xml")), _
  ContentOf(Given("SPLIT_FOLDER") & "\as1 Matrix.xml")
LifeCycle.CheckIn as1, Nothing, False

' Release ---------------------------------------------------------------------------------------------------------

NextAnswer "Yes"
command.Run "Release", as1, False
BoxShown "Run asks whether to update", CatalogueText("QD.UTILS.QUESTION_UPDATE_MATRIX", Array("as1")), 4132
Same "Run has released the matrix", StateOf(Matrix()), CInt(3)
NoBox "Run shows nothing more"

' A failure -------------------------------------------------------------------------------------------------------

control.ArmOperation "VdObject.Parents", 1
command.Run "Release", as1, True
control.DisarmGate
NextBoxHolds "a failure is shown", "VdObject.Parents: Injected failure"
StartSession
command.Run "Release", Nothing
NextBoxHolds "so is one for a missing object", "Object variable or With block variable not set"

EndOfScript
