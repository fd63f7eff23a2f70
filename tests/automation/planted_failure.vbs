Check "what is so", 1, 1
Check "what is not so", 1, 2
Finish
