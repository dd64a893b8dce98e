Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

Const kOwn = "Quintara.Cls_Utils"

Dim utils, as1, nut
control.Import Given("SPLIT_FOLDER")
StartSession
Set utils = Quintara("Cls_Utils")
Set as1 = VaultObject("as1")
Set nut = VaultObject("nut")

Function Refusal(key)
  Refusal = "An unexpected error occurred in Cls_Utils.LifeCycleOperation." & vbCrLf & _
    CatalogueText("QD.UTILS.UNCORRECT_STATE_FOR_LIFECYCLE", Array()) & " " & key
End Function

' LifeCycleOperation ----------------------------------------------------------------------------------------------

IsTrue "LifeCycleOperation checks out", utils.LifeCycleOperation(session, nut, "CHECKOUT")
Same "LifeCycleOperation has checked out", StateOf(nut), CInt(2)
IsTrue "LifeCycleOperation checks in", utils.LifeCycleOperation(session, nut, "CHECKIN", False)
Same "LifeCycleOperation has checked in", StateOf(nut), CInt(1)
IsTrue "LifeCycleOperation releases", utils.LifeCycleOperation(session, nut, "RELEASE", True)
Same "LifeCycleOperation has released", StateOf(nut), CInt(3)
NoBox "LifeCycleOperation shows nothing"
IsFalse "LifeCycleOperation doesn't release twice", utils.LifeCycleOperation(session, nut, "RELEASE")
BoxShown "LifeCycleOperation refuses with the object's key", Refusal("nut, A"), 16
RenewTexts
IsFalse "LifeCycleOperation knows no other name", utils.LifeCycleOperation(session, nut, "release")
BoxShown "LifeCycleOperation refuses that in the same words", Refusal("nut, A"), 16
IsTrue "LifeCycleOperation makes a new release", utils.LifeCycleOperation(session, nut, "NEWRELEASE")
Same "LifeCycleOperation has made it", VaultObject("nut").Record.ValueAsString("REVISION"), "B"
IsTrue "LifeCycleOperation makes obsolete", utils.LifeCycleOperation(session, nut, "OBSOLETE")
Same "LifeCycleOperation has made it so", StateOf(nut), CInt(4)
RenewTexts
IsFalse "LifeCycleOperation of nothing", utils.LifeCycleOperation(session, Nothing, "CHECKIN")
BoxShown "LifeCycleOperation reports that", "An unexpected error occurred in Cls_Utils.LifeCycleOperation." & vbCrLf, 16

' LastVersion -----------------------------------------------------------------------------------------------------

Dim last, unmoved
Set last = utils.LastVersion(nut)
Same "LastVersion gives the newest revision", last.Record.ValueAsString("REVISION"), "B"
control.ArmOperation "VdObject.GetVersion", 1
Set unmoved = utils.LastVersion(nut)
control.DisarmGate
IsTrue "LastVersion gives the very object back after a failure", unmoved Is nut
GivesNothing "LastVersion of nothing", utils.LastVersion(Nothing)

' CheckInObject, ReleaseObject ------------------------------------------------------------------------------------

utils.CheckInObject session, last
Same "CheckInObject checks in", StateOf(last), CInt(1)
utils.CheckInObject session, last
Same "CheckInObject passes over what can't be done", StateOf(last), CInt(1)
utils.ReleaseObject session, last
Same "ReleaseObject releases", StateOf(last), CInt(3)
utils.ReleaseObject session, last
utils.ReleaseObject Nothing, Nothing
Same "ReleaseObject passes over what can't be done", StateOf(last), CInt(3)
NoBox "CheckInObject and ReleaseObject show nothing"

' PopulateObjectMasks ---------------------------------------------------------------------------------------------

Dim fresh
Set fresh = store.NewObject(ClassIdOf("Document"))
utils.PopulateObjectMasks session, fresh
Same "PopulateObjectMasks gives the first revision", fresh.Record.ValueAsString("REVISION"), "A"
Told "PopulateObjectMasks gives an identity", Len(fresh.Record.ValueAsString("CN_ID")) > 0, "none"

Sub PopulateObjectMasksFails
  On Error Resume Next
  control.ArmOperation "VdMask.NextValue", 1
  utils.PopulateObjectMasks session, fresh
  FailsWith "PopulateObjectMasks hands on the vault's failure", 57, "VdMask.NextValue: Injected failure", kOwn
  control.DisarmGate
  utils.PopulateObjectMasks session, Nothing
  FailsWith "PopulateObjectMasks fails without an object", 91, "Object variable or With block variable not set", kOwn
