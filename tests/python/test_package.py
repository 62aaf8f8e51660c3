"""The package as it lies in the build tree."""

import importlib.util
import os
import pathlib

import pytest

import zel


def test_modules_belong_to_one_tree():
    folder = pathlib.Path(zel.__file__).parent
    assert pathlib.Path(zel._zel.__file__).parent == folder
    assert importlib.util.find_spec("zel._zel").origin == zel._zel.__file__


def test_the_plugin_is_found_from_the_package():
    paths = pytest.importorskip("zel.shading._paths")
    assert os.path.isabs(paths.plugin)
    assert os.path.isfile(paths.plugin)
