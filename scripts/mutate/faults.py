"""Small, realistic faults in C++ sources: where one can be put in, and what the text is then.

Works on the text alone: comments and the inside of string literals are blanked out first, blocks and statements are
found by their brackets. Nothing is tied to line numbers or to names of this project beyond its words for channels,
trace levels and fields.
"""

import hashlib
import re
from dataclasses import dataclass, field
from typing import Callable, Iterator, List, Tuple


@dataclass
class Fault:
    kind: str
    file: str
    start: int
    end: int
    before: str
    after: str
    where: str = ""  # the function or structure around it
    line: int = 0
    ident: str = field(default="", compare=False)  # stays the same while the code around it moves

    def apply(self, text: str) -> str:
        return text[: self.start] + self.after + text[self.end :]

    def describe(self) -> str:
        def short(part: str) -> str:
            part = " ".join(part.split())
            return part if len(part) < 100 else part[:97] + "..."

        return f"{self.file}:{self.line} {self.where}: {short(self.before)}  ->  {short(self.after) or '(nothing)'}"


class Source:
    """A file with its comments and literals blanked out, its statements and the names around them."""

    def __init__(self, file: str, text: str) -> None:
        self.file = file
        self.text = text
        self.code, self.literals = blank(text)
        self.statements: List[List[Tuple[int, int]]] = []  # the plain statements of each block, in order
        self.names: List[Tuple[int, int, str]] = []
        self._find_blocks()

    def name_at(self, position: int) -> str:
        inside = [entry for entry in self.names if entry[0] <= position < entry[1]]
        return max(inside, key=lambda entry: entry[0])[2] if inside else "-"

    def _find_blocks(self) -> None:
        stack: List[Tuple[int, List[Tuple[int, int]], int]] = []
        statements: List[Tuple[int, int]] = []
        begin = 0
        depth = 0
        for match in re.finditer(r"[{}();]", self.code):
            at, sign = match.start(), match.group()
            if sign == "(":
                depth += 1
            elif sign == ")":
                depth -= 1
            elif sign == "{":
                head = self.code[begin:at]
                stack.append((at, statements, depth))
                self._open_name(head, at)
                statements, begin, depth = [], at + 1, 0
            elif sign == "}":
                if statements:
                    self.statements.append(statements)
                opened, statements, depth = stack.pop() if stack else (0, [], 0)
                self._close_name(opened, at)
                if depth == 0:
                    begin = at + 1
            elif depth == 0:
                start = begin + len(self.code[begin:at]) - len(self.code[begin:at].lstrip())
                if "}" not in self.code[start:at] or self.code[start:at].count("{") == self.code[start:at].count("}"):
                    statements.append((start, at + 1))
                begin = at + 1

    def _open_name(self, head: str, at: int) -> None:
        head = head.strip()
        found = re.search(r"\b(?:struct|class|enum(?: class)?|namespace)\s+(\w+)", head)
        function = re.findall(r"([\w:~]+)\s*\(", head)
        if found and "(" not in head:
            self.names.append((at, len(self.code), found.group(1)))
        elif function and function[0] not in (
            "if",
            "for",
            "while",
            "switch",
            "catch",
            "requires",
            "decltype",
            "return",
        ):
            self.names.append((at, len(self.code), function[0]))

    def _close_name(self, opened: int, at: int) -> None:
        self.names = [(a, at if a == opened else b, name) for a, b, name in self.names]


def blank(text: str) -> Tuple[str, List[Tuple[int, int]]]:
    """The text with comments, literals' insides and preprocessor lines as blanks; and where the string literals are."""
    code = list(text)
    literals = []
    pattern = re.compile(
        r'//[^\n]*|/\*.*?\*/|^[ \t]*#(?:[^\n\\]|\\.|\\\n)*|R"\((?:.*?)\)"|"(?:[^"\\\n]|\\.)*"|(?<![0-9a-fA-F])\'(?:[^\'\\\n]|\\.)+\'',
        re.S | re.M,
    )
    for match in pattern.finditer(text):
        keep = 1 if match.group()[0] in "\"'" else 0
        if match.group()[0] == '"':
            literals.append(match.span())
        for i in range(match.start() + keep, match.end() - keep):
            if code[i] != "\n":
                code[i] = " "
    return "".join(code), literals


