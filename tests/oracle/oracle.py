#!/usr/bin/env python3
"""Compares the analyser with GnuCOBOL's compiler, item by item.

    oracle.py [--dump PROGRAM] [--copy FOLDER]… [--all] FOLDER…

Every source (.cbl .cob .cobol) below the folders is analysed and compiled; copybooks are looked for in the folders given
and in every folder below FOLDER that holds copybooks. Prints, per kind of fact, what was compared and how much is
equal, what was masked by which rule, and each remaining difference. Exit 1 when differences remain.
"""
import argparse
import json
import os
import subprocess
import sys
import tempfile
from collections import Counter

from compare import KINDS, Comparison, Tally, Texts
from listing import Copybooks, oracle

SOURCES = ('.cbl', '.cob', '.cobol')
COPYBOOKS = ('.cpy', '.copy', '.inc', '.dcl')
SHOWN = 40  # differences of a kind, without --all


def sources_below(folder):
    if os.path.isfile(folder):
        return [folder]
    found = []
    for root, folders, names in os.walk(folder):
        folders.sort()
        found += [os.path.join(root, n) for n in sorted(names) if n.lower().endswith(SOURCES)]
    return found


def copy_folders(folders):
    found = []
    for folder in folders:
        for root, inner, names in os.walk(folder):
            inner.sort()
            if any(n.lower().endswith(COPYBOOKS) for n in names):
                found.append(root)
    return found


def dump(program, source, folders):
    words = [program, '--gnu-layout']
    for folder in folders:
        words += ['-I', folder]
    done = subprocess.run(words + [source], capture_output=True, check=True)
    lines = [json.loads(line) for line in done.stdout.decode('utf-8', 'replace').splitlines()]
    return lines[0], lines[1:]


def compare(program, source, folders, texts):
    head, constructs = dump(program, source, folders)
    formats = {os.path.realpath(f['path']): f['format'] for f in head['files']}
    with tempfile.TemporaryDirectory() as folder:
        compiled = oracle(source, formats, Copybooks(folders), folder)
    tally = Comparison(head, constructs, compiled, texts).run()
    return tally, compiled.errors


def percent(part, whole):
    return '   –  ' if not whole else '%6.2f' % (100.0 * part / whole)


def report(tally, every):
    print('%d programs; the compiler lists %d, %d without errors, places in storage of %d' %
          (tally.programs, tally.programs - tally.silent, tally.clean, tally.placed))
    print('%-16s %8s %8s %8s %8s %8s %9s %9s' %
          ('kind', 'ours', 'theirs', 'masked', 'equal', 'left', 'recall %', 'prec. %'))
    left = Counter(kind for kind, _ in tally.left)
    for kind in KINDS:
        def comparable(count, side):
            return count - sum(n for (k, s, _), n in tally.masked.items() if k == kind and s in (side, 'both'))
        masked = sum(n for (k, _, _), n in tally.masked.items() if k == kind) + tally.unseen[kind]
        equal = tally.equal[kind]
        print('%-16s %8d %8d %8d %8d %8d %9s %9s' %
              (kind, tally.ours[kind], tally.theirs[kind], masked, equal, left[kind],
               percent(equal, comparable(tally.theirs[kind], 'theirs')),
               percent(equal, comparable(tally.ours[kind], 'ours'))))
    for (kind, _, rule), count in sorted(tally.masked.items()):
        print('  masked: %-16s %-40s %6d' % (kind, rule, count))
    for kind, count in sorted(tally.unseen.items()):
        print('  masked: %-16s %-40s %6d' % (kind, 'the line listed does not carry the name', count))
    for kind in KINDS:
        texts = [text for k, text in tally.left if k == kind]
        for text in texts if every else texts[:SHOWN]:
            print('%s: %s' % (kind, text))
        if len(texts) > SHOWN and not every:
            print('%s: … %d more (--all)' % (kind, len(texts) - SHOWN))


def main():
    reader = argparse.ArgumentParser(description=__doc__.split('\n')[0])
    reader.add_argument('--dump', default='build/dev/bin/cobol_dump')
    reader.add_argument('--copy', action='append', default=[])
    reader.add_argument('--all', action='store_true')
    reader.add_argument('--errors', action='store_true', help='print what keeps programs from compiling clean')
    reader.add_argument('folders', nargs='+')
    given = reader.parse_args()
    texts, total = Texts(), Tally()
    folders = [f for part in given.copy for f in part.split(':') if f]
    folders += [f for f in copy_folders(f for f in given.folders if os.path.isdir(f)) if f not in folders]
    for folder in given.folders + folders:
        if not os.path.exists(folder):
            reader.error('there is no ' + folder)
    for top in given.folders:
        for source in sources_below(top):
            tally, errors = compare(given.dump, source, folders, texts)
            if errors and given.errors:
                print('%s: %s' % (source, '; '.join(errors[:5])))
            total.add(tally)
    report(total, given.all)
    return 1 if total.left else 0


if __name__ == '__main__':
    sys.exit(main())
