' The stand-in client as a script sees it: the kinds of values, properties with arguments, lists, errors.
Dim client, session, store, part, rows, meta, query, count
Set client = CreateObject("Pelicore.PcApplication")
client.CreateDatabase workFolder & "/demo.db", workFolder & "/examples/company.json"
Set session = client.OpenDatabase(workFolder & "/demo.db", "anna")
Check "login", "anna", session.CurrentUser.LoginName
Check "administrator", False, session.CurrentUser.IsAdministrator
Check "language", "GER", session.Language
session.GlobalData.Value("a") = "text"
Check "global data", "text", session.GlobalData.Value("a")
session.GlobalData.Value("b") = CInt(7)
Check "16 bits", CInt(7), session.GlobalData.Value("b")
session.GlobalData.Value("b") = CLng(70000)
Check "32 bits", CLng(70000), session.GlobalData.Value("b")
session.GlobalData.Value("b") = True
Check "Boolean", True, session.GlobalData.Value("b")
session.GlobalData.Value("b") = 0.5
Check "double", 0.5, session.GlobalData.Value("b")
session.GlobalData.Value("b") = CDate(45322)
Check "date", CDate(45322), session.GlobalData.Value("b")
Check "position", CLng(2), session.GlobalData.Position("b")
session.GlobalData.Remove "a"
Check "removed", Null, session.GlobalData.Value("a")

Set meta = session.MetaData
Check "class id", CInt(1202), meta.ClassIdByName(meta.ClassById(1202).Name)
Check "file based", True, meta.ClassById(1202).IsFileBased
Check "mechanism", "Supplier Exchange", meta.DatabaseMechanism("Supplier Exchange").Name
Check "no mechanism", True, meta.DatabaseMechanism("none") Is Nothing
Set store = session.ObjectStore
Set part = store.Object(1202, 4721)
part.ReadData
Check "object id", CLng(4721), part.ObjectId
Check "description", Chr(71) & "eh" & Chr(228) & "use", part.Value("VRK_DESCRIPTION")
Check "no such object", True, store.Object(1202, 1) Is Nothing

Set query = store.NewQuery
query.Sql = "SELECT OBJECT_ID FROM " & meta.ClassById(1202).TableName
Set rows = query.Run
Check "column", "OBJECT_ID", rows.ColumnName(0)
count = rows.RowCount
Check "rows", True, count > 5
Set rows = CreateObject("PcRecList.PcRecordList")
rows.AddColumn "A", 10, 1
rows.Value(0, 0) = "x"
Check "cell", "x", rows.Value("A", 0)

On Error Resume Next
part.Value("NO_SUCH_ATTRIBUTE") = 1
Check "refused", True, Err.Number <> 0
Check "its text", True, InStr(Err.Description, "NO_SUCH_ATTRIBUTE") > 0
Err.Clear
On Error Goto 0
Finish
