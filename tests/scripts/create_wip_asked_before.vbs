Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

' A CAD host that asks its user for the part number of a new document, so that the document is there only later.
Told "the assembly comes in", InStr(control.Import(Given("SPLIT_FOLDER")), "added" & vbTab & "as1") > 0, "it doesn't"
StoredMatrix "as1", "xml", ".xml"
control.AddDuringSleep 200

EndOfScript
