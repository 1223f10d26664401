"""Finds the places of a source at which a bug of a usual kind can be planted: a condition negated, a
boundary moved, a statement or call dropped, a constant or text changed, arguments swapped."""
import pathlib
import re
from typing import NamedTuple


class Bug(NamedTuple):
    """The text from `start` to `end` of a file becomes `text`."""
    file: str
    kind: str
    start: int
    end: int
    text: str


OPPOSITES = {"==": "!=", "!=": "==", "&&": "||", "||": "&&", "<": "<=", "<=": "<", ">": ">=", ">=": ">",
             "-eq": "-ne", "-ne": "-eq", "-z": "-n", "-n": "-z", "eq": "ne", "ne": "eq", "true": "false",
             "false": "true", "True": "False", "False": "True", "and": "or", "or": "and", "+ 1": "", "- 1": ""}
NEGATED = {"==", "!=", "&&", "||", "-eq", "-ne", "-z", "-n", "eq", "ne", "and", "or"}
SYMBOL = r"(?<= )(==|!=|&&|\|\||<=|>=|<|>|\+ 1|- 1)(?=[ );\]])"
NUMBER = r"(?<![\w.#$%&\"':-])(\d+)(?![\w.\"'])"
STRING = r'"((?:[^"\\\n]|\\.)*)"'

# For each language: lines to pass over, and the patterns of words with an opposite, of conditions, of
# whole statements, of calls, of the line before one of these two, and of two arguments that can change
# places. "negation" negates a condition; "dropped" stands for what is dropped.
CPP = {
    "comment": r"\s*(//|#|\*)|.*#include",
    "word": SYMBOL + r"|\b(true|false)\b",
    "condition": r"\b(?:if|while) \((.+)\)(?: \{)?$",
    "negation": "!({})",
    "statement": r"(?:[\w.\->\[\]()]+ [-+|]?= .*|\+\+\w+|break|delete(?:\[\])? .+|emit .+|\*\w+ .*= .*);$",
    "call": r"[\w:.>-]+\(.*\);$",
    "before": r".*[;{}:]$|^$|\s*//.*|.*\)$|\s*else$",
    "dropped": ";",
    "pair": r"\(([\w.:>-]+), ([\w.:>-]+)\)",
}
TCL = {
    "comment": r"\s*#|package|namespace",
    "word": SYMBOL + r"|(?<= )(eq|ne)(?= )",
    "condition": r"\bif \{(.+?)\} \{$",
    "negation": "!({})",
    "statement": r"(?:set|lappend|incr|append) .*|break|continue|return",
    "call": r"(?!(?:set|lappend|incr|append|if|else|foreach|while|proc|variable|global|try|lassign|return|break)\b)\w+ .*",
    "before": r".*[;{}]$|^$|\s*#.*|.*[\w\])\"]$",
    "dropped": "list",
    "pair": r"(\$\w+) (\$\w+)",
}
BASH = {
    "comment": r"\s*#",
    "word": SYMBOL + r"|(?<=[ \[])(-eq|-ne|-z|-n|true|false)(?= )",
    "condition": r"\b(?:if|while) (.+); (?:then|do)$",
    "negation": "! {}",
    "statement": r"[\w]+=\S*|shift|return.*|exit .*",
    "call": r"(?!(?:if|then|else|elif|fi|for|while|do|done|case|esac|local|return|exit|shift|set|usage)\b)[\w./-]+ [^)]*",
    "before": r".*[;{}\w\"'/]$|^$|\s*#.*",
    "dropped": ":",
    "pair": r"(\"?\$\w+\"?) (\"?\$\w+\"?)",
}
PYTHON = {
    "comment": r"\s*#|import|from",
    "word": SYMBOL + r"|\b(True|False|and|or)\b",
    "condition": r"\b(?:if|while) (.+):$",
    "negation": "not ({})",
    "statement": r"[\w.\[\]\"]+ = .*|break|continue|raise .*",
    "call": r"[\w.]+\(.*\)$",
    "before": r".*[:)\w\]]$|^$|\s*#.*",
    "dropped": "pass",
    "pair": r"\(([\w.]+), ([\w.]+)\)",
}
PERL = {**BASH, "statement": r".*;$", "dropped": ";"}


