' Ten lines as an administrator's script has them, around pages that another process clicks through.
Dim client, session, rows, none, third, shell
Set client = CreateObject("Pelicore.PcApplication")
client.CreateDatabase workFolder & "/demo.db", workFolder & "/examples/company.json"
Set session = client.OpenDatabase(workFolder & "/demo.db", "ben")
Set none = Nothing
Set third = Nothing
Set rows = client.ObjectRows(session, "1201:4711")
Set shell = CreateObject("WScript.Shell")
Check "collect", CInt(0), CollectSelObjsHook(session, "", rows, none, third)
shell.Run """" & binFolder & "/page_hand.exe"" {ENTER} ""No sending"" ""Next >>"" ""Copy all"" Process Send", 0, False
Check "export", CInt(0), StartExportHook(session, "", none, none, third)
Check "nothing is selected any more", Null, session.GlobalData.Value("ExportObjCount")
Check "latest", CInt(0), GetLatestDataExObjHook(session, "", rows)
Check "it was shown", True, Left(client.ShownObjects, 4) = "900:"
Finish