Found = Iterator[Tuple[int, int, str]]


def wire_order(source: Source) -> Found:
    """Two neighbours change places in what is serialized."""
    for match in re.finditer(r"CEREAL_NVP\((\w+)\)(?=,\s*CEREAL_NVP\((\w+)\))", source.code):
        rest = re.compile(r",\s*CEREAL_NVP\((\w+)\)").match(source.code, match.end())
        between = source.text[match.end() : rest.start(1)]
        yield match.start(1), rest.end(1), f"{rest.group(1)}){between}{match.group(1)}"


def structure(source: Source) -> Found:
    """Two neighbouring members of a message exchange their types or initial values."""
    if "/messages/" not in source.file:
        return
    member = r"^[ \t]+(std::[\w:<>, ]+?|[A-Z]\w+) (\w+)( = [^;]+|\{[^;]*\})?;[^\n]*\n"
    lines = list(re.finditer(member, source.code, re.M))
    for a, b in zip(lines, lines[1:]):
        if a.group(2).startswith("m_") or a.end() != b.start() or (a.group(1), a.group(3)) == (b.group(1), b.group(3)):
            continue
        first = f"{b.group(1)} {a.group(2)}{b.group(3) or ''};"
        second = f"{a.group(1)} {b.group(2)}{a.group(3) or ''};"
        between = source.text[source.code.index(";", a.start(2)) + 1 : b.start(1)]
        yield a.start(1), source.code.index(";", b.start(2)) + 1, first + between + second


def table(source: Source) -> Found:
    """Two neighbouring entries of a table exchange their values."""
    row = re.compile(r"^[ \t]+\{([^{}\n]+)\},[^\n]*$", re.M)
    rows = list(row.finditer(source.text))
    for a, b in zip(rows, rows[1:]):
        if b.start() - a.end() != 1 or a.group(1).count(",") != b.group(1).count(","):
            continue
        last_a, last_b = a.group(1).rsplit(", ", 1)[-1], b.group(1).rsplit(", ", 1)[-1]
        if last_a != last_b:
            start, end = a.end(1) - len(last_a), b.end(1)
            yield start, end, last_b + source.text[a.end(1) : b.end(1) - len(last_b)] + last_a
    single = re.compile(r'^[ \t]+("[^"\n]*"|[a-z]\w*(?: = \d+)?),[^\n]*$', re.M)
    rows = list(single.finditer(source.text))
    for a, b in zip(rows, rows[1:]):
        if b.start() - a.end() == 1 and a.group(1) != b.group(1) and "=" not in a.group(1) + b.group(1):
            yield a.start(1), b.end(1), b.group(1) + source.text[a.end(1) : b.start(1)] + a.group(1)
    number = r"(?<![\w.])(-?\w*\d\w*)"
    for match in re.finditer(number + r"(?=,\s*" + number + r"\s*[,}])", source.code):
        rest = re.compile(r",\s*" + number).match(source.code, match.end())
        if match.group(1) != rest.group(1) and "{" in source.code[max(0, match.start() - 400) : match.start()]:
            between = source.text[match.end(1) : rest.start(1)]
            yield match.start(1), rest.end(1), rest.group(1) + between + match.group(1)


