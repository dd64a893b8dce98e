Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

' What Cls_Application.Run refuses before any panel opens.
Dim command, records
control.Import Given("SPLIT_FOLDER")
Set command = Quintara("Cls_Application")

Set records = control.SelectedRecords("as1|nut")
command.Run records
BoxShown "Run wants one object", CatalogueText("QD.APPLICATION.SELECTION_IS_EMPTY", Array()), 4160
Same "Run leaves the records alone", records.RecordCount, CLng(2)

LifeCycle.CheckOut VaultObject("plate"), Nothing, False
command.Run control.SelectedRecords("plate")
BoxShown "Run wants it checked in or released", CatalogueText("QD.APPLICATION.MUST_BE_CHECKIN_OR_RELEASED", Array("plate")), 64

command.Run control.SelectedRecords("")
NextBoxHolds "Run shows a failure for none", """Quintara"" 16 ""An unexpected error occurred in Cls_Application.Run.\n"
command.Run Nothing
NextBoxHolds "Run shows a failure for no records", """Quintara"" 16 ""An unexpected error occurred in Cls_Application.Run.\n"
NoBox "Run shows nothing more"
Same "no document was made", cad.Documents.Count, CLng(0)

EndOfScript
