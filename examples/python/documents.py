"""What the scripts of this folder share: which documents they are for, and how they are edited."""

import argparse
import pathlib
import sys
from collections.abc import Callable

import zel
import zel.shading


class Refused(Exception):
    """The work on a document is given up, for this reason."""


def makeParser(description: str) -> argparse.ArgumentParser:
    """A parser with the arguments that all of them take."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument(
        "-n", "--dry-run", action="store_true", help="say what would be done, and write nothing"
    )
    parser.add_argument(
        "--library",
        action="append",
        default=[],
        metavar="FILE",
        help="read more node definitions; may be repeated",
    )
    return parser


def documentsBelow(paths: list[pathlib.Path]) -> list[pathlib.Path]:
    """The files among the paths, and the documents in the folders among them, at any depth."""
    found = []
    for path in paths:
        found += sorted(path.rglob("*.mtlx")) if path.is_dir() else [path]
    return found


def goThrough(
    arguments: argparse.Namespace,
    paths: list[pathlib.Path],
    work: Callable[[zel.shading.Document], None],
) -> int:
    """Opens each document, lets the work change it, and saves it if it did.

    The work is one edit: when it raises, the document stays as it was. One that fails does not stop
    the others. Gives the exit status: 1 when one failed, or there was none.
    """
    files = documentsBelow(paths)
    failures = 0 if files else 1
    if not files:
        print(f"{', '.join(map(str, paths))}: no document there", file=sys.stderr)
    for file in files:
        try:
            doc = zel.shading.open(file, libraries=arguments.library)
            with doc.edit(pathlib.Path(sys.argv[0]).stem):
                work(doc)
            if doc.isModified():
                doc.save(dryRun=arguments.dry_run)
        except (Refused, zel.Error, OSError) as error:
            failures += 1
            text = str(error)
            print(text if str(file) in text else f"{file}: {text}", file=sys.stderr)
    return 1 if failures else 0
