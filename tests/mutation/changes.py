"""The one-place changes that are made to a C++ source."""

import dataclasses
import hashlib
import random
import re

TOKEN = re.compile(
    r"""(?P<comment>//(?:\\\n|[^\n])*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
      | (?P<raw>(?:u8|[uUL])?R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)")
      | (?P<string>(?:u8|[uUL])?"(?:\\.|[^"\\\n])*")
      | (?P<character>(?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
      | (?P<number>0[xX][0-9a-fA-F'.]+(?:[pP][+-]?[0-9]+)?\w*|\.?[0-9](?:[eE][+-]|[0-9a-zA-Z_.'])*)
      | (?P<name>[A-Za-z_]\w*)
      | (?P<operator><=>|<<=|>>=|->\*|\.\.\.|::|->|\+\+|--|<<|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|[^\s\w])
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)
ESCAPE = re.compile(r"\\(?:x[0-9a-fA-F]+|[0-7]{1,3}|u[0-9a-fA-F]{4}|U[0-9a-fA-F]{8}|.)")
PARAMETER = re.compile(r"(?:const\s+)?[\w:<>]+(?:\s*[&*]+\s*|\s+)(?:const\s+)?\w+(?:\s*=.*)?$")

# Every operator with its replacement. A token that may also be something else than a binary operator counts only
# with a blank on both sides, as the formatter writes it.
COMPARISONS = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="]}
ARITHMETIC = {
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"], "+=": ["-="], "-=": ["+="], "*=": ["/="],
    "/=": ["*="], "++": ["--"], "--": ["++"], "<<": [">>"], ">>": ["<<"], "&": ["|"], "|": ["&"],
    "|=": ["&="], "&=": ["|="], "^": ["&"],
}
LOGIC = {"&&": ["||"], "||": ["&&"]}

OPENING = {"(": ")", "[": "]", "{": "}"}
# A statement that begins with one of these is not removed: a declaration, or a value that later code needs.
NOT_DROPPED = {
    "return", "if", "else", "for", "while", "do", "switch", "case", "default", "using", "namespace", "typedef",
    "class", "struct", "enum", "union", "template", "static", "const", "constexpr", "auto", "inline", "extern",
    "public", "private", "protected", "friend", "virtual", "explicit", "goto", "try", "catch", "operator",
    "static_assert", "static_cast", "void", "bool", "char", "int", "long", "short", "unsigned", "signed", "double",
    "float", "thread_local", "volatile", "mutable", "typename", "concept", "requires", "co_return",
}
# Calls that only save time or only affect compilation.
WITHOUT_EFFECT = {"reserve", "shrink_to_fit", "static_assert", "assert"}


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int

    @property
    def end(self):
        return self.start + len(self.text)


@dataclasses.dataclass(frozen=True)
class Change:
    file: str
    kind: str
    start: int
    old: str
    new: str
    before: str  # the lines concerned, blanks collapsed
    after: str

    def apply(self, source):
        return source[: self.start] + self.new + source[self.start + len(self.old) :]


def tokens_of(source):
    """The tokens of a source without its comments and directives."""
    found = []
    for match in TOKEN.finditer(source):
        kind = match.lastgroup if match.lastgroup != "mark" else "raw"
        if kind not in ("comment", "directive"):
            found.append(Token(kind, match.group(), match.start()))
    return found


def collapsed(text):
    return " ".join(text.split())


class Finder:
    """Finds the places of one source that can be changed."""

    def __init__(self, file, source):
        self.file = file
        self.source = source
        self.tokens = tokens_of(source)
        self.found = []
        self.closing = {}  # the index of the closing bracket for that of each opening one
        self.enclosing = []  # the bracket that each token lies in
        self.pair_brackets()

    def pair_brackets(self):
        open_brackets = []
        for index, token in enumerate(self.tokens):
            if token.kind == "operator" and token.text in OPENING.values() and open_brackets:
                self.closing[open_brackets.pop()] = index
            self.enclosing.append(self.text(open_brackets[-1]) if open_brackets else "")
            if token.kind == "operator" and token.text in OPENING:
                open_brackets.append(index)

    def text(self, index):
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ""

    def add(self, kind, start, end, new):
        line_start = self.source.rfind("\n", 0, start) + 1
        line_end = self.source.find("\n", end)
        line_end = len(self.source) if line_end < 0 else line_end
        before = collapsed(self.source[line_start:line_end])
        after = collapsed(self.source[line_start:start] + new + self.source[end:line_end])
        if before != after:
            self.found.append(Change(self.file, kind, start, self.source[start:end], new, before, after))

    def replace(self, kind, index, new):
        self.add(kind, self.tokens[index].start, self.tokens[index].end, new)

    def random_of(self, index):
        """A random generator that depends on the place only, so that a sample is repeatable."""
        token = self.tokens[index]
        line_start = self.source.rfind("\n", 0, token.start)
        key = f"{self.file}|{self.source[line_start:token.end]}"
        return random.Random(hashlib.sha256(key.encode()).digest())

    def is_spaced(self, index):
        token = self.tokens[index]
        return self.source[token.start - 1].isspace() and self.source[token.end : token.end + 1].isspace()

    # ---- One routine for each kind of change

    def numbers(self, index):
        text = self.tokens[index].text
        digits = text.rstrip("uUlLzZ")
        ending = text[len(digits) :]
        chance = self.random_of(index)
        if digits.isdigit() and (digits == "0" or digits[0] != "0"):
            value = int(digits)
            self.replace("number", index, f"{value + 1}{ending}")
            if value > 0:
                self.replace("number", index, f"{value - 1}{ending}")
            return
        hexadecimal = text[:2] in ("0x", "0X")
        first = 2 if hexadecimal else 0
        exponent = re.search(r"[pP]|$" if hexadecimal else r"[eEfF]|$", digits).start()
        places = [place for place in range(first, exponent) if text[place].isalnum()]
        for place in chance.sample(places, min(2, len(places))):
            digit = int(text[place], 16)
            other = f"{(digit + 1) % 10:d}" if digit < 10 else f"{digit - 1:x}".upper()
            changed = text[:place] + other + text[place + 1 :]
            if hexadecimal or self.value(changed) != self.value(text):
                self.replace("number", index, changed)

    @staticmethod
    def value(number):
        return float(number.rstrip("fF").replace("'", ""))

    def operators(self, index):
        token = self.tokens[index]
        if token.text in ("++", "--") or token.text.endswith("=") and token.text != "=":
            spaced = True
        else:
            spaced = self.is_spaced(index)
        if not spaced or self.text(index - 1) in ("template", "operator", "="):
            return
        for kind, table in (("comparison", COMPARISONS), ("arithmetic", ARITHMETIC), ("logic", LOGIC)):
            for other in table.get(token.text, []):
                self.replace(kind, index, other)

    def negation(self, index):
        token = self.tokens[index]
        if token.text == "!":
            self.replace("negation", index, "")
        elif token.text in ("true", "false"):
            self.replace("negation", index, "false" if token.text == "true" else "true")
        elif token.text in ("if", "while") and self.text(index + 1) == "(":
            # After a declaration in it, only the last part is a condition.
            close = self.closing[index + 1]
            first = [at for at in range(index + 1, close) if at == index + 1 or self.text(at) == ";"][-1]
            start, end = self.tokens[first + 1].start, self.tokens[close].start
            condition = self.source[start:end]
            if not re.search(r"[^=!<>]=[^=]", condition):
                self.add("negation", start, end, f"!({condition})")

    def loop(self, index):
        """The bound of `for (start; index < bound; step)`."""
        close = self.closing[index + 1]
        ends = [at for at in range(index, close) if self.text(at) == ";"]
        if len(ends) != 2:
            return
        for at in range(ends[0] + 1, ends[1]):
            if self.text(at) in COMPARISONS and self.is_spaced(at):
                start, end = self.tokens[at].end + 1, self.tokens[ends[1]].start
                if "&&" not in self.source[start:end]:
                    self.add("loop", start, end, f"{self.source[start:end]} - 1")
                    self.add("loop", start, end, f"{self.source[start:end]} + 1")

    def letters(self, index):
        token = self.tokens[index]
        if self.text(index - 1) in ("extern", "static_assert"):
            return
        quote = '"' if token.kind == "string" else "'"
        first, last = token.text.index(quote) + 1, len(token.text) - 1
        escapes = {at for match in ESCAPE.finditer(token.text) for at in range(*match.span())}
        places = [at for at in range(first, last) if at not in escapes and ord(token.text[at]) < 128]
        if not places:
            return
        place = self.random_of(index).choice(places)
        letter = token.text[place]
        other = "q" if letter == "z" else "Q" if letter == "Z" else "~"
        if letter.isdigit():
            other = str((int(letter) + 1) % 10)
        elif letter.isalpha():
            other = chr(ord(letter) + 1) if letter not in "zZ" else other
        self.replace("letter", index, token.text[:place] + other + token.text[place + 1 :])

    def statement(self, index):
        """`name...;` at the beginning of a statement."""
        token = self.tokens[index]
        if token.kind != "name" and token.text not in ("*", "++", "--", "("):
            return
        if token.text in NOT_DROPPED or self.text(index - 1) not in (";", "{", "}", ")", "else", ":"):
            return
        if self.text(index - 1) == ":" and not self.is_label(index - 1) or self.enclosing[index] != "{":
            return
        at = index
        while at < len(self.tokens) and self.text(at) not in (";", "{", "}"):
            if self.tokens[at].kind == "name" and self.text(at) in WITHOUT_EFFECT:
                return
            at = self.closing[at] + 1 if at in self.closing else at + 1
        if self.text(at) != ";" or at == index:
            return
        # Two names side by side are a declaration.
        text = self.source[token.start : self.tokens[at].start]
        if re.match(r"[\w:]+(?:<[^;=]*>)?(?:\s*[&*]\s*|\s+)\w+\s*(?:[=;({\[]|$)", text):
            return
        if self.text(index - 1) == ")" and not self.is_head(index - 1):
            return
        self.add("statement", token.start, self.tokens[at].start, "")

    def is_label(self, colon):
        line = self.source[self.source.rfind("\n", 0, self.tokens[colon].start) + 1 : self.tokens[colon].end]
        return line.lstrip().startswith(("case ", "default")) and self.source[self.tokens[colon].end] == "\n"

    def is_head(self, close):
        """True if the bracket ends the head of an if, for or while."""
        for opening, closing in self.closing.items():
            if closing == close:
                return self.text(opening - 1) in ("if", "for", "while", "constexpr")
        return False

    def swap(self, index):
        """Two neighbours among the arguments of the call whose name is at the index."""
        opening = index + 1
        if self.text(index) in NOT_DROPPED | WITHOUT_EFFECT or opening not in self.closing:
            return
        commas, at = [opening], opening + 1
        while at < self.closing[opening]:
            if self.text(at) == ",":
                commas.append(at)
            at = self.closing[at] + 1 if at in self.closing else at + 1
        commas.append(self.closing[opening])
        spans = [(self.tokens[left].end, self.tokens[right].start) for left, right in zip(commas, commas[1:])]
        arguments = [self.source[start:end].strip() for start, end in spans]
        if any(PARAMETER.match(text) for text in arguments):
            return  # a declaration
        for left, right in zip(range(len(spans)), range(1, len(spans))):
            if arguments[left] != arguments[right] and arguments[left] and arguments[right]:
                start, end = spans[left][0], spans[right][1]
                lead = re.match(r"\s*", self.source[start:end]).group()
                self.add("swap", start, end, f"{lead}{arguments[right]}, {arguments[left]}")

    def all(self):
        skipped_to = 0
        for index, token in enumerate(self.tokens):
            if token.text in ("static_assert", "template") and self.text(index + 1) in ("(", "<"):
                close = self.closing.get(index + 1)
                skipped_to = max(skipped_to, self.tokens[close].end if close else self.template_end(index + 1))
            if token.start < skipped_to:
                continue
            self.statement(index)
            if token.kind == "number":
                self.numbers(index)
            elif token.kind in ("string", "character"):
                self.letters(index)
            elif token.kind == "operator":
                self.operators(index)
                self.negation(index)
            elif token.kind == "name":
                self.negation(index)
                if token.text == "for" and self.text(index + 1) == "(":
                    self.loop(index)
                elif self.text(index + 1) == "(":
                    self.swap(index)
        return self.found

    def template_end(self, index):
        depth = 0
        for token in self.tokens[index:]:
            depth += {"<": 1, ">": -1}.get(token.text, 0)
            if depth == 0:
                return token.end
        return 0


def changes_of(file, source):
    return Finder(file, source).all()


def sample(changes, count, seed):
    """A repeatable sample in proportion to the kinds; edits elsewhere hardly change it."""
    seen, by_kind = {}, {}
    for change in changes:
        text = f"{change.file}|{change.before}|{change.after}"
        seen[text] = seen.get(text, 0) + 1
        order = hashlib.sha256(f"{seed}|{text}|{seen[text]}".encode()).hexdigest()
        by_kind.setdefault(change.kind, []).append((order, change))
    queues = []
    for _, ordered in sorted(by_kind.items()):
        queues.append([change for _, change in sorted(ordered, key=lambda pair: pair[0])])
    chosen = []
    while queues and len(chosen) < count:
        for queue in queues:
            if len(chosen) < count:
                chosen.append(queue.pop(0))
        queues = [queue for queue in queues if queue]
    return chosen
