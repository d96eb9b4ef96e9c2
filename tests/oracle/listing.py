"""What GnuCOBOL's compiler says of a program: items with sizes, lines and references, and places in storage."""
import os
import re
import subprocess

from sanitise import sanitise

FLAGS = ['-std=ibm', '-ffold-copy=UPPER', '-fno-odoslide']
COPY = re.compile(r"\bCOPY\s+(?:'([^']+)'|\"([^\"]+)\"|([\w$#@-]+))", re.I)
ERROR = re.compile(r'^(?:[^:\n]*):(\d+): error: (.*)$', re.M)
EMPTY = re.compile(r"PICTURE clause required for '([^' ]+)'$")
UNDEFINED = re.compile(r"'(.+)' is not defined$")
SIZE_LINE = re.compile(r'^(\S*)\s+([A-Z][A-Z -]*?)\s+(\d\d)   (\S+)\s*(.*)$')
FILE_LINE = re.compile(r'^(\d+) FILE\s+(\S+)')
NO_NUMBER = re.compile(r"'([^' ]+)' is not a numeric (?:value|or numeric-edited name)$")
NAME_LENGTH = 30  # names are cut to this in the listing


class Item:
    def __init__(self, name, level, size, kind, text):
        self.name, self.level, self.kind, self.text = name, level, kind, text
        self.size = int(size) if size.isdigit() else None
        self.group = kind == 'GROUP'
        self.line = None        # of the expansion
        self.references = []    # (line of the expansion, written)
        self.parent = None
        self.program = ''
        self.path = ''
        self.place = None       # (base, offset) where storage is known
        self.tables = 0         # OCCURS from the top down to the item itself

    @property
    def repeats(self):
        return bool(re.search(r'\bOCCURS\b', self.text))


class Compiled:
    def __init__(self):
        self.items = []
        self.errors = []        # what is left after names were declared
        self.origin = []        # expanded line - 1 → (real path, line) or None
        self.embedded = {}      # real path → the sanitised text, which knows embedded statements
        self.offsets = False
        self.text = []


def run(words, folder):
    done = subprocess.run(words, cwd=folder, capture_output=True, timeout=120)
    return done.stdout.decode('latin-1'), done.stderr.decode('latin-1')


class Copybooks:
    """Upper-case name → path, from folders in their order."""

    EXTENSIONS = ('', '.CPY', '.CBL', '.COB', '.INC', '.COPY', '.DCL', '.TXT')

    def __init__(self, folders):
        self.index = []
        for folder in folders:
            names = {}
            for name in sorted(os.listdir(folder), reverse=True):
                if os.path.isfile(os.path.join(folder, name)):
                    names[name.upper()] = os.path.join(folder, name)
            self.index.append(names)

    def find(self, name):
        for names in self.index:
            for extension in self.EXTENSIONS:
                if name.upper() + extension in names:
                    return names[name.upper() + extension]
        return None


def prepare(source, formats, copybooks, folder):
    """Writes the sanitised program and all it copies into `folder`; returns (names of copies → real path, embedded,
    whether text lies behind the right margin)."""
    real, embedded, waiting, long_lines = {}, {}, [('MAIN', source)], False
    free = formats.get(os.path.realpath(source)) == 'free'
    while waiting:
        name, path = waiting.pop()
        if name in real:
            continue
        real[name] = path
        if path is None:
            lines = ['']
        else:
            form = formats.get(os.path.realpath(path), 'fixed')
            clean = sanitise(path, form)
            lines = clean.lines
            embedded[os.path.realpath(path)] = clean
            if form == 'free' and not free:
                lines = [' ' * 7 + line for line in lines]
            elif form != 'free' and free:
                lines = ['' if line[6:7] == '*' else line for line in lines]
            for line in lines:
                if line[6:7] == '*' and not free:
                    continue
                for found in COPY.finditer(line):
                    copied = next(g for g in found.groups() if g)
                    waiting.append((copied.upper(), copybooks.find(copied)))
        long_lines |= any(len(line) > 72 for line in lines)
        with open(os.path.join(folder, 'main.cob' if name == 'MAIN' else name), 'w', encoding='latin-1') as out:
            out.write('\n'.join(lines) + '\n')
    return real, embedded, long_lines


def expand(source, formats, copybooks, folder):
    real, embedded, long_lines = prepare(source, formats, copybooks, folder)
    words = ['cobc', '-E', '-I', '.'] + FLAGS
    if formats.get(os.path.realpath(source)) == 'free':
        words.append('-free')
    elif long_lines:
        words.append('-ftext-column=250')
    text, errors = run(words + ['main.cob'], folder)
    compiled = Compiled()
    compiled.embedded = embedded
    compiled.errors = [e for e in errors.splitlines() if 'error' in e]
    place = None
    for line in text.split('\n'):
        mark = re.match(r'#line (\d+) "(.*)"', line)
        if mark:
            name = os.path.basename(mark.group(2))
            path = source if name == 'main.cob' else real.get(name.upper()) or real.get(name)
            place = [os.path.realpath(path) if path else None, int(mark.group(1))]
            compiled.text.append('')
            compiled.origin.append(None)
            continue
        compiled.text.append(re.sub(r'(\bPROGRAM-ID\s*\.\s+[\w-]+)\s*$', r'\1.', line, flags=re.I))
        compiled.origin.append(tuple(place) if place and place[0] else None)
        if place:
            place[1] += 1
    _drop_stray_periods(compiled.text)
    return compiled


