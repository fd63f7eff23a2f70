#!/usr/bin/env python3
"""What a script of a few lines does for the same documents: copies and hashes each, writes the XML and a row each.

    script_steps.py FILES TARGET     prints the seconds that it took, the interpreter's start not counted
"""
import hashlib, os, shutil, sqlite3, sys, time
from xml.sax.saxutils import quoteattr


def run(files, target):
    os.mkdir(target)
    rows = []
    for name in sorted(os.listdir(files)):
        copied = os.path.join(target, name)
        shutil.copy2(os.path.join(files, name), copied)
        with open(copied, 'rb') as file:
            digest = hashlib.sha256(file.read()).hexdigest()
        rows.append((name, digest))
    with open(os.path.join(target, 'documents.xml'), 'w', encoding='iso-8859-1') as xml:
        xml.write('<?xml version="1.0" encoding="iso-8859-1"?><Documents>')
        xml.writelines(f'<Document Name={quoteattr(name)} Digest="{digest}"/>' for name, digest in rows)
        xml.write('</Documents>')
    database = sqlite3.connect(target + '.db')
    database.execute('CREATE TABLE DOCUMENT (NAME TEXT, DIGEST TEXT)')
    database.executemany('INSERT INTO DOCUMENT VALUES (?, ?)', rows)
    database.commit()


start = time.perf_counter()
run(*sys.argv[1:3])
print(time.perf_counter() - start)
