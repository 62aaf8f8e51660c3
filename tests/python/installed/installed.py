"""What an installed package must do. Arguments: the prefix, and a folder of documents."""

import importlib.util
import pathlib
import sys

import zel

prefix, documents = map(pathlib.Path, sys.argv[1:])


def loaded_from_elsewhere():
    """Files of this project in the process that do not lie below the prefix."""
    names = ("libZEL", "_zel.", "_shading.", "libshadingDefinitions", "shadingPlugin")
    files = {pathlib.Path(line.split()[5]) for line in open("/proc/self/maps") if "/" in line}
    ours = {file for file in files if file.name.startswith(names)}
    assert any(file.name.startswith("_zel.") for file in ours)
    return sorted(str(file) for file in ours if prefix not in file.parents)


assert pathlib.Path(zel.__file__).is_relative_to(prefix), zel.__file__
if importlib.util.find_spec("zel.shading"):
    import zel.shading
assert not loaded_from_elsewhere(), loaded_from_elsewhere()
