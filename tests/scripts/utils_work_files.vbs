Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

Dim utils, nut, as1
control.Import Given("SPLIT_FOLDER")
StartSession
Set utils = Quintara("Cls_Utils")
Set nut = VaultObject("nut")
Set as1 = VaultObject("as1")

Function SizeOf(path)
  SizeOf = 0
  If files.FileExists(path) Then SizeOf = files.GetFile(path).Size
End Function

Sub Put(name, text)
  Dim stream
  Set stream = files.CreateTextFile(InWork(name), True)
  stream.Write text
  stream.Close
End Sub

Dim nutSize, lightSize
nutSize = SizeOf(Given("SPLIT_FOLDER") & "\nut.stp")
lightSize = SizeOf(Given("SPLIT_FOLDER") & "\nut.lwt")

' CopyVeldoraObjectToWork -----------------------------------------------------------------------------------------

If Not files.FolderExists(workFolder) Then files.CreateFolder workFolder
Put "nut.stp", "an older file"
Same "CopyVeldoraObjectToWork gives the path", utils.CopyVeldoraObjectToWork(nut), InWork("nut.stp")
Same "CopyVeldoraObjectToWork replaces a file that is there", SizeOf(InWork("nut.stp")), nutSize
Same "CopyVeldoraObjectToWork of an assembly gives its path", utils.CopyVeldoraObjectToWork(as1), InWork("as1.ZVAProduct")
IsTrue "CopyVeldoraObjectToWork brings what the assembly holds", files.FileExists(InWork("rod-assembly.ZVAProduct"))
NoBox "CopyVeldoraObjectToWork shows nothing"
control.ArmOperation "VdSessionUtil.RunOperation", 1
Same "CopyVeldoraObjectToWork after a failure is empty", utils.CopyVeldoraObjectToWork(nut), ""
control.DisarmGate
BoxShown "CopyVeldoraObjectToWork reports it", "An unexpected error occurred in Cls_Utils.CopyVeldoraObjectToWork." & _
  vbCrLf & "VdSessionUtil.RunOperation: Injected failure", 16

' CopyVeldoraObjectLWTToWork, with the caller's own file system ---------------------------------------------------

Same "CopyVeldoraObjectLWTToWork gives the path", utils.CopyVeldoraObjectLWTToWork(nut, files), InWork("nut.lwt")
Same "CopyVeldoraObjectLWTToWork brings the light file", SizeOf(InWork("nut.lwt")), lightSize
Same "CopyVeldoraObjectLWTToWork without a file system is empty", utils.CopyVeldoraObjectLWTToWork(nut, Nothing), ""
control.ArmOperation "VdSessionUtil.CopyVaultFile", 1
Same "CopyVeldoraObjectLWTToWork after a failure is empty", utils.CopyVeldoraObjectLWTToWork(nut, files), ""
control.DisarmGate
IsFalse "CopyVeldoraObjectLWTToWork has deleted what was there", files.FileExists(InWork("nut.lwt"))

' CopyVeldoraObjectLWTToWork_Temp ---------------------------------------------------------------------------------

Same "CopyVeldoraObjectLWTToWork_Temp gives the path with the suffix", _
  utils.CopyVeldoraObjectLWTToWork_Temp(nut, "_tmp", files), InWork("nut_tmp.lwt")
Same "CopyVeldoraObjectLWTToWork_Temp brings the light file", SizeOf(InWork("nut_tmp.lwt")), lightSize
Same "CopyVeldoraObjectLWTToWork_Temp of nothing is empty", utils.CopyVeldoraObjectLWTToWork_Temp(Nothing, "_tmp", files), ""

' CopyVeldoraObjectToWorkAndGetLWT --------------------------------------------------------------------------------

Put "nut.stp", "an older file"
Same "CopyVeldoraObjectToWorkAndGetLWT gives the path of the light file", _
  utils.CopyVeldoraObjectToWorkAndGetLWT(session, nut, files), InWork("nut.stp.lwt")
Same "CopyVeldoraObjectToWorkAndGetLWT brings the light file", SizeOf(InWork("nut.stp.lwt")), lightSize
Same "CopyVeldoraObjectToWorkAndGetLWT brings the document too", SizeOf(InWork("nut.stp")), nutSize
Same "CopyVeldoraObjectToWorkAndGetLWT doesn't use the session", _
  utils.CopyVeldoraObjectToWorkAndGetLWT(Nothing, nut, files), InWork("nut.stp.lwt")
Same "CopyVeldoraObjectToWorkAndGetLWT of what has no file is empty", _
  utils.CopyVeldoraObjectToWorkAndGetLWT(session, NewObject("ZORVA Part", "no file"), files), ""
NoBox "the copies of light files show nothing"

' ExecuteZorvaScript ----------------------------------------------------------------------------------------------

control.ClearRecord
IsTrue "ExecuteZorvaScript runs a procedure", utils.ExecuteZorvaScript("RetrieveMatrix", "UpdateDisplay")
Told "ExecuteZorvaScript has run it in the CAD host", _
  InStr(control.ReadRecord(), "ScriptService.ExecuteScript") > 0, control.ReadRecord()
RenewTexts
IsFalse "ExecuteZorvaScript of an unknown one", utils.ExecuteZorvaScript("RetrieveMatrix", "None")
NextBoxHolds "ExecuteZorvaScript reports it", "Cls_Utils.ExecuteZorvaScript"

EndOfScript
