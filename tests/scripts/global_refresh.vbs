Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

Dim command
control.Import Given("SPLIT_FOLDER")
Set command = Quintara("Cls_GlobalRefreshVD")

' What is refused -------------------------------------------------------------------------------------------------

command.Run control.SelectedRecords("as1|nut")
BoxShown "Run wants one object", CatalogueText("QD.GLOBALREFRESH.SELECT_ONE_OBJECT", Array()), 4160
LifeCycle.CheckOut VaultObject("bolt"), Nothing, False
command.Run control.SelectedRecords("as1")
BoxShown "Run wants all components checked in", _
  CatalogueText("QD.GLOBALREFRESH.CHILDREN_MUST_BE_IN_CHECKIN_OR_RELEASED", Array()), 4160
command.Run control.SelectedRecords("bolt")
BoxShown "Run wants the object itself checked in", _
  CatalogueText("QD.APPLICATION.MUST_BE_CHECKIN_OR_RELEASED", Array("bolt")), 4160
LifeCycle.CheckIn VaultObject("bolt"), Nothing, False

' The refresh -----------------------------------------------------------------------------------------------------

Dim overwrite
overwrite = "$User\LifeCycleSetUp\CheckOutOverwrite"
session.Config.SetValue overwrite, "ASK"
LifeCycle.Release VaultObject("nut"), Nothing, False
LifeCycle.CheckIn LifeCycle.NewRelease(VaultObject("nut"), Nothing, False), Nothing, False
control.ClearRecord
command.Run control.SelectedRecords("as1")
BoxShown "Run tells that all is refreshed", CatalogueText("QD.GLOBALREFRESH.SUCCESSFUL", Array()), 4160
Same "Run has put the user's settings back", session.Config.Value(overwrite), "ASK"
Told "Run has had them silenced", InStr(control.ReadRecord(), "VdConfig.SetValue(" & overwrite & ", YES)") > 0, "it hasn't"
Told "Run has logged the user off and on", InStr(control.ReadRecord(), "VdSession.UserLogoff") > 0 And _
  InStr(control.ReadRecord(), "VdSession.UserLogin(***)") > InStr(control.ReadRecord(), "VdSession.UserLogoff"), "it hasn't"
Told "Run has checked the product out", InStr(control.ReadRecord(), "HIXEngine.CheckOutDocument") > 0, "it hasn't"

Dim children, i, nuts
IsTrue "the structure can be read", Quintara("Cls_Utils").GetAllChildren(session, VaultObject("as1"), children)
For i = 0 To children.Count - 1
  If children.Item(i).Record.ValueAsString("NM_CN_PART_NUMBER") = "nut" Then _
    nuts = nuts & children.Item(i).Record.ValueAsString("REVISION")
Next
Same "Run has brought the structure up to the latest revision", nuts, "BB"
Same "Run has checked the product in", StateOf(VaultObject("as1")), CInt(1)

Dim linked
Quintara("Cls_Utils").RetrieveAllObjectsLinked session, VaultObject("as1"), "Document", "Document Link", linked
Same "Run has written its matrix", linked.Item(0).Record.ValueAsString("CN_DESCRIPTION"), "as1 Matrix"

' A failure on the way --------------------------------------------------------------------------------------------

control.ArmOperation "HIXEngine.CheckOutDocument", 1
command.Run control.SelectedRecords("as1")
control.DisarmGate
BoxShown "Run shows a failure", "An unexpected error occurred in Cls_GlobalRefreshVD.Run." & vbCrLf & _
  "HIXEngine.CheckOutDocument: Injected failure", 16
Same "Run has put that setting back all the same", session.Config.Value(overwrite), "ASK"

EndOfScript