def _drop_stray_periods(text):
    """A period behind a period makes the compiler's line numbers lag by one from there on."""
    last = '.'
    for at, line in enumerate(text):
        if line.strip() == '.' and last.endswith('.'):
            text[at] = ''
        elif line.strip():
            last = line.strip()


def _declaration(name, kind):
    """Text that declares what the compiler missed; `A IN B` gives a group."""
    parts = [p for p in re.split(r'\s+(?:IN|OF)\s+', name) if p]
    if len(parts) == 1:
        return '01 %s %s.' % (parts[0], kind)
    levels = ['%02d %s' % (k + 1, part) for k, part in enumerate(reversed(parts))]
    return '. '.join(levels) + ' ' + kind + '.'


def _insert(compiled, at, line):
    compiled.text.insert(at, line)
    compiled.origin.insert(at, None)


def _storage_line(compiled):
    """Where a declaration can be added: behind the (perhaps new) header of working storage."""
    for at, line in enumerate(compiled.text):
        if re.search(r'\bWORKING-STORAGE\s+SECTION\b', line, re.I):
            return at + 1
    for at, line in enumerate(compiled.text):
        if re.match(r'\s*(LOCAL-STORAGE\s+SECTION|LINKAGE\s+SECTION|PROCEDURE\s+DIVISION)\b', line, re.I):
            divided = any(re.match(r'\s*DATA\s+DIVISION', early, re.I) for early in compiled.text[:at])
            _insert(compiled, at, ('' if divided else 'DATA DIVISION. ') + 'WORKING-STORAGE SECTION.')
            return at + 1
    return None


def _fill_groups(compiled, errors):
    """Gives a group whose members stand in a missing copybook a member; whether anything was done."""
    done = False
    for line, text in sorted(((int(n), text) for n, text in errors), reverse=True):
        name = EMPTY.match(text)
        # the error comes when the next entry is met
        at = next((k for k in range(line - 1, -1, -1) if name and
                   re.search(r'(?<![\w-])' + re.escape(name.group(1)) + r'\s*\.\s*$', compiled.text[k], re.I)), None)
        if at is not None:
            _insert(compiled, at + 1, '49 TARNSIFT-%d PIC X.' % len(compiled.text))
            done = True
    return done


def _make_numeric(compiled, errors):
    """Turns declarations that were added into numbers where the program counts with them; whether anything was done."""
    wanted = {found.group(1) for found in (NO_NUMBER.match(text) for _, text in errors) if found}
    done = False
    for at, line in enumerate(compiled.text):
        if compiled.origin[at] is None and line.endswith(' PIC X(80).') and line.split()[-3] in wanted:
            compiled.text[at] = line.replace('PIC X(80)', 'PIC S9(9)')
            done = True
    return done


def compile_listing(compiled, folder, rounds=40):
    """Compiles the expansion again and again, declaring what is missing; leaves the text that was compiled last."""
    kinds, listing = set(), ''
    for _ in range(rounds):
        with open(os.path.join(folder, 'flat.cob'), 'w', encoding='latin-1') as out:
            out.write('\n'.join(compiled.text) + '\n')
        words = ['cobc', '-fsyntax-only', '-free', '--tlines=0', '-T', 'list', '--tsymbols', '-Xref'] + FLAGS
        _, errors = run(words + ['flat.cob'], folder)
        found = ERROR.findall(errors)
        missing = []
        for line, text in found:
            name = UNDEFINED.match(text)
            if name and name.group(1) not in kinds:
                missing.append(name.group(1))
        compiled.errors = ['%s: %s' % pair for pair in found]
        empty = _fill_groups(compiled, found)
        if empty or _make_numeric(compiled, found):
            continue
        if not missing:
            break
        at = _storage_line(compiled)
        if at is None:
            break
        for name in dict.fromkeys(missing):
            kinds.add(name)
            _insert(compiled, at, _declaration(name, 'PIC X(80)'))
    try:
        with open(os.path.join(folder, 'list'), encoding='latin-1') as file:
            listing = file.read()
    except OSError:
        pass
    compiled.items = parse_listing(listing)


def parse_listing(listing):
    lines = listing.split('\n')
    start = next((k for k, line in enumerate(lines) if line.startswith('SIZE  TYPE')), None)
    if start is None:
        return []
    cross = next((k for k in range(start, len(lines)) if lines[k].startswith('NAME     ')), len(lines))
    by_program = _sizes(lines[start + 1:cross])
    _references(lines[cross:], by_program)
    return [item for items in by_program.values() for item in items]


