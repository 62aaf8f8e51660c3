"""Reads the public headers: their classes, operations and comments.

They are formatted by one tool, so that a reader of lines is enough. Who builds the docstrings and who
tests the module use it.
"""

import dataclasses
import pathlib
import re

_CLASS = re.compile(r"(?:class|struct)\s+(?:ZEL_API\s+)?(\w+)\s*(?:final\s*)?(?::(?!:)\s*(.*?))?\s*\{$")
_ENUM = re.compile(r"enum\s+(?:class\s+)?(\w+)")
_OPERATION = re.compile(r"(operator\s*(?:\[\]|\(\)|[^\s(]+)|~?\w+)\s*\(")
_ACCESS = re.compile(r"(public|protected|private):$")


@dataclasses.dataclass
class Operation:
    """One declaration of an operation; one name may have more of them."""

    name: str
    result: str  # The type of the result; "" of a constructor.
    doc: str
    is_virtual: bool = False


@dataclasses.dataclass
class Class:
    name: str
    doc: str
    bases: list = dataclasses.field(default_factory=list)
    operations: list = dataclasses.field(default_factory=list)  # The public ones.
    enumerations: list = dataclasses.field(default_factory=list)  # The public ones, by name.


@dataclasses.dataclass
class Headers:
    classes: dict = dataclasses.field(default_factory=dict)  # By name.
    functions: list = dataclasses.field(default_factory=list)
    enumerations: list = dataclasses.field(default_factory=list)

    def bases_of(self, name):
        """The class and those that it is derived from, nearest first."""
        found = [name]
        for base in self.classes[name].bases:
            found += [other for other in self.bases_of(base) if other not in found]
        return found


def read(folder):
    """What all headers of the folder declare."""
    headers = Headers()
    for path in sorted(pathlib.Path(folder).glob("*.h")):
        _Reader(headers).read(path.read_text(encoding="utf-8"))
    return headers


class _Reader:
    def __init__(self, headers):
        self.headers = headers
        self.doc = []
        self.statement = ""
        self.open = []  # Of the braces: what they are, and the access in them.
        self.skipped = 0  # Braces of a body that nobody reads.

    def read(self, text):
        for line in self._compiled(text):
            stripped = line.strip()
            if self.skipped:
                self.skipped += line.count("{") - line.count("}")
            elif stripped.startswith("///"):
                self.doc.append(stripped[3:].strip())
            elif not stripped:
                self.doc = []
            elif not stripped.startswith("//"):
                self._code(re.sub(r"\s*//.*", "", stripped))

    @staticmethod
    def _compiled(text):
        """The lines without those of the preprocessor, and what only some compilers see."""
        depth = 0
        for line in text.splitlines():
            if line.startswith("#if"):
                depth += 1
            elif line.startswith("#endif"):
                depth -= 1
            elif depth == 0 and not line.startswith("#"):
                yield line

    def _code(self, line):
        access = _ACCESS.match(line)
        if access:
            self.open[-1][1] = access[1]
            self.doc = []
            return
        if line.startswith("}") and not self.statement:
            self.open.pop()
            self.doc = []
            return
        self.statement = f"{self.statement} {line}".strip()
        braces = self.statement.count("{") - self.statement.count("}")
        if braces > 0 and self.statement.endswith("{"):
            self._begin()
        elif braces > 0 and not self.statement.startswith("enum"):
            self._declare()
            self.skipped = braces
        elif braces == 0 and self.statement.endswith((";", "}")):
            self._declare()
        else:
            return
        self.statement = ""
        self.doc = []

    def _begin(self):
        statement = _without_template(self.statement)
        found = _CLASS.match(statement)
        if statement.startswith("namespace"):
            self.open.append([statement.split()[1], "public"])
        elif statement.startswith("enum"):
            self._enumeration(statement)
            self.skipped = 1
        elif found:
            if self._is_public():
                self.headers.classes[found[1]] = Class(found[1], self._text(), _bases(found[2]))
            self.open.append([found[1], "public" if statement.startswith("struct") else "private"])
        else:
            self._declare()
            self.skipped = 1

    def _is_public(self):
        return bool(self.open) and all(access == "public" for _, access in self.open)

    def _enumeration(self, statement):
        name = _ENUM.match(statement)[1]
        if self._is_public():
            owner = self.headers.classes.get(self.open[-1][0])
            (owner or self.headers).enumerations.append(name)

    def _declare(self):
        statement = _without_template(self.statement)
        if not self._is_public() or re.match(r"(friend|using|class|struct|enum)\b", statement):
            return
        found = _OPERATION.search(statement)
        if not found or "= delete" in statement:
            return
        words = statement[: found.start()].replace("ZEL_API", "").split()
        qualifiers = {"virtual", "static", "explicit", "inline", "constexpr"}
        result = " ".join(word for word in words if word not in qualifiers)
        name = found[1] if found[1].split()[0] != "operator" else found[1].replace(" ", "", 1)
        owner = self.headers.classes.get(self.open[-1][0])
        (owner.operations if owner else self.headers.functions).append(
            Operation(name, result, self._text(), "virtual" in words or " override" in statement)
        )

    def _text(self):
        """The comment as paragraphs of one line each."""
        paragraphs = "\n".join(self.doc).split("\n\n")
        return "\n\n".join(" ".join(paragraph.split()) for paragraph in paragraphs)


def _bases(text):
    return [base.split()[-1] for base in (text or "").split(",") if base.strip()]


def _without_template(statement):
    while statement.startswith("template"):
        depth = 0
        for place, letter in enumerate(statement):
            depth += {"<": 1, ">": -1}.get(letter, 0)
            if letter == ">" and depth == 0:
                break
        statement = statement[place + 1 :].strip()
    return statement
