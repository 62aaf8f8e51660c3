"""Values of ports as values of Python, there and back."""

import math

import pytest

import zel
import zel.shading
from shading_support import reasonOf

ROWS3 = ((1, 2, 3), (4, 5, 6), (7, 8, 9.5))
MATRIX3 = (1, 2, 3, 4, 5, 6, 7, 8, 9.5)


@pytest.fixture
def doc():
    """A document with a graph that has an input of each type, called like it."""
    made = zel.shading.new()
    made.create("nodegraph", "g")
    types = [
        *("float integer boolean string filename color3 color4 vector2 vector3 vector4").split(),
        *("matrix33 matrix44 integerarray floatarray stringarray").split(),
    ]
    for name in types:
        made.portAdd("Top.g", "input", f"a_{name}", name) if name in made.types() else None
    return made


GOOD = [
    ("float", 0.1, "0.1"),
    ("float", 1, "1"),
    ("float", 1e-30, "1e-30"),
    ("float", -0.0, "-0"),
    ("integer", -7, "-7"),
    ("boolean", True, "true"),
    ("boolean", False, "false"),
    ("string", "a, b & <c>", "a, b & <c>"),
    ("string", "é", "é"),
    ("filename", "a/b.png", "a/b.png"),
    ("color3", (0.1, 0.2, 1), "0.1, 0.2, 1"),
    ("color4", [0, 0, 0, 1], "0, 0, 0, 1"),
    ("vector2", range(2), "0, 1"),
    ("vector3", (1, 2, 3.25), "1, 2, 3.25"),
    ("matrix33", MATRIX3, "1, 2, 3, 4, 5, 6, 7, 8, 9.5"),
    ("matrix33", ROWS3, "1, 2, 3, 4, 5, 6, 7, 8, 9.5"),
    ("integerarray", (1, 2, 3), "1, 2, 3"),
    ("floatarray", (1.5,), "1.5"),
    ("stringarray", ("a", "b c"), "a, b c"),
]


@pytest.mark.parametrize("type, value, text", GOOD, ids=lambda part: str(part)[:20])
def test_a_value_comes_back_as_it_was_set(doc, type, value, text):
    path = f"Top.g.a_{type}"
    if type not in doc.types():
        pytest.skip(f"no {type}")
    port = doc.node("Top.g").inputs()[f"a_{type}"]
    doc.set(path, value)
    assert port.getPortDefaultValue() == text
    flat = MATRIX3 if value is ROWS3 else value
    flat = tuple(flat) if isinstance(flat, (list, range)) else flat
    assert doc.value(path) == doc.value(port) == flat
    # The text is the same thing, and the inner port has the value too.
    doc.set(port, None)
    doc.set(port, text)
    assert doc.value(doc.compound("Top.g").innerInputs()[f"a_{type}"]) == flat
    doc.undo(doc.undoCount())
    assert doc.stats().nodes == 0


def test_values_have_the_types_of_python(doc):
    kinds = {"float": float, "integer": int, "boolean": bool, "string": str}
    for name, value in (("float", 1), ("integer", 2), ("boolean", True), ("string", "a")):
        doc.set(f"Top.g.a_{name}", value)
        assert type(doc.value(f"Top.g.a_{name}")) is kinds[name]
    doc.set("Top.g.a_color3", (1, 2, 3))
    assert [type(part) for part in doc.value("Top.g.a_color3")] == [float] * 3


def test_no_value_is_none(doc):
    assert doc.value("Top.g.a_float") is None
    assert doc.value("Top.g.a_color3") is None
    assert doc.value("Top.g.a_string") == ""
    doc.set("Top.g.a_float", 2)
    doc.set("Top.g.a_float", None)
    assert doc.value("Top.g.a_float") is None
    doc.create("image", "i", type="color3")
    doc.set("Top.i.default", (1, 1, 1))
    doc.set("Top.i.default", None)
    assert doc.value("Top.i.default") == (0, 0, 0)  # That of its definition.


@pytest.mark.parametrize(
    "type, value",
    [
        ("float", True),
        ("float", (1, 2)),
        ("float", 1j),
        ("float", b"1"),
        ("integer", 1.0),
        ("integer", True),
        ("boolean", 1),
        ("string", 1),
        ("string", b"text"),
        ("color3", 1),
        ("color3", {"r": 1}),
        ("color3", (1, 2, b"3")),
        ("color3", ((1, 2, 3),)),
        ("boolean", object()),
    ],
)
def test_what_is_no_value_of_the_type(doc, type, value):
    with pytest.raises(TypeError):
        doc.set(f"Top.g.a_{type}", value)
    assert doc.value(f"Top.g.a_{type}") in (None, "")


@pytest.mark.parametrize("value", [math.inf, -math.inf, math.nan])
def test_what_no_document_can_hold(doc, value):
    with pytest.raises(ValueError):
        doc.set("Top.g.a_float", value)
    with pytest.raises(ValueError):
        doc.set("Top.g.a_color3", (0, value, 0))
    with pytest.raises(ValueError):
        doc.set("Top.g.a_string", "a\0b")


def test_what_the_type_does_not_take(doc):
    assert reasonOf(lambda: doc.set("Top.g.a_float", "abc")) == 'Top.g.a_float: "abc" is no float'
    assert "takes 3 numbers" in reasonOf(lambda: doc.set("Top.g.a_color3", (1, 2)))
    assert "takes 9 numbers" in reasonOf(lambda: doc.set("Top.g.a_matrix33", ROWS3[:2]))
    assert "is out of range" in reasonOf(lambda: doc.set("Top.g.a_integer", 2**31))
    assert "control" in reasonOf(lambda: doc.set("Top.g.a_string", "a\x01"))
    assert reasonOf(lambda: doc.set("Top.g.none", 1)) == "Top.g.none: no such input"
    doc.create("add", "a")
    assert reasonOf(lambda: doc.set("Top.a.out", 1)) == "Top.a.out: an output has no value"
    assert reasonOf(lambda: doc.value("Top.a.out")) == "Top.a.out: an output has no value"


def test_an_own_number_counts_as_one(doc):
    class Half:
        def __float__(self):
            return 0.5

    class Seven:
        def __index__(self):
            return 7

    class Bad:
        def __float__(self):
            raise KeyError("bad")

    doc.set("Top.g.a_float", Half())
    assert doc.value("Top.g.a_float") == 0.5
    doc.set("Top.g.a_integer", Seven())
    assert doc.value("Top.g.a_integer") == 7
    doc.set("Top.g.a_color3", (part for part in (Half(), Seven(), 1)))
    assert doc.value("Top.g.a_color3") == (0.5, 7, 1)
    with pytest.raises(KeyError):
        doc.set("Top.g.a_float", Bad())


def test_a_text_that_its_type_does_not_know_is_text(tmp_path):
    path = tmp_path / "odd.mtlx"
    path.write_text(
        '<materialx version="1.38"><add name="a" type="float">'
        '<input name="in1" type="float" value="a lot"/></add></materialx>'
    )
    assert zel.shading.open(path).value("Top.a.in1") == "a lot"
