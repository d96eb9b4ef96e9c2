"""Joins the analyser's dump with what the compiler says and counts, per kind of fact, what is equal.

A difference that comes from the compiler or from its listing, not from the analyser, is masked by a named rule; every
rule stands in `MASKS_*` with its reason. What is left is printed.
"""
import os
import re
from collections import Counter, defaultdict

from sanitise import lines_of

NAME_LENGTH = 30
KINDS = ('item', 'size', 'declaring line', 'reference line', 'write', 'embedded line', 'area', 'offset')
NO_ITEMS = ('index', 'constant', 'register', 'call slot', 'file slot', 'undeclared', 'switch')


class Tally:
    def __init__(self):
        self.ours = Counter()     # facts the analyser states
        self.theirs = Counter()   # facts the compiler states
        self.equal = Counter()
        self.masked = Counter()   # (kind, side, rule) → differences; side: ours, theirs, both
        self.left = []            # (kind, text)
        self.programs = self.clean = self.placed = self.silent = 0
        self.unseen = Counter()

    def add(self, other):
        for name in ('ours', 'theirs', 'equal', 'masked', 'unseen'):
            getattr(self, name).update(getattr(other, name))
        self.left += other.left
        for name in ('programs', 'clean', 'placed', 'silent'):
            setattr(self, name, getattr(self, name) + getattr(other, name))


class Texts:
    """Whether a physical line carries a name: listing lines that do not are known to be off."""

    def __init__(self):
        self.lines = {}

    def line(self, path, number):
        if path not in self.lines:
            self.lines[path] = lines_of(path)
        lines = self.lines[path]
        return lines[number - 1].upper() if 0 < number <= len(lines) else ''

    def carries(self, path, number, name):
        return re.search(r'(?<![\w-])' + re.escape(name) + r'(?![\w-])', self.line(path, number)) is not None


def numbered(pairs):
    """(key, thing)… → {(key, n): thing}, n counting equal keys in order."""
    seen, result = Counter(), {}
    for key, thing in pairs:
        seen[key] += 1
        result[key + (seen[key],)] = thing
    return result


