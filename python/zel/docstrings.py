"""Writes the table of the docstrings, docTable.cpp: what the comments of the headers say, in words of
Python, and what docstrings.txt says besides or instead.

Usage: docstrings.py INCLUDE_FOLDER OUTPUT
"""

import pathlib
import re
import sys
import textwrap

import headers

OWN = pathlib.Path(__file__).with_name("docstrings.txt")
WIDTH = 79

# Python has other things instead of them.
NOT_IN_PYTHON = ("AddRefWrapper", "ListIterator", "StatusStr")

# In this order. What a text cannot say by them it says in docstrings.txt.
_WORDS = [
    (r", held by the wrapper\b", ""),
    (r"\b[Aa] null (new )?(name|text|path|value|message|UUID|container|pointer|one)\b", "None"),
    (r"\b[Nn]ull\b", "None"),
    (r"\b[Aa]n empty type\b", "None"),
    (r"(argument|other|it|not be|may be|answers) empty\b", r"\1 None"),
    (r"\b(argument|other|it) is empty\b", r"\1 is None"),
    (r"\bNever None; empty when\b", '"" when'),
    (r"\bwrapper(s?)\b", r"object\1"),
    (r"\bWrapper(s?)\b", r"Object\1"),
    (r"\b[Tt]he virtual (?=\w)", ""),
    (r"\bvirtual (?=[sg]et)", ""),
    (r"\bContract: ([a-z*])", lambda found: "Note: " + found[1]),
    (r"\b([A-Za-z]\w*)::(\w)", r"\1.\2"),
    (r"\bon standard output\b", "on the standard output"),
    (r"\btrue\b", "True"),
    (r"\bfalse\b", "False"),
]
# An object that is not there is None; a text may be empty.
_EMPTY = [(r"\b[Ee]mpty(?= when| where| for|;|\.|,)", "None"), (r"\ban empty (\w+)", "None")]
# A str is a copy.
_TEXT = [(r" ?\bValid until [^.]*\.", "")]


def in_python(text, result=""):
    """The comment with Python's words. The result is the type that the operation returns."""
    words = _WORDS + (_EMPTY if result.startswith("AddRefWrapper") else [])
    if result == "const char*":
        words = words + _TEXT
    for pattern, replacement in words:
        text = re.sub(pattern, replacement, text)
    return text


def read_own(path=OWN):
    """The entries by (class, operation): how they stand to the comment, "=" or "+", and the text."""
    entries = {}
    text = re.sub(r"\n\n[ \t]+", "\f", path.read_text(encoding="utf-8"))
    for line in re.sub(r"\n[ \t]+", " ", text).split("\n"):
        if not line or line.startswith("#"):
            continue
        found = re.fullmatch(r"(\w+|\*)\.?(\w*) ([=+]) (.+)", line, re.DOTALL)
        if not found or (found[1], found[2]) in entries:
            raise SystemExit(f"{path}: cannot read, or there twice: {line}")
        entries[found[1], found[2]] = (found[3], found[4].replace("\f", "\n\n"))
    return entries


def comment_of(found, class_name, operation):
    """What the headers say, of the class or else of the nearest base that says something."""
    names = {"__init__": ("createNew", class_name), "__getitem__": ("operator[]",)}
    names = names.get(operation, (operation,))
    for base in found.bases_of(class_name):
        texts = []
        for name in names:
            for each in found.classes[base].operations:
                text = in_python(each.doc, each.result)
                if each.name == name and text and text not in texts:
                    texts.append(text)
            if texts:
                return "\n\n".join(texts)
    return ""


def _operations(found, class_name, own):
    names = {"__init__"}
    for base in found.bases_of(class_name):
        for each in found.classes[base].operations:
            if re.fullmatch(r"[a-z]\w*", each.name) and not each.name.startswith("operator"):
                names.add(each.name)
    names |= {name for owner, name in own if owner in (class_name, "*") and name}
    return names


def table(folder):
    """The docstrings by (class, operation); "" stands for the class of a function and
    for the operation of a class's own text."""
    found = headers.read(folder)
    own = read_own()
    for owner, _ in own:
        if owner != "*" and owner not in found.classes:
            raise SystemExit(f"{OWN}: no header has the class {owner}")

    def finished(comment, *keys):
        for key in keys:
            how, text = own.get(key, ("", ""))
            if how:
                return text if how == "=" else f"{comment}\n\n{text}".strip()
        return comment

    texts = {}
    for name, each in found.classes.items():
        if name in NOT_IN_PYTHON:
            continue
        texts[name, ""] = finished(in_python(each.doc), (name, ""))
        for operation in _operations(found, name, own):
            comment = comment_of(found, name, operation)
            texts[name, operation] = finished(comment, (name, operation), ("*", operation))
    for function in found.functions:
        if function.name.isidentifier():
            texts["", function.name] = in_python(function.doc, function.result)
    return {key: _wrapped(text) for key, text in texts.items() if text}


def _wrapped(text):
    return "\n\n".join(textwrap.fill(paragraph, WIDTH) for paragraph in text.split("\n\n"))


def _literal(text):
    lines = [line.replace("\\", "\\\\").replace('"', '\\"') for line in text.split("\n")]
    return '\\n"\n     "'.join(lines)


def main(folder, output):
    texts = table(folder)
    rows = [(f"{name}.{operation}", text) for (name, operation), text in texts.items()]
    entries = "".join(f'    {{"{key}",\n     "{_literal(text)}"}},\n' for key, text in sorted(rows))
    pathlib.Path(output).write_text(
        "// Made by docstrings.py out of the headers' comments.\n\n"
        '#include "zel/docTable.h"\n\n'
        "namespace zelpython {\n\n"
        f"const Doc kDocs[] = {{\n{entries}}};\n"
        "const std::size_t kDocCount = sizeof(kDocs) / sizeof(kDocs[0]);\n\n"
        "} // namespace zelpython\n",
        encoding="utf-8",
    )


if __name__ == "__main__":
    main(*sys.argv[1:])
