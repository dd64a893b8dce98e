Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/wips.vbs"

' The matrix that a sample has made, and a work in progress of it.
Dim linked, wip
StartSession
Quintara("Cls_Utils").RetrieveAllObjectsLinked session, VaultObject("as1"), "Document", "Document Link", linked
Same "the sample has written a matrix", linked.Count, CLng(1)
CloseAllDocuments
Set wip = NewWip("as1", "DocXML", linked.Item(0))
Insert "rod", "PRODUCT"
Same "the work in progress stands", ChildrenOf(wip), "rod"

EndOfScript
