Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

Const kOwn = "Quintara.Cls_Init"

Dim bare, init
Set bare = Quintara("Cls_Init")
Set init = Quintara("Cls_Init")

' Before a session, where the catalogue isn't read yet and the texts are those of the program ---------------------

control.ArmOperation "VdApplication.Engine", 1
IsFalse "Init without a session of the vault", init.Init
control.DisarmGate
BoxShown "Init says so in its own words", "Error retrieving Veldora session -- ", 16
control.ArmOperation "HIXEngine.IsConnected", 1
IsFalse "Init after a failure that isn't foreseen", init.Init
control.DisarmGate
NextBoxHolds "Init has no text for it yet", """Quintara"" 16 """""

' The pieces of a start, of an object that hasn't started one -----------------------------------------------------

IsFalse "InitLang before InitXML", bare.InitLang
IsFalse "InitTrans before InitXML", bare.InitTrans
IsFalse "NLSFilesExist before InitXML", bare.NLSFilesExist
Same "InitiateNLSVariable before InitXML", bare.InitiateNLSVariable, CInt(1)
IsTrue "CloseXML before InitXML", bare.CloseXML
NoBox "the pieces show nothing"

' The start -------------------------------------------------------------------------------------------------------

IsTrue "Init succeeds", init.Init
IsTrue "Init succeeds again", init.Init
NoBox "Init shows nothing"

IsTrue "InitAdminSettings reads the settings", bare.InitAdminSettings(session)
IsTrue "InitAdminSettings works on the session of the process", bare.InitAdminSettings(Nothing)
control.ArmOperation "VdQuery.RunWithBehavior", 1
IsFalse "InitAdminSettings after a failure", bare.InitAdminSettings(session)
control.DisarmGate
NoBox "InitAdminSettings shows nothing"
IsTrue "InitXML opens the texts", bare.InitXML(session)

Sub InitXMLFails
  Dim result
  On Error Resume Next
  result = bare.InitXML(Nothing)
  FailsWith "InitXML fails without a session", 91, "Object variable or With block variable not set", kOwn
  control.ArmOperation "VdSession.ClientName", 1
  result = bare.InitXML(session)
  FailsWith "InitXML hands on the vault's failure", 57, "VdSession.ClientName: Injected failure", kOwn
  control.DisarmGate
  result = bare.InitXML(session)
  NoFailure "InitXML works again"
End Sub
InitXMLFails

IsFalse "InitLang before InitTrans", bare.InitLang
IsTrue "InitTrans makes the translator", bare.InitTrans
IsTrue "InitLang gives it the language", bare.InitLang
IsTrue "NLSFilesExist finds the files", bare.NLSFilesExist
Same "InitiateNLSVariable reads every text", bare.InitiateNLSVariable, CInt(0)
IsTrue "CloseXML closes them", bare.CloseXML
IsFalse "NLSFilesExist after CloseXML", bare.NLSFilesExist

' After a start the texts are those of the catalogue --------------------------------------------------------------

control.ArmOperation "VdApplication.Engine", 1
IsFalse "Init without a session of the vault, once more", init.Init
control.DisarmGate
BoxShown "Init says so in the catalogue's words", CatalogueText("QD.INIT.ERROR_RETRIEVING_VELDORA_SESSION", Array("")), 16

EndOfScript
