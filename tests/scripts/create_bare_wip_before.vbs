Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

' A vault with the real assembly, without any matrix.
Told "the assembly comes in", InStr(control.Import(Given("SPLIT_FOLDER")), "added" & vbTab & "as1") > 0, "it doesn't"

EndOfScript