class Comparison:
    def __init__(self, head, constructs, compiled, texts):
        self.files = [os.path.realpath(f['path']) for f in head['files']]
        self.compiled, self.texts, self.tally = compiled, texts, Tally()
        self.unit = os.path.basename(head['unit'])
        self.clean = bool(compiled.items) and not compiled.errors
        single = len({i.program for i in compiled.items}) == 1
        self.constructs = constructs
        # The listing prints FILLER for every name that begins with it.
        self.ours = numbered(((self._program(c['program'], single), c['level'], _plain(c['path'])), c) for c in constructs
                             if c['kind'] not in NO_ITEMS and not c['flags'] & 64)
        self.theirs = numbered(((self._program(i.program, single), i.level, i.path.upper()), i) for i in compiled.items
                               if i.kind != 'FILE' and self._declared(i))

    @staticmethod
    def _program(name, single):
        return '' if single else name.upper()

    def _declared(self, item):
        """Not one of the declarations that were added to the text."""
        top = item
        while top.parent:
            top = top.parent
        if top.name == 'DEBUG-ITEM':  # a register that the compiler lists where WITH DEBUGGING MODE stands
            return False
        return item.line is None and top.line is None or self._place(item.line or top.line) is not None

    def _place(self, line):
        origin = self.compiled.origin
        return origin[line - 1] if line and 0 < line <= len(origin) else None

    def _note(self, kind, side, what, masks, *facts):
        for rule, test in masks:
            if test(self, *facts):
                self.tally.masked[kind, side, rule] += 1
                return
        self.tally.left.append((kind, '%s: %s' % (self.unit, what)))

    def run(self):
        tally = self.tally
        tally.programs = 1
        if not self.compiled.items:
            tally.silent = 1
            return tally
        tally.clean = int(self.clean)
        tally.placed = int(self.compiled.offsets)
        self._items()
        pairs = [(self.ours[k], self.theirs[k]) for k in self.ours if k in self.theirs]
        for ours, theirs in pairs:
            self._size(ours, theirs)
            if theirs.line and ours['kind'] != 'filler':
                self._declaration(ours, theirs)
                self._uses(ours, theirs)
        self._embedded()
        if self.compiled.offsets:
            self._places(pairs)
        return tally

    def _items(self):
        self.tally.ours['item'] += len(self.ours)
        self.tally.theirs['item'] += len(self.theirs)
        for key, ours in self.ours.items():
            if key in self.theirs:
                self.tally.equal['item'] += 1
            else:
                self._note('item', 'ours', 'only ours %02d %s (%s)' % (ours['level'], ours['path'], self._ours_at(ours)),
                           MASKS_ITEM, ours, None)
        for key, theirs in self.theirs.items():
            if key not in self.ours:
                self._note('item', 'theirs', 'only theirs %02d %s (%s)' % (theirs.level, theirs.path, self._place(theirs.line)),
                           MASKS_ITEM, None, theirs)

    def _ours_at(self, ours):
        return '%s:%d' % (os.path.basename(self.files[ours['file']]), ours['line'])

    def _size(self, ours, theirs):
        if theirs.level == 88 or theirs.size is None:
            return
        size = ours['size'] if theirs.group else ours['length']
        self.tally.ours['size'] += 1
        self.tally.theirs['size'] += 1
        if size == theirs.size:
            self.tally.equal['size'] += 1
        else:
            self._note('size', 'both', '%s ours %d theirs %d %s (%s)' % (ours['path'], size, theirs.size, theirs.text,
                                                                self._ours_at(ours)), MASKS_SIZE, ours, theirs)

    def _declaration(self, ours, theirs):
        place = self._place(theirs.line)
        equal = (self.files[ours['file']], ours['line']) == place
        if not equal and (place is None or not self.texts.carries(*place, ours['name'])):
            self.tally.unseen['declaring line'] += 1
            return
        self.tally.ours['declaring line'] += 1
        self.tally.theirs['declaring line'] += 1
        if equal:
            self.tally.equal['declaring line'] += 1
        else:
            self._note('declaring line', 'both', '%s ours %s theirs %s:%d' % (ours['path'], self._ours_at(ours),
                       os.path.basename(place[0]), place[1]), (), ours, theirs)

    def _uses(self, ours, theirs):
        usages, named = defaultdict(set), set()
        for file, line, _, access, _ in ours['references']:
            if access in 'RWB':
                usages[self.files[file], line].add(access)
            elif access != 'D':
                named.add((self.files[file], line))
        listed = defaultdict(bool)
        for line, written in theirs.references:
            place = self._place(line)
            # The compiler lists a qualifier where it was needed, for the analyser it is named and not used; SET … TO TRUE
            # lists the item of the condition, which the analyser implies.
            if place in named and place not in usages:
                self.tally.masked['reference line', 'none', 'only named or implied'] += 1
                continue
            if place not in usages and (place is None or not self.texts.carries(*place, ours['name'])):
                self.tally.unseen['reference line'] += 1
                continue
            listed[place] |= written
        for place, written in listed.items():
            self.tally.theirs['reference line'] += 1
            if place in usages:
                self.tally.equal['reference line'] += 1
            else:
                self._note('reference line', 'theirs', 'missed %s %s:%d %s' % (ours['path'], os.path.basename(place[0]), place[1],
                           self.texts.line(*place).strip()), MASKS_MISSED, ours, place, named)
                continue
            if written:
                self.tally.theirs['write'] += 1
                self.tally.ours['write'] += 1
                if usages[place] & {'W', 'B'}:
                    self.tally.equal['write'] += 1
                else:
                    self._note('write', 'both', '%s %s:%d %s' % (ours['path'], os.path.basename(place[0]), place[1],
                               self.texts.line(*place).strip()), MASKS_WRITE, ours, place)
        for place in usages:
            self.tally.ours['reference line'] += 1
            if place not in listed:
                self._note('reference line', 'ours', 'extra %s %s:%d %s' % (ours['path'], os.path.basename(place[0]), place[1],
                           self.texts.line(*place).strip()), MASKS_EXTRA, ours, place, theirs)

    def _embedded(self):
        """The compiler knows nothing of embedded statements: the words that can only be names stand in for it."""
        usages, named, names = set(), set(), set()
        for construct in self.constructs:
            if construct['kind'] in ('file slot', 'call slot'):
                continue
            if construct['kind'] != 'undeclared':
                names.add(construct['name'])
            for file, line, _, access, _ in construct['references']:
                place = (self.files[file], line)
                if access in 'RWB' and _in_exec(self, place):
                    usages.add(place + (construct['name'],))
                elif access == 'N':
                    named.add(place + (construct['name'],))
        words = {(path, line, word) for path, text in self.compiled.embedded.items() if path in self.files
                 for line, word in text.exec_words}
        expected = {one for one in words if one[2] in names and one not in named}
        self.tally.ours['embedded line'] += len(usages)
        self.tally.theirs['embedded line'] += len(expected)
        self.tally.equal['embedded line'] += len(usages & expected)
        for path, line, word in sorted(expected - usages):
            self._note('embedded line', 'theirs', 'missed %s %s:%d %s' % (word, os.path.basename(path), line,
                       self.texts.line(path, line).strip()), ())
        for path, line, word in sorted(usages - expected):
            self._note('embedded line', 'ours', 'extra %s %s:%d %s' % (word, os.path.basename(path), line,
                       self.texts.line(path, line).strip()), MASKS_EMBEDDED, (path, line, word), words)

    def _places(self, pairs):
        """Bases stand for areas: equal bases ⇔ equal areas; within an area the distances agree."""
        by_area, by_base = {}, {}
        for ours, theirs in pairs:
            if theirs.place is None or ours['area'] < 0:
                continue
            base, offset = theirs.place
            for kind in ('area', 'offset'):
                self.tally.ours[kind] += 1
                self.tally.theirs[kind] += 1
            first = by_area.setdefault(ours['area'], (base, ours, offset))
            other = by_base.setdefault(base, (ours['area'], ours))
            what = '%s (%s)' % (ours['path'], self._ours_at(ours))
            if first[0] == base and other[0] == ours['area']:
                self.tally.equal['area'] += 1
            else:
                self._note('area', 'both', '%s ours with %s, theirs with %s' % (what, first[1]['path'], other[1]['path']),
                           MASKS_AREA, ours, theirs)
            if ours['position'] == offset:
                self.tally.equal['offset'] += 1
            else:
                self._note('offset', 'both', '%s ours %d theirs %d' % (what, ours['position'], offset), MASKS_OFFSET, ours,
                           theirs)


