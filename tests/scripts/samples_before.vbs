Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"

' A vault with the real assembly, which is open in the CAD host.
Told "the assembly comes in", InStr(control.Import(Given("SPLIT_FOLDER")), "added" & vbTab & "as1") > 0, "it doesn't"
StartSession
Quintara("Cls_Utils").CopyVeldoraObjectToWork VaultObject("as1")
Same "it is open", cad.Documents.Open(InWork("as1.ZVAProduct")).Product.PartNumber, "as1"

EndOfScript
