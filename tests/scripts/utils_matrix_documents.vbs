Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

Const kOwn = "Quintara.Cls_Utils"
Const kExcel = 0
Const kXml = 1

Dim utils, as1, root, nut, found
control.Import Given("SPLIT_FOLDER")
StartSession
Set utils = Quintara("Cls_Utils")
Set as1 = VaultObject("as1")
Set nut = VaultObject("nut")
utils.CopyVeldoraObjectToWork as1
Set root = cad.Documents.Open(InWork("as1.ZVAProduct")).Product

' Without a matrix ------------------------------------------------------------------------------------------------

GivesNothing "GetDocumentMatrixFromObject without a matrix", utils.GetDocumentMatrixFromObject(session, as1, Behavior, kXml)
GivesNothing "GetLinkedDocs without a matrix", utils.GetLinkedDocs(session, nut, kXml)
IsFalse "IsMatrixAlreadyExistAsInformation without a matrix", utils.IsMatrixAlreadyExistAsInformation(root, as1, kXml)

Dim exists, toUpdate, matrix, untouched
Set untouched = as1
Set matrix = as1
IsFalse "IsMatrixAlreadyExist without a matrix", utils.IsMatrixAlreadyExist(root, as1, exists, toUpdate, matrix, kXml, True)
Same "IsMatrixAlreadyExist says that none exists", exists, False
Same "IsMatrixAlreadyExist says that one is to be written", toUpdate, True
IsTrue "IsMatrixAlreadyExist leaves the matrix alone", matrix Is untouched
NoBox "IsMatrixAlreadyExist doesn't ask when it is told to"

NextAnswer "No"
utils.IsMatrixAlreadyExist root, as1, exists, toUpdate, matrix, kXml
BoxShown "IsMatrixAlreadyExist asks whether to record", CatalogueText("QD.UTILS.QUESTION_RECORD_POSITIONS", Array("as1")), 4132
Same "IsMatrixAlreadyExist takes No for an answer", toUpdate, False
NextAnswer "Yes"
utils.IsMatrixAlreadyExist root, as1, exists, toUpdate, matrix, kXml, False
BoxShown "IsMatrixAlreadyExist asks again", CatalogueText("QD.UTILS.QUESTION_RECORD_POSITIONS", Array("as1")), 4132
Same "IsMatrixAlreadyExist takes Yes for an answer", toUpdate, True

' With one --------------------------------------------------------------------------------------------------------

Dim stored
Set stored = StoredMatrix("as1", "xml", ".xml")
Set found = utils.GetDocumentMatrixFromObject(session, as1, Behavior, kXml)
GivesAnObject "GetDocumentMatrixFromObject finds the matrix", found
IsTrue "GetDocumentMatrixFromObject finds the right one", IsSame(found, stored)
GivesNothing "GetDocumentMatrixFromObject of the other type", utils.GetDocumentMatrixFromObject(session, as1, Behavior, kExcel)
IsTrue "IsMatrixAlreadyExistAsInformation with a matrix", utils.IsMatrixAlreadyExistAsInformation(root, as1, kXml)

utils.IsMatrixAlreadyExist root, as1, exists, toUpdate, matrix, kXml, True
Same "IsMatrixAlreadyExist says that one exists", exists, True
Same "IsMatrixAlreadyExist says that it is to be updated", toUpdate, True
IsTrue "IsMatrixAlreadyExist gives it", IsSame(matrix, stored)
NextAnswer "No"
utils.IsMatrixAlreadyExist root, as1, exists, toUpdate, matrix, kXml
BoxShown "IsMatrixAlreadyExist asks whether to update", CatalogueText("QD.UTILS.QUESTION_UPDATE_MATRIX", Array("as1")), 4132
Same "IsMatrixAlreadyExist takes No for that", exists & "," & toUpdate, "True,False"

