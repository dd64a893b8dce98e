Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"

Const kOwn = "Quintara.Cls_XML"
Const kControls = "norvik.solutions.NLS.Controls.QNTR"
Const kErrors = "norvik.solutions.NLS.Errors.QNTR"

Dim texts
Set texts = Quintara("Cls_XML")

' Before Init -----------------------------------------------------------------------------------------------------

Same "GetConfigParam before Init is empty", texts.GetConfigParam("veldora://x", "Any"), ""
Same "GetConfigParamNLS before InitTranslator is empty", texts.GetConfigParamNLS(kControls, "Controls", "QD.WIP_CAPTION"), ""
IsFalse "IsNLSValid before Init is False", texts.IsNLSValid(kControls, "Controls")

Sub LanguageWithoutTranslator
  On Error Resume Next
  texts.InitLanguage
  FailsNaming "InitLanguage before InitTranslator fails", 91, "", kOwn
End Sub
LanguageWithoutTranslator

' Init ------------------------------------------------------------------------------------------------------------

Sub InitWithoutASession
  On Error Resume Next
  texts.Init Nothing
  FailsNaming "Init without a session fails", 91, "", kOwn
  control.ArmOperation "VdSession.ClientName", 1
  texts.Init session
  FailsNaming "Init hands on the vault's failure", 57, "Injected failure", kOwn
  control.DisarmGate
  texts.Init session
  NoFailure "Init with a session succeeds"
End Sub
InitWithoutASession

' InitTranslator, InitLanguage ------------------------------------------------------------------------------------

' The language is that of the session that Cls_Init starts.
StartSession

Sub Translator
  On Error Resume Next
  texts.InitTranslator
  NoFailure "InitTranslator succeeds"
  texts.InitLanguage
  NoFailure "InitLanguage succeeds then"
End Sub
Translator

' Results ---------------------------------------------------------------------------------------------------------

Same "GetConfigParamNLS gives a text of the catalogue", _
  texts.GetConfigParamNLS(kControls, "Controls", "QD.WIP_CAPTION"), "Create a WIP"
Same "GetConfigParamNLS gives one of the other catalogue", _
  texts.GetConfigParamNLS(kErrors, "Errors", "QD.APPLICATION.WIP_CREATION_SUCCESSFUL"), "The WIP was created."
Same "GetConfigParamNLS of an unknown key is empty", texts.GetConfigParamNLS(kErrors, "Errors", "QD.NO_SUCH_KEY"), ""
Same "GetConfigParamNLS of an unknown namespace is empty", texts.GetConfigParamNLS("none", "Errors", "QD.FIND_CAPTION"), ""
IsTrue "IsNLSValid finds the captions", texts.IsNLSValid(kControls, "Controls")
IsTrue "IsNLSValid finds the messages", texts.IsNLSValid(kErrors, "Errors")
IsFalse "IsNLSValid needs the right appendix", texts.IsNLSValid(kErrors, "Controls")

Dim uri
uri = "veldora://" & session.Database.Alias
session.Config.SetValue "$User\ZORVA\Refresh_Screen", "TRUE"
Same "GetConfigParam gives a value of the configuration", texts.GetConfigParam(uri, "$User\ZORVA\Refresh_Screen"), "TRUE"
Same "GetConfigParam of an unknown key is empty", texts.GetConfigParam(uri, "$User\No\Such"), ""

EndOfScript
