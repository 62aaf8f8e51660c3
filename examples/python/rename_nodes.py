"""Renames nodes by a rule in all documents of a folder.

    rename_nodes.py textures '^tex_(.*)$' 'image_\\1' --type image

The rule is a regular expression; what it matches in a name is replaced. Names that are taken or
that the format does not have are refused, and then the whole document stays as it was.
"""

import pathlib
import re
import sys

import zel.shading
from documents import goThrough, makeParser


def main() -> int:
    parser = makeParser("Renames nodes by a rule in all documents of a folder.")
    parser.add_argument("folder", type=pathlib.Path, help="a folder, or one document")
    parser.add_argument("pattern", help="a regular expression, searched in each name")
    parser.add_argument("replacement", help="for what it matches; \\1 is its first group")
    parser.add_argument("--type", help="only nodes of this type")
    arguments = parser.parse_args()
    try:
        pattern = re.compile(arguments.pattern)
        pattern.sub(arguments.replacement, "")
    except re.error as error:
        parser.error(f"{arguments.pattern}: {error}")

    def rename(doc: zel.shading.Document) -> None:
        for node in doc.walk():
            if arguments.type not in (None, node.getNodeTypeName()):
                continue
            old = node.getName()
            new = pattern.sub(arguments.replacement, old)
            if new != old:
                path = node.getFullPathName()
                doc.rename(node, new)
                print(f"{doc.path}: {path} -> {new}")

    return goThrough(arguments, [arguments.folder], rename)


if __name__ == "__main__":
    sys.exit(main())
