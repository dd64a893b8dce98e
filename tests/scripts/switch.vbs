Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"

Dim toLight, toProduct, wip, selection, matrix
control.Import Given("SPLIT_FOLDER")
Set toLight = Quintara("Cls_SwitchToLWT")
Set toProduct = Quintara("Cls_SwitchToProduct")
Set matrix = StoredMatrix("as1", "xml", ".xml")

Function FormOf(which)
  FormOf = Quintara("Cls_Utils").ReadStringProperty(wip.Products.Item(which), "TYPE", "String")
End Function

' What is refused -------------------------------------------------------------------------------------------------

toLight.Run
BoxShown "Cls_SwitchToLWT wants a work in progress", CatalogueText("QD.SWITCH.ONLY_AVAILABLE_FOR_WIP", Array()), 4160
toProduct.Run
BoxShown "Cls_SwitchToProduct wants one too", CatalogueText("QD.SWITCH.ONLY_AVAILABLE_FOR_WIP", Array()), 4160
Set wip = NewWip("as1", "DocXML", matrix)
Set selection = cad.ActiveDocument.Selection
toLight.Run
BoxShown "Cls_SwitchToLWT wants a selection", CatalogueText("QD.SWITCH.SELECT_AT_LEAST_ONE_OBJECT", Array()), 4160
toProduct.Run
BoxShown "Cls_SwitchToProduct wants one too", CatalogueText("QD.SWITCH.SELECT_AT_LEAST_ONE_OBJECT", Array()), 4160

' To the light representation -------------------------------------------------------------------------------------

Insert "plate", "PRODUCT"
Insert "rod", "PRODUCT"
wip.Products.Item(1).Position.SetComponents Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 7, 8, 9)
SelectAlone wip.Products.Item(1)
toLight.Run
NoBox "Cls_SwitchToLWT says nothing when all went well"
Same "Cls_SwitchToLWT has stamped the form", FormOf(1), "LWT"
Same "Cls_SwitchToLWT has stamped the object", _
  PropertyOf(wip.Products.Item(1), "OBJECT_ID"), CStr(VaultObject("plate").ObjectId)
Same "Cls_SwitchToLWT has stamped its class", _
  PropertyOf(wip.Products.Item(1), "CLASS_ID"), CStr(VaultObject("plate").ClassId)
Told "Cls_SwitchToLWT has put a light file in its place", _
  LCase(Right(wip.Products.Item(1).Reference.Parent.FullName, 10)) = "\plate.lwt", _
    wip.Products.Item(1).Reference.Parent.FullName
SameNumbers "Cls_SwitchToLWT leaves the component where it stands", NumbersOf(wip.Products.Item(1)), _
  Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 7, 8, 9)
Same "Cls_SwitchToLWT leaves what isn't selected", FormOf(2), ""
SelectAlone wip.Products.Item(1)
toLight.Run
BoxShown "Cls_SwitchToLWT refuses what is light", _
  CatalogueText("QD.SWITCH.ALREADY_IN_STATE", Array(wip.Products.Item(1).Name, "LWT")), 4160

' And back --------------------------------------------------------------------------------------------------------

SelectAlone wip.Products.Item(1)
toProduct.Run
NoBox "Cls_SwitchToProduct says nothing when all went well"
Same "Cls_SwitchToProduct has taken the stamp away", FormOf(1), ""
Told "Cls_SwitchToProduct has put the document in its place", _
  LCase(Right(wip.Products.Item(1).Reference.Parent.FullName, 10)) = "\plate.stp", _
    wip.Products.Item(1).Reference.Parent.FullName
RenewAllTexts
SelectAlone wip.Products.Item(1)
toProduct.Run
BoxShown "Cls_SwitchToProduct refuses what is a document", _
  CatalogueText("QD.SWITCH.ALREADY_IN_STATE", Array(wip.Products.Item(1).Name, "product")), 4160

' A wrong state ---------------------------------------------------------------------------------------------------

Insert "nut", "LWT"
LifeCycle.CheckOut VaultObject("nut"), Nothing, False
LifeCycle.CheckOut VaultObject("rod"), Nothing, False
SelectAlone wip.Products.Item(2)
toLight.Run
BoxShown "Cls_SwitchToLWT refuses what is checked out", _
  CatalogueText("QD.SWITCH.NOT_IN_CORRECT_STATE", Array(wip.Products.Item(2).Name)), 4112
RenewAllTexts
SelectAlone wip.Products.Item(3)
toProduct.Run
BoxShown "Cls_SwitchToProduct passes it over", _
  CatalogueText("QD.SWITCH.NOT_IN_CORRECT_STATE", Array(wip.Products.Item(3).Name)), 4112

' Failures --------------------------------------------------------------------------------------------------------

SelectAlone wip.Products.Item(2)
control.ArmOperation "Document.Selection", 1
toLight.Run
control.DisarmGate
BoxShown "Cls_SwitchToLWT shows a failure", "An unexpected error occurred in Cls_SwitchToLWT.Run." & vbCrLf & _
  "ProductDocument.Selection: Injected failure", 4112
RenewAllTexts
control.ArmOperation "Document.Selection", 1
toProduct.Run
control.DisarmGate
BoxShown "Cls_SwitchToProduct shows a failure", "An unexpected error occurred in Cls_SwitchToProduct.Run." & vbCrLf & _
  "ProductDocument.Selection: Injected failure", 4112

' The texts of the process's own session, which a session beside it reads anew.
Sub RenewAllTexts
  StartSession
End Sub

EndOfScript
