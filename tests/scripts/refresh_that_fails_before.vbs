Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

' The vault is made to fail where a refresh logs the user off.
Told "the assembly comes in", InStr(control.Import(Given("SPLIT_FOLDER")), "added" & vbTab & "as1") > 0, "it doesn't"
session.Config.SetValue "$User\ZORVA\Refresh_Screen", "MINE"
session.Config.SetValue "$User\LIFE_CYCLE\SwitchToLatestForceCheckOut", "MINE"
control.ArmOperation "VdSession.UserLogoff", 1

EndOfScript
