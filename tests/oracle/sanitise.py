"""A copy of COBOL text, line for line, that GnuCOBOL can read.

What is no plain COBOL goes or becomes a statement without effect; every line keeps its number. `Sanitised.exec_lines`
remembers where embedded statements stood.
"""
import re

DROPPED = re.compile(r'\s*(EJECT|SKIP[123]|TITLE\b.*|\*CBL\b.*|\*CONTROL\b.*)\s*\.?\s*$', re.I)
OPTIONS = re.compile(r'\s*(CBL|PROCESS)\b', re.I)
EXEC = re.compile(r'\bEXEC\s+(\w+)', re.I)
END_EXEC = re.compile(r'\bEND-EXEC\b(\s*\.)?', re.I)
CONSTANT_CALL = re.compile(r'\b(DFHRESP|DFHVALUE)\s*\([^)]*\)', re.I)
INCLUDE = re.compile(r'\bINCLUDE\s+([\w$#@-]+)', re.I)
MARGIN = 72


class Sanitised:
    def __init__(self, lines, exec_lines, exec_words):
        self.lines = lines            # without line ends
        self.exec_lines = exec_lines  # numbers from 1
        self.exec_words = exec_words  # (line, word) that can only be data names, constants or literals


def text_of(path):
    with open(path, 'rb') as file:
        data = file.read().rstrip(b'\x1a\0')
    try:
        text = data.decode('utf-8')
        if any(ord(c) > 127 for c in text):
            return text.encode('ascii', 'replace').decode()
    except UnicodeDecodeError:
        pass
    return data.decode('latin-1').encode('ascii', 'replace').decode()


def lines_of(path):
    return re.split(r'\r\n|\n|\r', text_of(path))


def _code_of(line, form):
    """(prefix, code): what lies before the code, blanked where the compiler could mistake it, and the code itself."""
    if form == 'free':
        return ('', '') if line.lstrip().startswith('*>') else ('', line)
    if '\t' in line:
        line = line.expandtabs(8)
    elif form == 'fixed':
        line = line[:MARGIN]
    indicator = line[6:7] or ' '
    if indicator in ' -':
        return ' ' * 6 + indicator, line[7:]
    if indicator in 'Dd':
        return ' ' * 6 + 'D', line[7:]
    return ' ' * 6 + '*', ''


def _outside_literals(code):
    """The code with the contents of literals turned into underscores, of the same length."""
    out, quote = [], ''
    for c in code:
        if quote:
            out.append(c if c == quote else '_')
            quote = '' if c == quote else quote
        else:
            if c in '"\'':
                quote = c
            out.append(c)
    return ''.join(out)


class _Blocks:
    """Blanks EXEC … END-EXEC over several lines; a statement is left where one stood, INCLUDE becomes COPY."""

    def __init__(self, declarative):
        self.declarative = declarative  # text without procedures: nothing may be left
        self.inside = False
        self.words = ''
        self.start = None
        self.parts = []      # (line, text) of the block
        self.found = set()   # (line, word)

    def line(self, code, out, number):
        """The code of the line without embedded text; `out` are the lines so far, for what an ending block puts there."""
        result, touched = '', self.inside
        while True:
            bare = _outside_literals(code)
            if not self.inside:
                found = EXEC.search(bare)
                if not found:
                    return result + code, touched
                touched = True
                result += code[:found.start()]
                self.start = (number, len(result))
                result += ' ' * (found.end() - found.start())
                self.words, code, self.inside = found.group(1).upper() + ' ', code[found.end():], True
                self.parts = []
            found = END_EXEC.search(bare if touched and self.start[0] != number else _outside_literals(code))
            if not found:
                self.words += code + ' '
                self.parts.append((number, code))
                return result + ' ' * len(code), touched
            self.words += code[:found.start()]
            self.parts.append((number, code[:found.start()]))
            self._collect()
            period = bool(found.group(1))
            result += ' ' * (found.end())
            code, self.inside = code[found.end():], False
            result = self._leave(result, out, number, period)

    def _collect(self):
        """Words that name data: behind a colon, or as arguments in parentheses where that is the style."""
        depth, literal, host = 0, '', False
        style = 'colon' if self.words.startswith('SQL') else 'argument'
        for number, text in self.parts:
            if literal and style == 'argument':
                literal = ''
            for found in re.finditer(r'--.*|[\w$#@-]*[\w$#@]|\S', text):
                word = found.group()
                if literal:
                    literal = '' if word == literal else literal
                elif word in '"\'':
                    literal = word
                elif word.startswith('--') and style == 'colon':
                    break
                elif word in '()':
                    depth += 1 if word == '(' else -1
                elif word in ':.' and style == 'colon':
                    host = word == ':' or host
                    continue
                elif host or style == 'argument' and depth > 0:
                    self.found.add((number, word.upper()))
                    after = text[found.end():found.end() + 1]
                    host = style == 'colon' and after == '.'
                    continue
                host = False

    def _leave(self, result, out, number, period):
        include = INCLUDE.match(self.words[4:].strip()) if self.words.startswith('SQL') else None
        dialect, _, rest = self.words.partition(' ')
        declares = dialect == 'SQL' and re.match(r'\s*(BEGIN|END)?\s*DECLARE\b', rest, re.I)
        if include:
            left = 'COPY ' + include.group(1) + '.'
        elif self.declarative:
            left = ''
        elif declares:
            left = 'CONTINUE' if self.declarative is False else ''
        else:
            left = 'CONTINUE'
        line, column = self.start
        if not left:
            return result
        if line == number:
            result = result[:column] + left + result[column + len(left):]
        else:
            old = out[line - 1].ljust(column + 7 + len(left))
            out[line - 1] = old[:column + 7] + left + old[column + 7 + len(left):]
        if period and not include:
            result = result[:-1] + '.'
        return result


def sanitise(path, form):
    lines = lines_of(path)
    out, exec_lines = [], set()
    head = True
    blocks = _Blocks(declarative=None)
    has_divisions = any(re.search(r'\bPROCEDURE\s+DIVISION', line, re.I) for line in lines)
    for number, line in enumerate(lines, 1):
        if head and OPTIONS.match(line):
            out.append('')
            continue
        prefix, code = _code_of(line, form)
        if code.strip():
            head = False
        if prefix.endswith('*') or DROPPED.match(code) and not blocks.inside:
            out.append('      *' if form != 'free' else '')
            continue
        if has_divisions:
            if re.match(r'\s*(ID|IDENTIFICATION)\s+DIVISION', code, re.I):
                blocks.declarative = True
            elif re.match(r'\s*PROCEDURE\s+DIVISION', code, re.I):
                blocks.declarative = False
        code = CONSTANT_CALL.sub(lambda m: '0'.ljust(len(m.group())), code)
        code, touched = blocks.line(code, out, number)
        if touched:
            exec_lines.add(number)
            if prefix.endswith('-'):
                prefix = ' ' * 7
        out.append((prefix + code).rstrip())
    return Sanitised(out, exec_lines, blocks.found)
