"""Random edits: all undone they leave nothing, and what they make the shell makes too."""

import pathlib
import zlib

import pytest

import zel
import zel.shading
from random_edits import RandomEdits
from shading_support import GATE, extraDocuments, runShell, stateOf

STEPS = 40


def seedOf(path):
    return zlib.crc32(path.name.encode())


@pytest.mark.parametrize("path", extraDocuments(), ids=lambda path: path.stem)
def test_all_undone_the_file_is_as_the_shell_saves_it(path, tmp_path):
    doc = zel.shading.open(path)
    before = stateOf(doc)
    edits = RandomEdits(doc, seedOf(path))
    log = [edits.step() for _ in range(STEPS)]
    doc.undo(doc.undoCount())
    assert stateOf(doc) == before, log
    assert not doc.isModified()
    mine = tmp_path / "mine.mtlx"
    shells = tmp_path / "shells.mtlx"
    try:
        doc.save(mine)
    except zel.Error as error:
        # Then the shell refuses it too, for the same reason.
        assert f"{error.path}: {error.reason}" in runShell(path, f"save {shells}")[1]
        return
    assert runShell(path, f"save {shells}") == ("", "") or shells.exists()
    assert mine.read_bytes() == shells.read_bytes()


@pytest.mark.parametrize("seed", range(4))
def test_the_commands_of_the_history_do_the_same_in_the_shell(seed, tmp_path):
    doc = zel.shading.open(GATE)
    edits = RandomEdits(doc, seed)
    # What no line of the shell does would be a comment.
    while doc.undoCount() < 25:
        edits.edit()
    commands = [line for entry in doc.history() for line in entry.commands]
    assert not any(line.startswith("#") for line in commands)
    mine = tmp_path / "mine.mtlx"
    shells = tmp_path / "shells.mtlx"
    try:
        doc.save(mine)
    except zel.Error as error:
        errors = runShell(GATE, script="\n".join([*commands, f"save {shells}"]) + "\n")[1]
        assert error.reason.splitlines()[0] in errors
        return
    out, errors = runShell(GATE, script="\n".join([*commands, f"save {shells}"]) + "\n")
    assert "error" not in errors, (commands, out)
    assert mine.read_bytes() == shells.read_bytes()


def test_every_kind_of_edit_is_done():
    done = set()
    for seed in range(12):
        edits = RandomEdits(zel.shading.open(GATE), seed)
        for _ in range(150):
            edits.step()
        done |= edits.done
    kinds = {kind.__name__ for kind in edits.kinds}
    # Nothing is there to bring up to its definition.
    assert kinds - {"editRebuild"} == done - {"editRebuild"}
