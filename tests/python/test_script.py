"""scripts/python, with the build that these tests run in."""

import os
import pathlib
import pty
import subprocess

import pytest

import zel

BUILD = pathlib.Path(zel.__file__).parents[2]
SCRIPT = pathlib.Path(__file__).parents[2] / "scripts/python"

pytestmark = pytest.mark.skipif(
    "LD_PRELOAD" in os.environ, reason="the sanitizer would watch the shell too"
)


def run(*arguments, folder, text=""):
    environment = dict(os.environ, ZEL_PYTHON_BUILD=str(BUILD))
    del environment["PYTHONPATH"]
    return subprocess.run(
        [SCRIPT, *arguments], cwd=folder, env=environment, input=text, capture_output=True, text=True
    )


def test_a_file_is_found_from_the_callers_folder(tmp_path):
    (tmp_path / "names.py").write_text("import sys, zel\nprint(sys.argv, zel.__name__)\n")
    done = run("names.py", "a b", "--help", folder=tmp_path)
    assert (done.stdout, done.returncode) == ("['names.py', 'a b', '--help'] zel\n", 0), done.stderr


def test_code_and_modules_are_run_and_their_status_is_handed_on(tmp_path):
    done = run("-c", "import sys, zel; sys.exit(len(sys.argv))", "one", "two", folder=tmp_path)
    assert (done.stdout, done.returncode) == ("", 3), done.stderr
    (tmp_path / "tool.py").write_text("import sys; print(__name__, sys.argv[1:])\n")
    done = run("-m", "tool", "x", folder=tmp_path)
    assert done.stdout == "__main__ ['x']\n", done.stderr


def test_without_a_terminal_the_program_comes_from_standard_input(tmp_path):
    done = run(folder=tmp_path, text="import os, zel\nprint(os.getcwd())\n")
    assert done.stdout == f"{tmp_path}\n", done.stderr


def test_a_folder_without_a_build_is_refused(tmp_path):
    environment = dict(os.environ, ZEL_PYTHON_BUILD="nowhere")
    done = subprocess.run([SCRIPT], cwd=tmp_path, env=environment, capture_output=True, text=True)
    assert done.returncode == 1
    assert "nowhere: there is no such folder" in done.stderr


def test_on_a_terminal_the_package_is_ready(tmp_path):
    pytest.importorskip("zel.shading")
    terminal, end = pty.openpty()
    environment = dict(os.environ, ZEL_PYTHON_BUILD=str(BUILD), TERM="dumb")
    process = subprocess.Popen([SCRIPT], cwd=tmp_path, env=environment, stdin=end, stdout=end, stderr=end)
    os.close(end)
    os.write(terminal, b"print(zel.__name__, '+', zel.shading.__name__)\nexit(7)\n")
    shown = b""
    try:
        while data := os.read(terminal, 4096):
            shown += data
    except OSError:  # The other end was closed.
        pass
    os.close(terminal)
    assert process.wait() == 7
    assert b"with zel and zel.shading" in shown
    assert b"zel + zel.shading" in shown
