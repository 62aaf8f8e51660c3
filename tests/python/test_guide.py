"""Every block of code in the guide is run, in its order, and prints what the guide says."""

import contextlib
import doctest
import io
import os
import pathlib
import re
import shutil
import subprocess
import sys

import pytest

import zel

SOURCE = pathlib.Path(__file__).parents[2]
GUIDE = SOURCE / "docs/python.md"
BLOCK = re.compile(r"^```(\w*) ?(.*)\n((?:.*\n)*?)```$", re.MULTILINE)


def blocks():
    """Where each block is, its language, what stands beside that, and the text."""
    text = GUIDE.read_text(encoding="utf-8")
    for found in BLOCK.finditer(text):
        line = text.count("\n", 0, found.start()) + 2
        yield line, found[1], found[2], found[3]


def chapters():
    """The blocks by chapter: those of one know each other."""
    starts = [
        (number, line[3:].strip())
        for number, line in enumerate(GUIDE.read_text("utf-8").splitlines(), 1)
        if line.startswith("## ")
    ]
    found = {}
    for block in blocks():
        title = [name for number, name in starts if number < block[0]][-1]
        # What the lifetimes and the exceptions are shown with is made in the chapter before.
        if title in ("Lifetimes", "Exceptions and threads"):
            title = "A first host"
        found.setdefault(title, []).append(block)
    return found


def check_examples(text, names, line):
    test = doctest.DocTestParser().get_doctest(text, names, GUIDE.name, str(GUIDE), line - 1)
    report = io.StringIO()
    runner = doctest.DocTestRunner(optionflags=doctest.ELLIPSIS, verbose=False)
    runner.run(test, out=report.write, clear_globs=False)
    names.update(test.globs)
    assert runner.failures == 0, report.getvalue()
    assert runner.tries > 0


def run_file(name):
    done = subprocess.run(
        [sys.executable, SOURCE / name], capture_output=True, text=True, check=False
    )
    assert (done.returncode, done.stderr) == (0, "")
    return done.stdout


@pytest.fixture
def documents(tmp_path, monkeypatch):
    """A copy of the documents, in which the examples run."""
    shutil.copytree(SOURCE / "examples/documents", tmp_path / "documents")
    monkeypatch.chdir(tmp_path / "documents")


@pytest.mark.skipif("LD_PRELOAD" in os.environ, reason="a process of its own is not watched")
@pytest.mark.parametrize("name", ["examples/first/first.py"])
def test_the_first_host_prints_what_the_guide_says(name):
    shown = [text for _, _, beside, text in blocks() if beside == name]
    assert shown == [run_file(name)]


@pytest.mark.parametrize("title", chapters())
def test_the_blocks_do_what_they_show(title, documents):
    if title.startswith("A tour"):
        pytest.importorskip("zel.shading._shading")
    names = {"__name__": "guide", "zel": zel}
    printed = None
    for line, language, beside, text in chapters()[title]:
        if language == "text" and not beside:
            assert printed == text, f"line {line}"
        elif language == "python" and ">>> " in text:
            check_examples(text, names, line)
        elif language == "python":
            output = io.StringIO()
            with contextlib.redirect_stdout(output):
                exec(compile("\n" * (line - 1) + text, str(GUIDE), "exec"), names)
            printed = output.getvalue()
        else:
            assert beside, f"line {line}: nobody runs this block"


def test_the_guide_has_blocks_of_each_kind():
    languages = [language for _, language, _, _ in blocks()]
    assert languages.count("python") > 10 and "text" in languages
