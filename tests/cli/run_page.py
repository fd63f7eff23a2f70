#!/usr/bin/env python3
"""Runs the commands of a page of the documentation and compares what they show.

    run_page.py PAGE PROGRAMS EXAMPLES

In blocks marked "console", "$ " begins a command; the lines below are its output, standard error included, and "[1]"
its exit status when it is not 0. "..." in a line stands for any text, a line "..." for any lines."""
import os, re, subprocess, sys, tempfile

page, programs, examples = (os.path.abspath(argument) for argument in sys.argv[1:])
blocks = re.findall(r'^```console\n(.*?)^```$', open(page, encoding='utf-8').read(), re.M | re.S)
steps = [step for block in blocks for step in re.findall(r'^\$ (.*)\n((?:(?!\$ ).*\n)*)', block, re.M)]
if not steps:
    sys.exit(f'{page} shows no commands')


def pattern(expected):
    text = ''
    for line in expected.splitlines():
        text += '(?:.*\n)*?' if line == '...' else '.*?'.join(re.escape(part) for part in line.split('...')) + '\n'
    return text


with tempfile.TemporaryDirectory() as folder:
    # One shell, so that what a step exports stays.
    script = ''.join(f'{command}\nstatus=$?; echo; [ $status = 0 ] || echo "[$status]"; echo "=== end {number}"\n'
                     for number, (command, _) in enumerate(steps)).replace('/usr/share/tessel/examples', examples)
    environment = dict(os.environ, PATH=programs + ':' + os.environ['PATH'], LC_ALL='C.UTF-8', HOME=folder)
    shown = subprocess.run(['bash', '-c', script], cwd=folder, env=environment, text=True, stdin=subprocess.DEVNULL,
                           stdout=subprocess.PIPE, stderr=subprocess.STDOUT).stdout
    for number, (command, expected) in enumerate(steps):
        result, _, shown = shown.partition(f'=== end {number}\n')
        result = re.sub(r'\n\n(\[\d+\]\n)?$', r'\n\1', '\n' + result)[1:]
        if not re.fullmatch(pattern(expected), result):
            sys.exit(f'{page}\n$ {command}\nshows\n{result}instead of\n{expected}')
print(f'{len(steps)} commands')