End Sub
PopulateObjectMasksFails

' GetAllChildren --------------------------------------------------------------------------------------------------

Dim children, inOrder
inOrder = "rod-assembly,l-bracket-assembly,plate,nut,rod,nut-bolt-assembly,l-bracket,bolt,nut"
IsTrue "GetAllChildren collects", utils.GetAllChildren(session, as1, children)
Same "GetAllChildren gives the list back, breadth first", PartNumbersOf(children), inOrder
Set children = Nothing
IsTrue "GetAllChildren takes a policy and attributes", _
  utils.GetAllChildren(session, as1, children, Behavior, "CAD_REF_FILE_NAME,STATE")
Same "GetAllChildren gives the same list then", PartNumbersOf(children), inOrder
Same "GetAllChildren has read the attributes", children.Item(2).Record.ValueAsString("CAD_REF_FILE_NAME"), "plate.stp"
IsTrue "GetAllChildren takes nothing for a policy", utils.GetAllChildren(session, as1, children, Nothing, "")
IsTrue "GetAllChildren of a part", utils.GetAllChildren(session, VaultObject("plate"), children)
Same "GetAllChildren gives an empty list for it", children.Count, CLng(0)
RenewTexts
control.ArmOperation "VdObject.Children", 1
IsFalse "GetAllChildren after a failure", utils.GetAllChildren(session, as1, children)
control.DisarmGate
BoxShown "GetAllChildren reports it", "An unexpected error occurred in Cls_Utils.GetAllChildren." & vbCrLf & _
  "VdObject.Children: Injected failure", 16

' AcceptGlobalRefresh ---------------------------------------------------------------------------------------------

Dim work
Set work = store.NewObjects
IsTrue "AcceptGlobalRefresh of none", utils.AcceptGlobalRefresh(work)
work.Add as1
work.Add VaultObject("nut")
IsTrue "AcceptGlobalRefresh of what is checked in or released", utils.AcceptGlobalRefresh(work)
LifeCycle.CheckOut VaultObject("bolt"), Nothing, False
work.Add VaultObject("bolt")
IsFalse "AcceptGlobalRefresh of what is checked out", utils.AcceptGlobalRefresh(work)
NoBox "AcceptGlobalRefresh shows nothing"
RenewTexts
IsTrue "AcceptGlobalRefresh after a failure", utils.AcceptGlobalRefresh(Nothing)
BoxShown "AcceptGlobalRefresh reports it", "An unexpected error occurred in Cls_Utils.AcceptGlobalRefresh." & vbCrLf & _
  "Object variable or With block variable not set", 16

' RetrieveAllObjectsLinked, RemoveLogicalLink ---------------------------------------------------------------------

Dim linked, first, second
IsTrue "RetrieveAllObjectsLinked without links", _
  utils.RetrieveAllObjectsLinked(session, as1, "Document", "Document Link", linked)
GivesNothing "RetrieveAllObjectsLinked gives nothing then", linked
Set first = NewObject("Document", "first")
Set second = NewObject("Document", "second")
as1.AddLink ClassIdOf("Document Link"), first, Nothing, Behavior
as1.AddLink ClassIdOf("Document Link"), second, Nothing, Behavior
IsTrue "RetrieveAllObjectsLinked with links", _
  utils.RetrieveAllObjectsLinked(session, as1, "Document", "Document Link", linked)
Same "RetrieveAllObjectsLinked gives the list back", PartNumbersOf(linked), "first,second"
IsTrue "RemoveLogicalLink removes", utils.RemoveLogicalLink(session, as1, first, "Document Link")
utils.RetrieveAllObjectsLinked session, as1, "Document", "Document Link", linked
Same "RemoveLogicalLink has removed that one", PartNumbersOf(linked), "second"
IsTrue "RemoveLogicalLink of what isn't linked", utils.RemoveLogicalLink(session, as1, first, "Document Link")
RenewTexts
IsFalse "RetrieveAllObjectsLinked of an unknown class", _
  utils.RetrieveAllObjectsLinked(session, as1, "None", "Document Link", linked)
NextBoxHolds "RetrieveAllObjectsLinked reports it", "Cls_Utils.RetrieveAllObjectsLinked"
RenewTexts
IsFalse "RemoveLogicalLink of an unknown class", utils.RemoveLogicalLink(session, as1, first, "None")
NextBoxHolds "RemoveLogicalLink reports it", "Cls_Utils.RemoveLogicalLink"

EndOfScript
