' The hooks as docs/windows.md gives them, called by a script that plays the client.
Dim client, session, rows, none, third
Set client = CreateObject("Pelicore.PcApplication")
client.CreateDatabase workFolder & "/demo.db", workFolder & "/examples/company.json"
Set session = client.OpenDatabase(workFolder & "/demo.db", "ben")
Set none = Nothing
Set third = Nothing
Set rows = client.ObjectRows(session, "1202:4721,1201:4711")
Check "collect", CInt(0), CollectSelObjsHook(session, "", rows, none, third)
Check "collected", "2", session.GlobalData.Value("ExportObjCount")
Check "the second", "1201:4711", session.GlobalData.Value("ExportObject2")
Check "third list", True, third Is Nothing

Function LockOf(id)
  Dim document
  Set document = session.ObjectStore.Object(1202, id)
  document.ReadData
  LockOf = document.Value("VRKX_DX_LOCK_STATE")
End Function
Set rows = client.ObjectRows(session, "1202:4721")
Check "lock", CInt(0), LockObjectHook(session, "", rows, none, third)
Check "locked", True, CBool(LockOf(4721))
Check "unlock", CInt(0), UnlockObjectHook(session, "", rows, none, third)
Check "unlocked", False, CBool(LockOf(4721))

Check "copy stage", CInt(0), LFCStage2Hook(session, "COPYFILE", rows, rows, third)
Check "no session", CInt(0), LockObjectHook("rubbish", 1, 2, 3, 4)
Finish