Set found = utils.GetLinkedDocs(session, nut, kXml)
Same "GetLinkedDocs finds the matrix of the root above", found.Count, CLng(1)
IsTrue "GetLinkedDocs finds the right one", IsSame(found.Item(0), stored)
GivesNothing "GetLinkedDocs of the other type", utils.GetLinkedDocs(session, nut, kExcel)
GivesNothing "GetLinkedDocs without a session", utils.GetLinkedDocs(Nothing, nut, kXml)

Set found = utils.GetDocumentFromID(session, CInt(stored.ClassId), CLng(stored.ObjectId))
IsTrue "GetDocumentFromID finds a document", IsSame(found, stored)
GivesNothing "GetDocumentFromID of an unknown one", utils.GetDocumentFromID(session, stored.ClassId, 99999)
GivesNothing "GetDocumentFromID without a session", utils.GetDocumentFromID(Nothing, stored.ClassId, stored.ObjectId)
Same "GetTheRootName gives the product's part number", utils.GetTheRootName(stored), "as1"
Same "GetTheRootName of nothing is empty", utils.GetTheRootName(Nothing), ""

' CopyMatrixFromDocument ------------------------------------------------------------------------------------------

Same "CopyMatrixFromDocument copies", utils.CopyMatrixFromDocument(session, stored, kXml), CInt(1)
Same "CopyMatrixFromDocument copies the very file", ContentOf(InWork("as1 Matrix.xml")), _
  ContentOf(Given("SPLIT_FOLDER") & "\as1 Matrix.xml")
Same "CopyMatrixFromDocument names it by its type", utils.CopyMatrixFromDocument(session, stored, kExcel), CInt(1)
IsTrue "CopyMatrixFromDocument gave that name", files.FileExists(InWork("as1 Matrix.xls"))
Same "CopyMatrixFromDocument of nothing fails", utils.CopyMatrixFromDocument(session, Nothing, kXml), CInt(0)

Function ContentOf(path)
  Dim stream
  Set stream = files.OpenTextFile(path, 1)
  ContentOf = stream.ReadAll
  stream.Close
End Function

' ChooseMatrix ----------------------------------------------------------------------------------------------------

Dim several
Set several = store.NewObjects
several.Add stored
several.Add StoredMatrix("rod-assembly", "xml", ".xml")
control.AnswerDialogs 1
Set found = utils.ChooseMatrix(session, several)
IsTrue "ChooseMatrix gives the one that the user picks", IsSame(found, several.Item(1))
control.AnswerDialogs -1
GivesNothing "ChooseMatrix gives nothing when the user dismisses the dialog", utils.ChooseMatrix(session, several)

' Failures that go to the caller ----------------------------------------------------------------------------------

Sub TestsFail
  Dim result
  On Error Resume Next
  control.ArmOperation "VdQuery.RunLinkQuery", 1
  result = utils.IsMatrixAlreadyExist(root, as1, exists, toUpdate, matrix, kXml, True)
  FailsWith "IsMatrixAlreadyExist hands on the vault's failure", 57, "VdQuery.RunLinkQuery: Injected failure", kOwn
  result = utils.IsMatrixAlreadyExistAsInformation(root, as1, kXml)
  FailsWith "IsMatrixAlreadyExistAsInformation hands on the vault's failure", 57, _
    "VdQuery.RunLinkQuery: Injected failure", kOwn
  control.DisarmGate
  result = utils.IsMatrixAlreadyExistAsInformation(root, Nothing, kXml)
  FailsWith "IsMatrixAlreadyExistAsInformation fails without an object", 91, _
    "Object variable or With block variable not set", kOwn
End Sub
TestsFail

control.ArmOperation "VdQuery.RunWithBehavior", 1
GivesNothing "GetDocumentMatrixFromObject after a failure", utils.GetDocumentMatrixFromObject(session, as1, Behavior, kXml)
control.DisarmGate
BoxShown "GetDocumentMatrixFromObject reports it", "An unexpected error occurred in Cls_Init.GetDocumentMatrixFromObject." & _
  vbCrLf & "VdQuery.RunWithBehavior: Injected failure", 16

EndOfScript
