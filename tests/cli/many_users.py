#!/usr/bin/env python3
"""Sixteen processes at once on one site: exports, locks and continuations, in a file or on a PostgreSQL server.

    many_users.py PROGRAMS EXAMPLES [CLUSTER_SCRIPT]

With the script, a server of the test's own holds the site, and is restarted while exports run."""
import json, os, subprocess, sys, tempfile

programs, examples = (os.path.abspath(argument) for argument in sys.argv[1:3])
cluster_script = os.path.abspath(sys.argv[3]) if len(sys.argv) > 3 else None
PROCESSES = 16


def tessel(*arguments):
    return subprocess.Popen([programs + '/tessel', *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, text=True)


def run(*arguments):
    process = tessel(*arguments)
    out, err = process.communicate()
    return process.returncode, out, err


def at_once(commands):
    """Status, output and errors of commands that run at once."""
    started = [tessel(*command) for command in commands]
    return [(process.wait(), *process.communicate()) for process in started]


def check(condition, *what):
    if not condition:
        sys.exit('\n'.join(str(one) for one in what))


def folder_of(run):
    return run[1].strip().splitlines()[-1]


with tempfile.TemporaryDirectory() as folder:
    os.chmod(folder, 0o755)
    os.environ.update(TESSEL_DRIVES=folder + '/drives', HOME=folder, LC_ALL='C.UTF-8')
    server = folder + '/pg'
    site = folder + '/site.db'
    if cluster_script:
        subprocess.run([cluster_script, 'start', server], check=True)
        site = f'postgresql:///postgres?host={server}&user=tessel&vault={folder}/vault'

    def sql(text):
        command = ['psql', '-qtAX', site.split('&vault')[0], '-c', text] if cluster_script else ['sqlite3', site, text]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout.split()

    try:
        check(run('host', 'create', site, examples + '/company.json')[0] == 0)
        second = run('host', 'create', site, examples + '/company.json')
        check(second[0] == 1 and 'exists already' in second[2], second)
        check(run('config', 'set', site, 'RecordChecksums', 'True')[0] == 0)
        check(run('config', 'check', site)[0] == 0)

        export = ['export', site, '--user', 'anna', '--select', '1202:4721,1203:4742', '--no-send']
        exports = at_once([export] * PROCESSES)
        check(all(status == 0 and not err for status, _, err in exports), *exports)
        numbers = sorted(int(number.split('-')[1]) for number in sql('select VRK_ID from DATA_EXCHANGE') if number)
        check(len(set(numbers)) == len(numbers) and numbers[-1] - numbers[0] == len(numbers) - 1, numbers)
        folders = [folder_of(one) for one in exports]
        check(len(set(folders)) == PROCESSES, folders)
        verified = run('verify', '--database', site, *folders)
        check(verified[0] == 0, *verified)

        locks = at_once([['lock', site, '--user', user, '1202:4721'] for user in ('anna', 'ben') * (PROCESSES // 2)])
        check([status for status, _, _ in locks].count(0) == 1, *locks)
        check(sql('select count(*) from OBJECT_LOCKING where OPER_OBJECT_ID = 4721') == ['1'])

        # Each stopped exchange is continued once, whoever asks for it.
        records = []
        for name in folders:
            os.rename(name, name.replace('_New', '_Break'))
            listed = json.loads(run('inspect', name.replace('_New', '_Break'), '--json')[1])
            records.append(listed['data']['DataExchangeObjID'])
        sql("update DATA_EXCHANGE set VRKX_DX_PROCESS_PHASE = 3, VRKX_DX_EXCHANGE_ROOT_DIR = "
            "replace(VRKX_DX_EXCHANGE_ROOT_DIR, '_New', '_Break') where OBJECT_ID in (" + ','.join(records) + ')')
        for name, record in zip(folders, records):
            sql(f"update DATA_EXCHANGE set VRKX_DX_EXCHANGE_ROOT_DIR = '{name.replace('_New', '_Break')}/SubDir' "
                f'where OBJECT_ID = {record}')
        continued = at_once([['continue', site, '--user', 'anna', '900:' + record] for record in records])
        check(all(status == 0 for status, _, _ in continued), *continued)
        check(all(os.path.isdir(name) for name in folders), os.listdir(os.path.dirname(folders[0])))

        if cluster_script:
            started = [tessel(*export) for _ in range(PROCESSES)]
            subprocess.run([cluster_script, 'restart', server], check=True)
            broken = [(process.wait(), *process.communicate()) for process in started]
            for status, out, err in broken:
                check(status == 0 or 'database' in err, status, out, err)
            recovered = run('recover', site)
            check(recovered[0] == 0, *recovered)
            whole = [name for name in os.listdir(os.path.dirname(folders[0])) if name.endswith('_New')]
            base = os.path.dirname(folders[0]) + '/'
            verified = run('verify', '--database', site, *(base + name for name in whole))
            check(verified[0] == 0, *verified)
            check(int(sql('select count(*) from TESSEL_EXCHANGE_SUMS')[0]) == len(whole), whole)
            print(f'restart: {sum(status == 0 for status, _, _ in broken)} of {PROCESSES} exports were done')
    finally:
        if cluster_script:
            subprocess.run([cluster_script, 'stop', server], check=True)
print(f'{PROCESSES} processes')
