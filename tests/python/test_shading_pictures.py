"""Pictures of documents and compounds, for files and notebooks."""

import xml.etree.ElementTree

import pytest

import zel
import zel.shading
from shading_support import GATE, reasonOf, runShell


@pytest.mark.parametrize(
    "options, words",
    [
        ({}, ""),
        ({"depth": 1}, " --depth 1"),
        ({"path": "Top.NG_gate", "depth": 2, "all": True}, " Top.NG_gate --depth 2 --all"),
    ],
)
def test_draw_is_that_of_the_shell(options, words, tmp_path):
    doc = zel.shading.open(GATE)
    doc.draw(tmp_path / "mine.svg", **options)
    assert runShell(GATE, f"draw {tmp_path}/shells.svg{words}") == ("", "")
    svg = (tmp_path / "mine.svg").read_text()
    assert svg == (tmp_path / "shells.svg").read_text() == doc.svg(**options)


def test_a_picture_takes_the_place_of_no_document(tmp_path):
    doc = zel.shading.open(GATE)
    path = tmp_path / "gate.mtlx"
    assert reasonOf(lambda: doc.draw(path)) == f"{path}: the name of a picture ends in .svg"
    assert reasonOf(lambda: doc.draw(tmp_path / "a.svg", "Top.SR_gate")).endswith("not a compound")
    with pytest.raises(ValueError):
        doc.draw(tmp_path / "a.svg", depth=-1)
    assert list(tmp_path.iterdir()) == []
    with pytest.raises(FileNotFoundError):
        doc.draw(tmp_path / "none" / "a.svg")
    (tmp_path / "b.svg").mkdir()
    with pytest.raises(IsADirectoryError):
        doc.draw(tmp_path / "b.svg")


def test_documents_and_compounds_show_themselves():
    doc = zel.shading.open(GATE)
    assert doc._repr_svg_() == doc.svg()
    compound = doc.compound("Top.NG_gate")
    assert compound._repr_svg_() == doc.svg(compound)
    assert xml.etree.ElementTree.fromstring(compound._repr_svg_()).tag.endswith("svg")
    del doc
    assert "NG_gate" in compound._repr_svg_()


def test_a_compound_of_no_document_has_no_picture():
    owner = zel.Node(None, "owner")
    assert zel.Compound(owner)._repr_svg_() is None
    with pytest.raises(TypeError):
        zel.Compound._repr_svg_(3)
