' Reads settings of the site, and writes one of the user.
Option Explicit

Dim vault, session, settings, rows, values, user, i
Set vault = GetObject(, "Veldora.VdApplication")
Set session = vault.Engine.Sessions(0)
Set settings = CreateObject("Quintara.Cls_AdminSettings")

' All settings of a section, a row each. The user's id is left out: these are the site's.
Set rows = settings.GetSettingSection(session, "QD", True)
If Not rows Is Nothing Then
  For i = 0 To rows.RecordCount - 1
    With rows.GetRecord(i)
      WScript.Echo .ValueAsString("TDMX_SUBJECT") & " = " & .ValueAsString("TDMX_VALUE_1")
    End With
  Next
End If

' A setting is written as a table of one row, whose columns bear the names of the value columns.
Set values = vault.NewRecList
values.AddField "TDMX_VALUE_1", 2, 255
values.AddRow
values.SetValue "TDMX_VALUE_1", 0, "blue"
user = session.UserMetaInfo.UserId
If settings.SetSettingValues(session, "SITE", "COLOUR", False, user, values) Then
  Set values = settings.GetSettingValues(session, "SITE", "COLOUR", False, user)
  WScript.Echo "COLOUR is " & values.GetRecord(0).ValueAsString("TDMX_VALUE_1")
End If
