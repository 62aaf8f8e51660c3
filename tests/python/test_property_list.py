"""Property lists: texts by key, and children that know when they are gone."""

import copy

import pytest

import zel


def test_pairs_keep_their_order_and_the_first_of_a_key_wins():
    texts = zel.PropertyList()
    for key, value in [("a", "1"), ("b", ""), ("a", "2"), (None, None), ("\udcff", "ö")]:
        texts.addStringPair(key, value)
    assert texts.getNumberOfPairs() == 5
    assert [texts.getStringPairAt(i) for i in range(5)] == [
        ("a", "1"), ("b", ""), ("a", "2"), ("", ""), ("\udcff", "ö")
    ]
    assert texts.getStringPairAt(5) is None and texts.getStringPairAt(-1) is None
    assert texts.getStringPairValue("a") == "1"
    assert texts.getStringPairValue("b") == ""
    assert texts.getStringPairValue("c") is None
    with pytest.raises(ValueError):
        texts.addStringPair("a\0b", "")


def test_children_are_the_same_objects_and_hold_the_root():
    root = zel.PropertyList()
    first = root.addChildList("x")
    root.addChildList("x").addStringPair("which", "second")
    first.addStringPair("which", "first")
    for i in range(100):  # Growing moves nothing.
        root.addChildList(str(i))
    assert root.getChildList("x") is first
    name, second = root.getChildListAt(1)
    assert (name, second.getStringPairValue("which")) == ("x", "second")
    assert root.getChildList("y") is None and root.getChildListAt(102) is None
    assert root.getNumberOfChildList() == 102
    leaf = first.addChildList("leaf")
    del root, first, second
    leaf.addStringPair("alive", "yes")
    assert leaf.getStringPairValue("alive") == "yes"


def test_what_a_parent_removes_is_gone_for_everybody():
    root = zel.PropertyList()
    child = root.addChildList("child")
    leaf = child.addChildList("leaf")
    root.removeAll()
    for gone in (child, leaf):
        with pytest.raises(ReferenceError):
            gone.getNumberOfPairs()
        with pytest.raises(ReferenceError):
            zel.PropertyList(gone)
    again = root.addChildList("child")
    assert again is not child and again.getNumberOfChildList() == 0


def test_a_copy_is_deep_and_a_root():
    root = zel.PropertyList()
    root.addChildList("child").addStringPair("k", "v")
    twin = zel.PropertyList(root.getChildList("child"))
    root.removeAll()
    assert twin.getStringPairValue("k") == "v"
    with pytest.raises(TypeError):
        copy.copy(root)
    with pytest.raises(TypeError):
        zel.PropertyList(None)


def test_a_long_chain_goes_without_recursion():
    deepest = zel.PropertyList()
    for _ in range(5000):
        deepest = deepest.addChildList("down")
    assert deepest.getNumberOfChildList() == 0
