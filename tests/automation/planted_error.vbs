Check "what is so", 1, 1
Set nothing_ = CreateObject("prjTessel.NoSuchClass")
Finish