def constant(source: Source) -> Found:
    """A number is another one."""
    for match in re.finditer(r"(?<![\w.:'])(\d{1,9})(ms|s|U)?\b(?!['.\w])", source.code):
        line_start = source.code.rfind("\n", 0, match.start()) + 1
        line = source.code[line_start : source.code.find("\n", match.start())]
        if re.search(r"static_assert|template|vector_size|__BYTE", line):
            continue
        value, unit = int(match.group(1)), match.group(2) or ""
        other = value // 10 if unit in ("ms", "s") and value >= 100 else value + 1
        yield match.start(), match.end(), f"{other}{unit}"


def message_id(source: Source) -> Found:
    """An id, or another number that is written in hexadecimal digits, is the next one."""
    for match in re.finditer(r"\b0x([0-9A-Fa-f]+)(U?)\b", source.code):
        yield match.start(), match.end(), f"0x{int(match.group(1), 16) + 1:x}{match.group(2)}"


def level(source: Source) -> Found:
    """A trace line has another level."""
    levels = ["Error", "Warning", "Event", "Action", "Call", "Dump"]
    for match in re.finditer(r"TraceLevel::(\w+)", source.code):
        if match.group(1) in levels:
            place = levels.index(match.group(1))
            yield match.start(1), match.end(1), levels[place + 1 if place < 5 else 4]


def text(source: Source) -> Found:
    """A text has a letter less."""
    for start, end in source.literals:
        content = source.text[start + 1 : end - 1]
        line_start = source.text.rfind("\n", 0, start) + 1
        if len(content) < 2 or "extern" in source.text[line_start:start] or "\\" in content:
            continue
        middle = start + 1 + len(content) // 2
        yield start, end, source.text[start:middle] + source.text[middle + 1 : end]


def calls(source: Source) -> Iterator[List[Tuple[int, int]]]:
    """The plain statements of each block that are no declaration and no jump; None where another one stands between."""
    for block in source.statements:
        run: List[Tuple[int, int]] = []
        for start, end in block:
            statement = source.code[start:end]
            plain = (
                re.match(r"[\w:*(\[]", statement)
                and not re.match(
                    r"(return|using|static|const|constexpr|auto|break|case|throw|if|else|for|default|friend"
                    r"|template|typedef|extern|public|private|virtual|explicit|namespace|static_assert)\b",
                    statement,
                )
                and not re.match(r"[\w:<>,* &]+[ &*]\w+( = .*|\{.*|\(.*)?;$", statement.split("(")[0] + ";")
                and re.search(r"[(=]|\+\+|--", statement)
                and (not run or source.code[run[-1][1] : start].strip() == "")
            )
            if plain:
                run.append((start, end))
            else:
                if run:
                    yield run
                run = []
        if run:
            yield run


def in_function(source: Source, position: int) -> bool:
    return source.file.endswith(".cpp") or source.name_at(position)[:1].islower()


def is_assignment(source: Source, start: int, end: int) -> bool:
    """Whether a statement only sets a value, asking no object for it: that two of these change places, nobody can tell."""
    return re.match(r"[\w.:>*\[\]-]+ = (?:(?!->)[^;])*;$", source.code[start:end]) is not None


def exchanged(source: Source) -> Found:
    """Two steps change places."""
    for run in calls(source):
        for (a, a_end), (b, b_end) in zip(run, run[1:]):
            if in_function(source, a) and not (is_assignment(source, a, a_end) and is_assignment(source, b, b_end)):
                yield a, b_end, source.text[b:b_end] + source.text[a_end:b] + source.text[a:a_end]


def dropped(source: Source) -> Found:
    """A step is not taken."""
    for run in calls(source):
        for start, end in run:
            if in_function(source, start):
                yield start, end, ";"


