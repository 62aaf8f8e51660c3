"""The headers, the module, its stub, and the table of the guide of what is not bound, held together."""

import ast
import pathlib
import re
import sys

import zel

SOURCE = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(SOURCE / "python/zel"))

import headers  # noqa: E402

HEADERS = headers.read(SOURCE / "include")
GUIDE = (SOURCE / "docs/python.md").read_text(encoding="utf-8")
NOT_BOUND = GUIDE.split("\n## What is not bound\n")[1].split("\n## ")[0]


def rows():
    """The names in the first cells of the table, and the other cells."""
    for line in NOT_BOUND.splitlines():
        cells = [cell.strip() for cell in line.strip("|").split(" | ")]
        names = re.findall(r"`([^`]+)`", cells[0]) if line.startswith("| `") else []
        for name in names:
            yield name, cells[1:]


TABLE = dict(rows())


def derived_from(base):
    """The classes of the module that are this one, or that have its operations."""
    return [name for name in HEADERS.classes if hasattr(zel, name) and base in HEADERS.bases_of(name)]


def is_constructor(owner, operation):
    return operation.name in (owner, "~" + owner)


def operations():
    for owner, each in HEADERS.classes.items():
        for name in sorted({op.name for op in each.operations if not is_constructor(owner, op)}):
            yield owner, name


def is_bound(owner, name):
    derived = derived_from(owner)
    return bool(derived) and all(hasattr(getattr(zel, each), name) for each in derived)


def is_listed(owner, name):
    return owner in TABLE or f"{owner}::{name}" in TABLE


def test_every_operation_is_bound_or_stands_in_the_table():
    assert len(list(operations())) > 150
    assert [each for each in operations() if not is_bound(*each) and not is_listed(*each)] == []


def test_nothing_in_the_table_is_bound():
    assert [each for each in operations() if is_bound(*each) and is_listed(*each)] == []
    assert [name for name in TABLE if hasattr(zel, name)] == []


def test_every_function_is_bound_or_stands_in_the_table():
    names = {function.name for function in HEADERS.functions}
    assert [name for name in names if not hasattr(zel, name) and name not in TABLE] == []


def test_every_enumeration_is_bound_or_stands_in_the_table():
    assert [name for name in HEADERS.enumerations if not hasattr(zel, name)] == ["ParentKind"]
    assert "ParentKind" in TABLE
    for owner, each in HEADERS.classes.items():
        for name in each.enumerations:
            assert hasattr(getattr(zel, owner), name)


def test_the_table_lists_what_the_headers_have():
    known = set(HEADERS.classes) | {function.name for function in HEADERS.functions}
    known |= set(HEADERS.enumerations) | {f"{owner}::{each}" for owner, each in operations()}
    assert TABLE.keys() - known == set()


def test_every_row_says_something():
    assert all(any(cells) for cells in TABLE.values())
    assert len(TABLE) == len(list(rows())) > 40


def test_every_class_is_bound_or_a_base_or_stands_in_the_table():
    for name in HEADERS.classes:
        assert derived_from(name) or name in TABLE, name


def stub_of(body):
    """The names of a stub, with those in its classes."""
    names = {}
    for each in body:
        if isinstance(each, ast.ClassDef):
            names[each.name] = stub_of(each.body)
        elif isinstance(each, ast.FunctionDef):
            names[each.name] = None
        elif isinstance(each, ast.AnnAssign):
            names[each.target.id] = None
    return names


def test_the_stub_has_all_that_the_module_has():
    stub = stub_of(ast.parse((SOURCE / "python/zel/__init__.pyi").read_text("utf-8")).body)
    for name, value in vars(zel).items():
        if name.startswith("_") or type(value) is type(zel):
            continue
        assert name in stub, name
        if type(value) is type(zel.Node):
            own = {each for each in vars(value) if not each.startswith("_")}
            assert own <= stub[name].keys(), name
