Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

' A vault with the real assembly and its matrix.
Told "the assembly comes in", InStr(control.Import(Given("SPLIT_FOLDER")), "added" & vbTab & "as1") > 0, "it doesn't"
StoredMatrix "as1", "xml", ".xml"
control.ClearRecord

EndOfScript
