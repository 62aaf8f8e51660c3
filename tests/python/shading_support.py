"""What the tests of zel.shading share: documents, the shell, and a document's state as text."""

import os
import pathlib
import re
import subprocess

import pytest

import zel
import zel.shading
from zel.shading import _paths

DOCUMENTS = pathlib.Path(__file__).parents[2] / "examples" / "documents"
GATE = DOCUMENTS / "rusty_painted_gate.mtlx"
WALL = DOCUMENTS / "weathered_brick_wall.mtlx"


def shell():
    """The path of the shell, which lies beside the plugin in a build tree."""
    path = pathlib.Path(_paths.plugin).with_name("zelsh")
    if not path.exists():
        pytest.skip("the shell is not built")
    return path


def runShell(document, *commands, script=None):
    """What the shell prints on standard output and on standard error."""
    arguments = [part for command in commands for part in ("-c", command)]
    run = subprocess.run(
        [shell(), document, *arguments],
        input=script,
        capture_output=True,
        text=True,
        errors="surrogateescape",
        check=False,
    )
    return run.stdout, run.stderr


def shellReason(document, command):
    """The path and the reason of the shell's error."""
    errors = runShell(document, command)[1]
    match = re.fullmatch(r"error: [^:]+: (.*)\n", errors, re.DOTALL)
    assert match, f"{command}: {errors!r}"
    return match[1]


def reasonOf(call):
    """The text of the zel.Error that the call raises: its path and its reason."""
    with pytest.raises(zel.Error) as caught:
        call()
    error = caught.value
    assert str(error) == f"{error.path}: {error.reason}"
    return str(error)


def stateOf(doc):
    """All that edits may change, as text."""
    lines = [doc.tree()]
    lines += [f"{c.source} -> {c.target}" for c in doc.connections()]
    for node in doc.walk():
        path = node.getFullPathName()
        lines.append(f"{path} {doc.ports(node)}")
    for compound in compoundsOf(doc):
        for backdrop in doc.backdropList(compound):
            names = sorted(node.getName() for node in backdrop.nodes)
            lines.append(f"{backdrop.name} {backdrop.frame} {names} {backdrop.text}")
    return "\n".join(lines)


def compoundsOf(doc):
    """The nodes that have a compound, the root first."""
    return [doc.root] + [node for node in doc.walk() if node.isCompound()]


def extraDocuments():
    """The documents of the repository, and those below the folder that the environment names."""
    found = sorted(DOCUMENTS.glob("*.mtlx"))
    extra = os.environ.get("SHADING_EXTRA_DOCUMENTS")
    if extra:
        found += sorted(pathlib.Path(extra).rglob("*.mtlx"))
    return found