def _plain(path):
    parts = path.split('.')
    return '.'.join([p for p in parts[:-1] if not p.startswith('FILLER')] +
                    ['FILLER' if parts[-1].startswith('FILLER') else parts[-1]])


def _index_items(self, ours, inside):
    """Bytes by which index items, 8 bytes for us with 64-bit pointers and 4 for the compiler, move or widen an item."""
    begin, end = (ours['position'], ours['position'] + ours['size']) if inside else (0, ours['position'])
    return 4 * sum(1 for c in self.constructs if c['usage'] == 'INDEX' and c['area'] == ours['area'] and
                   c['kind'] != 'index' and begin <= c['position'] < end)


def _padded_early(self, ours):
    """The last item of a table element that holds SYNC items: the compiler pads the element in front of it."""
    inside = [c for c in self.constructs if c['area'] == ours['area'] and c['flags'] & 4]
    return bool(inside) and ours['dims'] != ''


def _listed_before(self, theirs):
    return theirs is not None and any(i.path == theirs.path and i.line == theirs.line and i is not theirs
                                      for i in self.compiled.items)


def _in_exec(self, place):
    text = self.compiled.embedded.get(place[0])
    return text is not None and place[1] in text.exec_lines


def _verb_on(self, place, words):
    """One of the words on the line or on the lines before it back to the sentence or verb it belongs to."""
    for back in range(0, 12):
        text = self.texts.line(place[0], place[1] - back)
        if re.search(words, text):
            return True
        if back and re.search(r'\.\s*$', text[:72]):
            return False
    return False


MASKS_ITEM = (
    # A program with errors loses entries; only programs that compile clean say what is not there.
    ('program with errors', lambda self, ours, theirs: not self.clean),
    # A record of SAME RECORD AREA is listed under each file.
    ('listed twice', lambda self, ours, theirs: _listed_before(self, theirs)),
    # A group of level 05 whose first member has level 15 and second 10 gets a group in between.
    ('FILLER for a gap of levels', lambda self, ours, theirs: ours is None and theirs.name == 'FILLER' and theirs.group and
     theirs.line is None),
)
MASKS_SIZE = (
    ('screen item without picture', lambda self, ours, theirs: ours['section'] == 7 and theirs.size > ours['size']),
    # Each group of a report is as wide as the widest.
    ('width of the report', lambda self, ours, theirs: ours['section'] == 6 and theirs.group and theirs.size > ours['size']),
    ('index items of 4 bytes', lambda self, ours, theirs:
     ours['area'] >= 0 and ours['size'] - theirs.size == _index_items(self, ours, True) > 0),
    # Its members were to come from a copybook that is not there.
    ('group of a missing copybook', lambda self, ours, theirs: ours['length'] == 0),
    ('size 0 of a record with errors', lambda self, ours, theirs: theirs.size == 0 or not self.clean),
)
MASKS_MISSED = (
    # A remark: what the records of a file are is said by their declarations.
    ('DATA RECORD clause', lambda self, ours, place, named:
     re.search(r'\bDATA\s+RECORDS?\b', self.texts.line(*place)) is not None),
)
MASKS_WRITE = ()
MASKS_EXTRA = (
    # What follows a continued word or literal on its last line is listed under the first line.
    ('line of a continuation', lambda self, ours, place, theirs: self.texts.line(*place)[6:7] == '-'),
    ('program with errors', lambda self, ours, place, theirs: not self.clean),
    ('embedded statement', lambda self, ours, place, theirs: _in_exec(self, place)),
)
MASKS_EMBEDDED = (
    # A host variable without a declaration is a construct of its own.
    ('undeclared name', lambda self, use, words: use in words),
)
MASKS_AREA = ()
MASKS_OFFSET = (
    # The compiler gives it a byte.
    ('screen item without picture', lambda self, ours, theirs:
     ours['section'] == 7 and theirs.place[1] > ours['position']),
    ('element padded before its last item', lambda self, ours, theirs:
     _padded_early(self, ours) and 0 < theirs.place[1] - ours['position'] < 8),
    ('index items of 4 bytes', lambda self, ours, theirs:
     ours['position'] - theirs.place[1] == _index_items(self, ours, False) > 0),
)
