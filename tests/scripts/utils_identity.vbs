Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

Const kOwn = "Quintara.Cls_Utils"

Dim utils, as1, root, nut
control.Import Given("SPLIT_FOLDER")
StartSession
Set utils = Quintara("Cls_Utils")
Set as1 = VaultObject("as1")
Set nut = VaultObject("nut")
utils.CopyVeldoraObjectToWork as1
Set root = cad.Documents.Open(InWork("as1.ZVAProduct")).Product

' IsInDesignMode, GetThePartNumber --------------------------------------------------------------------------------

Dim plate
Set plate = ChildNamed(root, "plate_1")
IsTrue "IsInDesignMode of a loaded component", utils.IsInDesignMode(plate)
Same "GetThePartNumber of a loaded component", utils.GetThePartNumber(plate), "plate"
control.SetForm plate, 1
IsFalse "IsInDesignMode of a component without its design", utils.IsInDesignMode(plate)
Same "GetThePartNumber of a component without its design", utils.GetThePartNumber(plate), "plate"
IsFalse "GetThePartNumber sets the form back", utils.IsInDesignMode(plate)
control.SetForm plate, 2
Same "GetThePartNumber of an unloaded component is empty", utils.GetThePartNumber(plate), ""
control.SetForm plate, 0
IsFalse "IsInDesignMode of nothing", utils.IsInDesignMode(Nothing)
Same "GetThePartNumber of nothing is empty", utils.GetThePartNumber(Nothing), ""

' IsCorrectClassID ------------------------------------------------------------------------------------------------

IsTrue "IsCorrectClassID finds a class of the list", _
  utils.IsCorrectClassID(session, "ZORVA Part,ZORVA Product", CInt(as1.ClassId))
IsFalse "IsCorrectClassID finds no other", utils.IsCorrectClassID(session, "ZORVA Part", CInt(as1.ClassId))

Sub IsCorrectClassIDFails
  Dim result
  On Error Resume Next
  result = utils.IsCorrectClassID(session, "No Such Class", as1.ClassId)
  FailsNaming "IsCorrectClassID fails for an unknown class", 5, "No Such Class", kOwn
  control.ArmOperation "VdMetaInfo.ClassByName", 1
  result = utils.IsCorrectClassID(session, "ZORVA Part", as1.ClassId)
  FailsWith "IsCorrectClassID hands on the vault's failure", 57, "VdMetaInfo.ClassByName: Injected failure", kOwn
  control.DisarmGate
  result = utils.IsCorrectClassID(Nothing, "ZORVA Part", as1.ClassId)
  FailsWith "IsCorrectClassID fails without a session", 91, "Object variable or With block variable not set", kOwn
End Sub
IsCorrectClassIDFails

' IsTheRoot -------------------------------------------------------------------------------------------------------

IsTrue "IsTheRoot of a product that nothing holds", utils.IsTheRoot(session, as1, Behavior)
IsFalse "IsTheRoot of a component", utils.IsTheRoot(session, nut, Behavior)
NoBox "IsTheRoot shows nothing"
control.ArmOperation "VdObject.Parents", 1
IsFalse "IsTheRoot after a failure", utils.IsTheRoot(session, as1, Behavior)
control.DisarmGate
BoxShown "IsTheRoot reports a failure", _
  "An unexpected error occurred in Cls_Init.IsTheRoot." & vbCrLf & "VdObject.Parents: Injected failure", 16

' IndiceClasse, IndiceFileType ------------------------------------------------------------------------------------

Same "IndiceClasse gives a class id", utils.IndiceClasse(session, "ZORVA Part"), CInt(nut.ClassId)
Same "IndiceClasse of an unknown class is 0", utils.IndiceClasse(session, "No Such Class"), CInt(0)
Same "IndiceFileType gives the file type of the part", utils.IndiceFileType(session, "ZVAPart"), _
  CInt(nut.Record.ValueAsInteger("FILE_TYPE"))
Same "IndiceFileType of an unknown type is 0", utils.IndiceFileType(session, "none"), CInt(0)

' RetrieveVDObject ------------------------------------------------------------------------------------------------

Dim found
Set found = utils.RetrieveVDObject(session, plate)
GivesAnObject "RetrieveVDObject finds the object of a component, its last argument left out", found
IsTrue "RetrieveVDObject finds the right one", IsSame(found, VaultObject("plate"))
Set found = utils.RetrieveVDObject(session, root, True)
IsTrue "RetrieveVDObject finds that of the root", IsSame(found, as1)
RenewTexts
control.ArmOperation "HIXEngine.DocumentInfo", 1
GivesNothing "RetrieveVDObject of what fails", utils.RetrieveVDObject(session, plate)
NoBox "RetrieveVDObject is silent"
GivesNothing "RetrieveVDObject of what fails, asked to tell", utils.RetrieveVDObject(session, plate, True)
control.DisarmGate
BoxShown "RetrieveVDObject tells the failure when asked", _
  "An unexpected error occurred in Cls_Utils.RetrieveVDObject." & vbCrLf & "HIXEngine.DocumentInfo: Injected failure", 16

' WriteStringProperty, ReadStringProperty, TestWIP ----------------------------------------------------------------

