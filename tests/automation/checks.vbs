' What the scripts check with. Finish ends with the one status that means success.
Dim checks, failures, workFolder, binFolder
checks = 0
failures = 0
workFolder = WScript.Arguments(0)
binFolder = WScript.Arguments(1)

Sub Check(what, expected, actual)
  checks = checks + 1
  If VarType(expected) = VarType(actual) Then
    If IsNull(expected) Then Exit Sub
    If expected = actual Then Exit Sub
  End If
  failures = failures + 1
  WScript.Echo what & ": expected " & expected & " (" & VarType(expected) & "), is " & actual & " (" & VarType(actual) & ")"
End Sub

Sub Finish
  If failures = 0 Then
    WScript.Echo "all of " & checks & " checks passed"
    WScript.Quit 42
  End If
  WScript.Echo failures & " of " & checks & " checks failed"
  WScript.Quit 1
End Sub
