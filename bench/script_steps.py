#!/usr/bin/env python3
"""What a script of a few lines does for the same documents: copies and hashes each, writes the same XML and a row each.

    script_steps.py FILES TARGET     prints the seconds that it took, the interpreter's start not counted
"""
import hashlib, os, shutil, sqlite3, sys, time
from lxml import etree


def add(parent, tag, number, instance, text, **more):
    element = etree.SubElement(parent, tag, Identifier=f'1202_{number}', Instance=str(instance), **more)
    element.text = etree.CDATA(text)
    return element


def write_structure(names, path):
    """The lists of a structure file, the first document being the assembly of the others."""
    top = etree.Element('DataEx_Structure', direction='Export')
    content, hierarchy, links = (etree.SubElement(top, n) for n in ('Content_List', 'Hierarchical_Structure', 'Dependency_List'))
    assembly = None
    for number, name in enumerate(names, 1):
        text = f'Item {number - 1}'
        add(content if assembly is None else content[0], '_STOBJECT_', number, 0, text, ACCESS_AUTHORIZATION='ReadOnly',
            FIRST_DESCRIPTION=text, SECOND_DESCRIPTION='', ORIG_FILE_NAME=name, FILE_EXTENSION=name.rpartition('.')[2],
            IS_DRAXA_DOC='0', STRUCTURE_LEVEL='2', LINK_NAME='NoName', LINK_DIRECTION='-1', RENAME_FILE_NAME='',
            PELICORE_CLASS_ID='1202', PELICORE_OBJ_ID=str(number), STATUS='3', REVISION='A')
        if assembly is None:
            assembly = add(hierarchy, '_H_STOBJECT_', number, 0, text)
        else:
            add(assembly, '_H_STOBJECT_', number, 0, text)
            first = add(links, '_D_STOBJECT_', 1, number - 2, 'Item 0', LINK_NAME='Product Structure', LINK_DIRECTION='0')
            add(first, '_D_STOBJECT_', number, 0, text)
    etree.ElementTree(top).write(path, encoding='iso-8859-1', xml_declaration=True)


def run(files, target):
    os.mkdir(target)
    rows = []
    for name in sorted(os.listdir(files)):
        copied = os.path.join(target, name)
        shutil.copy2(os.path.join(files, name), copied)
        with open(copied, 'rb') as file:
            rows.append((name, hashlib.sha256(file.read()).hexdigest()))
    write_structure([name for name, _ in rows], os.path.join(target, 'documents.xml'))
    database = sqlite3.connect(target + '.db')
    database.execute('CREATE TABLE DOCUMENT (NAME TEXT, DIGEST TEXT)')
    database.executemany('INSERT INTO DOCUMENT VALUES (?, ?)', rows)
    database.commit()


start = time.perf_counter()
run(*sys.argv[1:3])
print(time.perf_counter() - start)
