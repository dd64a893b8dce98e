Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

' The hosts die in the midst of a call: that is a failure like any other.
Dim utils, nut, found
control.Import Given("SPLIT_FOLDER")
Set utils = Quintara("Cls_Utils")
Set nut = VaultObject("nut")
control.EndInMidCall "VdMetaInfo.ClassByName", 1

Sub TheHostsEnd
  Dim result
  On Error Resume Next
  result = utils.IsCorrectClassID(session, "ZORVA Part", 1)
  FailsNaming "a call in which they end fails", 462, "VdMetaInfo.ClassByName: ", "Quintara.Cls_Utils"
  result = utils.IsCorrectClassID(session, "ZORVA Part", 1)
  FailsNaming "so does a call after that", 462, "", "Quintara.Cls_Utils"
End Sub
TheHostsEnd

Set found = utils.LastVersion(nut)
IsTrue "what is given back on a failure is the very object", found Is nut
Same "what is neutral on a failure is so", utils.IndiceClasse(session, "ZORVA Part"), CInt(0)
NoBox "nothing is shown"

EndOfScript
