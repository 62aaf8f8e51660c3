"""Texts as they go in and come out, and lists as Python reads them."""

import gc

import pytest
import zel
from network import Document, compound, names, node

ODD = ["", " ", "a.b", "ä", "\U0001f600", "\udcff\udc80", "\n\t", "x" * 1_000_000, "%s%n",
       "n\u0301"]


@pytest.mark.parametrize("text", ODD, ids=range(len(ODD)))
def test_odd_texts_come_back(text):
    port, kind = zel.Port("p", zel.PortInput), zel.PortDataType(text)
    port.setName(text), port.setPortDefaultValue(text), port.setDataType(kind)
    assert (port.getName(), port.getPortDefaultValue(), port.getDataType().getName()) == (text,) * 3
    owner, top = compound("Top")
    made = node(top, text)
    made.setNodeTypeName(text), made.appendString("+")
    made.inputs().addPort(text)
    assert made.getNodeTypeName() == text and made.getFullPathName() == f"Top.{text}+"
    assert top.nodes()[text + "+"] is made
    assert made.inputs()[text].getFullPathName() == f"Top.{text}+.{text}"
    assert text in repr(made) or not text.isprintable()


def test_texts_that_are_none():
    port = zel.Port("p", zel.PortInput)
    for bad, error in (("a\0b", ValueError), ("\ud800", UnicodeError), (b"x", TypeError),
                       (1, TypeError)):
        for call in (port.setName, port.setPortDefaultValue, zel.PortDataType,
                     zel.Container.tokenizePath,
                     lambda text: zel.Node(None, text), lambda text: zel.Port(text, zel.PortInput)):
            with pytest.raises(error):
                call(bad)
    port.setName(None), port.setPortDefaultValue(None)
    assert (port.getName(), port.getPortDefaultValue()) == ("p", "")
    assert zel.Port(None, zel.PortInput).getName() == "" and zel.Node(None, None).getName() == ""
    document = Document()
    assert document.findNodeFromPath(None) is None and zel.Container.getFromUUID(None) is None
    assert zel.Container.tokenizePath("") == []
    assert zel.Container.tokenizePath("a..b.") == ["a", "", "b"]


def lists():
    """A list of each kind with the entries a b a, of which the first stands twice."""
    made = node(None, "n")
    a, b = zel.Port("a", zel.PortInput), zel.Port("b", zel.PortInput)
    owner, top = compound("Top")
    c, d = zel.Node(None, "a"), zel.Node(None, "b")
    for entries, one, two in ((made.inputs(), a, b), (top.nodes(), c, d),
                              (top.innerOutputs(), zel.Port("a", 0), zel.Port("b", 0))):
        assert entries.add(one) and entries.add(two) and entries.add(one)
        yield entries, one, two


def test_the_list_protocol():
    for entries, a, b in lists():
        assert len(entries) == entries.size() == 3 and bool(entries)
        assert [entries[i] for i in (0, 1, 2, -1, -3, True)] == [a, b, a, a, a, b]
        for index in (3, -4, 2**31, 2**63, -(2**200)):
            with pytest.raises(IndexError):
                entries[index]
        assert entries["a"] is a and entries.get("b") is b and entries.get("c") is None
        assert entries.get("c", 5) == 5
        with pytest.raises(KeyError, match="c"):
            entries["c"]
        for key in (None, 1.0, slice(0, 1), a):
            with pytest.raises(TypeError):
                entries[key]
        assert "a" in entries and "c" not in entries and a in entries and None not in entries
        assert 3 not in entries
        assert zel.Port("a", 0) not in entries and zel.Node(None, "a") not in entries
        assert entries.index(b) == 1 and entries.index(a) == 0
        with pytest.raises(ValueError):
            entries.index(type(a)("a", 0) if isinstance(a, zel.Port) else zel.Node(None, "a"))
        with pytest.raises(TypeError):
            entries.index(None)
        assert list(entries) == [a, b, a] and list(reversed(list(entries))) == [a, b, a]
        assert entries.remove(a) and a.getName() == "a"
        assert list(entries) == ([b] if isinstance(a, zel.Port) else [b, a])
        for missing in (zel.Node(None, "x"), zel.Port("x", 0)):
            if type(missing) is type(a):
                assert entries.remove(missing) is False
            else:
                with pytest.raises(TypeError):
                    entries.remove(missing)
        with pytest.raises(TypeError):
            entries.add(None)


def test_the_walk_is_over_what_was_there():
    for entries, a, b in lists():
        seen = []
        for entry in entries:
            seen.append(entry)
            while len(entries):
                assert entries.remove(entries[0])
        assert seen == [a, b, a] and list(entries) == []
        for entry in seen[:2]:
            assert entries.add(entry)
        walk = iter(entries)
        assert entries.add(next(walk)) and list(walk) == [b] and list(entries) == [a, b, a]
        del entries
        gc.collect()


def test_connections_are_a_tuple():
    a = zel.Port("a", zel.PortOutput)
    others = [zel.Port(str(i), zel.PortInput) for i in range(3)]
    assert all(a.addConnection(other) for other in others) and a.addConnection(others[0])
    assert a.connectedTo() == (*others, others[0]) and others[0].connectedTo() == (a, a)
    for other in a.connectedTo():
        a.removeConnection(other)
    assert a.connectedTo() == () and a.addConnection(None) is False


def test_ten_thousand_nodes_are_found():
    class Kind(zel.Node):
        pass

    document = Document()
    made = [node(document.top, f"n{i}", kind=Kind if i % 2 else zel.Node) for i in range(10_000)]
    for i in range(0, 10_000, 7):
        assert document.findNodeFromPath(f"Top.n{i}") is made[i]
        assert document.top.nodes()[f"n{i}"] is made[i]
    made[5].setName("n9000")
    assert document.top.nodes()["n9000"] is made[5] and "n5" not in document.top.nodes()
    for i in range(10, 10_000):
        assert document.top.nodes().remove(made[-1]) and made.pop()
    assert names(document.top.nodes()) == "n0 n1 n2 n3 n4 n9000 n6 n7 n8 n9"
