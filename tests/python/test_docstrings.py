"""The docstrings, which are made out of the comments of the headers."""

import pathlib
import re
import sys

import pytest

import zel

SOURCE = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(SOURCE / "python/zel"))

import docstrings  # noqa: E402
import headers  # noqa: E402

OWN_CLASSES = [each for each in vars(zel).values() if type(each) is type(zel.Node)]


def bound_operations():
    for each in OWN_CLASSES:
        for name, value in vars(each).items():
            if name == "_repr_svg_":
                continue  # Of zel.shading, where that was imported.
            function = getattr(each, name)
            if type(value).__name__ in ("instancemethod", "staticmethod"):
                yield f"{each.__name__}.{name}", function


def text_of(function):
    """The docstring without the lines of the signatures."""
    lines = function.__doc__.splitlines()
    signature = re.compile(rf"(\d+\. )?{re.escape(function.__name__)}\(.*\)( -> .*)?$|Overloaded")
    return "\n".join(line for line in lines if not signature.match(line)).strip()


def test_there_is_something_to_look_at():
    assert len(list(bound_operations())) > 100


def test_every_operation_says_what_it_does():
    assert [name for name, function in bound_operations() if len(text_of(function)) < 16] == []


def test_every_class_says_what_it_is():
    assert [each for each in OWN_CLASSES if len(each.__doc__) < 40] == []


def test_signatures_name_what_python_knows():
    for operation, function in bound_operations():
        assert "::" not in function.__doc__, operation
        for name in re.findall(r"\bzel\.([\w.]+\w)", function.__doc__):
            found = zel
            for part in name.split("."):
                assert hasattr(found, part), (operation, name)
                found = getattr(found, part)


def test_texts_speak_of_python():
    for key, text in docstrings.table(SOURCE / "include").items():
        if hasattr(zel, key[0]):
            assert not re.search(r"\b(wrapper|AddRefWrapper|const|NULL)\b|[a-z]::", text), key


@pytest.mark.parametrize(
    "comment, result, expected",
    [
        ("Empty when index is out of range.", "AddRefWrapper<Port>", "None when index is out of range."),
        ("Never null; empty when unset.", "const char*", '"" when unset.'),
        ("A null name is ignored.", "void", "None is ignored."),
        ("True when done. Valid until the next call.", "const char*", "True when done."),
        ("As Node::inputs, false at the end.", "bool", "As Node.inputs, False at the end."),
        ("A new node, held by the wrapper; true.", "AddRefWrapper<Node>", "A new node; True."),
    ],
)
def test_words_of_cpp_become_those_of_python(comment, result, expected):
    assert docstrings.in_python(comment, result) == expected


def test_the_nearest_comment_counts(tmp_path):
    (tmp_path / "some.h").write_text(
        """
namespace ZEL {
/// Asks.
class Base {
public:
    /// Asked first.
    virtual bool ask(int (*callback)(int, void*), void* data) = 0;
    /// Told afterwards.
    virtual void tell();
    int size() { return 1; }

private:
    /// Nobody's business.
    int hidden();
};
/// Answers.
class ZEL_API Answer final : public Base, public Other {
public:
    enum EHow : int {
        eSo = 0, ///< So.
    };
    bool ask(int (*callback)(int, void*), void* data) override;
    /// Told here.
    ///
    /// At length.
    void tell() override;
};
class Other {
};
ZEL_API void inTheEnd();
} // namespace ZEL
""",
        encoding="utf-8",
    )
    found = headers.read(tmp_path)
    assert [each.name for each in found.functions] == ["inTheEnd"]
    assert [each.name for each in found.classes["Base"].operations] == ["ask", "tell", "size"]
    assert found.bases_of("Answer") == ["Answer", "Base", "Other"]
    assert found.classes["Answer"].enumerations == ["EHow"]
    assert docstrings.comment_of(found, "Answer", "ask") == "Asked first."
    assert docstrings.comment_of(found, "Answer", "tell") == "Told here.\n\nAt length."
    assert docstrings.comment_of(found, "Answer", "size") == ""