Same "ReadStringProperty of an unknown property", utils.ReadStringProperty(plate, "OBJECT_ID"), ""
Same "ReadStringProperty of an unknown number", utils.ReadStringProperty(plate, "OBJECT_ID", "Integer"), "-1"
Same "ReadStringProperty of an unknown text", utils.ReadStringProperty(plate, "OBJECT_ID", "String"), ""
IsTrue "WriteStringProperty makes a property", utils.WriteStringProperty(plate, "OBJECT_ID", "abc")
IsTrue "WriteStringProperty writes it again", utils.WriteStringProperty(plate, "OBJECT_ID", CStr(nut.ObjectId))
Same "ReadStringProperty reads it", utils.ReadStringProperty(plate, "OBJECT_ID", "String"), CStr(nut.ObjectId)
IsFalse "WriteStringProperty on nothing", utils.WriteStringProperty(Nothing, "A", "B")
IsFalse "TestWIP of a component", utils.TestWIP(plate)
utils.WriteStringProperty plate, "WIP", "TRUE"
IsTrue "TestWIP of what bears the mark", utils.TestWIP(plate)
utils.WriteStringProperty plate, "WIP", "True"
IsFalse "TestWIP is strict about capitals", utils.TestWIP(plate)

' RetrieveVDObject_FromLWT ----------------------------------------------------------------------------------------

GivesNothing "RetrieveVDObject_FromLWT without a class", utils.RetrieveVDObject_FromLWT(session, plate)
BoxShown "RetrieveVDObject_FromLWT tells that the identity is missing", CatalogueText( _
  "QD.UTILS.UNABLE_TO_RETRIEVE_OBJECT_EMPTY", Array("plate_1")), 48
utils.WriteStringProperty plate, "CLASS_ID", CStr(nut.ClassId)
Set found = utils.RetrieveVDObject_FromLWT(session, plate)
GivesAnObject "RetrieveVDObject_FromLWT finds an object", found
IsTrue "RetrieveVDObject_FromLWT finds the one of the stamps", IsSame(found, nut)
utils.WriteStringProperty plate, "OBJECT_ID", "abc"
GivesNothing "RetrieveVDObject_FromLWT of what is no number", utils.RetrieveVDObject_FromLWT(session, plate)
BoxShown "RetrieveVDObject_FromLWT tells that it is none", CatalogueText( _
  "QD.UTILS.UNABLE_TO_RETRIEVE_OBJECT_NON_NUMERIC", Array("plate_1")), 48
utils.WriteStringProperty plate, "OBJECT_ID", "99999"
GivesNothing "RetrieveVDObject_FromLWT of an unknown object", utils.RetrieveVDObject_FromLWT(session, plate)
BoxShown "RetrieveVDObject_FromLWT tells that it isn't there", CatalogueText( _
  "QD.UTILS.UNABLE_TO_RETRIEVE_OBJECT_NOT_EXIST", Array("plate_1")), 48

' GetIdSequence ---------------------------------------------------------------------------------------------------

Dim first
first = utils.GetIdSequence(session, "ZORVA Part", "CN_ID")
Told "GetIdSequence gives a value", Len(first) > 0, Shown(first)
Told "GetIdSequence gives another one the next time", first <> utils.GetIdSequence(session, "ZORVA Part", "CN_ID"), first
Same "GetIdSequence without such an attribute is empty", utils.GetIdSequence(session, "ZORVA Part", "NONE"), ""
BoxShown "GetIdSequence tells the attribute", CatalogueText("QD.UTILS.UNABLE_TO_GET_NEXT_ID_SEQUENCE", Array("NONE")), 4112

' CheckClassName --------------------------------------------------------------------------------------------------

IsTrue "CheckClassName of a class", utils.CheckClassName(session, "ZORVA Part")
NoBox "CheckClassName shows nothing then"
IsFalse "CheckClassName of an unknown one", utils.CheckClassName(session, "None")
BoxShown "CheckClassName tells the name", CatalogueText("QD.UTILS.UNABLE_TO_RETRIEVE_OBJECT_EMPTY", Array("None")), 4112

' BuildFullName, HasActiveDocument, IsAWIP ------------------------------------------------------------------------

Dim rods
Set rods = ChildNamed(root, "rod-assembly_1")
Same "BuildFullName of a component", utils.BuildFullName(rods, root), "rod-assembly_1\as1"
Same "BuildFullName of what lies deeper", utils.BuildFullName(rods.Products.Item(3), root), "rod_1\rod-assembly_1\as1"
Same "BuildFullName of the root", utils.BuildFullName(root, root), "as1"
RenewTexts
Same "BuildFullName of nothing", utils.BuildFullName(Nothing, root), ""
NextBoxHolds "BuildFullName reports that", "Cls_Utils.BuildFullName"
IsTrue "HasActiveDocument with a product", utils.HasActiveDocument(cad)
IsFalse "IsAWIP of a product that is none", utils.IsAWIP()
utils.WriteStringProperty root, "WIP", "TRUE"
IsTrue "IsAWIP of one that is", utils.IsAWIP()
CloseAllDocuments
IsFalse "HasActiveDocument without a document", utils.HasActiveDocument(cad)
IsFalse "HasActiveDocument without a CAD host", utils.HasActiveDocument(Nothing)
IsFalse "IsAWIP without a document", utils.IsAWIP()

EndOfScript
