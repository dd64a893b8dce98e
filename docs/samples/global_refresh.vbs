' Brings the product that is selected in the vault, and all that it holds, up to the latest revisions.
'
'   cscript //nologo global_refresh.vbs PART_NUMBER
Option Explicit

Dim control, command
Set control = GetObject(, "QuintaraHosts.Control")
Set command = CreateObject("Quintara.Cls_GlobalRefreshVD")
command.Run control.SelectedRecords(WScript.Arguments(0))
With control.FindObject(WScript.Arguments(0)).Record
  WScript.Echo .ValueAsString("NM_CN_PART_NUMBER") & " " & .ValueAsString("REVISION") & ", state " & .ValueAsInteger("STATE")
End With
