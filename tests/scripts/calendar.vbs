' The calendar late-bound: business days, holidays, values. Prints OK at its end.
Option Explicit

Dim calendar, failures, day
failures = 0

Sub Check(what, got, wanted)
  If got <> wanted Then
    WScript.Echo what & ": " & got & " instead of " & wanted
    failures = failures + 1
  End If
End Sub

Set calendar = CreateObject("Kestrelon2012.USCalendar")
Check "national days", calendar.BusinessDaysBetween(DateSerial(2025, 12, 31), DateSerial(2026, 12, 31)), 252
calendar.BusinessDays = 1
Check "bank days", calendar.BusinessDaysBetween(DateSerial(2025, 12, 31), DateSerial(2026, 12, 31)), 249
calendar.BusinessDays = 0
Check "Easter", calendar.EasterDate(2026), DateSerial(2026, 4, 5)
Check "name", calendar.HolidayName(DateSerial(2026, 11, 15)), "Proclama" & Chr(231) & Chr(227) & "o da Rep" & Chr(250) & "blica"
calendar.AddHoliday 9, 7, "Data magna"
Check "own holiday", calendar.IsHoliday(DateSerial(2026, 7, 9)), True
calendar.RemoveHoliday 9, 7
Check "removed", calendar.IsHoliday(DateSerial(2026, 7, 9)), False
Check "next", calendar.NextBusinessDay(DateSerial(2026, 12, 25)), DateSerial(2026, 12, 28)
Check "previous", calendar.NextBusinessDay(DateSerial(2026, 12, 25), True), DateSerial(2026, 12, 24)
day = DateSerial(2026, 11, 16)
calendar.Value = day
Check "default member", calendar, day
Check "text", calendar.Text, "16/11/2026"
calendar.Text = "290224"
Check "typed", calendar.Value, DateSerial(2024, 2, 29)
calendar.Value = "31/02/2026"
Check "no date", calendar.Value, DateSerial(2024, 2, 29)
calendar.AllowNull = True
calendar.ClearControl
Check "nothing", IsEmpty(calendar.Value), True
calendar.SelectMode = 2
calendar.DaySelected(day) = True
calendar.DaySelected(day + 3) = True
Check "selected", calendar.DaySelected(day + 3), True
Check "not selected", calendar.DaySelected(day + 1), False
Check "range end", calendar.RangeEnd, day + 3

If failures = 0 Then WScript.Echo "OK"