def language(path, text):
    if path.suffix in (".cpp", ".h"):
        return CPP
    if path.suffix == ".tcl":
        return TCL
    first = text.split("\n", 1)[0]
    for name, rules in (("python", PYTHON), ("perl", PERL), ("mvedit", TCL), ("sh", BASH)):
        if name in first:
            return rules
    return None


def is_balanced(text):
    bare = re.sub(STRING, "", text)
    return all(bare.count(a) == bare.count(b) for a, b in ("()", "[]", "{}")) and bare.count('"') % 2 == 0


def changed_text(text):
    middle = len(text) // 2
    # Not right after the character that begins an escape or a placeholder.
    while text[:middle].endswith(("\\", "%", "$")):
        middle += 1
    return text[:middle] + "x" + text[middle:]


def in_line(rules, line, previous):
    """The kind, start, end and new text of each bug that the line has room for."""
    # In bash a string holds code, too.
    strings = [match.span() for match in re.finditer(STRING, line)] if rules is not BASH else []

    def is_code(position):
        return not any(start < position < end for start, end in strings)

    for match in re.finditer(rules["word"], line):
        word = match.group()
        if is_code(match.start()):
            kind = ("condition negated" if word in NEGATED else
                    "constant changed" if word in ("true", "false", "True", "False") else "boundary moved")
            yield kind, match.start(), match.end(), OPPOSITES[word]
    for match in re.finditer(NUMBER, line):
        if is_code(match.start()):
            yield "constant changed", *match.span(), str(int(match.group()) + 1)
    for match in re.finditer(STRING, line):
        yield "text changed", *match.span(1), changed_text(match.group(1))
    for match in re.finditer(rules["pair"], line):
        if is_code(match.start()) and match.group(1) != match.group(2):
            yield ("arguments swapped", match.start(1), match.end(2),
                   match.group(2) + line[match.end(1):match.start(2)] + match.group(1))
    if (match := re.search(rules["condition"], line)) and is_balanced(match.group(1)):
        yield "condition negated", *match.span(1), rules["negation"].format(match.group(1))
    statement = line.strip()
    if line.startswith(" ") and is_balanced(statement) and re.fullmatch(rules["before"], previous):
        for kind in ("statement", "call"):
            if re.fullmatch(rules[kind], statement):
                yield f"{kind} dropped", len(line) - len(line.lstrip()), len(line), rules["dropped"]
                break


def in_source(path, text):
    rules = language(path, text)
    if rules is None:
        return
    position = 0
    previous = ""
    quoted = False
    here = None
    for line in text.split("\n"):
        # Docstrings and here-documents are passed over, also where these hold a script.
        quotes = line.count('"""') if rules is PYTHON else 0
        if not quoted and not quotes and here is None and not re.match(rules["comment"], line):
            for kind, start, end, new in in_line(rules, line, previous):
                yield Bug(str(path), kind, position + start, position + end, new)
        quoted ^= quotes == 1
        if rules is BASH and here is None and (match := re.search(r"<<'?(\w+)'?", line)):
            here = match.group(1)
        elif line == here:
            here = None
        previous = line
        position += len(line) + 1


FORM = [
    ("text changed", r"<string>([^<]+)</string>", changed_text),
    ("constant changed", r"<(?:number|x|y|width|height|pointsize|weight)>(\d+)<", lambda n: str(int(n) + 1)),
    ("constant changed", r"<(?:bool|bold)>(true|false)<", OPPOSITES.get),
    ("constant changed", r"<set>[\w:]+(\|[\w:]+)", lambda _: ""),
    ("constant changed", r' (?:row|column)="(\d+)"', lambda n: str(int(n) + 1)),
    ("statement dropped", r"\n( *<property name=\"\w+\"[^>]*>.*?</property>)", lambda _: ""),
    ("call dropped", r"\n( *<connection>.*?</connection>)", lambda _: ""),
    ("statement dropped", r"\n( *<tabstop>.*?</tabstop>)", lambda _: ""),
]


def in_form(path, text):
    for kind, pattern, change in FORM:
        for match in re.finditer(pattern, text, re.DOTALL):
            yield Bug(str(path), kind, *match.span(1), change(match.group(1)))


def usual_bugs(root, file):
    """All bugs of the usual kinds that a file, given below the root, has room for."""
    path = pathlib.Path(file)
    text = (root / path).read_text()
    return list(in_form(path, text) if path.suffix == ".ui" else in_source(path, text))