def condition(source: Source) -> Found:
    """A condition is the other way round."""
    for match in re.finditer(r"(?<!\w)(?:if|while) \(", source.code):
        depth, at = 1, match.end()
        while depth > 0:
            depth += {"(": 1, ")": -1}.get(source.code[at], 0)
            at += 1
        inside = source.text[match.end() : at - 1]
        if ";" not in inside and not re.match(r"(const )?auto\b", inside):
            yield match.end(), at - 1, f"!({inside})"
    other = {"==": "!=", "!=": "==", "<": "<=", ">": ">=", "<=": "<", ">=": ">", "&&": "||", "||": "&&"}
    for match in re.finditer(r"(?<= )(==|!=|<=|>=|<|>|&&|\|\|)(?= )", source.code):
        line_start = source.code.rfind("\n", 0, match.start()) + 1
        line = source.code[line_start : source.code.find("\n", match.start())]
        if not re.search(r"template|requires|static_assert|if constexpr|operator|concept|\bclass\b|is_\w+_v", line):
            yield match.start(), match.end(), other[match.group()]


def channel(source: Source) -> Found:
    """Always channel 1, or its number where its index is meant."""
    patterns = [
        (r"m_channels\[(\w+)\]", 1, "RadioChannel{1}"),
        (r"\b(channelOf\(\*\w+\))", 1, "RadioChannel{1}"),
        (r"\b(ct - 1)\b", 1, "ct"),
        (r"\b(radioChannelIndex \+ 1)\b", 1, "radioChannelIndex"),
        (r"(?<=[(] )?(?<=[(,])\s?(ct)(?=[,)])", 1, "RadioChannel{1}"),
        (r"\b((?:request|message)(?:->|\.)ct)\b(?! =)", 1, "1U"),
        (r"\.ct = ([^;]+);", 1, "1"),
        (r"\.channel = ([^;]+);|\.radioChannel = ([^;]+);", 0, "1"),
    ]
    for pattern, group, replacement in patterns:
        for match in re.finditer(pattern, source.code):
            taken = group or next(i for i in (1, 2) if match.group(i))
            line_start = source.code.rfind("\n", 0, match.start()) + 1
            line = source.code[line_start : source.code.find("\n", match.start())]
            if not re.search(r"\bRadioChannel ct\b.*\)( const)?( override)?;?$", line) or "[" in match.group():
                yield match.start(taken), match.end(taken), replacement


def lock(source: Source) -> Found:
    """A lock keeps nobody out, or nobody is woken or waited for."""
    for match in re.finditer(r"std::(scoped|unique|shared)_lock(?:<\w+>)? \w+[({](\w+)[)}];", source.code):
        line_start = source.code.rfind("\n", 0, match.start()) + 1
        mutex = "std::shared_mutex" if match.group(1) == "shared" else "std::mutex"
        statement = source.text[line_start : match.end()].lstrip()
        start = match.end() - len(statement)
        guarded = statement.replace(match.group(2), "nobody")
        yield start, match.end(), f"{mutex} nobody; {guarded}"
    for match in re.finditer(r"\w+(?:\.|->)(?:notify_one|notify_all|join)\(\);", source.code):
        yield match.start(), match.end(), ";"


KINDS: List[Tuple[str, Callable[[Source], Found]]] = [
    ("wire order", wire_order),
    ("structure", structure),
    ("table", table),
    ("constant", constant),
    ("id", message_id),
    ("level", level),
    ("text", text),
    ("exchanged steps", exchanged),
    ("dropped step", dropped),
    ("condition", condition),
    ("channel", channel),
    ("lock", lock),
]


def faults_in(file: str, content: str) -> List[Fault]:
    source = Source(file, content)
    found = []
    seen: dict = {}
    for kind, find in KINDS:
        for start, end, after in find(source):
            before = content[start:end]
            if before == after:
                continue
            where = source.name_at(start)
            fault = Fault(kind, file, start, end, before, after, where, content.count("\n", 0, start) + 1)
            key = "|".join((kind, file, where, " ".join(before.split()), " ".join(after.split())))
            seen[key] = seen.get(key, 0) + 1
            fault.ident = hashlib.sha1(f"{key}|{seen[key]}".encode()).hexdigest()[:8]
            found.append(fault)
    return found