def _sizes(lines):
    """Program name → items in order, with parents and paths; files are there as kind FILE."""
    by_program, items, stack = {}, None, []
    for line in lines:
        program = re.match(r'\s+PROGRAM\s+(\S+)', line)
        if program:
            items, stack = by_program.setdefault(program.group(1), []), []
            continue
        if items is None:
            items = by_program.setdefault('', [])
        file = FILE_LINE.match(line)
        found = SIZE_LINE.match(line)
        if file:
            items.append(Item(file.group(2), 0, '', 'FILE', ''))
        elif found:
            size, kind, level, name, text = found.groups()
            item = Item(name.rstrip(','), int(level), size, kind.strip(), text)
            _nest(item, stack)
            items.append(item)
    for program, found in by_program.items():
        for item in found:
            item.program = program
    return by_program


def _nest(item, stack):
    if item.level == 88:
        item.parent = stack[-1] if stack else None
    elif item.level == 66:
        item.parent = stack[0] if stack else None
    else:
        while stack and (stack[-1].level >= item.level or item.level in (1, 77)):
            stack.pop()
        item.parent = stack[-1] if stack else None
        stack.append(item)
    names, up = [item.name], item.parent
    while up:
        if up.name != 'FILLER':
            names.insert(0, up.name)
        up = up.parent
    item.path = '.'.join(names)
    item.tables = (item.parent.tables if item.parent else 0) + item.repeats


def _references(lines, by_program):
    program, items, at, current, data = '', None, 0, None, False
    if len(by_program) == 1:
        program = next(iter(by_program))
    for line in lines:
        header = re.match(r'PROGRAM (\S+)$', line)
        if header:
            program = header.group(1)
            continue
        if line.startswith('NAME     '):
            data, items, current, at = True, None, None, 0
            continue
        if re.match(r'(LABEL|FUNCTION)  ', line) or line.startswith('Error/Warning'):
            data = False
            continue
        if not data or not line.strip():
            continue
        found = re.match(r'(\S+)\s+(\d+)\s+(.*)$', line)
        if found:
            if items is None:
                items = [i for i in by_program.get(program, []) if i.name != 'FILLER']
            name, defined, rest = found.groups()
            while at < len(items) and items[at].name[:NAME_LENGTH] != name:
                at += 1
            if at == len(items):
                at, current = 0, None
                continue
            current, at = items[at], at + 1
            current.line = int(defined)
        elif line.startswith(' ') and current:
            rest = line
        else:
            continue
        if current and 'referenced' not in rest:
            rest = re.sub(r'\s+x\d+\s*$', '', rest)
            for star, number in re.findall(r'(\*?)(\d+)', rest):
                current.references.append((int(number), bool(star)))


def _evaluate(text):
    """(base, offset) of a C expression such as `b_12 + 5 + 8 * 0`."""
    found = re.match(r'^(?:COB_SET_DATA \(f_\d+, )?b_(\d+)\)?((?:[ +*()0-9-])*)$', text.strip())
    if not found:
        return None
    tail = found.group(2).strip()
    if tail.count('(') != tail.count(')'):
        return None
    return int(found.group(1)), int(eval('0' + (tail or ''), {'__builtins__': {}}))  # digits and signs only


def find_places(compiled, folder):
    """Passes every item to a call of its own and reads where the translation to C finds it."""
    targets = [i for i in compiled.items if i.level not in (0, 88) and i.name != 'FILLER' and i.line]
    text = list(compiled.text)
    end = next((k for k in range(len(text) - 1, -1, -1) if re.match(r'\s*END\s+PROGRAM', text[k], re.I)), len(text))
    first = end + 2
    calls = {}
    tail = ['TARNSIFT-PLACES SECTION.', 'TARNSIFT-PLACES-1.']
    for number, item in enumerate(targets):
        names, up = [item.name], item.parent
        while up:
            if up.name != 'FILLER':
                names.append(up.name)
            up = up.parent
        subscripts = '(' + ' '.join(['1'] * item.tables) + ')' if item.tables else ''
        calls[first + len(tail) - 1] = number
        tail.append('CALL "Q9Z%05d" USING %s%s.' % (number, ' OF '.join(names), subscripts))
    lines = text[:end] + ['.'] + tail + text[end:]
    for _ in range(8):
        with open(os.path.join(folder, 'places.cob'), 'w', encoding='latin-1') as out:
            out.write('\n'.join(lines) + '\n')
        _, errors = run(['cobc', '-C', '-free', '-o', 'places.c'] + FLAGS + ['places.cob'], folder)
        wrong = [int(n) for n, _ in ERROR.findall(errors)]
        if not wrong:
            break
        for number in wrong:
            if number <= end:
                return
            lines[number - 1] = ''
    else:
        return
    try:
        with open(os.path.join(folder, 'places.c'), encoding='latin-1') as file:
            text = file.read()
    except OSError:
        return
    compiled.offsets = True
    for number, argument in re.findall(r'call_Q9Z(\d{5})\.funcint\) \((.*?)\);', text):
        targets[int(number)].place = _evaluate(argument)


def oracle(source, formats, copybooks, folder):
    compiled = expand(source, formats, copybooks, folder)
    compile_listing(compiled, folder)
    if not compiled.errors and len({i.program for i in compiled.items}) == 1:
        find_places(compiled, folder)
    return compiled
