Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

' Cls_ReplaceByLatestLWT has no handler: what fails goes to its caller.
Dim command
control.Import Given("SPLIT_FOLDER")
Set command = Quintara("Cls_ReplaceByLatestLWT")
command.Run
BoxShown "Run wants a work in progress", CatalogueText("QD.REPLACELWT.IS_NOT_WIP", Array()), 4112
NewWip "as1", "DocXML", StoredMatrix("as1", "xml", ".xml")

Sub RunFails
  On Error Resume Next
  control.ArmOperation "ProductDocument.Product", 2
  command.Run
  FailsWith "Run hands on the CAD host's failure", 57, "ProductDocument.Product: Injected failure", _
    "Quintara.Cls_ReplaceByLatestLWT"
  control.DisarmGate
End Sub
RunFails
NoBox "Run doesn't show it"

EndOfScript
