Option Explicit
'#include "lib/checks.vbs"
'#include "lib/world.vbs"
'#include "lib/boxes.vbs"

Const kOwn = "Quintara.Cls_AdminSettings"

Dim settings, rows, values
Set settings = Quintara("Cls_AdminSettings")

Function OneValue(column, value)
  Set OneValue = vault.NewRecList
  OneValue.AddField column, 2, 255
  OneValue.AddRow
  OneValue.SetValue column, 0, value
End Function

' Before the columns are known ------------------------------------------------------------------------------------

Sub SetBeforeInit
  Dim result
  On Error Resume Next
  result = settings.SetSettingValues(session, "SITE", "COLOUR", True, -1, OneValue("TDMX_VALUE_1", "red"))
  Told "SetSettingValues fails before the columns are known", Err.Number <> 0 And Err.Source = kOwn, Err.Number & Err.Source
  Err.Clear
  Set result = settings.GetSettingValues(Nothing, "SITE", "COLOUR", True)
  FailsNaming "GetSettingValues fails without a session", 91, "", kOwn
End Sub
SetBeforeInit
' The columns are looked for on the way, and there are no texts yet to tell what went wrong with them.
BoxShown "GetSettingValues shows that the columns can't be found", "", 16

' InitSettings ----------------------------------------------------------------------------------------------------

StartSession
control.ArmOperation "VdMetaInfo.ClassByTable", 1
IsFalse "InitSettings after a failure", Quintara("Cls_AdminSettings").InitSettings(session)
control.DisarmGate
BoxShown "InitSettings reports it", "An unexpected error occurred in Cls_AdminSettings.InitSettings." & vbCrLf & _
  "VdMetaInfo.ClassByTable: Injected failure", 16
IsTrue "InitSettings finds the columns", settings.InitSettings(session)

' GetSettingSection, GetSettingValues -----------------------------------------------------------------------------

Set rows = settings.GetSettingSection(session, "QD", True)
GivesAnObject "GetSettingSection gives rows", rows
IsTrue "GetSettingSection names their subjects", rows.Header.Contains("TDMX_SUBJECT")
Same "GetSettingSection gives one for each setting", Subjects(rows), "CLASS_PRODUCTS,CLASS_PARTS,TREE_VIEW,TREE_VIEW_SEPARATOR"
GivesNothing "GetSettingSection of an unknown section", settings.GetSettingSection(session, "NONE", True, -1)

Function Subjects(list)
  Dim i
  For i = 0 To list.RecordCount - 1
    If i > 0 Then Subjects = Subjects & ","
    Subjects = Subjects & list.GetRecord(i).ValueAsString("TDMX_SUBJECT")
  Next
End Function

Set values = settings.GetSettingValues(session, "QD", "CLASS_PARTS", True)
Same "GetSettingValues gives the one row", values.RecordCount, CLng(1)
Same "GetSettingValues gives its value", values.GetRecord(0).ValueAsString("TDMX_VALUE_1"), "ZORVA Part"
IsFalse "GetSettingValues leaves out the subject", values.Header.Contains("TDMX_SUBJECT")
GivesNothing "GetSettingValues of an unknown subject", settings.GetSettingValues(session, "QD", "NONE", True, 1)
GivesNothing "GetSettingValues of a user without any", settings.GetSettingValues(session, "QD", "CLASS_PARTS", False, 1)

' SetSettingValues ------------------------------------------------------------------------------------------------

Dim user
user = session.UserMetaInfo.UserId
IsTrue "SetSettingValues makes a setting of a user", _
  settings.SetSettingValues(session, "SITE", "COLOUR", False, user, OneValue("TDMX_VALUE_1", "red"))
Same "SetSettingValues has made it", Colour(), "red"
IsTrue "SetSettingValues changes it", _
  settings.SetSettingValues(session, "SITE", "COLOUR", False, CLng(user), OneValue("TDMX_VALUE_1", "blue"))
Same "SetSettingValues has changed it", Colour(), "blue"
IsTrue "SetSettingValues counts columns from 1 to as many as there are", _
  settings.SetSettingValues(session, "SITE", "COLOUR", False, user, OneValue("TDMX_VALUE_3", "green"))
Same "SetSettingValues has written none then", Colour(), "blue"

Function Colour()
  Colour = settings.GetSettingValues(session, "SITE", "COLOUR", False, user).GetRecord(0).ValueAsString("TDMX_VALUE_1")
End Function

' Failures that go to the caller ----------------------------------------------------------------------------------

Sub SettingsFail
  Dim result
  On Error Resume Next
  control.ArmOperation "VdQuery.RunWithBehavior", 1
  Set result = settings.GetSettingSection(session, "QD", True)
  FailsWith "GetSettingSection hands on the vault's failure", 57, "VdQuery.RunWithBehavior: Injected failure", kOwn
  Set result = settings.GetSettingValues(session, "QD", "CLASS_PARTS", True)
  FailsWith "GetSettingValues hands on the vault's failure", 57, "VdQuery.RunWithBehavior: Injected failure", kOwn
  result = settings.SetSettingValues(session, "SITE", "COLOUR", False, user, OneValue("TDMX_VALUE_1", "red"))
  FailsWith "SetSettingValues hands on the vault's failure", 57, "VdQuery.RunWithBehavior: Injected failure", kOwn
  control.DisarmGate
  result = settings.SetSettingValues(session, "SITE", "COLOUR", False, user, Nothing)
  FailsWith "SetSettingValues fails without values", 91, "Object variable or With block variable not set", kOwn
End Sub
SettingsFail
NoBox "failures that go to the caller aren't shown"

EndOfScript
