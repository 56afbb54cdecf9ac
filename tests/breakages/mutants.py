"""Small faults, made in C++ source text one at a time."""
import re
from dataclasses import dataclass


@dataclass(frozen=True)
class Mutant:
    """One fault: at `offset` in the text of `file`, `old` becomes `new`."""

    file: str
    line: int
    offset: int
    old: str
    new: str

    def applied_to(self, text):
        return text[:self.offset] + self.new + text[self.offset + len(self.old):]

    def __str__(self):
        return f"{self.file}:{self.line}: {' '.join(self.old.split())}  ->  {' '.join(self.new.split())}"


# The code is formatted: an operator of two values has blanks around it, what belongs to a type has not.
OPERATORS = {
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="],
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"], "&&": ["||"], "||": ["&&"], "+=": ["-="], "-=": ["+="],
}
OPERATOR = re.compile(r"(?<= )(" + "|".join(re.escape(o) for o in sorted(OPERATORS, key=len, reverse=True)) + r")(?= )")
STEP = re.compile(r"\+\+|--")
WORDS = {"true": "false", "false": "true", "flag_true": "flag_false", "flag_false": "flag_true", "min": "max", "max": "min"}
WORD = re.compile(r"\b(" + "|".join(WORDS) + r")\b")
NUMBER = re.compile(r"(?<![\w.'])\d+(\.\d+)?(?![\w.'])")
TEXT = re.compile(r'"[^"\\\n]+"')
CONDITION = re.compile(r"\b(?:if|while) \((?!const |auto )(.+)\)(?= \{$|$)", re.M)
# A call with two plain arguments.
PAIR = re.compile(r"(?<=\()([\w.]+(?:\(\w*\))?), ([\w.]+(?:\(\w*\))?)(?=\))")
# A statement that is one line, after the end of another.
STATEMENT = re.compile(r"(?<=[;{}):]\n)^ +(?!return\b|using\b|case\b|const\b|constexpr\b|static_assert\b|explicit\b)"
                       r"(?:[\w:]+(?:\(\w*\))?(?:->|\.))*[\w:]+(?:\([^;]*\)| (?:[+-]?=) [^;{]+);$|(?<=\n) +(?:return|break|continue);$", re.M)
CODE_TO_HIDE = re.compile(r"//[^\n]*|/\*.*?\*/|^\s*#[^\n]*|'(?:[^'\\\n]|\\.)'", re.M | re.S)
TEXTS_TO_HIDE = re.compile(r'"(?:[^"\\\n]|\\.)*"')


def hidden(pattern, text):
    """The text with what the pattern matches made blank, so that all stays where it is."""
    return pattern.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), text)


def replacements(text):
    """All faults of a text: offset, old, new."""
    with_texts = hidden(CODE_TO_HIDE, text)
    code = hidden(TEXTS_TO_HIDE, with_texts)
    for match in OPERATOR.finditer(code):
        for new in OPERATORS[match.group()]:
            yield match.start(), match.group(), new
    for match in STEP.finditer(code):
        yield match.start(), match.group(), {"++": "--", "--": "++"}[match.group()]
    for match in WORD.finditer(code):
        yield match.start(), match.group(), WORDS[match.group()]
    for match in NUMBER.finditer(code):
        whole, dot, fraction = match.group().partition(".")
        yield match.start(), match.group(), str(int(whole) + 1) + dot + fraction
        if whole != "0":
            yield match.start(), match.group(), str(int(whole) - 1) + dot + fraction
    for match in TEXT.finditer(with_texts):
        yield match.start(), match.group(), match.group()[:-2] + '"'
    for match in CONDITION.finditer(code):
        condition = text[match.start(1):match.end(1)]
        yield match.start(1), condition, f"!({condition})"
    for match in PAIR.finditer(code):
        first, second = (text[match.start(i):match.end(i)] for i in (1, 2))
        if first != second:
            yield match.start(), text[match.start():match.end()], f"{second}, {first}"
    for match in STATEMENT.finditer(code):
        statement = text[match.start():match.end()].lstrip()
        yield match.end() - len(statement), statement, "{}"


def mutants_of(file, text):
    """All faults of a file, in the order of their places."""
    return [Mutant(file, text.count("\n", 0, offset) + 1, offset, old, new)
            for offset, old, new in sorted(replacements(text))]


def chosen(mutants, count, random):
    """Up to `count` of them at random, at most one a line, so that a long line has no more of them than a short one."""
    by_line = {}
    for mutant in mutants:
        by_line.setdefault((mutant.file, mutant.line), []).append(mutant)
    lines = random.sample(sorted(by_line), min(count, len(by_line)))
    return [random.choice(by_line[line]) for line in lines]
