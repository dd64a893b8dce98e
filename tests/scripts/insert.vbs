Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"
'#include "lib/wips.vbs"
'#include "lib/workbooks.vbs"

Dim insertLight, look, wip, nut, book
control.Import Given("SPLIT_FOLDER")
Set insertLight = Quintara("Cls_InsertLWT")
Set look = Quintara("Cls_InsertFromVD")
Set nut = VaultObject("nut")

' Cls_InsertLWT ---------------------------------------------------------------------------------------------------

insertLight.Run nut, "LWT"
BoxShown "Cls_InsertLWT wants an active product", _
  CatalogueText("QD.INSERTWLT.CANT_RETRIEVE_ZORVA_ACTIVEDOCUMENT", Array("")), 4112
Set wip = cad.Documents.Add("ZVAProduct").Product
insertLight.Run nut, "LWT"
BoxShown "Cls_InsertLWT wants a work in progress", CatalogueText("QD.INSERTWLT.IS_NOT_WIP", Array("")), 4112
CloseAllDocuments

Set book = StoredBook("as1", True)
Set wip = NewWip("as1", "DocExcel", book)
insertLight.Run nut, "LWT"
NoBox "Cls_InsertLWT says nothing when all went well"
Same "Cls_InsertLWT has added the component", ChildrenOf(wip), "nut"
Same "Cls_InsertLWT has stamped the form", PropertyOf(wip.Products.Item(1), "TYPE"), "LWT"
Same "Cls_InsertLWT has stamped the object", PropertyOf(wip.Products.Item(1), "OBJECT_ID"), CStr(nut.ObjectId)
Same "Cls_InsertLWT has stamped its class", PropertyOf(wip.Products.Item(1), "CLASS_ID"), CStr(nut.ClassId)
insertLight.Run VaultObject("plate"), "PRODUCT"
Same "Cls_InsertLWT adds a document too", ChildrenOf(wip), "nut,plate"
Same "Cls_InsertLWT doesn't stamp that", Quintara("Cls_Utils").ReadStringProperty(wip.Products.Item(2), "TYPE"), ""
insertLight.Run NewObject("Document", "paper"), "LWT"
NoBox "Cls_InsertLWT passes over what is no part or product"
Same "Cls_InsertLWT has added nothing then", ChildrenOf(wip), "nut,plate"
insertLight.Run nut, "lwt"
NextBoxHolds "Cls_InsertLWT shows a failure, as for an unknown form", "Cls_InsertLWT.Run"

' Cls_InsertFromVD ------------------------------------------------------------------------------------------------

look.Run VaultObject("rod")
NoBox "Cls_InsertFromVD says nothing of what isn't there"
look.Run nut
BoxShown "Cls_InsertFromVD tells of what is there", "Ca existe deja", 0
Same "Cls_InsertFromVD inserts nothing", ChildrenOf(wip), "nut,plate"
insertLight.Run nut, "LWT"
look.Run nut
BoxShown "Cls_InsertFromVD tells it of each", "Ca existe deja", 0
BoxShown "Cls_InsertFromVD tells it of the second too", "Ca existe deja", 0
NoBox "Cls_InsertFromVD tells it no more"

' A workbook of the oldest form.
wip.Parameters.Item("DocExcelOID").ValuateFromString CStr(StoredBook("rod-assembly", False).ObjectId)
look.Run nut
BoxShown "Cls_InsertFromVD tells of an old workbook first", _
  "The matrix has been created with an old version of QNTR (< DROP 4)." & vbCrLf & _
  "The instances can't be positioned." & vbCrLf & "Please generate a new matrix for this product.", 64
BoxShown "Cls_InsertFromVD goes on after it", "Ca existe deja", 0
BoxShown "Cls_InsertFromVD goes on to the end", "Ca existe deja", 0
wip.Parameters.Item("DocExcelOID").ValuateFromString "99999"
look.Run nut
BoxShown "Cls_InsertFromVD wants a matrix in the vault", _
  CatalogueText("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", Array()), 4160
CloseAllDocuments
look.Run nut
NextBoxHolds "Cls_InsertFromVD wants an active product", "No product is active in ZORVA."

EndOfScript
